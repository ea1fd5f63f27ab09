#include "document/rules/compare.h"

#include "panel/document_fixture.h"
#include "panel/project_layout.h"

namespace {

/// Changes the first element of the field with that number in the layout.
class OneFieldChanged {
 public:
  explicit OneFieldChanged(int number) : left_(number) {}

  template <typename Field>
  void operator()(const char* name, Field& field) {
    if (left_-- == 0) {
      Name = name;
      Change(field);
    }
  }
  std::string Name;

 private:
  static void Change(std::string& text) { text += "X"; }
  static void Change(Int16& value) { value = static_cast<Int16>(value + 1); }
  static void Change(Int32& value) { value += 1; }
  static void Change(std::uint8_t& value) { value = static_cast<std::uint8_t>(value + 1); }
  template <typename T, int First, int Second>
  static void Change(FixedArray<T, First, Second>& table) {
    Change(table(0, 0));
  }

  int left_;
};

class CompareTest : public DocumentTest {
 protected:
  const ProjectDocument sound = ThisProject();
};

TEST_F(CompareTest, EachFieldThatIsChangedIsNamedAlone) {
  EXPECT_TRUE(CompareProjects(sound, sound, true).empty());
  std::set<std::tuple<Item, QString, QString>> told;
  for (int number = 0;; ++number) {
    ProjectDocument other = sound;
    OneFieldChanged change(number);
    PanelLayout(change, other.Panel);
    DeviceLayout(change, other.Devices(1));
    change("DimmerBlock", other.Dimmers);
    if (change.Name.empty()) break;
    const auto differences = CompareProjects(sound, other, true);
    ASSERT_EQ(differences.size(), 1U) << change.Name;
    EXPECT_NE(differences[0].This, differences[0].Other) << change.Name;
    const bool timer = differences[0].Field == "runs";
    EXPECT_TRUE(
        told.insert({differences[0].Where, differences[0].Field, differences[0].Area}).second ||
        timer)
        << change.Name << ' ' << differences[0].Field.toStdString();
  }
  EXPECT_GT(told.size(), 60U);
}

TEST_F(CompareTest, DifferencesAreToldInWordsAndNamesWhenAsked) {
  ProjectDocument other = sound;
  other.Panel.RelayName(2) = "FOYER";
  other.Panel.InputRelayControl(4, 2) = 3;
  other.Panel.TimerTimeType(0) = 22;
  other.Panel.TimerTime(0) = 15;
  other.Panel.TimerName(SpareItem) = "555";
  other.Devices(26).DeviceInputType(1) = 1;
  other.Devices(26).DeviceType = 2;
  const auto row = [](const Difference& d) {
    return QStringList{d.Area, ItemCode(d.Where), d.Field, d.This, d.Other}
        .join(u'|')
        .toStdString();
  };
  std::vector<std::string> rows;
  for (const Difference& d : CompareProjects(sound, other, false)) rows.push_back(row(d));
  EXPECT_EQ(
      rows,
      (std::vector<std::string>{
          "Inputs|INPUT 05|RELAY 03|No Action|On And Off", "Connection|PANEL|phone number||555",
          "Timers|TIMER 01|runs|12:00 AM, every day|10:15 PM, every day",
          "Bus devices|FL 1A|type|None|2 Button", "Bus devices|FL 1A INPUT 2|type|0|Set Preset"}));
  EXPECT_EQ(CompareProjects(sound, other, true).size(), 6U);
}

TEST_F(CompareTest, ADownloadIsNoDifferenceAndLeavesTheProjectAlone) {
  ProjectDocument project = sound;
  project.Panel.OffHoursSweepRelay(3) = 1;
  project.Panel.RelayName(0) = "LONGER THAN TEN";
  const std::string live = Document();
  const ProjectDocument kept = AsPanelKeeps(project);
  EXPECT_FALSE(CompareProjects(project, kept, true).empty());
  EXPECT_TRUE(CompareProjects(kept, AsPanelKeeps(kept), true).empty());
  EXPECT_EQ(kept.Panel.RelayName(0), "LONGER THA");
  EXPECT_TRUE(live == Document());
}

}  // namespace

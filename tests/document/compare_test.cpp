#include "panel/code_page.h"
#include "panel/difference.h"
#include "panel/dimmer_fields.h"
#include "panel/document_fixture.h"
#include "panel/fennlink_types.h"
#include "panel/fields.h"
#include "panel/panel_image.h"

namespace {

class CompareTest : public DocumentTest {
 protected:
  const Project sound = LiveProject;
};

/// Another value, with a word of its own where the field has words.
void Change(std::string& text) {
  text += "X";
}
template <typename Number>
void Change(Number& value) {
  value = static_cast<Number>(value >= NoEntry ? 40 : value + 1);
}

bool IsBareCode(const QString& told, const Words& words) {
  const auto isTold = [&](std::string_view word) { return ToUnicode(word) == told; };
  bool isNumber = false;
  told.toInt(&isNumber);
  return isNumber && std::none_of(words.Choices.begin(), words.Choices.end(), isTold);
}

/// Every element of every field differs once: each is one row, of its own item and in words.
TEST_F(CompareTest, EachElementOfEachFieldIsToldOnceInWords) {
  Project one = sound;
  for (FennlinkRecord& device : one.Devices.elements) device.DeviceType = 1;
  EXPECT_TRUE(CompareProjects(one, one, true).empty());
  Project other = one;
  const auto look = [&](const FieldFacts& facts, auto& field) {
    SCOPED_TRACE(facts.Name.Value);
    std::size_t expected = 1;
    if constexpr (requires { field.elements; }) {
      for (auto& element : field.elements) Change(element);
      expected = static_cast<std::size_t>(facts.First.Value.Items * facts.Second.Value.Items) +
                 (facts.Spare ? 1 : 0);
    } else {
      Change(field);
    }
    const auto differences = CompareProjects(one, other, true);
    std::set<std::pair<Item, QString>> told;
    for (const Difference& row : differences) {
      told.insert({row.Where, row.Field});
      EXPECT_NE(row.This, row.Other);
      if (facts.Told.Value.IsNumber || !facts.Told.Value.Tell || row.Area == "Connection") continue;
      if (facts.Told.Value.Tell == told::TimerRuns && row.Field != "runs") continue;
      EXPECT_FALSE(IsBareCode(row.This, facts.Told.Value) ||
                   IsBareCode(row.Other, facts.Told.Value))
          << row.Field.toStdString() << ": " << row.This.toStdString() << ", "
          << row.Other.toStdString();
    }
    EXPECT_EQ(differences.size(), expected);
    EXPECT_EQ(told.size(), expected) << "each names its own place";
    other = one;
  };
  ForEachPanelField(other.Panel, look);
  ForEachDeviceField(other.Devices(26), look);

  constexpr OutputPlace place{2, 1};
  std::array<bool, ElementsOfOutput> covered{};
  for (const DimmerField* field : dim::Fields) {
    for (int index = 0; index < field->Count; ++index) {
      const Int32 element = DimmerElement(*field, place, index);
      covered[static_cast<std::size_t>(element % ElementsOfOutput)] = true;
      const int mask = MaskOf(*field, index);
      // Bytes next to each other may have one percentage.
      const int bit = field->Way == DimmerField::How::Percent ? 64 : mask & -mask;
      other.Dimmers(element) = static_cast<Int16>(one.Dimmers(element) ^ bit);
      const auto differences = CompareProjects(one, other, false);
      ASSERT_EQ(differences.size(), 1U) << field->Name << index;
      EXPECT_EQ(differences[0].Where, (Item{ItemKind::DimmerOutput, 2, 1}));
      EXPECT_TRUE(field->Told.IsNumber || !IsBareCode(differences[0].Other, field->Told))
          << field->Name << ' ' << differences[0].Other.toStdString();
      other = one;
    }
  }
  covered[14] = true;  // the channel's low byte
  EXPECT_EQ(std::count(covered.begin(), covered.end(), true), ElementsOfOutput);
  other.Dimmers(DimmerElement(dim::TrackMode, place)) ^= 64;
  other.Dimmers(DeviceEnabledElement + 3) = 1;
  EXPECT_EQ(CompareProjects(one, other, false).size(), 2U) << "bits that mean nothing, a device";
}

TEST_F(CompareTest, EveryDeviceIsLookedAtAndSparesAreNot) {
  for (int device = 0; device <= DeviceCount; ++device) {
    Project other = sound;
    other.Devices(device).DeviceInputType(0) = 1;
    const auto differences = CompareProjects(sound, other, true);
    ASSERT_EQ(differences.size(), device == 0 ? 0U : 1U) << device;
    for (const Difference& row : differences) EXPECT_EQ(row.Where.Number, device);
  }
  Project other = sound;
  other.Panel.RelayTimerType(SpareItem) = other.Panel.InputRelayControl(3, SpareItem) = 1;
  other.Panel.RelayName(SpareItem) = "SPARE";
  other.Devices(26).DeviceInputType(DeviceInputCount) = 1;
  EXPECT_TRUE(CompareProjects(sound, other, true).empty());
}

TEST_F(CompareTest, DifferencesAreToldInWordsAndNamesWhenAsked) {
  Project other = sound;
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
  EXPECT_EQ(rows, (std::vector<std::string>{
                      "Inputs|INPUT 05|RELAY 03|No Action|On And Off",
                      "Connection|PANEL|phone number||555",
                      "Timers|TIMER 01|runs|12:00 AM, every day|10:15 PM, every day",
                      "Bus devices|FL 1A|type|None|2 Button",
                      "Bus devices|FL 1A INPUT 2|type|None|Set Preset"}));
  EXPECT_EQ(CompareProjects(sound, other, true).size(), 6U);

  Project station = other;
  station.Devices(26).DeviceType = DeviceType4Input;
  station.Devices(26).DeviceInputType(1) = 3;
  EXPECT_EQ(row(CompareProjects(other, station, false).back()),
            "Bus devices|FL 1A INPUT 2|type|Set Preset (1)|Set Preset (3)");
}

TEST_F(CompareTest, ACellIsToldByWhatItStandsForAndATimerPartInWords) {
  Project one = sound;
  Project other = sound;
  one.Panel.InputRelayControl(4, 2) = 3;
  other.Panel.InputType(4) = 12;
  other.Panel.InputRelayControl(4, 6) = 1;
  one.Panel.TimerHolidayMonth(0) = other.Panel.TimerHolidayMonth(0) = 12;
  other.Panel.TimerDays(0) = 0x41;
  one.Panel.TimerTimeType(1) = 88;  // none before sunset, none after it
  other.Panel.TimerTimeType(1) = 120;
  other.Devices(26).DeviceType = 2;
  other.Devices(26).DeviceRelayControl(0, 1) = 1;
  QStringList rows;
  for (const Difference& d : CompareProjects(one, other, false)) {
    rows << QStringList{ItemCode(d.Where), d.Field, d.This, d.Other}.join(u'|');
  }
  EXPECT_EQ(rows, (QStringList{"INPUT 05|RELAY 03|On And Off|No Action",
                               "INPUT 05|TIMER 07|No Action|Force",
                               "INPUT 05|type|Momentary On/Off|Force Timer",
                               "TIMER 02|kind of time|Before Sunset|After Sunset",
                               "TIMER 01|days|SMTWTFSH|-MTWTF-H", "FL 1A|type|None|2 Button",
                               "FL 1A INPUT 1|RELAY 02|No Action|On Only"}))
      << rows.join(u'\n').toStdString();
}

TEST_F(CompareTest, WhatIsEqualForAUserIsNoDifference) {
  Project one = sound;
  Project other = sound;
  one.Panel.GroupRelayInclude(1, 2) = one.Panel.TimerPresetControl(1, 2) = 1;
  other.Panel.GroupRelayInclude(1, 2) = other.Panel.TimerPresetControl(1, 2) = -1;
  one.Panel.DSTEnabled = one.Panel.OffHoursSweepRelay(0) = 1;
  other.Panel.DSTEnabled = other.Panel.OffHoursSweepRelay(0) = -1;
  one.Panel.RelayName(0) += "  ";
  other.Devices(3).DeviceName += ' ';
  other.Panel.PanelName = "ORV TAMBERLOOM 3  ";
  EXPECT_TRUE(CompareProjects(one, other, true).empty());
  other.Panel.PanelName = " ";
  EXPECT_TRUE(CompareProjects(one, other, true).empty());
  other.Panel.RelayTimerType(0) = 1;
  one.Panel.RelayTimerType(0) = -1;
  one.Panel.RelayName(0) = " RELAY 01";
  other.Panel.PhotocellFilter = 2;
  one.Panel.PhotocellFilter = 1;
  one.Dimmers(DeviceEnabledElement) = 1;
  other.Dimmers(DeviceEnabledElement) = -1;  // which no download can send
  EXPECT_EQ(CompareProjects(one, other, true).size(), 4U);
}

TEST_F(CompareTest, ADownloadIsNoDifferenceAndLeavesTheProjectAlone) {
  Project project = sound;
  project.Panel.OffHoursSweepRelay(3) = 1;
  project.Panel.RelayName(0) = "LONGER THAN TEN";
  const std::string live = Document();
  const Project kept = AsPanelKeeps(project);
  EXPECT_FALSE(CompareProjects(project, kept, true).empty());
  EXPECT_TRUE(CompareProjects(kept, AsPanelKeeps(kept), true).empty());
  EXPECT_EQ(kept.Panel.RelayName(0), "LONGER THA");
  EXPECT_TRUE(live == Document());
}

}  // namespace

#include "panel/merge.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <map>

#include "panel/dimmer_block.h"
#include "panel/fields.h"
#include "panel/random_settings.h"

namespace {

constexpr int LookedAt = 26;  ///< Of the bus devices.

/// What is one thing to a user, by a name of the test's own, and all that it holds.
using Reading = std::map<std::string, std::vector<std::string>>;

void ReadDimmers(const DimmerBlockType& dimmers, Reading& reading) {
  for (int at = 0; at < DimmerBlockType::Size; ++at) {
    const int element = at < DeviceEnabledElement ? at % ElementsOfOutput : ElementsOfOutput;
    const std::string output = "dimmers " + std::to_string(at / ElementsOfOutput) + ' ';
    const bool slot = (element >= 16 && element < 32) || (element >= 48 && element < 112);
    std::vector<int> bits;
    if (element == 0) bits = {4, 8};
    if (element >= 114 && element < 120) bits = {2, 4, 8, 16, 32, 64, 128};
    int rest = 0xFFFF;
    for (const int bit : bits) {
      reading[output + std::to_string(element) + " bit " + std::to_string(bit)] = {
          std::to_string(dimmers(at) & bit)};
      rest &= ~bit;
    }
    const std::string name = slot ? "slot " + std::to_string(element % 16)
                             : element == 13 || element == 14 ? "channel"
                                                              : std::to_string(at);
    reading[output + name].push_back(std::to_string(dimmers(at) & rest));
  }
}

Reading Read(const Project& project) {
  Reading reading;
  std::string device;
  const auto name = [&](const std::string& field, int i, int j) {
    const std::string place = ' ' + std::to_string(i) + ' ' + std::to_string(j);
    const bool timer = field.starts_with("Timer") && field.find("Control") == std::string::npos;
    if (timer && field != "TimerName" && i < ItemCount) return "timer" + place;
    if (field.starts_with("Date")) return "date" + place;
    if (field.starts_with("Normal")) return "weekday" + place;
    return device + field + place;
  };
  const auto text = [](const auto& value) {
    if constexpr (requires { value.size(); })
      return value;
    else
      return std::to_string(value);
  };
  const auto read = [&](const FieldFacts& facts, const auto& field) {
    const std::string of = facts.Name.Value;
    const auto table =
        [&]<typename T, int First, int Second>(const FixedArray<T, First, Second>& all) {
          for (int i = 0; i < First; ++i) {
            for (int j = 0; j < Second; ++j) reading[name(of, i, j)].push_back(text(all(i, j)));
          }
        };
    if constexpr (requires { field.elements; })
      table(field);
    else
      reading[name(of, 0, 0)].push_back(text(field));
  };
  ForEachPanelField(project.Panel, read);
  for (const int n : {0, LookedAt}) {
    device = "device " + std::to_string(n) + ' ';
    ForEachDeviceField(project.Devices(n), read);
  }
  ReadDimmers(project.Dimmers, reading);
  return reading;
}

class MergeTest : public testing::Test {
 protected:
  /// Changes some of the few settings that both sides meet at.
  Project Changed(Project project) {
    for (int change = 0; change < 120; ++change) {
      const Setting& setting =
          meeting[static_cast<std::size_t>(random.Below(static_cast<int>(meeting.size())))];
      SettingValue value = ValueOf(project, setting);
      if (auto* text = std::get_if<std::string>(&value))
        *text = "NAME " + std::to_string(random.Below(3));
      else
        value = random.Below(2) == 0 ? -1 : 0;
      PutValue(project, setting, value);
    }
    project.Panel.RelayTimerType(SpareItem) = static_cast<Int16>(random.Below(3));
    project.Devices(0).DeviceType = static_cast<Int16>(random.Below(3));
    return project;
  }

  /// Some of all, and all that is grouped of an item.
  void MeetAgain() {
    meeting.clear();
    while (meeting.size() < 40) {
      const Setting& any = random.Any();
      if (any.Dimmer || any.At.Device == 0 || any.At.Device == LookedAt) meeting.push_back(any);
    }
    for (const Setting& part : PartsOfTimer(random.Below(ItemCount))) meeting.push_back(part);
    const Place date{0, random.Below(12), random.Below(31)};
    meeting.push_back({&FactsOf(&PanelRecordType::DateOpenTime), nullptr, date});
    meeting.push_back({&FactsOf(&PanelRecordType::DateCloseTime), nullptr, date});
    const Place day{0, random.Below(7), 0};
    meeting.push_back({&FactsOf(&PanelRecordType::NormalOpenTime), nullptr, day});
    meeting.push_back({&FactsOf(&PanelRecordType::NormalCloseTime), nullptr, day});
    for (const DimmerField* field : dim::Fields) meeting.push_back({nullptr, field, {2, 1, 0}});
  }

  RandomSettings random{1};
  std::vector<Setting> meeting;
  const Project fresh = NewProject();
};

TEST_F(MergeTest, EachThingIsMergedByItself) {
  for (int round = 0; round < 3; ++round) {
    MeetAgain();
    const Project base = Changed(fresh);
    const Project ours = Changed(base);
    const Project theirs = Changed(base);
    const Reading ofBase = Read(base);
    Reading expected = Read(ours);
    std::size_t conflicts = 0;
    for (const auto& [name, value] : Read(theirs)) {
      const auto& before = ofBase.at(name);
      auto& own = expected.at(name);
      const bool spare = name.starts_with("device 0 ") || name == "RelayTimerType 48 0";
      if (own == before) {
        own = value;
      } else if (value != before && value != own && !spare) {
        ++conflicts;
      }
    }
    const MergedProject merged = MergeProjects(base, ours, theirs);
    EXPECT_TRUE(Read(merged.Content) == expected);
    EXPECT_EQ(merged.Conflicts.size(), conflicts);
    for (const MergeConflict& conflict : merged.Conflicts)
      EXPECT_NE(conflict.Ours, conflict.Theirs);

    EXPECT_TRUE(MergeProjects(base, base, theirs).Content == theirs);
    EXPECT_TRUE(MergeProjects(base, ours, base).Content == ours);
    EXPECT_TRUE(MergeProjects(base, ours, ours).Content == ours);
  }
}

TEST_F(MergeTest, AConflictIsToldInWords) {
  Project ours = fresh;
  Project theirs = fresh;
  ours.Panel.TimerTimeType(3) = 7;
  theirs.Panel.TimerTime(3) = 5;
  theirs.Panel.TimerDays(3) = 0x41;
  ours.Panel.DateOpenTime(0, 4) = 30;
  theirs.Panel.DateCloseTime(0, 4) = 70;
  ours.Panel.NormalOpenTime(2) = 31;
  theirs.Panel.NormalCloseTime(2) = 80;
  SetDimmerValue(ours.Dimmers, dim::ControlType, {2, 1}, 2, 5);
  SetDimmerValue(theirs.Dimmers, dim::ControlAction, {2, 1}, 53, 5);
  ours.Panel.TimerHolidayDate(6) = 2;
  theirs.Panel.TimerHolidayDate(6) = 3;
  theirs.Panel.RelayPowerOnType(0) = 1;
  // Changed for nobody.
  ours.Panel.PhotocellFilter = 1;
  theirs.Panel.PhotocellFilter = -1;
  ours.Panel.DSTEnabled = 1;
  theirs.Panel.DSTEnabled = 0;
  ours.Panel.RelayName(0) = "FOYER";
  theirs.Panel.RelayName(0) += ' ';
  const MergedProject merged = MergeProjects(fresh, ours, theirs);
  QStringList rows;
  for (const MergeConflict& row : merged.Conflicts) {
    rows << QStringList{row.Area, ItemCode(row.Where), row.Field, row.Base, row.Ours, row.Theirs}
                .join(u'|');
  }
  EXPECT_EQ(
      rows,
      (QStringList{
          "Panel|PANEL|times of Tuesday|8:00A, 9:00P|7:45A, 9:00P|8:00A, 8:00P",
          "Panel|PANEL|times of January 5|--:--, --:--|7:30A, --:--|--:--, 5:30P",
          "Timers|TIMER 04|runs|12:00 AM, every day|7:00 AM, every day|12:05 AM, Mon to Fri",
          "Timers|TIMER 07|runs|hour 0, 0 min, SMTWTFSH, None, 1|hour 0, 0 min, SMTWTFSH, None, 2|"
          "hour 0, 0 min, SMTWTFSH, None, 3",
          "Dimmers|DIMMER 3 OUTPUT 2|control slot 6|Unused, Fade, INPUT 01, HW, Revert To "
          "Photocell, When Input Opens|Timer, Fade, TIMER 01, HW, Revert To Photocell, When "
          "Input Opens|Unused, Fade, INPUT 01, HW, Goto 50%, When Input Opens"}))
      << rows.join(u'\n').toStdString();
  ours.Panel.RelayPowerOnType(0) = 1;
  ours.Panel.DSTEnabled = 0;
  EXPECT_TRUE(merged.Content == ours);
}

}  // namespace

#include "document/rules/check/check.h"

#include <gtest/gtest.h>

#include <QTemporaryFile>
#include <set>

#include "document/sound_project.h"
#include "panel/project_codec.h"
#include "panel/project_file.h"

namespace {

struct Fault {
  const char* Rule;
  const char* Where;
  Act Make;
  std::set<std::string> Also = {};  ///< What cannot but be wrong with it.
};

std::vector<Fault> Faults() {
  auto& p = PanelRecord;
  const auto everyDay = [](Int16 open, Int16 close) {
    return [open, close] {
      for (int day = 0; day < 7; ++day) {
        p.NormalOpenTime(day) = open;
        p.NormalCloseTime(day) = close;
      }
    };
  };
  FennlinkRecord& station = FennlinkRecords(26);
  FennlinkRecord& cell = FennlinkRecords(5);
  return {
      {"file-ends-early", "PANEL",
       [] {
         QTemporaryFile file;
         EXPECT_TRUE(file.open());
         CurrentFileName = file.fileName();
         ReadProjectFile();
       }},
      {"image-element", "PANEL", [&] { p.DMXOnLevel = 100; }},
      {"image-element", "TIMER 07", [&] { p.TimerDays(6) = -1; }, {"idle-timer"}},
      {"image-element", "FL 1A INPUT 1", [&] { station.DevicePilot(0) = 256; }, {"pilot-source"}},
      {"image-element", "DIMMER 2 OUTPUT 3", [&] { DimSet(512 + 2 * 128 + 5, 300); }},
      {"download-stops", "PANEL", [&] { p.DMXOnLevel = 200; }},
      {"document-stops", "PANEL", [&] { DimSet(3, 32767); }, {"image-element"}},
      {"io-count", "PANEL", [&] { p.IOCount(1) = 12; }, {"sweep-leaves", "unused-relay"}},
      {"action-cut", "INPUT 02", Sets(p.InputType(1), 1, p.InputRelayControl(1, 1), 4)},
      {"action-cut", "FL 1A INPUT 2", [&] { station.DeviceGroupControl(1, 0) = 4; }},
      {"beyond-points", "INPUT 01", [&] { p.InputRelayControl(0, 40) = 1; }},
      {"beyond-points", "TIMER 01", [&] { p.TimerRelayControl(0, 4) = 1; }},
      {"beyond-points", "DIMMER 1 OUTPUT 1", Calls(DimSetRelay, 0, 0, 40, -1)},
      {"input-beyond-points", "INPUT 05", [&] { p.InputName(4) = "HALL"; }},
      {"input-beyond-points", "INPUT 09", [&] { p.InputGroupControl(8, 0) = 1; }},
      {"input-beyond-points", "INPUT 07", [&] { p.InputType(6) = 4; }},
      {"held-beyond-points", "GROUP 01", [&] { p.GroupRelayInclude(0, 40) = -1; }},
      {"held-beyond-points", "PRESET 01", [&] { p.PresetRelayControl(0, 40) = 1; }},
      {"empty-preset", "INPUT 04", [&] { p.InputPreset(3) = 7; }, {"unused-preset"}},
      {"empty-preset", "TIMER 01", [&] { p.TimerPresetControl(0, 9) = -1; }},
      {"empty-group", "TIMER 01", [&] { p.TimerGroupControl(0, 3) = 1; }},
      {"empty-group", "FL 1A INPUT 1", [&] { station.DeviceGroupControl(0, 9) = 1; }},
      {"idle-timer-forced", "INPUT 03", [&] { p.InputType(2) = 12; }, {"action-cut"}},
      {"disables-idle", "INPUT 03", Disables(InputKind::TimerDisable, 5)},
      {"disables-idle",
       "INPUT 03",
       All(Disables(InputKind::InputDisable, 3), Sets(p.InputType(3), 0)),
       {"unused-preset"}},
      {"disables-idle",
       "INPUT 03",
       All(Disables(InputKind::TimerDisable, 0), Sets(p.TimerDays(0), 0xFF)),
       {"parked-timer", "unused-group"}},
      {"disables-itself", "INPUT 03", Disables(InputKind::InputDisable, 2)},
      {"pilot-source", "INPUT 01", [&] { p.LocalPilot(0) = 20; }},
      {"pilot-source", "INPUT 02", [&] { p.LocalPilot(1) = 64 + 9; }},
      {"pilot-source", "INPUT 02", [&] { p.LocalPilot(1) = 64 + 60; }},
      {"pilot-source", "FL 1A INPUT 1", [&] { station.DevicePilot(0) = -1; }, {"image-element"}},
      {"no-day", "TIMER 01", [&] { p.TimerDays(0) = 0x7F; }},
      {"no-day", "TIMER 02", All(DimsByTimer(1), Sets(p.TimerDays(1), 0x7F))},
      {"parked-timer", "TIMER 01", [&] { p.TimerDays(0) = 0xFF; }, {"unused-group"}},
      {"no-such-date", "TIMER 01", Sets(p.TimerHolidayMonth(0), 2, p.TimerHolidayDate(0), 30)},
      {"no-such-date", "TIMER 02",
       All(DimsByTimer(1), Sets(p.TimerHolidayMonth(1), 2, p.TimerHolidayDate(1), 30))},
      {"unlisted-code", "RELAY 02", [&] { p.RelayTimerType(1) = 9; }},
      {"unlisted-code", "TIMER 01", [&] { p.TimerTime(0) = 75; }},
      {"unlisted-code", "TIMER 01", [&] { p.TimerRelayControl(0, 2) = 3; }},
      {"unlisted-code", "INPUT 02", [&] { p.InputRelayControl(1, 2) = -32767; }},
      {"unlisted-code", "FL 1A INPUT 1", [&] { station.DeviceGroupControl(0, 1) = -1; }},
      {"unlisted-code", "PANEL", Sets(p.DateOpenTime(4, 0), 101, p.DateCloseTime(4, 0), 255)},
      {"unlisted-code", "INPUT 04", [&] { p.InputPreset(3) = 60; }, {"unused-preset"}},
      {"unlisted-code", "PANEL", [&] { p.DSTStartMonth = 13; }},
      {"unlisted-code", "PANEL", [&] { p.NormalOpenTime(3) = 96; }},
      {"unlisted-code", "PANEL", [&] { p.BlinkAlertMinutes = 100; }},
      {"unlisted-code", "PANEL", [&] { p.OverrideMinutes = 4; }},
      {"unlisted-code", "PANEL", [&] { p.AlarmSeconds = 0; }},
      {"unlisted-code", "PANEL", Sets(p.AddOnModuleType, 1, p.DMXFilter, 16)},
      {"unlisted-code", "PANEL", Sets(p.AddOnModuleType, 1, p.DMXOffLevel, 0)},
      {"unlisted-code", "PANEL", [&] { p.ComPort = 17; }},
      {"unlisted-code", "PANEL", [&] { ConnectionType(p) = 3; }},
      {"unlisted-code", "PANEL", Sets(p.TimerTimeType(0), 120, p.Latitude, 0)},
      {"unlisted-code", "PANEL", Sets(p.TimerTimeType(0), 120, p.Longitude, 151)},
      {"unlisted-code", "RELAY 03", Sets(p.AddOnModuleType, 1, p.DMXChannel(2), 513)},
      {"unlisted-code", "DIMMER 1 OUTPUT 2", Calls(DimSetDMX, 0, 1, 513)},
      {"unlisted-code", "TIMER 01", [&] { p.TimerHolidayMonth(0) = 13; }},
      {"unlisted-code", "TIMER 01", Sets(p.TimerHolidayMonth(0), 3, p.TimerHolidayDate(0), 0)},
      {"unlisted-code", "FL 1A INPUT 2", [&] { station.DeviceInputType(1) = 5; }, {"idle-device"}},
      {"unlisted-code", "DIMMER 1 OUTPUT 1", Calls(DimSetCtlAction, 0, 0, 0, 106)},
      {"unlisted-code", "DIMMER 1 OUTPUT 3", Calls(DimSetFade, 0, 2, 43)},
      {"dimmer-source", "DIMMER 1 OUTPUT 1", [&] { DimSetCtlNumber(0, 0, 0, 30); }},
      {"dimmer-source", "DIMMER 1 OUTPUT 1",
       All(Calls(DimSetCtlDevice, 0, 0, 0, 26), Calls(DimSetCtlNumber, 0, 0, 0, 2))},
      {"minimum-above-maximum", "DIMMER 1 OUTPUT 2",
       All(Calls(DimSetMin, 0, 1, 60), Calls(DimSetMax, 0, 1, 50))},
      {"point-order", "DIMMER 1 OUTPUT 1",
       All(Calls(DimSetTrackMode, 0, 0, Track3Point), Calls(DimSetPCDev, 0, 0, 4),
           Calls(DimSetCIn, 0, 0, 100))},
      {"dark-relay-levels", "DIMMER 1 OUTPUT 1", Calls(DimSetOnLevel, 0, 0, 0)},
      {"disabled-dimmer", "DIMMER 3 OUTPUT 2", Calls(DimSetCtlType, 2, 1, 0, ControlTimer)},
      // What it would track is not told to be idle, too.
      {"disabled-dimmer", "DIMMER 3 OUTPUT 2",
       All(Calls(DimSetTrackMode, 2, 1, Track2Point), Calls(DimSetPCDev, 2, 1, 8),
           Sets(FennlinkRecords(9).DeviceType, 9))},
      {"dark-relay-levels", "DIMMER 3 OUTPUT 2", Calls(DimSetRelay, 2, 1, 0, -1)},
      {"dmx-levels", "PANEL", Sets(p.AddOnModuleType, 1, p.DMXOffLevel, 90)},
      {"unused-relay", "RELAY 05", Sets(p.IOCount(0), 2, p.LocalPilot(4), 0), {"sweep-leaves"}},
      {"never-off",
       "RELAY 01",
       Sets(p.OffHoursSweepRelay(0), 0, p.InputRelayControl(0, 0), 1, p.TimerGroupControl(0, 0), 1),
       {"sweep-leaves"}},
      {"never-off",
       "RELAY 01",  // what warns first goes off all the same
       Sets(p.RelayTimerType(0), 2, p.OffHoursSweepRelay(0), 0, p.InputRelayControl(0, 0), 1,
            p.TimerGroupControl(0, 0), 1),
       {"sweep-leaves"}},
      {"never-on", "RELAY 01", [&] { p.InputRelayControl(0, 0) = 2; }},
      // What a parked timer is set to do is not done.
      {"never-off",
       "RELAY 01",
       Sets(p.OffHoursSweepRelay(0), 0, p.InputRelayControl(0, 0), 1, p.TimerGroupControl(0, 0), 1,
            p.TimerRelayControl(1, 0), 2, p.TimerDays(1), 0xFF),
       {"sweep-leaves", "parked-timer"}},
      {"never-on",
       "RELAY 01",
       Sets(p.InputRelayControl(0, 0), 2, p.TimerRelayControl(1, 0), 1, p.TimerDays(1), 0xFF),
       {"parked-timer"}},
      {"unused-relay",
       "RELAY 05",
       Sets(p.IOCount(0), 2, p.LocalPilot(4), 0, p.TimerRelayControl(1, 4), 1, p.TimerDays(1), 0xFF,
            p.TimerTimeType(1), 24, p.Latitude, 45, p.Longitude, 90),
       {"sweep-leaves", "parked-timer"}},
      {"idle-input", "INPUT 03", Sets(p.InputRelayControl(2, 2), 0, p.InputName(2), "HALL")},
      {"idle-device", "FL 1A", [&] { station.DeviceRelayControl = {}; }, {"never-on"}},
      {"idle-timer", "TIMER 05", [&] { p.TimerTime(4) = 30; }},
      {"unused-group", "GROUP 02", [&] { p.GroupRelayInclude(1, 0) = -1; }},
      {"unused-preset", "PRESET 02", [&] { p.PresetRelayControl(1, 0) = 2; }},
      {"self-conflict", "TIMER 01", [&] { p.TimerRelayControl(0, 2) = 1; }},
      {"self-conflict", "TIMER 01",
       Sets(p.TimerPresetControl(0, 1), -1, p.TimerGroupControl(0, 0), 1,
            p.PresetRelayControl(1, 0), 2, p.PresetRelayControl(1, 1), 2,
            p.PresetRelayControl(1, 2), 2, p.PresetRelayControl(1, 3), 2)},
      {"conflict", "TIMER 02",
       Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(1), 22, p.TimerDays(1), 0x7E)},
      {"conflict", "TIMER 02",
       Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(0), 88, p.TimerTimeType(1), 120)},
      {"conflict", "TIMER 02",  // an hour after it opens
       Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(0), 184, p.TimerTime(0), 60,
            p.TimerTimeType(1), 9)},
      {"conflict", "TIMER 02",
       Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(1), 22, p.TimerHolidayMonth(1), 12,
            p.TimerHolidayDate(1), 24)},
      {"conflict", "TIMER 02",  // the night before is over on the next day
       Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(0), 248, p.TimerTime(0), 240,
            p.TimerTimeType(1), 1)},
      {"open-after-close", "PANEL", Sets(p.DateOpenTime(4, 0), 40, p.DateCloseTime(4, 0), 30)},
      {"open-after-close", "PANEL", Sets(p.NormalOpenTime(5), 68, p.NormalCloseTime(5), 8)},
      // A bar stays closed for a day, and the night before goes on until the times of that day.
      {"open-after-close",
       "PANEL",
       All(everyDay(68, 8), Sets(p.NormalOpenTime(1), 68, p.NormalCloseTime(1), 68)),
       {"closes-late"}},
      {"open-after-close",
       "PANEL",
       All(everyDay(68, 8), Sets(p.DateOpenTime(11, 24), 68, p.DateCloseTime(11, 24), 68)),
       {"closes-late"}},
      {"conflict",
       "TIMER 02",  // which opens last
       All(everyDay(48, 48),
           Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(0), 248, p.TimerTimeType(1), 184)),
       {"stays-closed"}},
      {"stays-closed", "PANEL", [&] { p.NormalOpenTime(3) = p.NormalCloseTime(3); }},
      {"closes-late",
       "PANEL",
       Sets(p.NormalOpenTime(5), 68, p.NormalCloseTime(5), 8, p.NormalOpenTime(6), 8,
            p.NormalCloseTime(6), 8),
       {"stays-closed"}},
      {"leap-day", "TIMER 01", Sets(p.TimerHolidayMonth(0), 2, p.TimerHolidayDate(0), 29)},
      {"lone-time", "PANEL", [&] { p.DateOpenTime(4, 0) = 40; }},
      {"lone-time", "PANEL", [&] { p.DateCloseTime(4, 0) = 40; }},
      {"hours-on-no-date", "PANEL", [&] { p.DateCloseTime(1, 30) = 60; }},
      {"leap-date", "PANEL", Sets(p.DateOpenTime(1, 28), 20, p.DateCloseTime(1, 28), 60)},
      {"daylight-saving", "PANEL", Sets(p.DSTEndMonth, 3, p.DSTEndWeek, 2)},
      {"daylight-saving", "PANEL", Sets(p.DSTStartWeek, 4, p.DSTEndMonth, 3, p.DSTEndWeek, 5)},
      {"time-zone", "PANEL", Sets(p.Latitude, 39, p.Longitude, 105)},
      {"time-zone", "PANEL", Sets(p.Latitude, 60, p.Longitude, 120)},
      {"default-position", "TIMER 01",
       Sets(p.TimerTimeType(0), 24, p.Latitude, 45, p.Longitude, 90)},
      {"default-position", "TIMER 02",
       All(DimsByTimer(1), Sets(p.TimerTimeType(1), 24, p.Latitude, 45, p.Longitude, 90))},
      {"equal-levels", "FL 05 INPUT 1", [&] { cell.DeviceOffLevel(0) = 40; }},
      {"same-name", "GROUP 02", [&] { p.GroupName(1) = p.GroupName(2) = "STAIRS"; }},
      {"same-name", "GROUP 02", Sets(p.GroupName(1), "Stairs", p.GroupName(2), "STAIRS")},
      {"same-name",
       "RELAY 02",
       Sets(p.RelayName(1), "STAIRS WEST", p.RelayName(2), "STAIRS WESTERN"),
       {"long-name"}},
      {"name-of-another", "RELAY 02", [&] { p.RelayName(1) = "Relay 03"; }},
      {"name-of-another", "FL 1A", [&] { station.DeviceName = "FLINK 05"; }},
      {"blank-name", "RELAY 02", [&] { p.RelayName(1) = "   "; }},
      {"name-characters", "INPUT 02", [&] { p.InputName(1) = "HALL\n"; }},
      {"name-characters", "PANEL", [&] { p.PanelName = "\x01"; }},
      {"long-name", "RELAY 02", [&] { p.RelayName(1) = "STAIRS WEST"; }},
      {"stale-actions", "FL 3F",
       [&] {
         FennlinkRecords(63).DeviceType = 1;
         FennlinkRecords(63).DeviceRelayControl(0, 1) = 3;
         BuildPanelImage({});
         FennlinkRecords(63).DeviceRelayControl(0, 1) = 1;
       }},
      {"module-settings", "PANEL", [&] { p.ModBusBaud = 2; }},
      {"sweep-leaves", "PANEL", [&] { p.OffHoursSweepRelay(2) = 0; }},
      {"swept-beyond-points", "PANEL", [&] { p.OffHoursSweepRelay(40) = -1; }},
      {"shared-channel", "PANEL",
       All(Sets(p.AddOnModuleType, 1, p.DMXChannel(0), 5), Calls(DimSetDMX, 0, 0, 5))},
  };
}

std::set<std::pair<std::string, std::string>> Found() {
  std::set<std::pair<std::string, std::string>> found;
  for (const Finding& finding :
       CheckProject(LiveProject, {.FileEndsEarly = FileEndsEarly(), .LastTransfer = &PanelImage})) {
    found.insert({std::string(finding.Rule), ItemCode(finding.Where).toStdString()});
    EXPECT_NE(finding.On, Screen::None) << finding.Rule;
  }
  return found;
}

TEST(CheckTest, EachRuleTellsOfItsFaultAndOfNoOther) {
  LoadSoundProject();
  const auto sound = Found();
  EXPECT_EQ(sound, (std::set<std::pair<std::string, std::string>>{{"items-in-use", "PANEL"}}));
  std::set<std::string> seen;
  for (const Fault& fault : Faults()) {
    LoadSoundProject();
    fault.Make();
    const std::string before = EncodeProject(LiveProject);
    const auto found = Found();
    EXPECT_TRUE(found.count({fault.Rule, fault.Where})) << fault.Rule << ' ' << fault.Where;
    for (const auto& [rule, where] : found) {
      EXPECT_TRUE(sound.count({rule, where}) || rule == fault.Rule || fault.Also.count(rule))
          << fault.Rule << " of " << fault.Where << " tells " << rule << " of " << where;
    }
    EXPECT_TRUE(before == EncodeProject(LiveProject)) << fault.Rule;
    seen.insert(fault.Rule);
  }
  for (const CheckRule& rule : AllRules()) {
    const bool told = rule.Name == "items-in-use" || seen.count(std::string(rule.Name)) > 0;
    EXPECT_TRUE(told) << rule.Name;
  }
}

TEST(CheckTest, WhatIsJustRightIsNotTold) {
  auto& p = PanelRecord;
  const Act nearMisses[] = {
      Sets(FennlinkRecords(64).DeviceType, 1, FennlinkRecords(64).DeviceRelayControl(0, 1), 3),
      [&] {
        FennlinkRecords(64).DeviceType = 1;
        FennlinkRecords(64).DeviceRelayControl(0, 1) = 1;
        BuildPanelImage({});
        FennlinkRecords(64).DeviceRelayControl(0, 1) = 3;
      },
      [&] { p.NormalOpenTime(3) = static_cast<Int16>(p.NormalCloseTime(3) - 1); },
      [&] { p.TimerDays(0) = 0x7E; },
      Sets(p.TimerHolidayMonth(0), 12, p.TimerHolidayDate(0), 31, p.TimerDays(0), 0x7F),
      Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(1), 22, p.TimerTime(1), 1),
      Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(1), 22, p.TimerDays(0), 0x0F,
           p.TimerDays(1), 0x70),
      [&] { p.RelayName(1) = "STAIRS WES"; },
      [&] { p.PanelName = "EIGHTEEN CHARACTER"; },
      [&] { p.GroupName(1) = p.PresetName(1) = "STAIRS"; },
      [&] { p.GroupName(1) = p.GroupName(SpareItem) = "STAIRS"; },
      [&] { p.DMXChannel(SpareItem) = 5; },
      [&] { p.OffHoursSweepRelay(SpareItem) = -1; },
      [&] { p.Latitude = 0; },
      [&] { p.TimerTimeType(0) = 24; },
      // The sun comes to a time of the clock now and then.
      Sets(p.TimerRelayControl(1, 2), 1, p.TimerTimeType(0), 120, p.TimerTimeType(1), 18),
      Sets(p.Latitude, 39, p.Longitude, 105, p.TimeZone, 2),
      Sets(p.DSTStartWeek, 3, p.DSTEndMonth, 3, p.DSTEndWeek, 5),
      Sets(p.TimerTimeType(0), 24, p.Latitude, 45, p.Longitude, 91),
      [&] {
        for (const int date : {27, 28}) p.DateOpenTime(1, date) = 20;
        for (const int date : {27, 28}) p.DateCloseTime(1, date) = 60;
      },
      [] { DimSetMin(0, 1, DimGetMax(0, 1)); },
      // A station of lamps.
      Sets(FennlinkRecords(9).DeviceType, 2, FennlinkRecords(9).DevicePilot(1), 128),
      Sets(p.BlinkAlertMinutes, 2, p.OverrideMinutes, 999, p.AlarmSeconds, 99, p.DMXFilter, 15,
           p.DMXOffLevel, 1, p.ComPort, 16, ConnectionType(p), 2),
      Calls(DimSetDMX, 0, 1, 512),
      All(Calls(DimSetTrackMode, 0, 0, Track3Point), Calls(DimSetPCDev, 0, 0, 4),
          Calls(DimSetBIn, 0, 0, 99), Calls(DimSetCIn, 0, 0, 99)),
      [] { FennlinkRecords(5).DeviceOffLevel(0) = 39; },
      [] { FennlinkRecords(5).DeviceOffLevel(3) = FennlinkRecords(5).DeviceOnLevel(3) = 7; },
      All(Sets(p.AddOnModuleType, 1, p.DMXChannel(0), 5), Calls(DimSetDMX, 0, 0, 6)),
  };
  int row = 0;
  for (const auto& make : nearMisses) {
    SCOPED_TRACE(row++);
    LoadSoundProject();
    make();
    for (const auto& [rule, where] : Found()) {
      EXPECT_EQ(rule, "items-in-use") << where;
    }
  }
}

TEST(CheckTest, ANewPanelHasNoErrorAndNonsenseIsToldWithoutAFailure) {
  LiveProject = NewProject();
  for (const Finding& finding :
       CheckProject(LiveProject, {.FileEndsEarly = FileEndsEarly(), .LastTransfer = &PanelImage})) {
    EXPECT_NE(finding.Level, Severity::Error) << finding.Sentence.toStdString();
  }
  const std::string fresh = EncodeProject(LiveProject);
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const std::string bytes = Nonsense(fresh, seed);
    (void)DecodeProject(bytes, LiveProject);
    EXPECT_FALSE(
        CheckProject(LiveProject, {.FileEndsEarly = FileEndsEarly(), .LastTransfer = &PanelImage})
            .empty());
    EXPECT_TRUE(EncodeProject(LiveProject) == bytes);
  }
}

}  // namespace

#include "document/school_panel.h"

#include <array>
#include <string>

#include "panel/live_dimmers.h"
#include "panel/live_project.h"
#include "panel/time_values.h"

namespace {

PanelRecordType& School = PanelRecord;

constexpr int Rooms = 28;
constexpr Int16 On = 1;
constexpr Int16 Off = 2;

Int16 Int(int value) {
  return static_cast<Int16>(value);
}

std::string Numbered(const char* name, int number) {
  return name + std::to_string(number);
}

/// Four rooms a floor's side, then corridors, gym, kitchen and outside, then all rooms.
bool IsOfGroup(int group, int relay) {
  constexpr std::array firsts = {0, 4, 8, 12, 16, 20, 24, 28, 31, 34, 36, 40};
  if (group == 11) return relay < Rooms;
  const auto at = static_cast<std::size_t>(group);
  return relay >= firsts.at(at) && relay < firsts.at(at + 1);
}

void RelaysAndGroups() {
  School.PanelName = "WILLOW CREEK EAST";
  School.IOCount(0) = 8;
  School.IOCount(1) = 2;
  const std::array others = {"CORRIDOR N", "CORRIDOR S", "STAIRS",  "GYM A",  "GYM B", "STAGE",
                             "KITCHEN",    "CANTEEN",    "PARKING", "FACADE", "BIKES", "SIGN"};
  for (Int16 relay = 0; relay < Rooms + 12; ++relay) {
    School.RelayName(relay) = relay < Rooms ? Numbered("ROOM ", 101 + relay)
                                            : others.at(static_cast<std::size_t>(relay - Rooms));
    School.RelayTimerType(relay) = relay < Rooms ? 1 : 0;
    School.OffHoursSweepRelay(relay) = relay < Rooms + 3 ? -1 : 0;
  }
  School.OffHoursSweepInterval = 1;
  School.Latitude = 42;
  School.Longitude = 88;
  const std::array names = {"FLOOR 1 W", "FLOOR 1 E", "FLOOR 2 W", "FLOOR 2 E",
                            "FLOOR 3 W", "FLOOR 3 E", "FLOOR 4",   "CORRIDORS",
                            "GYM",       "KITCHEN",   "OUTSIDE",   "ALL ROOMS"};
  for (Int16 group = 0; group < 12; ++group) {
    School.GroupName(group) = names.at(static_cast<std::size_t>(group));
    for (Int16 relay = 0; relay < Rooms + 12; ++relay) {
      School.GroupRelayInclude(group, relay) = IsOfGroup(group, relay) ? -1 : 0;
    }
  }
}

void Inputs() {
  for (Int16 input = 0; input < 20; ++input) {
    School.InputName(input) = input < 14 ? Numbered("SWITCH ", input + 1) : Numbered("KEY ", input);
    School.InputType(input) = input < 14 ? 1 : input < 17 ? 5 : 0;
    for (int relay = 2 * input; relay < 2 * input + 2; ++relay) {
      School.InputRelayControl(input, relay) = input < 14 ? 3 : 1;
    }
    School.LocalPilot(input) = static_cast<Int16>(2 * input);
    if (input < 17) continue;
    School.InputRelayControl(input, 34) = 0;
    School.InputGroupControl(input, input - 9) = 3;
    School.InputEnableTime(input) = 24;
    School.InputDisableTime(input) = 72;
  }
  for (Int16 d = 1; d <= 5; ++d) {
    FennlinkRecord& station = FennlinkRecords(d);
    station.DeviceType = d == 5 ? 9 : d == 4 ? 6 : 4;
    station.DeviceName = d == 5 ? "ROOF LIGHT" : Numbered("STATION ", d);
    for (Int16 button = 0; button < 8; ++button) {
      station.DeviceInputType(button) = button == 3 ? 1 : 0;
      station.DevicePreset(button) = d;
      const bool acts = d == 5 ? button < 1 : button < 3;
      station.DeviceGroupControl(button, (3 * d + button) % 12) = acts ? 3 : 0;
      station.DevicePilot(button) = static_cast<Int16>(2 * 64 + (d + button) % 12);
      station.DeviceOffLevel(button) = 120;
      station.DeviceOnLevel(button) = 80;
    }
  }
}

void TimersAndPresets() {
  constexpr int weekend = 0b0100'0001;
  for (Int16 timer = 0; timer < 15; ++timer) {
    School.TimerName(timer) = Numbered(timer < 8 ? "MORNING " : "EVENING ", timer + 1);
    School.TimerTimeType(timer) = static_cast<Int16>(timer < 8 ? 6 + timer % 3 : 16 + timer % 6);
    School.TimerTime(timer) = static_cast<Int16>(timer * 7 % 60);
    School.TimerDays(timer) = weekend | 1 << HolidayBit;
    School.TimerGroupControl(timer, timer % 12) = timer < 8 ? On : Off;
  }
  for (const Int16 timer : {Int16{3}, Int16{11}}) {
    const TimerTimeValue sun =
        WithOffset(WithEvent(FirstTimeOf(TimeKind::Astro), timer == 3 ? 1 : 2), 30);
    School.TimerTimeType(timer) = sun.Type;
    School.TimerTime(timer) = sun.Time;
    School.TimerDays(timer) = 0;
    for (Int16 relay = 36; relay < 40; ++relay) {
      School.TimerRelayControl(timer, relay) = timer == 3 ? Off : On;
    }
  }
  School.TimerPresetControl(14, 2) = -1;
  School.TimerHolidayMonth(13) = 12;
  School.TimerHolidayDate(13) = 24;
  for (Int16 preset = 0; preset < 6; ++preset) {
    School.PresetName(preset) = Numbered("SCENE ", preset + 1);
    for (Int16 relay = 0; relay < 10; ++relay) {
      School.PresetRelayControl(preset, (4 * preset + relay) % 40) = relay < 6 ? On : Off;
    }
  }
  for (Int16 day = 0; day < 7; ++day) {
    School.NormalOpenTime(day) = day == 0 || day == 6 ? 40 : 28;
    School.NormalCloseTime(day) = day == 0 || day == 6 ? 48 : 72;
  }
  for (const auto& [month, first, last] :
       {std::array{6, 0, 30}, std::array{10, 25, 26}, std::array{11, 22, 30}}) {
    for (int date = first; date <= last; ++date) {
      School.DateOpenTime(month, date) = 36;
      School.DateCloseTime(month, date) = 56;
    }
  }
}

void Dimmers() {
  DimSetEnabled(0, 1);
  for (Int16 out = 0; out < 4; ++out) {
    DimSetTrackMode(0, out, out);
    DimSetPCDev(0, out, 4);
    DimSetTarget(0, out, 140);
    DimSetFade(0, out, 2);
    DimSetMax(0, out, 90);
    DimSetAIn(0, out, 20);
    DimSetBIn(0, out, 110);
    DimSetCIn(0, out, 200);
    DimSetCOut(0, out, 10);
    DimSetOnLevel(0, out, 80);
    DimSetOffLevel(0, out, 5);
    DimSetRelay(0, out, Int(31 + out), 1);
    for (Int16 slot = 0; slot < 3; ++slot) {
      DimSetCtlType(0, out, slot, Int(slot + 1));
      DimSetCtlNumber(0, out, slot, out);
      DimSetCtlAction(0, out, slot, Int(43 + 20 * slot));
      DimSetCtlRevert(0, out, slot, Int(2 * slot));
    }
  }
}

}  // namespace

void LoadSchool() {
  RelaysAndGroups();
  Inputs();
  TimersAndPresets();
  Dimmers();
}

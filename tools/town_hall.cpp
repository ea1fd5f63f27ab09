#include "town_hall.h"

#include <algorithm>
#include <initializer_list>
#include <string>

#include "panel/defaults.h"
#include "panel/fennlink_types.h"
#include "panel/live_dimmers.h"
#include "panel/live_project.h"

namespace {

using Names = std::initializer_list<const char*>;
using Places = std::initializer_list<int>;

constexpr Int16 ClockEvent = 24;  ///< The first kind of time that counts from an event.
constexpr Int16 PerEvent = 32;
constexpr Int16 NotOnHolidays = 0x80;

Int16 Code(int value) {
  return static_cast<Int16>(value);
}

void Name(NameArray& into, Names names) {
  std::copy(names.begin(), names.end(), into.elements.begin());
}

void SetTimer(PanelRecordType& panel, int timer, int type, int time, int days) {
  panel.TimerTimeType(timer) = Code(type);
  panel.TimerTime(timer) = Code(time);
  panel.TimerDays(timer) = Code(days);
}

void AddRelays(PanelRecordType& panel) {
  panel.PanelName = "TOWN HALL";
  panel.IOCount(0) = 4;
  panel.IOCount(1) = 2;
  panel.AddOnModuleType = 1;
  panel.DMXOnLevel = 90;
  panel.DMXOffLevel = 10;
  Name(panel.RelayName,
       {"LOBBY",      "HALL NORTH", "HALL SOUTH", "STAIRS",     "OFFICE 1",  "OFFICE 2",
        "OFFICE 3",   "MEETING",    "KITCHEN",    "STORE",      "WORKSHOP",  "LOADING",
        "LAVATORIES", "CORRIDOR 1", "CORRIDOR 2", "PLANT ROOM", "PARKING A", "PARKING B",
        "PATH",       "SIGN",       "FACADE",     "GATE",       "FLAG POLE", "SPARE"});
  for (int relay = 0; relay < 24; ++relay) {
    const bool dark = relay == 3 || relay == 9 || relay == 12 || relay == 15 || relay >= 18;
    panel.RelayTimerType(relay) = dark ? 0 : 1;
    panel.DMXChannel(relay) = Code(101 + relay);
    panel.OffHoursSweepRelay(relay) = relay < 15 && relay != 0 ? -1 : 0;
  }
  for (const int lamp : {10, 11, 16, 17, 20}) panel.RelayTimerType(lamp) = 2;
  panel.RelayTimerType(21) = 5;
  for (const int relay : {0, 13}) panel.RelayPowerOnType(relay) = 1;
  for (const int relay : {15, 16, 17, 18, 19, 20, 21}) panel.RelayPowerOnType(relay) = 3;
}

void AddGroupsAndPresets(PanelRecordType& panel) {
  Name(panel.GroupName, {"HALLS", "OFFICES", "SERVICE", "OUTSIDE", "CORRIDORS"});
  const std::initializer_list<Places> groups = {
      {0, 1, 2, 3}, {4, 5, 6, 7}, {8, 9, 10, 11, 12, 15}, {16, 17, 18, 19, 20}, {13, 14}};
  int group = 0;
  for (const Places& relays : groups) {
    for (const int relay : relays) panel.GroupRelayInclude(group, relay) = -1;
    ++group;
  }
  Name(panel.PresetName, {"OPEN DAY", "CONCERT", "NIGHT"});
  for (int relay = 0; relay < 24; ++relay) {
    panel.PresetRelayControl(0, relay) = relay < 16 ? 1 : 0;
    panel.PresetRelayControl(1, relay) = relay < 4 ? 1 : relay < 8 ? 2 : 0;
    panel.PresetRelayControl(2, relay) = relay < 16 ? 2 : relay < 21 ? 1 : 0;
  }
}

void AddInputs(PanelRecordType& panel) {
  Name(panel.InputName, {"ENTRANCE", "HALL DOOR", "STAIRS UP", "STAIRS DN", "OFFICE SW",
                         "MEETING SW", "CLEANER", "ALARM", "GATE KEY", "PANIC"});
  const std::initializer_list<int> types = {0, 1, 3, 3, 2, 1, 5, 11, 1, 12};
  int input = 0;
  for (const int type : types) panel.InputType(input++) = Code(type);
  panel.InputTimedOnTime(6) = 90;
  const auto control = [&](int by, int action, Places relays) {
    for (const int relay : relays) panel.InputRelayControl(by, relay) = Code(action);
  };
  control(0, 3, {0, 1, 2, 3});
  control(0, 1, {12});
  control(0, 4, {13, 14});
  control(1, 3, {1, 2});
  control(2, 1, {3});
  control(3, 1, {3});
  control(5, 3, {7});
  control(6, 1, {8, 9, 12});
  control(7, 1, {0, 3, 13, 14});
  control(8, 1, {21});
  panel.InputGroupControl(4, 1) = 3;
  panel.InputGroupControl(0, 4) = 3;
  panel.InputRelayControl(9, 6) = 1;  // forces NEW YEAR
  panel.InputEnableTime(6) = 72;
  panel.InputDisableTime(6) = 20;
  for (int pilot = 0; pilot < 10; ++pilot) panel.LocalPilot(pilot) = Code(pilot);
  panel.LocalPilot(4) = 64 + 1;
}

void AddTimers(PanelRecordType& panel) {
  Name(panel.TimerName,
       {"OPENING", "DUSK", "CLOSING", "DAWN", "CLEANING", "WEEKEND", "NEW YEAR", "SIGN OFF"});
  constexpr Int16 sunday = 1;
  constexpr Int16 saturday = 64;
  SetTimer(panel, 0, ClockEvent + 4 * PerEvent, 15, 0);
  SetTimer(panel, 1, ClockEvent + 2 * PerEvent, 20, NotOnHolidays);
  SetTimer(panel, 2, ClockEvent + 7 * PerEvent, 30, 0);
  SetTimer(panel, 3, ClockEvent + PerEvent, 10, 0);
  SetTimer(panel, 4, 19, 30, sunday | saturday);
  SetTimer(panel, 5, 9, 0, 62 | NotOnHolidays);
  SetTimer(panel, 6, 23, 45, 0);
  SetTimer(panel, 7, 23, 0, 0);
  panel.TimerHolidayMonth(6) = 12;
  panel.TimerHolidayDate(6) = 31;
  for (const int timer : {0, 5}) panel.TimerGroupControl(timer, 0) = 1;
  panel.TimerGroupControl(1, 3) = 1;
  panel.TimerGroupControl(3, 3) = 2;
  panel.TimerRelayControl(0, 13) = 1;
  panel.TimerRelayControl(4, 8) = 1;
  panel.TimerRelayControl(4, 12) = 1;
  panel.TimerRelayControl(6, 20) = 1;
  panel.TimerRelayControl(7, 19) = 2;
  panel.TimerPresetControl(2, 2) = -1;
  panel.Latitude = 41;
  panel.Longitude = 88;
  for (int day = 1; day < 6; ++day) {
    panel.NormalOpenTime(day) = 32;
    panel.NormalCloseTime(day) = day == 4 ? 80 : 68;
  }
  panel.NormalOpenTime(6) = 40;
  panel.NormalCloseTime(6) = 56;
  panel.DateOpenTime(6, 3) = 48;
  panel.DateCloseTime(6, 3) = 48;
  panel.DateOpenTime(11, 23) = 32;
  panel.DateCloseTime(11, 23) = 52;
}

void AddDevices(Project& project) {
  const auto add = [&](int address, const char* name, int type, std::initializer_list<int> inputs) {
    FennlinkRecord& device = project.Devices(address);
    device.DeviceName = name;
    device.DeviceType = Code(type);
    int input = 0;
    for (const int kind : inputs) device.DeviceInputType(input++) = Code(kind);
  };
  add(1, "ROOM 204", 6, {0, 0, 0, 0, 0, 1, 2, 3});
  add(2, "ROOM 205", 3, {0, 0, 0});
  add(6, "STAGE", 4, {0, 0, 0, 0});
  add(9, "ROOF", DeviceTypePhotocell, {});
  FennlinkRecord& room = project.Devices(1);
  for (int input = 0; input < 5; ++input) {
    room.DeviceRelayControl(input, 4 + input) = 3;
    room.DevicePilot(input) = Code(64 + 4 + input);
  }
  room.DevicePreset(5) = 1;
  for (int relay = 4; relay < 8; ++relay) room.DeviceRelayControl(6, relay) = 1;
  for (int relay = 4; relay < 8; ++relay) room.DeviceRelayControl(7, relay) = Code(relay % 2 + 1);
  for (int input = 0; input < 3; ++input) {
    project.Devices(2).DeviceRelayControl(input, 5 + input) = 3;
    project.Devices(2).DeviceGroupControl(input, 1) = input == 2 ? 3 : 0;
  }
  for (int input = 0; input < 4; ++input) project.Devices(6).DeviceRelayControl(input, input) = 3;
  FennlinkRecord& roof = project.Devices(9);
  for (int input = 0; input < 2; ++input) {
    roof.DeviceOffLevel(input) = Code(140 + 20 * input);
    roof.DeviceOnLevel(input) = Code(60 + 20 * input);
    roof.DeviceRelayControl(input, 18 + input) = 3;
  }
}

/// A wing of rooms, each with a switch; their groups, scenes, evenings and stations.
void AddAnnex(Project& project) {
  PanelRecordType& panel = project.Panel;
  constexpr int firstRoom = 24;
  constexpr int rooms = 16;
  panel.IOCount(2) = 4;
  for (int room = 0; room < rooms; ++room) {
    const int relay = firstRoom + room;
    panel.RelayName(relay) = "ROOM " + std::to_string(301 + room);
    panel.RelayTimerType(relay) = 1;
    panel.DMXChannel(relay) = Code(101 + relay);
    panel.OffHoursSweepRelay(relay) = -1;
  }
  const auto isOfGroup = [](int group, int room) {
    return group == 6 || (room / 3) % 6 == group;  // the last one has all rooms
  };
  for (int group = 0; group < 7; ++group) {
    panel.GroupName(5 + group) = group == 6 ? "ALL ROOMS" : "WING " + std::to_string(group + 1);
    for (int room = 0; room < rooms; ++room) {
      panel.GroupRelayInclude(5 + group, firstRoom + room) = isOfGroup(group, room) ? -1 : 0;
    }
  }
  for (int input = 10; input < 37; ++input) {
    const int room = firstRoom + (input - 10) % rooms;
    panel.InputName(input) = (input < 26 ? "SWITCH " : "DOOR ") + std::to_string(input - 9);
    panel.InputType(input) = input < 26 ? 1 : 5;
    panel.InputTimedOnTime(input) = 30;
    panel.InputRelayControl(input, room) = input < 26 ? 3 : 1;
    if (input >= 26) panel.InputRelayControl(input, firstRoom + (input - 9) % rooms) = 1;
    if (input % 5 == 0) panel.InputGroupControl(input, 5 + input % 7) = input < 26 ? 3 : 1;
    panel.LocalPilot(input) = Code(room);
  }
  for (int timer = 8; timer < 15; ++timer) {
    panel.TimerName(timer) = "EVENING " + std::to_string(timer - 7);
    SetTimer(panel, timer, timer < 12 ? 17 + timer % 4 : ClockEvent + 3 * PerEvent, 5 * timer % 60,
             timer % 2 == 0 ? NotOnHolidays | 0x41 : NotOnHolidays);
    panel.TimerGroupControl(timer, 5 + timer % 7) = Code(1 + timer % 2);
    panel.TimerRelayControl(timer, firstRoom + timer) = Code(1 + timer % 2);
  }
  panel.TimerPresetControl(14, 4) = -1;
  for (int preset = 3; preset < 8; ++preset) {
    panel.PresetName(preset) = "SCENE " + std::to_string(preset - 2);
    for (int room = 0; room < rooms; ++room) {
      panel.PresetRelayControl(preset, firstRoom + room) = Code((room + preset) % 3);
    }
  }
  for (int address = 10; address < 13; ++address) {
    FennlinkRecord& station = project.Devices(address);
    station.DeviceName = "WING " + std::to_string(address - 9);
    station.DeviceType = 6;
    station.DeviceInputType(0) = 1;
    station.DevicePreset(0) = Code(address - 7);
    for (int button = 1; button < 8; ++button) {
      station.DeviceGroupControl(button, 4 + button) = 3;
      station.DevicePilot(button) = Code(128 + 4 + button);
    }
  }
  for (int date = 22; date < 31; ++date) {
    panel.DateOpenTime(6, date) = panel.DateOpenTime(11, date) = 36;
    panel.DateCloseTime(6, date) = panel.DateCloseTime(11, date) = 56;
  }
}

/// What the live dimmers' own setters write.
void AddDimmers() {
  DimSetEnabled(0, 1);
  DimSetTrackMode(0, 0, 1);
  DimSetPCDev(0, 0, 8);
  DimSetMin(0, 0, 10);
  DimSetAIn(0, 0, 40);
  DimSetAOut(0, 0, 100);
  DimSetCIn(0, 0, 200);
  DimSetCOut(0, 0, 20);
  const auto slot = [](Int16 at, Int16 type, Int16 device, Int16 number, Int16 instant,
                       Int16 action, Int16 revert) {
    DimSetCtlType(0, 0, at, type);
    DimSetCtlDevice(0, 0, at, device);
    DimSetCtlNumber(0, 0, at, number);
    DimSetCtlInstant(0, 0, at, instant);
    DimSetCtlAction(0, 0, at, action);
    DimSetCtlRevert(0, 0, at, revert);
  };
  slot(0, 1, 6, 0, 0, 2, 13);   // raises, back after an hour
  slot(1, 2, 0, 1, 0, 43, 1);   // 40 %, never back
  slot(2, 3, 0, 2, 0, 3, 1);    // 0 %, never back
  slot(3, 1, 0, 3, 1, 103, 0);  // 100 % at once, back when the input opens
  for (Int16 relay = 0; relay < 4; ++relay) DimSetRelay(0, 1, relay, -1);
}

}  // namespace

void OpenTownHall() {
  LiveProject = NewProject();
  AddRelays(LiveProject.Panel);
  AddGroupsAndPresets(LiveProject.Panel);
  AddInputs(LiveProject.Panel);
  AddTimers(LiveProject.Panel);
  AddDevices(LiveProject);
  AddDimmers();
}

void OpenTownHallWithAnnex() {
  OpenTownHall();
  AddAnnex(LiveProject);
}

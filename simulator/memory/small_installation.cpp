#include "simulator/memory/digits.h"
#include "simulator/memory/memory.h"

namespace simulator {

namespace {

constexpr int On = 1;
constexpr int Off = 2;
constexpr int MomentaryPB = 1;
constexpr int SetPresetType = 4;
constexpr int TimedOn = 5;

void NameAll(PanelMemory& memory, int address, const std::string& word,
             std::initializer_list<const char*> names) {
  for (int i = 0; i < Items; ++i) {
    memory.SetText(address + i * map::NameLength, map::NameLength, word + " " + TwoDigits(i + 1));
  }
  int i = 0;
  for (const char* name : names) {
    memory.SetText(address + i++ * map::NameLength, map::NameLength, name);
  }
}

void SetNames(PanelMemory& memory) {
  memory.SetText(map::PanelName, map::PanelNameLength, "SIMULATED PANEL");
  NameAll(
      memory, map::RelayName, "RELAY",
      {"LOBBY", "HALL NORTH", "HALL SOUTH", "STAIRS", "OFFICE 1", "OFFICE 2", "OFFICE 3", "MEETING",
       "KITCHEN", "STORE", "WORKSHOP", "LOADING", "PARKING", "PATH", "SIGN", "FLAG POLE"});
  NameAll(memory, map::GroupName, "GROUP", {"PUBLIC", "OFFICES", "SERVICE", "OUTSIDE"});
  NameAll(memory, map::InputName, "INPUT", {"ENTRANCE", "HALL", "STAIRS", "CLEANERS"});
  NameAll(memory, map::TimerName, "TIMER", {"OPENING", "CLOSING", "DUSK"});
  NameAll(memory, map::PresetName, "PRESET", {"DAY", "NIGHT"});
}

void SetTimesAndOptions(PanelMemory& memory) {
  for (int day = 0; day < 7; ++day) {
    memory.SetByte(map::NormalOpenTime + day, 32);   // 8:00 AM in quarter hours
    memory.SetByte(map::NormalCloseTime + day, 84);  // 9:00 PM
  }
  for (int at = map::DateTimes; at < map::DateTimesEnd; ++at) memory.SetByte(at, NoEntry);
  for (int i = 0; i < Items; ++i) {
    memory.SetWord(map::InputTimedOnTime + 2 * i, 10);
    memory.SetByte(map::LocalPilot + i, i);
    memory.SetByte(map::TimerHolidayDate + i, 1);
  }
  memory.SetByte(map::TimerTimeType + 0, 8);
  memory.SetByte(map::TimerTimeType + 1, 21);
  memory.SetByte(map::TimerTimeType + 2, 120);  // at sunset
  memory.SetByte(map::BlinkAlertMinutes, 10);
  memory.SetWord(map::OverrideMinutes, 120);
  memory.SetByte(map::AlarmSeconds, 5);
  memory.SetByte(map::DSTEnabled, 1);
  memory.SetByte(map::DSTStartWeek, 2);
  memory.SetByte(map::DSTStartWeek + 1, 3);
  memory.SetByte(map::DSTStartWeek + 2, 1);
  memory.SetByte(map::DSTStartWeek + 3, 11);
  memory.SetByte(map::Latitude, 45);
  memory.SetByte(map::Longitude, 90);
  memory.SetByte(map::TimeZone, 1);
  memory.SetByte(map::DMXOnLevel, 230);
  memory.SetByte(map::DMXOffLevel, 25);
  memory.SetByte(map::IOCount + 0, 2);  // blocks of four points
  memory.SetByte(map::IOCount + 1, 2);
}

void SetControl(PanelMemory& memory) {
  for (int relay = 0; relay < 16; ++relay) {
    memory.SetCode(map::GroupRelayInclude, relay, relay / 4, 1);
    memory.SetCode(map::PresetRelayControl, relay, 0, relay < 8 ? On : Off);
    memory.SetCode(map::PresetRelayControl, relay, 1, relay < 12 ? Off : On);
  }
  memory.SetCode(map::InputRelayControl, 0, 0, OnAndOff);
  memory.SetByte(map::InputType + 1, MomentaryPB);
  memory.SetCode(map::InputGroupControl, 0, 1, OnAndOff);
  memory.SetByte(map::InputType + 2, TimedOn);
  memory.SetCode(map::InputRelayControl, 3, 2, 1);
  memory.SetByte(map::InputType + 3, SetPresetType);
  memory.SetByte(map::InputPreset + 3, 0);
  memory.SetCode(map::TimerPresetControl, 0, 0, 1);
  memory.SetCode(map::TimerPresetControl, 1, 1, 1);
  memory.SetCode(map::TimerGroupControl, 3, 2, On);
}

void SetDevices(PanelMemory& memory) {
  constexpr int fourButton = 4;
  constexpr int fourInput = 7;
  constexpr int photocell = 9;
  for (int device = 1; device <= Devices; ++device) {
    const int block = map::DeviceBlock(device);
    memory.SetText(block + map::DeviceName, map::NameLength,
                   "FLINK " + Hex(static_cast<unsigned>(device), 2));
    for (int i = 0; i < DeviceInputs; ++i) {
      memory.SetWord(block + map::DeviceTimedOnTime + 2 * i, 10);
    }
  }
  memory.SetByte(map::DeviceBlock(1), fourButton);
  memory.SetText(map::DeviceBlock(1) + map::DeviceName, map::NameLength, "STATION 1");
  for (int i = 0; i < 4; ++i) memory.SetCode(map::DeviceRelayControl(1), i, 4 + i, OnAndOff);
  memory.SetByte(map::DeviceBlock(2), fourInput);
  memory.SetText(map::DeviceBlock(2) + map::DeviceName, map::NameLength, "DOORS");
  for (int i = 0; i < 4; ++i) memory.SetCode(map::DeviceGroupControl(2), i, i, OnAndOff);
  memory.SetByte(map::DeviceBlock(3), photocell);
  memory.SetText(map::DeviceBlock(3) + map::DeviceName, map::NameLength, "ROOF");
}

void SetDimmers(PanelMemory& memory) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const int block = map::DimmerBlock(output);
    memory.SetByte(block + map::PowerOnLevel, FullLevel);
    memory.SetByte(block + map::MaxLevel, FullLevel);
    memory.SetByte(block + map::PointAOut, FullLevel);
    memory.SetByte(block + map::PointBIn, 128);
    memory.SetByte(block + map::PointBOut, 127);
    memory.SetByte(block + map::PointCIn, FullLevel);
  }
}

}  // namespace

PanelMemory SmallInstallation() {
  PanelMemory memory;
  SetNames(memory);
  SetTimesAndOptions(memory);
  SetControl(memory);
  SetDevices(memory);
  SetDimmers(memory);
  return memory;
}

}  // namespace simulator

#include <gtest/gtest.h>

#include "rehearsed.h"

namespace simulator {
namespace {

constexpr int TestedDevice = 26;
constexpr int FourInputType = 7;
constexpr int EightInputType = 8;
constexpr int TwoButtonType = 2;
constexpr int LocalPlace = 0;  // in place of a device's type

/// What input 1 does to relays 1 to 4, or to the inputs or timers of these numbers.
struct InputCase {
  int LocalType, OnFourInput, OnButtons, OnEightInput;  // -1: does not exist
  const char* Codes;
  const char* Steps;
  const char* Lit;  // the relays that are on after each step that says so, "-" for none
};

const InputCase InputCases[]{
    // Momentary On/Off with its off contact; the last code warns for ten minutes.
    {0, -1, -1, -1, "1234", "2prPRw", "1234 1234 14 14 1"},
    {-1, 0, -1, -1, "1234", "2pr", "1234 1234"},
    // Momentary PB, by itself, outside its active times and before a group's code.
    {1, 1, 0, -1, "1230", "2prprp", "123 123 1 1 13"},
    {1, -1, -1, -1, "1000", "aprhp", "- - - 1"},
    {1, 1, 0, -1, "2000", "gpr1p", "5 5 5"},
    {-1, 1, 0, -1, "1000", "spr", "- -"},
    {1, 1, 0, -1, "0004", "prprpw", "4 4 4 4 4 4"},  // a press keeps the light
    // Maint. On/Off and Maint. Multi-Way.
    {2, 2, -1, 0, "1234", "2prw", "1234 14 1"},
    {3, -1, -1, -1, "1030", "prp", "13 1 13"},
    {4, 3, 1, 1, "0000", "2pr", "1 1"},  // Set Preset
    // Timed On from opening, begun again, and from closing.
    {5, 4, 2, 2, "1010", "pwrprw", "13 13 13 13 13 -"},
    {5, 4, 2, 2, "1010", "cpwr", "13 - -"},
    {6, 5, -1, -1, "1230", "prprprp", "12 12 13 13 - - 12"},   // HID Bi-Level
    {7, 6, 3, 3, "1220", "prprp", "1 1 23 23 1"},              // 2 Step
    {8, 7, 4, 4, "1200", "prprprprp", "1 1 2 2 12 12 - - 1"},  // 4 Step
    {9, -1, -1, -1, "0100", "qpqrq", "8 8 8 8 -"},             // Input Disable
    {10, 8, -1, -1, "0001", "pdrd", "- - - 7"},                // Timer Disable
    {11, 9, -1, -1, "1230", "23prpxr", "13 23 13 13 -"},       // Output Override
    {11, -1, -1, -1, "1000", "aph", "- 1"},                    // from when it is active
    {12, -1, -1, -1, "0001", "pr", "7 7"},                     // Force Timer
};

/// A second push button is on relay 8; preset 6 turns relay 1 on and relay 2 off; timer 4 turns
/// relay 7 on at noon.
PanelMemory InputMemory(const InputCase& one, int deviceType, int type) {
  PanelMemory memory = EmptyInstallation();
  const bool isLocal = deviceType == LocalPlace;
  const auto set = [&](const PlaneSet& local, const PlaneSet& device, int row, int code) {
    memory.SetCode(isLocal ? local : device, isLocal ? row : 0, isLocal ? 0 : row, code);
  };
  memory.SetByte(isLocal ? map::InputType : map::DeviceBlock(TestedDevice) + map::DeviceInputType,
                 type);
  memory.SetByte(isLocal ? map::InputPreset : map::DevicePreset(TestedDevice), 5);
  memory.SetWord(
      isLocal ? map::InputTimedOnTime : map::DeviceBlock(TestedDevice) + map::DeviceTimedOnTime,
      10);
  if (!isLocal) memory.SetByte(map::DeviceBlock(TestedDevice), deviceType);
  for (int row = 0; row < 4; ++row) {
    set(map::InputRelayControl, map::DeviceRelayControl(TestedDevice), row, one.Codes[row] - '0');
  }
  const std::string_view steps = one.Steps;
  if (steps.front() == 'g') {
    set(map::InputGroupControl, map::DeviceGroupControl(TestedDevice), 0, OnOnly);
    for (const int relay : {0, 4}) memory.SetCode(map::GroupRelayInclude, relay, 0, 1);
  }
  if (steps.front() == 'c') memory.SetByte(map::TimedOnOperation, 1);
  if (steps.front() == 'a') {  // from 10:00 to 05:00
    memory.SetByte(map::InputEnableTime, 40);
    memory.SetByte(map::InputDisableTime, 20);
  }
  memory.SetByte(map::InputType + 1, 1);
  memory.SetCode(map::InputRelayControl, 7, 1, OnAndOff);
  memory.SetCode(map::PresetRelayControl, 0, 5, 1);
  memory.SetCode(map::PresetRelayControl, 1, 5, 2);
  SetTimer(memory, 3, 12, 0);
  memory.SetCode(map::TimerRelayControl, 6, 3, 1);
  return memory;
}

std::string LitRelays(const Engine& engine) {
  std::string lit;
  EachBit(engine.Relays(), [&lit](int relay) { lit += std::to_string(relay + 1); });
  return lit.empty() ? "-" : lit;
}

std::string LitAfterSteps(const InputCase& one, int deviceType, int type) {
  const PanelMemory memory = InputMemory(one, deviceType, type);
  Engine engine(memory);
  engine.PowerOn(engine.Days().FromWall(DayOf({2026, 3, 2}) * DayMs));
  engine.AdvanceTo(engine.Now() + 8 * HourMs);
  const auto contact = [&](bool closed, Contact which = Contact::On) {
    if (deviceType == LocalPlace)
      engine.SetContact(0, which, closed);
    else
      engine.SetDeviceInput(TestedDevice, 0, closed);
  };
  std::string result;
  for (const char step : std::string_view(one.Steps)) {
    std::int64_t passes = MinuteMs;
    switch (step) {
      case 'g':
      case 'c':
      case 'a':
        continue;
      case 's':
        engine.SetSilent(TestedDevice, true);
        continue;
      case 'p':
      case 'r':
        contact(step == 'p');
        break;
      case 'P':
      case 'R':
        contact(step == 'P', Contact::Off);
        break;
      case 'q':
        engine.SetContact(1, Contact::On, true);
        engine.SetContact(1, Contact::On, false);
        break;
      case 'x':
        engine.SetRelays(0, AllItems, Subject::Kind::Hand);
        break;
      case 'w':
        passes = 10 * MinuteMs;
        break;
      case 'h':
        passes = 2 * HourMs;
        break;
      case 'd':
        passes = DayMs;
        break;
      default:
        engine.SetRelay(step - '1', true, Subject::Kind::Hand);
        continue;
    }
    engine.AdvanceTo(engine.Now() + passes);
    result += (result.empty() ? "" : " ") + LitRelays(engine);
  }
  return result;
}

TEST(EngineInputsTest, EveryTypeDoesItsWorkLocallyAndOnDevices) {
  for (const InputCase& one : InputCases) {
    const std::pair<int, int> places[]{{LocalPlace, one.LocalType},
                                       {FourInputType, one.OnFourInput},
                                       {TwoButtonType, one.OnButtons},
                                       {EightInputType, one.OnEightInput}};
    for (const auto& [deviceType, type] : places) {
      if (type < 0) continue;
      EXPECT_EQ(LitAfterSteps(one, deviceType, type), one.Lit)
          << one.Codes << " " << one.Steps << " on a device of type " << deviceType;
    }
  }
}

// Relay 1 belongs to the sweep, the office is closed until 08:00, the override takes two hours.
TEST(EngineInputsTest, ATimedOnInputIsAPersonOffHours) {
  PanelMemory memory = EmptyInstallation();
  memory.SetByte(map::OffHoursSweepRelay, 1);
  memory.SetByte(map::InputType, 5);
  memory.SetWord(map::InputTimedOnTime, 30);
  memory.SetCode(map::InputRelayControl, 0, 0, 1);
  EXPECT_EQ(Rehearsed(memory, "2026-03-02",
                      "2026-03-02 00:30 press 1\n2026-03-02 02:20 release 1\n"
                      "2026-03-02 03:10 press 1",
                      "\tRELAY 01\t"),
            "03-02 00:30:00 INPUT 01,RELAY 01,on;03-02 02:50:00 RELAY 01,-,fires;"
            "03-02 02:50:00 RELAY 01,RELAY 01,off;03-02 03:10:00 INPUT 01,RELAY 01,on;"
            "03-02 05:10:00 RELAY 01,-,fires;03-02 05:10:00 RELAY 01,RELAY 01,off;");
}

TEST(EngineInputsTest, AHeldRelayDoesNotBlink) {
  PanelMemory memory = EmptyInstallation();
  memory.SetByte(map::RelayTimerType, 1);
  memory.SetByte(map::RelayPowerOnType, 1);
  memory.SetByte(map::InputType, 11);
  memory.SetCode(map::InputRelayControl, 0, 0, 1);
  SetTimer(memory, 0, 9, 0);
  memory.SetCode(map::TimerRelayControl, 0, 0, 2);
  EXPECT_EQ(Rehearsed(memory, "2026-03-02", "2026-03-02 08:30 press 1\n2026-03-02 09:30 release 1",
                      "\tRELAY 01\t"),
            "03-02 09:30:00 INPUT 01,RELAY 01,off;");
}

TEST(EngineInputsTest, APhotocellThatIsBackTakesUpTheLight) {
  PanelMemory memory = EmptyInstallation();
  memory.SetByte(map::DeviceBlock(TestedDevice), 9);
  memory.SetByte(map::DeviceBlock(TestedDevice) + map::DeviceOnLevel, 100);
  Engine engine(memory);
  engine.SetSilent(TestedDevice, true);
  engine.SetPhotocell(TestedDevice, 200);
  engine.AdvanceTo(engine.Now() + MinuteMs);
  EXPECT_FALSE(engine.DeviceInput(TestedDevice, 0));
  engine.SetSilent(TestedDevice, false);
  EXPECT_TRUE(engine.DeviceInput(TestedDevice, 0));
}

TEST(EngineInputsTest, APhotocellGoesByItsLevelsAndItsFilter) {
  struct Case {
    int On, Off, Filter;
    const char* Rows;
  };
  // From 1 to 200 at noon, to 0 at one o'clock.
  const Case cases[]{
      {100, 50, 0, "12:00:14 on 13:00:22 off "},
      {50, 100, 1, "12:00:00 off 13:00:01 on "},
      {100, 100, 0, ""},
  };
  for (const Case& one : cases) {
    PanelMemory memory = EmptyInstallation();
    memory.SetByte(map::PhotocellFilter, one.Filter);
    const int block = map::DeviceBlock(TestedDevice);
    memory.SetByte(block, 9);
    memory.SetByte(block + map::DeviceOnLevel, one.On);
    memory.SetByte(block + map::DeviceOffLevel, one.Off);
    memory.SetCode(map::DeviceRelayControl(TestedDevice), 0, 0, OnAndOff);
    memory.SetByte(map::RelayPowerOnType, one.On < one.Off ? 1 : 0);
    const std::string script =
        "2026-03-02 11:00 photocell 26 1\n2026-03-02 12:00 photocell 26 200\n"
        "2026-03-02 13:00 photocell 26 0";
    std::string rows;
    const QString all = QString::fromStdString(
        Rehearsed(memory, "2026-03-02", QString::fromStdString(script), "\tRELAY 01\t"));
    for (const QString& row : all.split(';', Qt::SkipEmptyParts)) {
      rows += (row.mid(6, 8) + " " + row.section(',', -1) + " ").toStdString();
    }
    EXPECT_EQ(rows, one.Rows) << one.On;
  }
}

}  // namespace
}  // namespace simulator

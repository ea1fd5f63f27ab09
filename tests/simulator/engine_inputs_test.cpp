#include <gtest/gtest.h>

#include <map>

#include "rehearsed.h"

namespace simulator {
namespace {

constexpr int TestedDevice = 26;
constexpr int PhotocellBlock = map::DeviceBlock(TestedDevice);  // where it is one
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
    {1, -1, -1, -1, "1000", "aNp", "7 17"},  // across midnight
    {1, -1, -1, -1, "1000", "Ap", "-"},
    {1, 1, 0, -1, "2000", "gpr1p", "5 5 5"},
    {-1, 1, 0, -1, "1000", "spr", "- -"},
    {1, 1, 0, -1, "0004", "prprpw", "4 4 4 4 4 4"},  // a press keeps the light
    // Maint. On/Off and Maint. Multi-Way.
    {2, 2, -1, 0, "1234", "2prw", "1234 14 1"},
    {2, -1, -1, -1, "3000", "1PR", "- -"},
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
  const int block = map::DeviceBlock(TestedDevice);
  Set(memory, Byte(isLocal ? map::InputType : block + map::DeviceInputType, type),
      Byte(isLocal ? map::InputPreset : map::DevicePreset(TestedDevice), 5),
      Word(isLocal ? map::InputTimedOnTime : block + map::DeviceTimedOnTime, 10));
  if (!isLocal) memory.SetByte(block, deviceType);
  for (int row = 0; row < 4; ++row) {
    set(map::InputRelayControl, map::DeviceRelayControl(TestedDevice), row, one.Codes[row] - '0');
  }
  const std::string_view steps = one.Steps;
  if (steps.front() == 'g') {
    set(map::InputGroupControl, map::DeviceGroupControl(TestedDevice), 0, OnOnly);
    for (const int relay : {0, 4}) memory.SetCode(map::GroupRelayInclude, relay, 0, 1);
  }
  constexpr int oclock = 4;
  const auto active = [&memory](int from, int to) {
    Set(memory, Byte(map::InputEnableTime, from * oclock),
        Byte(map::InputDisableTime, to * oclock));
  };
  if (steps.front() == 'c') memory.SetByte(map::TimedOnOperation, 1);
  if (steps.front() == 'a') active(10, 5);
  if (steps.front() == 'A') active(5, 7);
  Set(memory, Byte(map::InputType + 1, 1), Code(map::InputRelayControl, 7, 1, OnAndOff),
      Code(map::PresetRelayControl, 0, 5, 1), Code(map::PresetRelayControl, 1, 5, 2),
      Timer(3, 12, 0, 6, 1));
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
  const auto pushSecond = [&engine] {
    for (const bool closed : {true, false}) engine.SetContact(1, Contact::On, closed);
  };
  const std::map<char, std::function<void()>> acts{
      {'p', [&] { contact(true); }},
      {'r', [&] { contact(false); }},
      {'P', [&] { contact(true, Contact::Off); }},
      {'R', [&] { contact(false, Contact::Off); }},
      {'q', pushSecond},
      {'x', [&] { engine.SetRelays(0, AllItems, Subject::Kind::Hand); }},
  };
  // 'N': from 08:00 to 02:00. An act takes a minute.
  const std::map<char, Instant> waits{
      {'w', 10 * MinuteMs}, {'h', 2 * HourMs}, {'N', 18 * HourMs}, {'d', DayMs}};
  std::string result;
  for (const char step : std::string_view(one.Steps)) {
    if (step == 's') engine.SetSilent(TestedDevice, true);
    if (step >= '1' && step <= '9') engine.SetRelay(step - '1', true, Subject::Kind::Hand);
    const bool acting = acts.contains(step);
    if (!acting && !waits.contains(step)) continue;
    if (acting) acts.at(step)();
    engine.AdvanceTo(engine.Now() + (acting ? MinuteMs : waits.at(step)));
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

// Relay 1 belongs to the sweep, which comes every hour; the office is closed until 08:00, the
// override takes two hours. Of one instant the sweep comes last.
TEST(EngineInputsTest, AHeldContactIsSomebodyOffHours) {
  constexpr int maintained = 2;
  constexpr int timedOn = 5;
  constexpr int inputDisable = 9;
  const std::tuple<int, const char*, std::string> cases[]{
      {maintained, "00:30 press 1,00:40 relay 1 on,03:30 release 1", "00:30 on 05:30 off "},
      {maintained, "00:30 press 1,00:45 relay 1 off,00:50 relay 1 on",
       "00:30 on 00:45 off 00:50 on 02:50 off "},
      {maintained, "00:30 press 1,00:45 relay 1 off,00:50 timer 1",
       "00:30 on 00:45 off 00:50 on 01:00 off "},
      {maintained, "00:30 press 1,01:30 press 2", "00:30 on 02:00 off "},
      // The one who came first leaves first.
      {maintained, "00:30 press 1,00:40 press 3,00:50 release 1,04:30 release 3",
       "00:30 on 06:30 off "},
      {timedOn, "00:30 press 1,02:20 release 1,03:10 press 1,07:10 release 1",
       "00:30 on 02:50 off 03:10 on 07:40 off "},
  };
  for (const auto& [type, acts, rows] : cases) {
    // Input 2 disables input 1; device 26 is a photocell, on in the dark.
    PanelMemory memory = EmptyInstallation(
        Byte(map::OffHoursSweepRelay, 3), Byte(map::InputType + 1, inputDisable),
        Code(map::InputRelayControl, 0, 1, 1), Byte(PhotocellBlock, 9),
        Byte(PhotocellBlock + map::DeviceOffLevel, 100),
        Code(map::DeviceRelayControl(TestedDevice), 0, 1, OnOnly), Timer(0, 23, 0, 0, 1));
    for (const int input : {0, 2}) {
      Set(memory, Byte(map::InputType + input, type), Word(map::InputTimedOnTime + 2 * input, 30),
          Code(map::InputRelayControl, 0, input, OnOnly));
    }
    EXPECT_EQ(RowsOf(memory, acts, "\tRELAY 01\to"), rows + "23:00 on 23:00 off ") << acts;
    EXPECT_EQ(RowsOf(memory, acts, "\tRELAY 02\to"), "00:00 on 02:00 off ");
  }
}

TEST(EngineInputsTest, AHeldRelayDoesNotBlinkUntilItIsLetGo) {
  const std::tuple<int, const char*, const char*> cases[]{
      {1, "09:30", "09:30 off "}, {2, "09:05", "08:30 off 09:05 on 09:05 blinks 09:10 off "}};
  for (const auto& [hold, until, rows] : cases) {
    const PanelMemory memory = EmptyInstallation(
        Byte(map::RelayTimerType, 1), Byte(map::RelayPowerOnType, 1), Byte(map::InputType, 11),
        Code(map::InputRelayControl, 0, 0, hold), Timer(0, 9, 0, 0, 2));
    EXPECT_EQ(RowsOf(memory, QString("08:30 press 1,%1 release 1").arg(until)), rows);
  }
}

TEST(EngineInputsTest, HoldOffStandsBeforeHoldOnAndBothBeforeTheStatus) {
  PanelMemory memory = EmptyInstallation();
  for (int input = 0; input < 4; ++input) {
    Set(memory, Byte(map::InputType + input, 11),
        Code(map::InputRelayControl, 0, input, std::min(input + 1, 3)));
  }
  EXPECT_EQ(RowsOf(memory,
                   "08:00 press 1,08:01 press 2,08:02 release 2,08:03 press 3,08:04 release 1,"
                   "08:05 press 2,08:06 press 1"),
            "08:00 on 08:01 off 08:02 on 08:05 off ");
  // A status is that of the moment when its own contact closed, and the first one counts.
  EXPECT_EQ(RowsOf(memory,
                   "08:00 relay 1 on,09:00 press 3,10:00 press 2,10:10 press 4,10:20 release 2,"
                   "10:30 press 2,10:40 release 3,10:50 release 2,11:00 release 4"),
            "08:00 on 10:00 off 10:20 on 10:30 off 11:00 on ");
}

TEST(EngineInputsTest, OneThatDisablesInputsCannotBeDisabled) {
  // Input 1 disables itself and input 2, which disables input 3, a push button.
  const PanelMemory memory = EmptyInstallation(
      Byte(map::InputType, 9), Byte(map::InputType + 1, 9), Byte(map::InputType + 2, 1),
      Code(map::InputRelayControl, 0, 0, 1), Code(map::InputRelayControl, 1, 0, 1),
      Code(map::InputRelayControl, 2, 1, 1), Code(map::InputRelayControl, 0, 2, OnAndOff));
  const char* acts = "08:00 press 1,09:00 press 2,10:00 tap 3,11:00 release 2,12:00 tap 3";
  EXPECT_EQ(RowsOf(memory, acts, "abled"), "09:00 disabled 11:00 enabled ");
  EXPECT_EQ(RowsOf(memory, acts), "12:00 on ");
}

// Preset 6 and timer 4, which inputs 1 and 2 tell, turn a relay off that is off.
TEST(EngineInputsTest, ATimerOrPresetThatIsToldIsARowWhateverComesOfIt) {
  const PanelMemory memory =
      EmptyInstallation(Byte(map::InputType, 4), Byte(map::InputPreset, 5),
                        Byte(map::InputType + 1, 12), Code(map::PresetRelayControl, 0, 5, 2),
                        Code(map::InputRelayControl, 3, 1, 1), Timer(3, 12, 0, 0, 2));
  EXPECT_EQ(Rehearsed(memory, "2026-03-02",
                      Script("08:00 tap 1,08:01 tap 2,08:02 preset 6,08:03 timer 4"), "fires"),
            "03-02 08:00:00 INPUT 01,PRESET 06,fires;03-02 08:01:00 INPUT 02,TIMER 04,fires;"
            "03-02 08:02:00 HAND,PRESET 06,fires;03-02 08:03:00 HAND,TIMER 04,fires;"
            "03-02 12:00:00 TIMER 04,-,fires;");
}

TEST(EngineInputsTest, APhotocellThatIsBackTakesUpTheLight) {
  const PanelMemory memory =
      EmptyInstallation(Byte(PhotocellBlock, 9), Byte(PhotocellBlock + map::DeviceOnLevel, 100));
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
    const char* Script;
    const char* Rows;
  };
  const char* day =
      "11:00 photocell 26 1,12:00 photocell 26 200,12:00:10 photocell 26 200,"
      "13:00 photocell 26 0";
  const Case cases[]{
      {100, 50, 0, day, "12:00:14 on 13:00:22 off "},
      {50, 100, 1, day, "00:00:02 on 12:00:00 off 13:00:01 on "},
      {100, 100, 0, day, ""},
      // The light comes before it has been dark for long enough, and half of it.
      {50, 100, 0, "00:00:10 photocell 26 200,12:00 photocell 26 0", "12:00:22 on "},
      {50, 100, 0, "00:00:10 photocell 26 75,12:00 photocell 26 40", "12:00:21 on "},
      // The second input's levels are no reason to tell this one's earlier.
      {100, 200, 0, "00:00 photocell 26 60", "00:00:30 on "},
  };
  for (const Case& one : cases) {
    // The second input looks at the light while that of the first is on its way.
    const PanelMemory memory =
        EmptyInstallation(Byte(map::PhotocellFilter, one.Filter), Byte(PhotocellBlock, 9),
                          Byte(PhotocellBlock + map::DeviceOnLevel, one.On),
                          Byte(PhotocellBlock + map::DeviceOffLevel, one.Off),
                          Byte(PhotocellBlock + map::DeviceOnLevel + 1, 30),
                          Code(map::DeviceRelayControl(TestedDevice), 0, 0, OnAndOff));
    EXPECT_EQ(RowsOf(memory, one.Script, "\tRELAY 01\t", 8), one.Rows) << one.On << one.Script;
  }
}

TEST(EngineInputsTest, APhotocellTellsWhatItSeesAsPowerComes) {
  // Without the rows of the power: relays of types Off, On and Last State.
  const std::tuple<int, int, const char*> cases[]{{0, 120, "00:00:30 on "},
                                                  {1, 120, "12:20:30 off "},
                                                  {3, 120, "00:00:30 on 12:20:30 off "},
                                                  {1, 20, "00:00:30 off "}};
  for (const auto& [type, off, rows] : cases) {
    const PanelMemory memory =
        EmptyInstallation(Byte(map::RelayPowerOnType, type), Byte(PhotocellBlock, 9),
                          Byte(PhotocellBlock + map::DeviceOnLevel, 50),
                          Byte(PhotocellBlock + map::DeviceOffLevel, off),
                          Code(map::DeviceRelayControl(TestedDevice), 0, 0, OnAndOff));
    EXPECT_EQ(
        RowsOf(memory, "12:00 power off,12:05 photocell 26 180,12:20 power on", "\tRELAY 01\t", 8),
        rows)
        << type << " " << off;
  }
}

TEST(EngineInputsTest, APhotocellTellsTheLightToNewSettings) {
  PanelMemory memory =
      EmptyInstallation(Byte(PhotocellBlock, 9), Byte(PhotocellBlock + map::DeviceOnLevel, 50),
                        Byte(PhotocellBlock + map::DeviceOffLevel, 100));
  Engine engine(memory);
  engine.PowerOn(DayOf({2026, 3, 2}) * DayMs);
  const auto pass = [&engine](Instant time) { engine.AdvanceTo(engine.Now() + time); };
  pass(HourMs);
  EXPECT_TRUE(engine.DeviceInput(TestedDevice, 0));
  memory.SetCode(map::DeviceRelayControl(TestedDevice), 0, 0, OnAndOff);
  pass(29 * SecondMs);
  EXPECT_FALSE(engine.Relay(0));
  pass(SecondMs);
  EXPECT_TRUE(engine.Relay(0));
  // What is set elsewhere is no news to it.
  engine.SetRelay(0, false, Subject::Kind::Hand);
  memory.SetByte(map::AlarmSeconds, 9);
  pass(MinuteMs);
  EXPECT_FALSE(engine.Relay(0));
  // A photocell that has become a station looks at no light.
  memory.SetByte(PhotocellBlock + map::DeviceOnLevel, 60);
  engine.SetPhotocell(TestedDevice, 200);
  memory.SetByte(PhotocellBlock, 2);
  pass(MinuteMs);
  EXPECT_TRUE(engine.DeviceInput(TestedDevice, 0));
}

}  // namespace
}  // namespace simulator

#include <gtest/gtest.h>

#include "panel/live_project.h"
#include "rehearsed.h"

namespace simulator {
namespace {

constexpr int TrackedPhotocell = 3;
constexpr int SlotStation = 2;

/// Goto 80%, level 204.
constexpr int Goto80 = 3 + 80;
constexpr int InstantBit = 0x80;

struct DimmerCase {
  std::vector<std::pair<int, int>> Settings;  // beside those of DimmerMemory
  const char* Steps;
  const char* Levels;  // after each step of time
};

/// Output 1 of the first device: at power level 100, ten seconds from end to end, the curve from
/// full output in the dark to none in full light. The photocell follows in two seconds.
PanelMemory DimmerMemory(const DimmerCase& one) {
  PanelMemory memory = EmptyInstallation();
  memory.SetByte(map::PhotocellFilter, 1);
  memory.SetByte(map::DeviceEnabled, 1);
  memory.SetByte(map::DeviceBlock(TrackedPhotocell), 9);
  memory.SetByte(map::DeviceBlock(SlotStation), 2);
  const std::pair<int, int> usual[]{
      {map::PowerOnLevel, 100}, {map::FadeRate, 5},   {map::MaxLevel, 255},
      {map::PointAOut, 255},    {map::PointCIn, 255}, {map::PhotocellDevice, TrackedPhotocell - 1}};
  for (const auto& [field, value] : usual) memory.SetByte(map::DimmerBlock(0) + field, value);
  for (const auto& [field, value] : one.Settings) {
    memory.SetByte(map::DimmerBlock(0) + field, value);
  }
  return memory;
}

std::string LevelsAfterSteps(const DimmerCase& one) {
  const PanelMemory memory = DimmerMemory(one);
  Engine engine(memory);
  engine.PowerOn(engine.Days().FromWall((DayOf({2026, 3, 2}) * DayMs) + 12 * HourMs));
  std::string levels;
  for (const char step : std::string_view(one.Steps)) {
    std::int64_t passes = 0;
    switch (step) {
      case 'p':
      case 'r':
        engine.SetContact(0, Contact::On, step == 'p');
        break;
      case 'b':
      case 'B':
        engine.SetDeviceInput(SlotStation, 1, step == 'b');
        break;
      case 't':
        engine.ForceTimer(4, Subject::Kind::Hand);
        break;
      case 'x':
        engine.SetPreset(4, Subject::Kind::Hand);
        break;
      case 'L':  // half light
        engine.SetPhotocell(TrackedPhotocell, 128);
        break;
      case 'R':
      case 'O':
        engine.SetRelay(0, step == 'R', Subject::Kind::Hand);
        break;
      case 's':
        passes = SecondMs;
        break;
      case 'm':
        passes = MinuteMs;
        break;
      default:
        passes = 5 * MinuteMs;
    }
    if (passes == 0) continue;
    engine.AdvanceTo(engine.Now() + passes);
    levels += std::to_string(engine.DimmerLevel(0)) + " ";
  }
  return levels;
}

TEST(EngineDimmersTest, SlotsLimitsCurvesAndRelaysSetTheLevel) {
  using namespace map;
  constexpr int input = 1;
  constexpr int timer = 2;
  constexpr int preset = 3;
  constexpr int invertIn = 4;
  constexpr int lower = 1;
  constexpr int raise = 2;
  constexpr int goto0 = 3;
  constexpr int goto100 = 103;
  constexpr int rampDown = 104;
  constexpr int rampUp = 105;
  constexpr int never = 1;
  constexpr int afterFive = 2;
  const DimmerCase cases[]{
      // Fades, instant, and the three ways to revert.
      {{{ControlType, input}, {ControlAction, Goto80}}, "psmrsm", "125 204 179 100 "},
      {{{ControlType, input | InstantBit}, {ControlAction, Goto80}}, "psrs", "204 100 "},
      {{{ControlType, input}, {ControlAction, Goto80}, {ControlRevert, never}}, "pmrm", "204 204 "},
      {{{ControlType, input}, {ControlAction, Goto80}, {ControlRevert, afterFive}},
       "pmrf",
       "204 100 "},
      {{{ControlType, invertIn}, {ControlAction, Goto80}}, "pmrm", "100 204 "},
      {{{ControlType, input},
        {ControlNumber, 1},
        {ControlDevice, SlotStation},
        {ControlAction, Goto80}},
       "pmbm",
       "100 204 "},
      {{{ControlType, timer}, {ControlNumber, 4}, {ControlAction, Goto80}}, "tm", "204 "},
      {{{ControlType, preset}, {ControlNumber, 4}, {ControlAction, Goto80}}, "xm", "204 "},
      // Steps add up and revert to what stood before the first; ramps stop as the input opens.
      {{{ControlType, input}, {ControlAction, raise}, {ControlRevert, afterFive}},
       "pmrpmf",
       "125 150 100 "},
      {{{ControlType, input}, {ControlAction, lower}, {PowerOnLevel, 10}}, "pm", "0 "},
      {{{ControlType, input}, {ControlAction, rampUp}}, "psrmpm", "125 125 255 "},
      {{{ControlType, input}, {ControlAction, rampDown}}, "psrm", "75 75 "},
      // What reverts after a ramp goes back to where the ramp has led.
      {{{ControlType, input},
        {ControlAction, rampUp},
        {ControlType + 1, input},
        {ControlNumber + 1, 1},
        {ControlDevice + 1, SlotStation},
        {ControlAction + 1, Goto80}},
       "psrbmBm",
       "125 204 125 "},
      // Limits, a minimum above the maximum, and those of the photocell.
      {{{ControlType, input}, {ControlAction, Goto80}, {MaxLevel, 150}}, "pm", "150 "},
      {{{ControlType, input}, {ControlAction, goto0}, {MinLevel, 60}}, "pm", "60 "},
      {{{ControlType, input}, {ControlAction, goto0}, {MinLevel, 200}, {MaxLevel, 150}},
       "pm",
       "150 "},
      {{{ControlType, input}, {ControlAction, goto0}, {TrackMode, 4}}, "pmLm", "255 127 "},
      {{{ControlType, input}, {ControlAction, goto100}, {TrackMode, 8}}, "pmLm", "255 127 "},
      // 2 point, setpoint below and at the light, 3 point; a slot takes over and gives back.
      {{{TrackMode, 1}}, "smLm", "125 255 127 "},
      {{{TrackMode, 2}, {Target, 100}}, "mLm", "255 0 "},
      {{{TrackMode, 2}, {Target, 128}}, "mLm", "255 255 "},
      {{{TrackMode, 3}, {PointBIn, 64}, {PointBOut, 20}}, "Lm", "13 "},
      {{{TrackMode, 1}, {ControlType, input}, {ControlAction, Goto80}},
       "mpmLmrm",
       "255 204 204 127 "},
      // Its relay, enabled or not; the relay's word ends a slot's time.
      {{{RelayInclude, 1}, {RelayOnLevel, 200}, {RelayOffLevel, 20}, {MaxLevel, 100}},
       "mRsmOm",
       "20 45 200 20 "},
      {{{TrackMode, 1},
        {RelayInclude, 1},
        {RelayOnLevel, 200},
        {ControlType, input},
        {ControlAction, Goto80},
        {ControlRevert, afterFive}},
       "pmRmf",
       "204 200 200 "},
      {{{DeviceEnabled - DimmerBlock(0), 0},
        {RelayInclude, 1},
        {RelayOnLevel, 200},
        {ControlType, input},
        {ControlAction, Goto80}},
       "pmRm",
       "0 200 "},
  };
  for (const DimmerCase& one : cases) {
    std::string settings;
    for (const auto& [field, value] : one.Settings) {
      settings += std::to_string(field) + "=" + std::to_string(value) + " ";
    }
    EXPECT_EQ(LevelsAfterSteps(one), one.Levels) << settings << one.Steps;
  }
}

TEST(EngineDimmersTest, RowsTellWhereALevelGoesAndHow) {
  const PanelMemory memory = DimmerMemory(
      {{{map::ControlType, 1}, {map::ControlAction, Goto80}, {map::ControlRevert, 2}}, "", ""});
  EXPECT_EQ(Rehearsed(memory, "2026-03-02", "2026-03-02 08:00 tap 1", "DIMMER"),
            "03-02 08:00:00 INPUT 01,DIMMER 1 OUTPUT 1,level 204;"
            "03-02 08:05:00 DIMMER 1 OUTPUT 1,-,fires;"
            "03-02 08:05:00 DIMMER 1 OUTPUT 1,DIMMER 1 OUTPUT 1,level 100;");
}

}  // namespace
}  // namespace simulator

#include <gtest/gtest.h>

#include <map>

#include "rehearsed.h"

namespace simulator {
namespace {

constexpr int TrackedPhotocell = 3;
constexpr int SlotStation = 2;

/// Goto 80%, level 204.
constexpr int Goto80 = 3 + 80;
constexpr int InstantBit = 0x80;

using Fields = std::vector<std::pair<int, int>>;

struct DimmerCase {
  Fields Settings;
  const char* Steps;
  const char* Levels;  // after each step of time
  Fields Beside = {};
};

Fields Slot(int type, int action, int revert = 0) {
  return {{map::ControlType, type}, {map::ControlAction, action}, {map::ControlRevert, revert}};
}

/// Output 1 of the first device: at power level 100, ten seconds from end to end, the curve from
/// full output in the dark to none in full light. The photocell follows in two seconds.
PanelMemory DimmerMemory(const DimmerCase& one) {
  PanelMemory memory = EmptyInstallation(Byte(map::PhotocellFilter, 1), Byte(map::DeviceEnabled, 1),
                                         Byte(map::DeviceBlock(TrackedPhotocell), 9),
                                         Byte(map::DeviceBlock(SlotStation), 2));
  const Fields usual{{map::PowerOnLevel, 100}, {map::FadeRate, 5},
                     {map::MaxLevel, 255},     {map::PointAOut, 255},
                     {map::PointCIn, 255},     {map::PhotocellDevice, TrackedPhotocell - 1}};
  for (const Fields& fields : {usual, one.Settings, one.Beside}) {
    for (const auto& [field, value] : fields) memory.SetByte(map::DimmerBlock(0) + field, value);
  }
  return memory;
}

std::string LevelsAfterSteps(const DimmerCase& one) {
  const PanelMemory memory = DimmerMemory(one);
  Engine engine(memory);
  engine.PowerOn(engine.Days().FromWall((DayOf({2026, 3, 2}) * DayMs) + 12 * HourMs));
  const std::map<char, std::function<void()>> acts{
      {'p', [&] { engine.SetContact(0, Contact::On, true); }},
      {'r', [&] { engine.SetContact(0, Contact::On, false); }},
      {'b', [&] { engine.SetDeviceInput(SlotStation, 1, true); }},
      {'B', [&] { engine.SetDeviceInput(SlotStation, 1, false); }},
      {'t', [&] { engine.ForceTimer(4, Subject::Kind::Hand); }},
      {'x', [&] { engine.SetPreset(4, Subject::Kind::Hand); }},
      {'L', [&] { engine.SetPhotocell(TrackedPhotocell, 128); }},  // half light
      {'R', [&] { engine.SetRelay(0, true, Subject::Kind::Hand); }},
      {'O', [&] { engine.SetRelay(0, false, Subject::Kind::Hand); }},
  };
  const std::map<char, Instant> waits{{'s', SecondMs}, {'m', MinuteMs}, {'f', 5 * MinuteMs}};
  std::string levels;
  for (const char step : std::string_view(one.Steps)) {
    if (acts.contains(step)) {
      acts.at(step)();
      continue;
    }
    engine.AdvanceTo(engine.Now() + waits.at(step));
    levels += std::to_string(engine.DimmerLevel(0)) + " ";
  }
  return levels;
}

TEST(EngineDimmersTest, SlotsLimitsCurvesAndRelaysSetTheLevel) {
  using namespace map;
  enum Type { input = 1, timer, preset, invertIn };
  enum Action { lower = 1, raise, goto0, goto100 = 103, rampDown, rampUp };
  enum Revert { never = 1, afterFive };
  const Fields onRelay{{RelayInclude, 1}, {RelayOnLevel, 200}};
  const Fields disabledOnRelay{
      {RelayInclude, 1}, {RelayOnLevel, 200}, {DeviceEnabled - DimmerBlock(0), 0}};
  Fields trackedSlot = Slot(input, Goto80, afterFive);
  trackedSlot.emplace_back(TrackMode, 1);
  const DimmerCase cases[]{
      // Fades, instant, and the three ways to revert.
      {Slot(input, Goto80), "psmrsm", "125 204 179 100 "},
      {Slot(input | InstantBit, Goto80), "psrs", "204 100 "},
      {Slot(input, Goto80, never), "pmrm", "204 204 "},
      {Slot(input, Goto80, afterFive), "pmrf", "204 100 "},
      {Slot(invertIn, Goto80), "pmrm", "100 204 "},
      {Slot(input, Goto80), "pmbm", "100 204 ", {{ControlNumber, 1}, {ControlDevice, SlotStation}}},
      {Slot(timer, Goto80), "tm", "204 ", {{ControlNumber, 4}}},
      {Slot(preset, Goto80), "xm", "204 ", {{ControlNumber, 4}}},
      // Steps add up and revert to what stood before the first; ramps stop as the input opens.
      {Slot(input, raise, afterFive), "pmrpmf", "125 150 100 "},
      {Slot(input, lower), "pm", "0 ", {{PowerOnLevel, 10}}},
      {Slot(input, rampUp), "psrmpm", "125 125 255 "},
      {Slot(input, rampDown), "psrm", "75 75 "},
      // What reverts after a ramp goes back to where the ramp has led.
      {Slot(input, rampUp),
       "psrbmBm",
       "125 204 125 ",
       {{ControlType + 1, input},
        {ControlNumber + 1, 1},
        {ControlDevice + 1, SlotStation},
        {ControlAction + 1, Goto80}}},
      // Limits, a minimum above the maximum, and those of the photocell.
      {Slot(input, Goto80), "pm", "150 ", {{MaxLevel, 150}}},
      {Slot(input, goto0), "pm", "60 ", {{MinLevel, 60}}},
      {Slot(input, goto0), "pm", "150 ", {{MinLevel, 200}, {MaxLevel, 150}}},
      {Slot(input, goto0), "pmLm", "255 127 ", {{TrackMode, 4}}},
      {Slot(input, goto100), "pmLm", "255 127 ", {{TrackMode, 8}}},
      // 2 point, setpoint below and at the light, 3 point; a slot takes over and gives back.
      {{{TrackMode, 1}}, "smLm", "125 255 127 "},
      {{{TrackMode, 2}, {Target, 100}}, "mLm", "255 0 "},
      {{{TrackMode, 2}, {Target, 128}}, "mLm", "255 255 "},
      {{{TrackMode, 3}, {PointBIn, 64}, {PointBOut, 20}}, "Lm", "13 "},
      {Slot(input, Goto80), "mpmLmrm", "255 204 204 127 ", {{TrackMode, 1}}},
      // Its relay, enabled or not; the relay's word ends a slot's time.
      {onRelay, "mRsmOm", "20 45 200 20 ", {{RelayOffLevel, 20}, {MaxLevel, 100}}},
      {onRelay, "pmRmf", "204 200 200 ", trackedSlot},
      {Slot(input, Goto80), "pmRm", "0 200 ", disabledOnRelay},
  };
  for (const DimmerCase& one : cases) {
    EXPECT_EQ(LevelsAfterSteps(one), one.Levels) << "row " << &one - cases << " " << one.Steps;
  }
}

TEST(EngineDimmersTest, RowsTellWhereALevelGoesAndHow) {
  const PanelMemory memory = DimmerMemory({Slot(1, Goto80, 2), "", ""});
  EXPECT_EQ(Rehearsed(memory, "2026-03-02", Script("08:00 tap 1"), "DIMMER"),
            "03-02 08:00:00 INPUT 01,DIMMER 1 OUTPUT 1,level 204;"
            "03-02 08:05:00 DIMMER 1 OUTPUT 1,-,fires;"
            "03-02 08:05:00 DIMMER 1 OUTPUT 1,DIMMER 1 OUTPUT 1,level 100;");
}

}  // namespace
}  // namespace simulator

#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/engine/calendar.h"
#include "simulator/memory/memory.h"

namespace simulator {

/// A bit an item: relays, groups, inputs, timers or presets.
using Mask = std::uint64_t;
constexpr Mask AllItems = (Mask{1} << Items) - 1;
constexpr Mask Bit(int item) {
  return Mask{1} << item;
}
constexpr bool Has(Mask mask, int item) {
  return (mask >> item & 1) != 0;
}
/// Calls `action` with the number of each set bit, in order.
template <typename Action>
void EachBit(Mask mask, Action action) {
  for (; mask != 0; mask &= mask - 1) action(std::countr_zero(mask));
}

/// Local inputs, then those of devices 1 to 64, eight each.
constexpr int Switches = Items + Devices * DeviceInputs;
constexpr int SwitchOf(int device, int input) {
  return Items + (device - 1) * DeviceInputs + input;
}

/// Light on a photocell is counted in thousandths of its levels.
constexpr std::int64_t LightUnits = 1000;

enum class InputKind : std::uint8_t {
  None,
  MomentaryOnOff,
  MomentaryPB,
  MaintainedOnOff,
  MaintainedMultiWay,
  SetPreset,
  TimedOn,
  HIDBiLevel,
  TwoStep,
  FourStep,
  InputDisable,
  TimerDisable,
  OutputOverride,
  ForceTimer,
};

/// What an input does. Groups are taken apart into relays; a relay's own code stands before that
/// of a group.
struct SwitchSetting {
  InputKind Kind = InputKind::None;
  std::array<Mask, 5> Rows{};  // by code: relays, or the inputs or timers that the kind speaks of
  int Preset = 0;
  int Minutes = 0;
  int OffLevel = 0;  // of a photocell
  int OnLevel = 0;

  Mask TurnsOn() const { return Rows[OnOnly] | Rows[OnAndOff] | Rows[BlinkAlert]; }
  bool operator==(const SwitchSetting&) const = default;
};

/// What is to be on and off afterwards.
struct Outcome {
  Mask On = 0;
  Mask Off = 0;

  void Then(Mask on, Mask off) {
    On = (On & ~off) | on;
    Off = (Off & ~on) | off;
  }
};

struct TimerSetting {
  enum class Event : std::uint8_t { Clock, Sunrise, Sunset, Open, Close };
  Event What = Event::Clock;
  bool Used = false;  // a timer that controls nothing has not been set up
  int Minutes = 0;    // of the day, or from the event
  int DaysLeftOut = 0;
  bool RestsOnHolidays = false;
  int Month = 0;  // 0: by weekdays
  int Day = 0;
  Outcome Relays;
  Mask Presets = 0;
  std::string Words;
};

struct DimmerSlot {
  enum class Kind : std::uint8_t { Input, Timer, Preset };
  Kind What = Kind::Input;
  int Number = 0;  // of the switch, timer or preset
  bool Inverted = false;
  bool Instant = false;
  int Action = 0;
  int Revert = 0;
  int Output = 0;
};

struct DimmerSetting {
  int TrackMode = 0;
  bool MinFromPhotocell = false;
  bool MaxFromPhotocell = false;
  int PowerOnLevel = 0;
  std::int64_t FadeMs = 0;  // from end to end
  int MinLevel = 0;
  int MaxLevel = 0;
  int Photocell = 1;  // device
  std::array<int, 3> PointIn{};
  std::array<int, 3> PointOut{};
  int Target = 0;
  int RelayOnLevel = 0;
  int RelayOffLevel = 0;
  Mask Relays = 0;
  bool Fitted = false;  // enabled, or bound to relays
};

struct PilotSetting {
  enum class Kind : std::uint8_t { Static, Relay, Group, Preset };
  Kind What = Kind::Static;
  int Number = 0;  // of a static one: 1 lit
  int Switch = 0;
};

/// A panel's memory, read for being run: nothing in here changes while the panel runs.
struct Configuration {
  explicit Configuration(const PanelMemory& memory);

  Calendar Days;
  int Latitude;
  int LongitudeWest;
  std::array<TimerSetting, Items> Timers;
  bool SunTimers = false;
  std::array<Mask, Items> GroupRelays{};
  std::array<Outcome, Items> Presets{};
  Mask OnAfterPower = 0;
  Mask Blinks = 0;  // relays by their timer type
  Mask HIDDelay = 0;
  Mask AlarmOff = 0;
  Mask AlarmOn = 0;
  Mask PulsedOff = 0;
  Mask PulsedOn = 0;
  std::int64_t BlinkAlertMs;
  std::int64_t OverrideMs;
  std::int64_t AlarmMs;
  bool TimedOnFromClosing;
  std::int64_t PhotocellMs;

  Mask Swept = 0;
  std::int64_t SweepMs;
  std::array<int, 7> OpenQuarter{};
  std::array<int, 7> CloseQuarter{};
  std::array<std::array<int, 31>, 12> DateOpenQuarter{};
  std::array<std::array<int, 31>, 12> DateCloseQuarter{};
  std::array<std::array<bool, 31>, 12> Holiday{};

  std::array<SwitchSetting, Switches> Inputs;
  std::array<int, Items> EnableQuarter{};
  std::array<int, Items> DisableQuarter{};
  std::vector<int> LevelSwitches;  // those that act as long as they are closed
  std::array<bool, Devices + 1> IsPhotocell{};
  std::vector<PilotSetting> Pilots;

  std::array<DimmerSetting, DimmerOutputs> Dimmers;
  std::vector<DimmerSlot> Slots;
  Mask SlotTimers = 0;
  Mask SlotPresets = 0;
  std::array<bool, Switches> SlotSwitches{};
  Mask DimmedRelays = 0;

  std::array<std::string, Items> RelayNames, GroupNames, InputNames, TimerNames, PresetNames;
  std::array<std::string, Devices + 1> DeviceNames;

 private:
  void ReadTimers(const PanelMemory& memory);
  void ReadRelays(const PanelMemory& memory);
  void ReadOpenAndClose(const PanelMemory& memory);
  void ReadInputs(const PanelMemory& memory);
  void ReadDevice(const PanelMemory& memory, int device);
  void ReadPilots(const PanelMemory& memory);
  void ReadDimmers(const PanelMemory& memory);
  void ReadNames(const PanelMemory& memory);
};

}  // namespace simulator

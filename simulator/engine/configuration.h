#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/engine/calendar.h"
#include "simulator/memory/mask.h"

namespace simulator {

/// Local inputs, then those of devices 1 to 64, eight each.
constexpr int Switches = Items + Devices * DeviceInputs;
constexpr int SwitchOf(int device, int input) {
  return Items + (device - 1) * DeviceInputs + input;
}
/// The device that a switch is on; 0 for a local input.
constexpr int DeviceOf(int number) {
  return number < Items ? 0 : (number - Items) / DeviceInputs + 1;
}
/// Its number among the inputs of its place.
constexpr int InputOf(int number) {
  return number < Items ? number : (number - Items) % DeviceInputs;
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

/// Whether its codes are those of relays.
constexpr bool SpeaksOfRelays(InputKind kind) {
  return kind != InputKind::InputDisable && kind != InputKind::TimerDisable &&
         kind != InputKind::ForceTimer;
}
/// Whether it acts as long as it is closed.
constexpr bool ActsWhileClosed(InputKind kind) {
  return kind == InputKind::InputDisable || kind == InputKind::TimerDisable ||
         kind == InputKind::OutputOverride;
}

/// What an input does. Groups are taken apart into relays; a relay's own code stands before that
/// of a group.
struct SwitchSetting {
  InputKind Kind = InputKind::None;
  CodeMasks Rows{};  // relays, or the inputs or timers that the kind speaks of
  int Preset = 0;
  int Minutes = 0;
  int OffLevel = 0;  // of a photocell
  int OnLevel = 0;

  Mask TurnsOn() const { return Rows[OnOnly] | Rows[OnAndOff] | Rows[BlinkAlert]; }
  /// All that has a code.
  Mask All() const { return TurnsOn() | Rows[OffOnly]; }
  bool operator==(const SwitchSetting&) const = default;
};

/// What is to be on and off afterwards.
struct Outcome {
  Mask On = 0;
  Mask Off = 0;

  Mask All() const { return On | Off; }
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
  std::string Words;       // as in "20 min before sunrise"
  std::string NamedWords;  // as in "DUSK (20 min before sunrise)"
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

/// Of each group.
using GroupMembers = std::array<Mask, Items>;

/// What relays do beside going on and off.
struct RelaySettings {
  explicit RelaySettings(const PanelMemory& memory);

  Mask OnAfterPower = 0;
  Mask OnWithInput1 = 0;  // after power has failed, and the next one
  Mask LastState = 0;
  Mask Blinks = 0;  // and the next ones by their timer type
  Mask HIDDelay = 0;
  Mask AlarmOff = 0;
  Mask AlarmOn = 0;
  Mask PulsedOff = 0;
  Mask PulsedOn = 0;
  std::int64_t BlinkAlertMs;
  std::int64_t AlarmMs;
};

/// When the building is open, and what is swept while it is closed.
struct HoursSettings {
  HoursSettings(const PanelMemory& memory, const GroupMembers& groups);

  std::array<int, 7> OpenQuarter{};
  std::array<int, 7> CloseQuarter{};
  std::array<std::array<int, 31>, 12> DateOpenQuarter{};
  std::array<std::array<int, 31>, 12> DateCloseQuarter{};
  std::array<std::array<bool, 31>, 12> Holiday{};
  Mask Swept = 0;
  std::int64_t SweepMs;
  std::int64_t OverrideMs;
};

/// Inputs, local and on devices.
struct InputSettings {
  InputSettings(const PanelMemory& memory, const GroupMembers& groups);

  std::array<SwitchSetting, Switches> Each;
  std::array<int, Items> EnableQuarter{};
  std::array<int, Items> DisableQuarter{};
  std::vector<int> LevelSwitches;          // those that act as long as they are closed
  std::array<int, Devices + 1> Buttons{};  // of each device: its inputs that can be pressed
  std::array<bool, Devices + 1> IsPhotocell{};
  std::vector<PilotSetting> Pilots;
  std::int64_t PhotocellMs;
  bool TimedOnFromClosing;

 private:
  void ReadDevice(const PanelMemory& memory, const GroupMembers& groups, int device);
  void ReadPilots(const PanelMemory& memory);
};

/// Dimmer outputs and what sets them.
struct DimmerSettings {
  explicit DimmerSettings(const PanelMemory& memory);

  std::array<DimmerSetting, DimmerOutputs> Each;
  std::vector<DimmerSlot> Slots;
  Mask SlotTimers = 0;
  Mask SlotPresets = 0;
  std::array<bool, Switches> SlotSwitches{};
  Mask Relays = 0;  // that outputs follow

 private:
  void ReadSlots(const PanelMemory& memory, int output);
};

/// Trimmed, in UTF-8.
struct ItemNames {
  explicit ItemNames(const PanelMemory& memory);

  std::array<std::string, Items> Relay, Group, Input, Timer, Preset;
  std::array<std::string, Devices + 1> Device;
};

/// A panel's memory, read for being run: nothing in here changes while the panel runs.
struct Configuration {
  explicit Configuration(const PanelMemory& memory);

  Calendar Days;
  int Latitude;
  int LongitudeWest;
  GroupMembers Groups;
  std::array<Outcome, Items> Presets{};
  RelaySettings Relays;
  HoursSettings Hours;
  InputSettings Inputs;
  DimmerSettings Dimmers;
  std::array<TimerSetting, Items> Timers;
  bool SunTimers = false;
  ItemNames Names;

 private:
  void ReadTimers(const PanelMemory& memory);
};

}  // namespace simulator

#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulator/engine/configuration.h"
#include "simulator/engine/readings.h"
#include "simulator/engine/row.h"
#include "simulator/engine/sun.h"

namespace simulator {

/// The two contacts of a local input. A switch with one contact uses On.
enum class Contact { On = 1, Off = 2 };

/// Runs the configuration in a panel's memory: timers, inputs, sweeps, relays, dimmers. It knows no
/// clock but its own, which stands until it is told to advance, and it jumps from one instant at
/// which something can happen to the next. The same memory and the same calls give the same rows.
///
/// Numbers of relays, groups, inputs, timers, presets and dimmer outputs run from 0 to 47, of
/// devices from 1 to 64, of a device's inputs from 0 to 7. A copy runs on by itself, without the
/// sink: so the future can be looked at. The memory must outlive the engine and its copies; a
/// change in it holds from the next call on.
class Engine {
 public:
  using Sink = std::function<void(const Row&)>;

  explicit Engine(const PanelMemory& memory);

  /// Gets every row from now on; an empty one ends that.
  void SetSink(Sink sink);

  /// Power comes: relays by their power-on type, inputs open, photocells at 0, no override.
  void PowerOn(Instant at);

  // The clock ------------------------------------------------------------------------------------
  const Calendar& Days() const { return Settings->Days; }
  Instant Now() const { return Present; }
  /// The wall clock, milliseconds since 1970.
  std::int64_t Wall() const { return Settings->Days.Wall(Present); }
  /// The next instant at which anything can happen.
  Instant NextInstant() const;
  /// Lets everything happen up to `to`, included. An instant that is past does nothing.
  void AdvanceTo(Instant to);
  /// Sets the wall clock. What is under way keeps its remaining time; what lies between happens
  /// neither twice nor at all.
  void SetWall(std::int64_t wall);
  /// Days by which the panel's weekday differs from the calendar's.
  void SetWeekdayShift(int days);
  /// 0 Sunday .. 6 Saturday.
  int WeekdayToday() const { return Weekday(Today()); }
  /// When the next row comes, if it does within that time and nobody touches anything.
  std::optional<Instant> NextRow(std::int64_t within) const;
  struct SunAndHours {
    std::optional<Instant> Sunrise, Sunset, Open, Close;
  };
  /// Of a day counted from 1970.
  SunAndHours HoursOf(std::int64_t day) const;

  // Commands -------------------------------------------------------------------------------------
  // `by` is the cause, Subject::Kind::Hand or Host.
  void SetRelay(int relay, bool on, Subject::Kind by);
  void SetRelays(Mask on, Mask off, Subject::Kind by);
  void SetGroup(int group, bool on, Subject::Kind by);
  void SetPreset(int preset, Subject::Kind by);
  void ForceTimer(int timer, Subject::Kind by);
  /// A contact of a local input or a device's input closes or opens.
  void SetContact(int input, Contact contact, bool closed);
  void SetDeviceInput(int device, int input, bool closed);
  /// The light on a photocell, 0..255.
  void SetPhotocell(int device, int level);
  /// A device that has gone from the bus does nothing.
  void SetSilent(int device, bool silent);

  /// Trimmed, in UTF-8.
  const std::string& RelayName(int relay) const {
    return Settings->RelayNames.at(static_cast<std::size_t>(relay));
  }

  // States ---------------------------------------------------------------------------------------
  Mask Relays() const { return Output; }
  bool Relay(int relay) const { return Has(Output, relay); }
  /// Warning that it is about to go off.
  Mask BlinkingRelays() const { return Warned & ~Settings->HIDDelay & Output & ~Held; }
  bool Group(int group) const;
  /// Nothing for a preset that names no relay; otherwise whether all stand as it says.
  std::optional<bool> Preset(int preset) const;
  /// Bit 0: the On contact is closed; bit 1: the Off contact.
  int InputState(int input) const { return Contacts.at(static_cast<std::size_t>(input)); }
  bool DeviceInput(int device, int input) const;
  int DeviceInputBits(int device) const;
  int PhotocellLevel(int device) const;
  bool Pilot(int input) const;
  bool DevicePilot(int device, int input) const;
  int DimmerLevel(int output) const;
  Mask DisabledInputs() const { return InputsOff; }
  Mask DisabledTimers() const { return TimersOff; }
  /// Held by an output override.
  Mask HeldRelays() const { return Held; }
  bool IsOpen() const { return BuildingOpen; }

 private:
  enum class Due { WarningOver, TimeOver, PulseOver, PulseBack, OverrideOver, Photocell, Dimmer };
  struct Pending {
    Instant At = 0;
    Due What = Due::WarningOver;
    Mask Relays = 0;
    int Number = 0;  // of the photocell's device or the dimmer output
  };
  struct Light {  // of a photocell, in thousandths of a level, on its way
    std::int64_t From = 0;
    std::int64_t To = 0;
    Instant Since = 0;
  };
  /// A contact that stays closed as long as somebody is there.
  struct Occupant {
    int Switch = 0;
    Mask Relays = 0;  // that it has turned on, and nobody off
  };
  struct DimmerState {
    enum class Goal { Base, Tracking, Fixed };
    Goal Towards = Goal::Base;
    int Level = 0;  // of a fixed goal
    int From = 0;   // where it came from
    Instant Since = 0;
    std::int64_t FadeMs = 0;
    int Slot = -1;         // the one that has the word
    bool Reverts = false;  // to what was before it
    Goal GoalBefore = Goal::Base;
    int LevelBefore = 0;
    int Told = 0;  // the level of the last row
  };

  /// Not copied with the engine.
  struct OwnSink {
    Sink Call;
    OwnSink() = default;
    OwnSink(const OwnSink&) {}
    OwnSink& operator=(const OwnSink&) { return *this; }
    ~OwnSink() = default;
  };

  // Engine
  void Refresh();
  void MoveTo(Instant present);
  void Schedule(const Pending& pending);
  void RunPending();
  /// Puts what was told into force. With `ownWords` each relay is its own cause.
  void Settle(const Subject& cause, std::string_view ownWords = {});
  void TellSettledRelays(const Subject& cause, std::string_view ownWords, Mask changed,
                         Mask blinks);
  void TellGroupsAndPresets(const Subject& cause, Mask changed);
  void TellPilots(const Subject& cause);
  void Tell(const Subject& cause, const Subject& item, Change what, std::string_view words,
            int level = 0) const;
  void TellFires(const Subject& cause, std::string_view words) const;
  void RememberShown();
  bool PilotOf(const PilotSetting& pilot) const;

  // Days
  // What is planned for one instant goes by this order.
  static constexpr std::int64_t OrdersAnInstant = 128;
  enum Order { NewDay, ClockChange, OpenEvent, CloseEvent, ActiveEdge, FirstTimer = 16 };
  void PlanAnew();
  void PlanDay(std::int64_t day);
  void PlanMidnight(std::int64_t day);
  void PlanAt(Instant at, int order);
  void RunPlanned();
  void RunTimer(int timer, const Subject& cause);
  /// Wall minutes since 1970 of the events of a day that timers count from.
  using DayEvents = std::array<std::optional<std::int64_t>, 5>;
  DayEvents EventsOf(std::int64_t day, bool withSun) const;
  std::optional<std::int64_t> HourMinute(std::int64_t day, bool close) const;
  int Weekday(std::int64_t day) const { return (WeekdayOf(day) + WeekdayShift) % 7; }
  std::int64_t Today() const { return Wall() / DayMs; }
  void StartHours();
  void Sweep();

  // Relays
  void TellRelays(Mask on, Mask off, Manner manner);
  void TurnOn(Mask on);
  /// By somebody who is there: off-hours sweeps wait for the override time.
  void PersonTurnsOn(Mask on);
  /// Of relays that nobody holds on any more.
  void BeginOverride(Mask relays);
  void TurnOff(Mask off);
  void WarnOff(Mask off);
  void Forget(Mask relays);
  Mask Waiting(Due due) const;
  /// By somebody who tells the preset or timer, which is a row whatever comes of it.
  void ApplyPreset(int preset, const Subject& cause);
  void ApplyTimer(int timer, const Subject& cause);

  // Inputs
  Subject SwitchSubject(int number) const;
  bool SwitchClosed(int number) const;
  bool IsSilent(int number) const;
  /// Within its active times, and not disabled by another.
  bool Active(int number) const;
  bool InActiveTimes(int number) const;
  /// What occupants whose input is in force hold on.
  Mask Occupied() const;
  void Occupy(int number, Mask relays);
  /// The relays that it still held.
  Mask Leave(int number);
  void RunSwitch(int number, Contact contact, bool closed, const Subject& cause);
  void RunLevelSwitches(const Subject& cause);
  void Toggle(const SwitchSetting& setting);
  void SwitchOn(const SwitchSetting& setting);
  void SwitchOff(const SwitchSetting& setting);
  void NextStep(const SwitchSetting& setting);
  void BeginTimedOn(const SwitchSetting& setting, bool closed);
  std::int64_t LightNow(int device) const;
  /// Lets photocells tell their light anew; inputs that were set otherwise take it as news.
  void StartPhotocells(const Configuration& before);
  void SchedulePhotocell(int device);
  void RunPhotocell(int device);

  // Dimmers
  static int Limited(const DimmerSetting& setting, int level, std::int64_t light);
  int GoalLevel(int output, std::int64_t light) const;
  int GoalLevel(int output) const;
  void SetGoal(int output, DimmerState::Goal goal, int level, std::int64_t fadeMs);
  void Track(int output, std::int64_t fadeMs);
  void StartDimmers();
  void RunSlots(DimmerSlot::Kind kind, int number, bool began = true);
  void RunSlot(int index);
  void EndSlot(int index);
  void RevertDimmer(int output, std::int64_t fadeMs);
  void ForgetRevert(int output);
  void FollowRelays(Mask next);
  void FollowPhotocell(int device);
  void TellDimmers(const Subject& cause);

  const PanelMemory* Memory;
  std::uint64_t KnownRevision;
  std::shared_ptr<const Configuration> Settings;
  Sun Sky;
  OwnSink Out;

  Instant Present = 0;
  Instant Undone = 0;  // what is planned before this has happened
  int WeekdayShift = 0;
  std::vector<std::int64_t> Plan;  // instant and order of what the days bring, sorted
  std::size_t PlanHead = 0;
  std::vector<Pending> Queue;  // the next one last
  std::optional<Instant> NextSweep;
  bool BuildingOpen = true;

  Mask Told = 0;  // on by what was told last
  Mask Held = 0;  // whatever is told
  Mask HeldOn = 0;
  Mask Output = 0;
  Mask Warned = 0;  // going off after a warning
  Mask BlinkShown = 0;
  Mask BlinkStarted = 0;
  std::array<std::uint8_t, Items> Contacts{};
  std::array<std::uint8_t, Devices + 1> DeviceContacts{};
  std::array<bool, Devices + 1> Silent{};
  std::vector<Occupant> Occupants;
  std::array<Light, Devices + 1> Lights{};
  std::bitset<Switches> Unheard;  // closed by photocells before their settings changed
  Mask InputsOff = 0;
  Mask TimersOff = 0;
  Mask StatusHeld = 0;
  std::array<DimmerState, DimmerOutputs> DimmerStates{};
  bool DimmersTouched = false;

  Mask GroupsShown = 0;  // what the sink was told last
  Mask PresetsShown = 0;
  std::vector<bool> PilotsShown;
};

}  // namespace simulator

#pragma once

#include "simulator/engine/engine_days.h"
#include "simulator/engine/engine_dimmers.h"
#include "simulator/engine/engine_inputs.h"
#include "simulator/engine/engine_photocells.h"
#include "simulator/engine/engine_settle.h"

namespace simulator {

/// Nothing comes of a sweep that turns nothing off, or of a photocell's input that controls
/// nothing; light that changes is told by what it does.
bool Matters(const Row& row, const Configuration& settings);

class Engine;

/// What somebody does at a time of the wall clock, milliseconds since 1970.
struct ScriptedAct {
  std::int64_t Wall = 0;
  std::function<void(Engine&)> Do;
  int Line = 0;  // of the script, from 1
};

/// Runs the configuration in a panel's memory: timers, inputs, sweeps, relays, dimmers. It knows no
/// clock but its own, which stands until it is told to advance, and it jumps from one instant at
/// which something can happen to the next. The same memory and the same calls give the same rows.
///
/// Numbers of relays, groups, inputs, timers, presets and dimmer outputs run from 0 to 47, of
/// devices from 1 to 64, of a device's inputs from 0 to 7; one outside throws std::out_of_range. A
/// copy runs on by itself, without the sink: so the future can be looked at. The memory must
/// outlive the engine and its copies; a change in it holds from the next call on.
class Engine {
 public:
  explicit Engine(const PanelMemory& memory);

  /// Gets every row from now on; an empty one ends that.
  void SetSink(Listener::Sink sink);

  /// Power comes: relays by their power-on type, inputs open, photocells at 0, no override.
  void PowerOn(Instant at);
  /// Power fails: everything is dark and nothing happens; contacts, light and clock go on.
  void CutPower();
  /// It comes back: as PowerOn, with what relays and contacts make of "Last State" and "On/In:1".
  void RestorePower();
  bool Powered() const { return State.Powered; }
  /// Whether photocells get the light of a clear day.
  void FollowSun(bool follows);
  bool FollowsSun() const { return State.Photocells.NextDaylight.has_value(); }
  /// Acts in order of time, which are done as their time comes; past ones are passed over.
  void SetScript(std::vector<ScriptedAct> acts);

  // The clock ------------------------------------------------------------------------------------
  const Calendar& Days() const { return State.Settings->Days; }
  Instant Now() const { return State.Now; }
  /// The wall clock, milliseconds since 1970.
  std::int64_t Wall() const { return State.Wall(); }
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
  int WeekdayToday() const { return PanelWeekday(State, Wall() / DayMs); }
  /// When the next row that is wanted comes, if it does within that time and nobody touches
  /// anything.
  std::optional<Instant> NextRow(std::int64_t within,
                                 const std::function<bool(const Row&)>& wanted) const;
  /// Of a day counted from 1970.
  SunAndHours HoursOf(std::int64_t day) const { return simulator::HoursOf(State, day); }

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

  // States ---------------------------------------------------------------------------------------
  const Configuration& Settings() const { return *State.Settings; }
  /// To keep and to compare: other settings are another one.
  std::shared_ptr<const Configuration> SharedSettings() const { return State.Settings; }
  /// All of it, to be read.
  const EngineState& Inside() const { return State; }
  /// Trimmed, in UTF-8.
  const std::string& RelayName(int relay) const {
    return State.Settings->Names.Relay.at(static_cast<std::size_t>(relay));
  }
  Mask Relays() const { return State.Relays.Output; }
  bool Relay(int relay) const { return Has(Relays(), relay); }
  /// Warning that it is about to go off.
  Mask BlinkingRelays() const { return simulator::BlinkingRelays(State); }
  bool Group(int group) const { return GroupIsOn(State, group); }
  /// Nothing for a preset that names no relay; otherwise whether all stand as it says.
  std::optional<bool> Preset(int preset) const { return PresetStands(State, preset); }
  /// Bit 0: the On contact is closed; bit 1: the Off contact.
  int InputState(int input) const {
    return State.Inputs.Contacts.at(static_cast<std::size_t>(input));
  }
  bool DeviceInput(int device, int input) const {
    return SwitchClosed(State, CheckedSwitch(device, input));
  }
  int DeviceInputBits(int device) const {
    return State.Inputs.DeviceContacts[CheckedDevice(device)];
  }
  int PhotocellLevel(int device) const { return simulator::PhotocellLevel(State, device); }
  bool Pilot(int input) const { return PilotIsLit(State, input); }
  bool DevicePilot(int device, int input) const {
    return PilotIsLit(State, CheckedSwitch(device, input));
  }
  int DimmerLevel(int output) const { return simulator::DimmerLevel(State, output); }

 private:
  /// Takes over a memory that has changed.
  void Refresh();
  void RunNext(Instant at);
  /// The first act of the script that is not past.
  void FindNextAct();
  /// When the next one is due.
  std::optional<Instant> LookUpAct();

  const PanelMemory* Memory;
  std::uint64_t KnownRevision;
  EngineState State;
  std::shared_ptr<const std::vector<ScriptedAct>> Script;
  std::size_t NextAct = 0;
  std::optional<Instant> NextActAt;
};

}  // namespace simulator

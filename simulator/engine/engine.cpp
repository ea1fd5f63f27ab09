#include "simulator/engine/engine.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "simulator/engine/daylight.h"
#include "simulator/engine/engine_relays.h"

namespace simulator {

namespace {

/// What is under way keeps its remaining time.
void MoveTo(EngineState& state, Instant present) {
  const std::int64_t way = present - state.Now;
  state.Now += way;
  state.Days.Undone += way;
  state.Coming.Move(way);
  for (PhotocellState::Light& light : state.Photocells.Lights) light.Since += way;
  state.Photocells.HeardFrom += way;
  for (DimmerState& dimmer : state.Dimmers) dimmer.Since += way;
}

/// As power comes: relays that are on then, no time that runs, everything else anew.
void StartAll(EngineState& state, Mask on) {
  const Subject cause{Subject::Kind::Power, 0, 0};
  state.Begin(cause);
  state.Powered = true;
  state.Days.Undone = state.Now;
  state.Days.DisabledTimers = 0;
  state.Coming = {};
  state.Relays = {};
  state.Inputs.Occupants.clear();
  state.Inputs.Disabled = 0;
  StartPhotocells(state);
  StartDays(state);
  state.TellFires(cause, "power comes");
  TurnOn(state, on);
  StartDimmers(state);
  Settle(state, cause);
  TellAllShown(state, cause);
}

void RunPending(EngineState& state) {
  const Pending due = state.Coming.Take();
  state.Acting = due.Begun;
  switch (due.What) {
    case Due::WarningOver:
      TurnOff(state, due.Relays);
      Settle(state, {}, "warning over");
      break;
    case Due::TimeOver:
      TellRelays(state, 0, due.Relays, reading::OffAtTimesEnd);
      Settle(state, {}, "timed on over");
      break;
    case Due::PulseOver:
      TurnOff(state, due.Relays);
      Settle(state, {}, "pulse over");
      break;
    case Due::PulseBack:
      TurnOn(state, due.Relays);
      Settle(state, {}, "pulse over");
      break;
    case Due::OverrideOver:
      TellRelays(state, 0, due.Relays, reading::OffAtTimesEnd);
      Settle(state, {}, "override over");
      break;
    case Due::Photocell:
      RunPhotocell(state, due.Number);
      break;
    case Due::Dimmer:
      RevertAfterTime(state, due.Number);
      break;
  }
}

}  // namespace

bool Matters(const Row& row, const Configuration& settings) {
  using enum Subject::Kind;
  if (row.Cause.What == Sweep) return row.What != Change::Fires;
  if (row.Cause.What == Photocell) return row.What != Change::Level;
  if (row.Item.What != DeviceInput) return true;
  const InputSettings& inputs = settings.Inputs;
  const auto at = static_cast<std::size_t>(SwitchOf(row.Item.Number, row.Item.Sub));
  return !inputs.IsPhotocell[static_cast<std::size_t>(row.Item.Number)] ||
         inputs.Each[at].All() != 0 || settings.Dimmers.SlotSwitches[at];
}

Engine::Engine(const PanelMemory& memory) : Memory(&memory), KnownRevision(memory.Revision()) {
  State.Settings = std::make_shared<Configuration>(memory);
}

void Engine::SetSink(Listener::Sink sink) {
  State.Out.Set(std::move(sink));
  RememberShown(State);
}

void Engine::PowerOn(Instant at) {
  Refresh();
  State.Now = at;
  const auto silent = State.Inputs.Silent;
  State.Inputs = {};
  State.Inputs.Silent = silent;
  const bool daylight = FollowsSun();
  State.Photocells = {};
  State.Photocells.Lights.fill({0, 0, at});
  State.Shown = {};
  State.Shown.Pilots.assign(State.Settings->Inputs.Pilots.size(), false);
  StartAll(State, State.Settings->Relays.OnAfterPower);
  if (daylight) StartDaylight(State);
  FindNextAct();
}

void Engine::CutPower() {
  Refresh();
  if (!State.Powered) return;
  const Subject cause{Subject::Kind::Power, 0, 0};
  State.Begin(cause);
  State.TellFires(cause, "power fails");
  State.Powered = false;
  State.Coming = {};
  State.Days.NextSweep.reset();
  RelayState dead;
  dead.AtCut = dead.Output = State.Relays.Output;
  State.Relays = dead;
  State.Shown.LevelsChange = true;
  Settle(State, cause);
  TellAllShown(State, cause);
}

void Engine::RestorePower() {
  Refresh();
  if (State.Powered) return;
  const RelaySettings& relays = State.Settings->Relays;
  const Mask last = State.Relays.AtCut & relays.LastState;
  const Mask byInput = SwitchClosed(State, 0) ? relays.OnWithInput1 : 0;
  // The panel knows nothing of photocells yet.
  for (int device = 1; device <= Devices; ++device) {
    const auto place = static_cast<std::size_t>(device);
    if (State.Settings->Inputs.IsPhotocell[place]) State.Inputs.DeviceContacts[place] = 0;
    PhotocellState::Light& light = State.Photocells.Lights[place];
    light = {light.To, light.To, State.Now};
  }
  StartAll(State, relays.OnAfterPower | last | byInput);
  RunLevelSwitches(State, {Subject::Kind::Power, 0, 0});
}

void Engine::FollowSun(bool follows) {
  Refresh();
  if (follows == FollowsSun()) return;
  State.Photocells.NextDaylight.reset();
  if (follows) StartDaylight(State);
}

void Engine::SetScript(std::vector<ScriptedAct> acts) {
  Script = std::make_shared<const std::vector<ScriptedAct>>(std::move(acts));
  FindNextAct();
}

void Engine::FindNextAct() {
  NextAct = 0;
  while (LookUpAct().value_or(Now()) < Now()) ++NextAct;
}

std::optional<Instant> Engine::LookUpAct() {
  NextActAt.reset();
  if (Script && NextAct < Script->size()) NextActAt = Days().FromWall((*Script)[NextAct].Wall);
  return NextActAt;
}

void Engine::Refresh() {
  if (Memory->Revision() == KnownRevision) return;
  const std::int64_t wall = Wall();
  HoldLights(State);
  const std::shared_ptr<const Configuration> known = State.Settings;
  KnownRevision = Memory->Revision();
  State.Settings = std::make_shared<Configuration>(*Memory);
  // A rule of daylight saving that comes or goes does not move the clock.
  if (Wall() != wall) MoveTo(State, Days().FromWall(wall));
  if (State.Powered) StartPhotocells(State, known.get());
  StartDays(State);
  if (FollowsSun()) StartDaylight(State);
  LookUpAct();
  RememberShown(State);
}

void Engine::SetWall(std::int64_t wall) {
  Refresh();
  MoveTo(State, Days().FromWall(wall));
  State.Days.Undone = State.Now;
  StartDays(State);
  if (FollowsSun()) StartDaylight(State);
  FindNextAct();
}

void Engine::SetWeekdayShift(int days) {
  State.Days.WeekdayShift = days;
  StartDays(State);
}

Instant Engine::NextInstant() const {
  Instant next = std::numeric_limits<Instant>::max();
  const auto consider = [&next](const std::optional<Instant>& at) {
    next = std::min(next, at.value_or(next));
  };
  if (State.Powered) {
    consider(NextPlanned(State));
    consider(State.Coming.Next());
    consider(State.Days.NextSweep);
  }
  consider(State.Photocells.NextDaylight);
  consider(NextActAt);
  return next;
}

/// What is due at this instant and comes first.
void Engine::RunNext(Instant at) {
  if (State.Powered && State.Coming.Next() == at) {
    RunPending(State);
  } else if (State.Powered && NextPlanned(State) == at) {
    RunPlanned(State);
  } else if (State.Powered && State.Days.NextSweep == at) {
    RunSweep(State);
  } else if (State.Photocells.NextDaylight == at) {
    RunDaylight(State);
  } else {
    const ScriptedAct& act = (*Script)[NextAct++];
    LookUpAct();
    act.Do(*this);
  }
}

void Engine::AdvanceTo(Instant to) {
  Refresh();
  for (Instant next = NextInstant(); next <= to; next = NextInstant()) {
    State.Now = std::max(State.Now, next);
    RunNext(next);
  }
  if (to < State.Now) return;
  State.Now = to;
  State.Days.Undone = to + 1;
}

void Engine::SetRelay(int relay, bool on, Subject::Kind by) {
  SetRelays(on ? Bit(relay) : 0, on ? 0 : Bit(relay), by);
}

void Engine::SetRelays(Mask on, Mask off, Subject::Kind by) {
  Refresh();
  if (!State.Powered) return;
  State.Begin({by, 0, 0});
  PersonTurnsOn(State, on);
  TellRelays(State, 0, off, reading::OffByPerson);
  Settle(State, {by, 0, 0});
}

void Engine::SetGroup(int group, bool on, Subject::Kind by) {
  Refresh();
  const Mask members = State.Settings->Groups.at(static_cast<std::size_t>(group));
  SetRelays(on ? members : 0, on ? 0 : members, by);
}

void Engine::SetPreset(int preset, Subject::Kind by) {
  Refresh();
  if (!State.Powered) return;
  const Subject cause{by, 0, 0};
  State.Begin(cause);
  ApplyPreset(State, preset, cause);
  Settle(State, cause);
}

void Engine::ForceTimer(int timer, Subject::Kind by) {
  Refresh();
  if (!State.Powered) return;
  State.Begin({by, 0, 0});
  ApplyTimer(State, timer, {by, 0, 0});
}

void Engine::SetContact(int input, Contact contact, bool closed) {
  Refresh();
  simulator::SetContact(State, input, contact, closed);
}

void Engine::SetDeviceInput(int device, int input, bool closed) {
  Refresh();
  simulator::SetDeviceInput(State, device, input, closed);
}

void Engine::SetPhotocell(int device, int level) {
  Refresh();
  simulator::SetPhotocell(State, device, level);
}

void Engine::SetSilent(int device, bool silent) {
  Refresh();
  bool& known = State.Inputs.Silent[CheckedDevice(device)];
  if (std::exchange(known, silent) == silent || !State.Powered) return;
  State.Begin({Subject::Kind::Hand, 0, 0});
  RunPhotocell(State, device);
  RunLevelSwitches(State, {Subject::Kind::Hand, 0, 0});
}

std::optional<Instant> Engine::NextRow(std::int64_t within,
                                       const std::function<bool(const Row&)>& wanted) const {
  std::optional<Instant> time;
  Engine ahead = *this;
  ahead.SetSink([&](const Row& row) {
    if (!time && wanted(row)) time = row.Time;
  });
  while (!time && ahead.NextInstant() <= Now() + within) ahead.AdvanceTo(ahead.NextInstant());
  return time;
}

}  // namespace simulator

#include "simulator/engine/engine.h"

#include <algorithm>
#include <limits>
#include <utility>

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
  for (DimmerState& dimmer : state.Dimmers) dimmer.Since += way;
}

void RunPending(EngineState& state) {
  const Pending due = state.Coming.Take();
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
      if (!state.Days.IsOpen) TellRelays(state, 0, due.Relays, reading::OffAtTimesEnd);
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

Engine::Engine(const PanelMemory& memory) : Memory(&memory), KnownRevision(memory.Revision()) {
  State.Settings = std::make_shared<Configuration>(memory);
}

void Engine::SetSink(Listener::Sink sink) {
  State.Out.Set(std::move(sink));
  RememberShown(State);
}

void Engine::PowerOn(Instant at) {
  Refresh();
  State.Now = State.Days.Undone = at;
  State.Coming = {};
  State.Relays = {};
  const auto silent = State.Inputs.Silent;
  State.Inputs = {};
  State.Inputs.Silent = silent;
  State.Days.DisabledTimers = 0;
  State.Photocells = {};
  State.Photocells.Lights.fill({0, 0, at});
  State.Shown = {};
  State.Shown.Pilots.assign(State.Settings->Inputs.Pilots.size(), false);
  StartPhotocells(State, *State.Settings);
  StartDays(State);

  const Subject cause{Subject::Kind::Power, 0, 0};
  State.TellFires(cause, "power comes");
  TurnOn(State, State.Settings->Relays.OnAfterPower);
  StartDimmers(State);
  Settle(State, cause);
  TellAllShown(State, cause);
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
  StartPhotocells(State, *known);
  StartDays(State);
  RememberShown(State);
}

void Engine::SetWall(std::int64_t wall) {
  Refresh();
  MoveTo(State, Days().FromWall(wall));
  State.Days.Undone = State.Now;
  StartDays(State);
}

void Engine::SetWeekdayShift(int days) {
  State.Days.WeekdayShift = days;
  StartDays(State);
}

Instant Engine::NextInstant() const {
  Instant next = std::numeric_limits<Instant>::max();
  for (const auto& at : {NextPlanned(State), State.Coming.Next(), State.Days.NextSweep}) {
    next = std::min(next, at.value_or(next));
  }
  return next;
}

void Engine::AdvanceTo(Instant to) {
  Refresh();
  for (Instant next = NextInstant(); next <= to; next = NextInstant()) {
    State.Now = std::max(State.Now, next);
    if (State.Coming.Next() == next) {
      RunPending(State);
    } else if (NextPlanned(State) == next) {
      RunPlanned(State);
    } else {
      RunSweep(State);
    }
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
  const Subject cause{by, 0, 0};
  ApplyPreset(State, preset, cause);
  Settle(State, cause);
}

void Engine::ForceTimer(int timer, Subject::Kind by) {
  Refresh();
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
  if (std::exchange(known, silent) == silent) return;
  RunPhotocell(State, device);
  RunLevelSwitches(State, {Subject::Kind::Hand, 0, 0});
}

std::optional<Instant> Engine::NextRow(std::int64_t within) const {
  std::optional<Instant> time;
  Engine ahead = *this;
  ahead.SetSink([&time](const Row& row) { time = time.value_or(row.Time); });
  while (!time && ahead.NextInstant() <= Now() + within) ahead.AdvanceTo(ahead.NextInstant());
  return time;
}

}  // namespace simulator

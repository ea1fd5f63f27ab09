#include "simulator/engine/engine.h"

// How relays take what they are told. Only the outcome of a moment counts: Settle shows it.

namespace simulator {

void Engine::SetRelays(Mask on, Mask off, Subject::Kind by) {
  Refresh();
  PersonTurnsOn(on);
  TellRelays(0, off, reading::OffByPerson);
  Settle({by, 0, 0});
}

void Engine::SetRelay(int relay, bool on, Subject::Kind by) {
  SetRelays(on ? Bit(relay) : 0, on ? 0 : Bit(relay), by);
}

void Engine::SetGroup(int group, bool on, Subject::Kind by) {
  Refresh();
  const Mask members = Settings->GroupRelays.at(static_cast<std::size_t>(group));
  SetRelays(on ? members : 0, on ? 0 : members, by);
}

void Engine::SetPreset(int preset, Subject::Kind by) {
  Refresh();
  const Subject cause{by, 0, 0};
  ApplyPreset(preset, cause);
  Settle(cause);
}

void Engine::ApplyPreset(int preset, const Subject& cause) {
  const auto at = static_cast<std::size_t>(preset);
  const Outcome& wanted = Settings->Presets.at(at);
  Tell(cause, {Subject::Kind::Preset, preset, 0}, Change::Fires, Settings->PresetNames[at]);
  PersonTurnsOn(wanted.On);
  TellRelays(0, wanted.Off, reading::OffByPerson);
  RunSlots(DimmerSlot::Kind::Preset, preset);
}

void Engine::ForceTimer(int timer, Subject::Kind by) {
  Refresh();
  ApplyTimer(timer, {by, 0, 0});
}

void Engine::ApplyTimer(int timer, const Subject& cause) {
  Tell(cause, {Subject::Kind::Timer, timer, 0}, Change::Fires,
       Settings->TimerNames.at(static_cast<std::size_t>(timer)));
  RunTimer(timer, cause);
}

void Engine::TellRelays(Mask on, Mask off, Manner manner) {
  TurnOn(on);
  const Mask warns = manner == Manner::Warning ? off & (Settings->Blinks | Settings->HIDDelay) : 0;
  WarnOff(warns);
  TurnOff(off & ~warns);
}

void Engine::TurnOn(Mask on) {
  // What runs for a moment only is not begun again while it runs.
  on &= ~(Told & (Settings->PulsedOn | Settings->AlarmOn));
  Forget(on);
  const Mask started = on & ~Told;
  Told |= on;
  Schedule({Present + reading::PulseMs, Due::PulseOver, started & Settings->PulsedOn});
  Schedule({Present + Settings->AlarmMs, Due::PulseOver, started & Settings->AlarmOn});
}

void Engine::TurnOff(Mask off) {
  off &= Told | ~(Settings->PulsedOff | Settings->AlarmOff);
  Forget(off);
  const Mask ended = off & Told;
  Told &= ~off;
  for (Occupant& occupant : Occupants) occupant.Relays &= ~off;
  Schedule({Present + reading::PulseMs, Due::PulseBack, ended & Settings->PulsedOff});
  Schedule({Present + Settings->AlarmMs, Due::PulseBack, ended & Settings->AlarmOff});
}

void Engine::WarnOff(Mask off) {
  if (Settings->BlinkAlertMs == 0) {
    TurnOff(off);
    return;
  }
  const Mask begins = off & Told & ~Warned;
  Forget(begins);
  Warned |= begins;
  Schedule({Present + Settings->BlinkAlertMs, Due::WarningOver, begins});
}

void Engine::PersonTurnsOn(Mask on) {
  TurnOn(on);
  BeginOverride(on);
}

void Engine::BeginOverride(Mask relays) {
  if (BuildingOpen || Settings->OverrideMs == 0) return;
  Schedule(
      {Present + Settings->OverrideMs, Due::OverrideOver, relays & Settings->Swept & ~Occupied()});
}

void Engine::Forget(Mask relays) {
  Warned &= ~relays;
  if (relays == 0 || Queue.empty()) return;
  for (Pending& pending : Queue) pending.Relays &= ~relays;
  std::erase_if(Queue, [](const Pending& pending) {
    return pending.Relays == 0 && pending.What != Due::Photocell && pending.What != Due::Dimmer;
  });
}

Mask Engine::Waiting(Due due) const {
  Mask relays = 0;
  for (const Pending& pending : Queue) {
    if (pending.What == due) relays |= pending.Relays;
  }
  return relays;
}

}  // namespace simulator

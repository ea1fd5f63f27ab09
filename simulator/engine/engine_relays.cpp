#include "simulator/engine/engine_relays.h"

#include "simulator/engine/engine_dimmers.h"
#include "simulator/engine/engine_inputs.h"
#include "simulator/engine/engine_settle.h"

namespace simulator {

void ApplyPreset(EngineState& state, int preset, const Subject& cause) {
  const auto at = static_cast<std::size_t>(preset);
  const Outcome& wanted = state.Settings->Presets.at(at);
  state.Tell(cause, {Subject::Kind::Preset, preset, 0}, Change::Fires,
             state.Settings->Names.Preset[at]);
  PersonTurnsOn(state, wanted.On);
  TellRelays(state, 0, wanted.Off, reading::OffByPerson);
  RunSlots(state, DimmerSlot::Kind::Preset, preset);
}

void ApplyTimer(EngineState& state, int timer, const Subject& cause) {
  state.Tell(cause, {Subject::Kind::Timer, timer, 0}, Change::Fires,
             state.Settings->Names.Timer.at(static_cast<std::size_t>(timer)));
  RunTimer(state, timer, cause);
}

void RunTimer(EngineState& state, int timer, const Subject& cause) {
  const TimerSetting& setting = state.Settings->Timers[static_cast<std::size_t>(timer)];
  const DimmerSettings& dimmers = state.Settings->Dimmers;
  TellRelays(state, setting.Relays.On, setting.Relays.Off, reading::OffByTimer);
  if (Has(dimmers.SlotTimers, timer)) RunSlots(state, DimmerSlot::Kind::Timer, timer);
  EachBit(setting.Presets & dimmers.SlotPresets,
          [&](int preset) { RunSlots(state, DimmerSlot::Kind::Preset, preset); });
  Settle(state, cause);
}

void TellRelays(EngineState& state, Mask on, Mask off, Manner manner) {
  const RelaySettings& settings = state.Settings->Relays;
  TurnOn(state, on);
  const Mask warns = manner == Manner::Warning ? off & (settings.Blinks | settings.HIDDelay) : 0;
  WarnOff(state, warns);
  TurnOff(state, off & ~warns);
}

void TurnOn(EngineState& state, Mask on) {
  const RelaySettings& settings = state.Settings->Relays;
  Mask& told = state.Relays.Told;
  // What runs for a moment only is not begun again while it runs.
  const Mask started = on & ~state.Coming.RelaysWaiting(Due::PulseOver);
  Forget(state, on);
  told |= on;
  const auto end = [&](std::int64_t ms, Mask kind) {
    state.Await(state.Now + ms, Due::PulseOver, started & kind);
  };
  end(reading::PulseMs, settings.PulsedOn);
  end(settings.AlarmMs, settings.AlarmOn);
}

void TurnOff(EngineState& state, Mask off) {
  const RelaySettings& settings = state.Settings->Relays;
  Mask& told = state.Relays.Told;
  off &= told | ~(settings.PulsedOff | settings.AlarmOff);
  const Mask ended = off & told;
  told &= ~off;
  Forget(state, off);
  for (InputState::Occupant& occupant : state.Inputs.Occupants) occupant.Relays &= ~off;
  const auto goBack = [&](std::int64_t ms, Mask kind) {
    state.Await(state.Now + ms, Due::PulseBack, ended & kind);
  };
  goBack(reading::PulseMs, settings.PulsedOff);
  goBack(settings.AlarmMs, settings.AlarmOff);
}

void WarnOff(EngineState& state, Mask off) {
  const std::int64_t warningMs = state.Settings->Relays.BlinkAlertMs;
  if (warningMs == 0) {
    TurnOff(state, off);
    return;
  }
  const Mask begins = off & state.Relays.Told & ~state.Relays.Warned;
  Forget(state, begins);
  state.Relays.Warned |= begins;
  state.Await(state.Now + warningMs, Due::WarningOver, begins);
}

void PersonTurnsOn(EngineState& state, Mask on) {
  TurnOn(state, on);
  BeginOverride(state, on);
}

void BeginOverride(EngineState& state, Mask relays) {
  const HoursSettings& hours = state.Settings->Hours;
  if (state.Days.IsOpen || hours.OverrideMs == 0) return;
  state.Await(state.Now + hours.OverrideMs, Due::OverrideOver,
              relays & hours.Swept & ~OccupiedRelays(state));
}

void Forget(EngineState& state, Mask relays) {
  state.Relays.Warned &= ~relays;
  const RelaySettings& settings = state.Settings->Relays;
  state.Coming.ForgetRelays(relays, state.Relays.Told & (settings.PulsedOn | settings.AlarmOn));
}

}  // namespace simulator

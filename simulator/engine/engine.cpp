#include "simulator/engine/engine.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace simulator {

Engine::Engine(const PanelMemory& memory)
    : Memory(&memory),
      KnownRevision(memory.Revision()),
      Settings(std::make_shared<Configuration>(memory)),
      Sky(Settings->Latitude, Settings->LongitudeWest) {}

void Engine::SetSink(Sink sink) {
  Out.Call = std::move(sink);
  RememberShown();
}

void Engine::PowerOn(Instant at) {
  Refresh();
  Present = Undone = at;
  Queue.clear();
  Told = Held = HeldOn = Output = Warned = BlinkShown = InputsOff = TimersOff = StatusHeld = 0;
  Contacts.fill(0);
  DeviceContacts.fill(0);
  Occupants.clear();
  Lights.fill({0, 0, at});
  Unheard.reset();
  GroupsShown = PresetsShown = 0;
  PilotsShown.assign(Settings->Pilots.size(), false);
  StartPhotocells(*Settings);
  StartHours();
  PlanAnew();

  const Subject cause{Subject::Kind::Power, 0, 0};
  TellFires(cause, "power comes");
  TurnOn(Settings->OnAfterPower);
  StartDimmers();
  Settle(cause);
  TellGroupsAndPresets(cause, AllItems);
  TellPilots(cause);
}

void Engine::Refresh() {
  if (Memory->Revision() == KnownRevision) return;
  const std::int64_t wall = Wall();
  for (int device = 1; device <= Devices; ++device) {
    Light& light = Lights[static_cast<std::size_t>(device)];
    light = {LightNow(device), light.To, Present};
  }
  const std::shared_ptr<const Configuration> known = Settings;
  KnownRevision = Memory->Revision();
  Settings = std::make_shared<Configuration>(*Memory);
  Sky = Sun(Settings->Latitude, Settings->LongitudeWest);
  // A rule of daylight saving that comes or goes does not move the clock.
  if (Wall() != wall) MoveTo(Settings->Days.FromWall(wall));
  StartPhotocells(*known);
  StartHours();
  PlanAnew();
  RememberShown();
}

void Engine::MoveTo(Instant present) {
  const std::int64_t way = present - Present;
  Present += way;
  Undone += way;
  for (Pending& pending : Queue) pending.At += way;
  for (Light& light : Lights) light.Since += way;
  for (DimmerState& dimmer : DimmerStates) dimmer.Since += way;
}

void Engine::SetWall(std::int64_t wall) {
  Refresh();
  MoveTo(Settings->Days.FromWall(wall));
  Undone = Present;
  StartHours();
  PlanAnew();
}

void Engine::SetWeekdayShift(int days) {
  WeekdayShift = days;
  StartHours();
  PlanAnew();
}

Instant Engine::NextInstant() const {
  Instant next = std::numeric_limits<Instant>::max();
  if (PlanHead < Plan.size()) next = Plan[PlanHead] / OrdersAnInstant;
  if (!Queue.empty()) next = std::min(next, Queue.back().At);
  if (NextSweep) next = std::min(next, *NextSweep);
  return next;
}

void Engine::AdvanceTo(Instant to) {
  Refresh();
  for (Instant next = NextInstant(); next <= to; next = NextInstant()) {
    Present = std::max(Present, next);
    if (!Queue.empty() && Queue.back().At == next) {
      RunPending();
    } else if (PlanHead < Plan.size() && Plan[PlanHead] / OrdersAnInstant == next) {
      RunPlanned();
    } else {
      Sweep();
    }
  }
  if (to < Present) return;
  Present = to;
  Undone = to + 1;
}

void Engine::Schedule(const Pending& pending) {
  if (pending.What != Due::Photocell && pending.What != Due::Dimmer && pending.Relays == 0) return;
  // Behind what is due at the same instant already.
  const auto place =
      std::lower_bound(Queue.begin(), Queue.end(), pending,
                       [](const Pending& a, const Pending& b) { return a.At > b.At; });
  Queue.insert(place, pending);
}

void Engine::RunPending() {
  const Pending due = Queue.back();
  Queue.pop_back();
  std::string_view words;
  Subject cause;
  switch (due.What) {
    case Due::WarningOver:
      TurnOff(due.Relays);
      words = "warning over";
      break;
    case Due::TimeOver:
      TellRelays(0, due.Relays, reading::OffAtTimesEnd);
      words = "timed on over";
      break;
    case Due::PulseOver:
      TurnOff(due.Relays);
      words = "pulse over";
      break;
    case Due::PulseBack:
      TurnOn(due.Relays);
      words = "pulse over";
      break;
    case Due::OverrideOver:
      if (!BuildingOpen) TellRelays(0, due.Relays, reading::OffAtTimesEnd);
      words = "override over";
      break;
    case Due::Photocell:
      RunPhotocell(due.Number);
      return;
    case Due::Dimmer:
      cause = {Subject::Kind::Dimmer, due.Number / 4, due.Number % 4};
      TellFires(cause, "revert time over");
      RevertDimmer(due.Number, Settings->Dimmers[static_cast<std::size_t>(due.Number)].FadeMs);
      break;
  }
  Settle(cause, words);
}

void Engine::Settle(const Subject& cause, std::string_view ownWords) {
  const Mask next = (Told & ~Held) | HeldOn;
  const Mask changed = next ^ Output;
  if ((changed & Settings->DimmedRelays) != 0) FollowRelays(next);
  Output = next;
  const Mask blinks = BlinkingRelays();
  if (Out.Call) {
    Subject source = cause;
    const Mask told = changed | (blinks ^ BlinkShown);
    if (!ownWords.empty() && told != 0) {
      source = {Subject::Kind::Relay, std::countr_zero(told), 0};
    }
    if (told != 0) TellSettledRelays(cause, ownWords, changed, blinks);
    if (changed != 0) {
      TellGroupsAndPresets(source, changed);
      TellPilots(source);
    }
    if (DimmersTouched || (changed & Settings->DimmedRelays) != 0) TellDimmers(source);
  }
  BlinkShown = blinks;
  DimmersTouched = false;
}

void Engine::TellSettledRelays(const Subject& cause, std::string_view ownWords, Mask changed,
                               Mask blinks) {
  EachBit(changed | (blinks ^ BlinkShown), [&](int relay) {
    const Subject item{Subject::Kind::Relay, relay, 0};
    const Subject& source = ownWords.empty() ? cause : item;
    const std::string& name = Settings->RelayNames[static_cast<std::size_t>(relay)];
    if (!ownWords.empty()) TellFires(source, ownWords);
    const bool begins = Has(blinks & ~BlinkShown, relay);
    const bool on = Has(Output, relay);
    if (Has(changed, relay) || !begins) {
      Tell(source, item, on ? Change::On : Change::Off, name);
    }
    if (begins) Tell(source, item, Change::Blinks, name);
  });
}

void Engine::TellGroupsAndPresets(const Subject& cause, Mask changed) {
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if ((Settings->GroupRelays[at] & changed) == 0) continue;
    const bool on = Group(i);
    if (on == Has(GroupsShown, i)) continue;
    GroupsShown ^= Bit(i);
    Tell(cause, {Subject::Kind::Group, i, 0}, on ? Change::On : Change::Off,
         Settings->GroupNames[at]);
  }
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const Outcome& named = Settings->Presets[at];
    if (((named.On | named.Off) & changed) == 0) continue;
    const bool on = Preset(i).value_or(false);
    if (on == Has(PresetsShown, i)) continue;
    PresetsShown ^= Bit(i);
    Tell(cause, {Subject::Kind::Preset, i, 0}, on ? Change::On : Change::Off,
         Settings->PresetNames[at]);
  }
}

void Engine::TellPilots(const Subject& cause) {
  if (!Out.Call) return;
  for (std::size_t i = 0; i < Settings->Pilots.size(); ++i) {
    const PilotSetting& pilot = Settings->Pilots[i];
    const bool lit = PilotOf(pilot);
    if (lit == PilotsShown[i]) continue;
    PilotsShown[i] = lit;
    Subject item = SwitchSubject(pilot.Switch);
    item.What =
        item.What == Subject::Kind::Input ? Subject::Kind::Pilot : Subject::Kind::DevicePilot;
    const auto number = static_cast<std::size_t>(item.Number);
    Tell(cause, item, lit ? Change::On : Change::Off,
         item.What == Subject::Kind::Pilot ? Settings->InputNames[number]
                                           : Settings->DeviceNames[number]);
  }
}

void Engine::Tell(const Subject& cause, const Subject& item, Change what, std::string_view words,
                  int level) const {
  if (Out.Call) Out.Call({Present, cause, item, what, level, words});
}

void Engine::TellFires(const Subject& cause, std::string_view words) const {
  Tell(cause, {}, Change::Fires, words);
}

void Engine::RememberShown() {
  GroupsShown = PresetsShown = 0;
  for (int i = 0; i < Items; ++i) {
    if (Group(i)) GroupsShown |= Bit(i);
    if (Preset(i).value_or(false)) PresetsShown |= Bit(i);
  }
  PilotsShown.clear();
  for (const PilotSetting& pilot : Settings->Pilots) PilotsShown.push_back(PilotOf(pilot));
  for (int i = 0; i < DimmerOutputs; ++i) {
    DimmerStates[static_cast<std::size_t>(i)].Told = GoalLevel(i);
  }
}

bool Engine::Group(int group) const {
  const Mask members = Settings->GroupRelays.at(static_cast<std::size_t>(group));
  return members != 0 && (Output & members) == members;
}

std::optional<bool> Engine::Preset(int preset) const {
  const Outcome& named = Settings->Presets.at(static_cast<std::size_t>(preset));
  if ((named.On | named.Off) == 0) return std::nullopt;
  return (Output & named.On) == named.On && (Output & named.Off) == 0;
}

bool Engine::PilotOf(const PilotSetting& pilot) const {
  switch (pilot.What) {
    case PilotSetting::Kind::Relay:
      return Relay(pilot.Number);
    case PilotSetting::Kind::Group:
      return Group(pilot.Number);
    case PilotSetting::Kind::Preset:
      return Preset(pilot.Number).value_or(false);
    default:
      return pilot.Number != 0;
  }
}

bool Engine::Pilot(int number) const {
  for (const PilotSetting& pilot : Settings->Pilots) {
    if (pilot.Switch == number) return PilotOf(pilot);
  }
  return false;
}

std::optional<Instant> Engine::NextRow(std::int64_t within) const {
  std::optional<Instant> time;
  Engine ahead = *this;
  ahead.SetSink([&time](const Row& row) { time = time.value_or(row.Time); });
  while (!time && ahead.NextInstant() <= Present + within) ahead.AdvanceTo(ahead.NextInstant());
  return time;
}

}  // namespace simulator

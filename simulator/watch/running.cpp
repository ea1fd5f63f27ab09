#include "simulator/watch/running.h"

#include <algorithm>
#include <cstdlib>

#include "simulator/memory/digits.h"

namespace simulator {

namespace {

/// Gathers the list, a function a part of it.
class Gatherer {
 public:
  explicit Gatherer(const Engine& engine)
      : Runner(engine), State(engine.Inside()), Settings(engine.Settings()) {}

  std::vector<Running> All() {
    if (!State.Powered) {
      Add({}, "No power", {Subject::Kind::Power, 0, 0});
      return List;
    }
    for (const Pending& pending : State.Coming.All()) AddPending(pending);
    if (State.Days.NextSweep) {
      Add(State.Days.NextSweep, "Building closed, next SWEEP", {Subject::Kind::Sweep, 0, 0});
    }
    AddFades();
    std::stable_sort(List.begin(), List.end(), [](const Running& a, const Running& b) {
      return a.Until.value_or(Never) < b.Until.value_or(Never);
    });
    AddHolds();
    AddDisabled();
    AddInForce();
    return List;
  }

 private:
  static constexpr Instant Never = INT64_MAX;

  void Add(const std::optional<Instant>& until, const std::string& words, const Subject& about) {
    List.push_back({until, words, about});
  }

  std::string Named(const Subject& item) const { return NamedText(item, Settings); }

  void AddPending(const Pending& pending) {
    const auto addOf = [&](Mask some, const char* what) {
      if (some == 0) return;
      const Subject first{Subject::Kind::Relay, std::countr_zero(some), 0};
      Add(pending.At,
          std::string(what) + ": " + RelayList(some, Settings) + " (" + Named(pending.Begun.Who) +
              " of " + ShortTime(pending.Begun.Since, Runner.Now(), Settings.Days) + ")",
          first);
    };
    const auto add = [&](const char* what) { addOf(pending.Relays, what); };
    const RelaySettings& relays = Settings.Relays;
    const bool alarm = (pending.Relays & (relays.AlarmOn | relays.AlarmOff)) != 0;
    switch (pending.What) {
      case Due::WarningOver:
        addOf(pending.Relays & ~relays.HIDDelay, "Blinks, then off");
        return addOf(pending.Relays & relays.HIDDelay, "Delay, then off");
      case Due::TimeOver:
        return add("Timed on");
      case Due::PulseOver:
        return add(alarm ? "Alarm, then off" : "Pulse, then off");
      case Due::PulseBack:
        return add(alarm ? "Alarm, then on" : "Pulse, then on");
      case Due::OverrideOver:
        return add("Override");
      case Due::Photocell:
        return AddLight(pending);
      case Due::Dimmer: {
        const Subject item{Subject::Kind::Dimmer, pending.Number / OutputsADimmer,
                           pending.Number % OutputsADimmer};
        return Add(pending.At, "Reverts: " + Named(item), item);
      }
    }
  }

  /// A photocell tells of several levels on its way; only the last counts.
  void AddLight(const Pending& pending) {
    const Subject item{Subject::Kind::Photocell, pending.Number, 0};
    const auto& light = State.Photocells.Lights[static_cast<std::size_t>(pending.Number)];
    if (light.From == light.To) return;
    for (Running& known : List) {
      if (known.About != item) continue;
      known.Until = std::max(known.Until, std::optional(pending.At));
      return;
    }
    Add(pending.At,
        "Light on its way to " + std::to_string(light.To / LightUnits) + ": " + Named(item), item);
  }

  void AddFades() {
    for (int output = 0; output < DimmerOutputs; ++output) {
      const int goal = GoalLevel(State, output);
      const int way = std::abs(goal - DimmerLevel(State, output));
      const std::int64_t fadeMs = State.Dimmers[static_cast<std::size_t>(output)].FadeMs;
      if (way == 0 || fadeMs == 0) continue;
      const Subject item{Subject::Kind::Dimmer, output / OutputsADimmer, output % OutputsADimmer};
      Add(Runner.Now() + way * fadeMs / FullLevel,
          "Fades to " + std::to_string(goal) + ": " + Named(item), item);
    }
  }

  void AddHolds() {
    EachBit(State.Relays.Held, [&](int relay) {
      const Subject item{Subject::Kind::Relay, relay, 0};
      const bool on = Has(State.Relays.HeldOn, relay);
      Add({},
          std::string(on ? "Held on" : "Held off") + ": " + RelayList(Bit(relay), Settings) + " (" +
              HeldBy(item, Runner) + ")",
          item);
    });
    for (const InputState::Occupant& occupant : State.Inputs.Occupants) {
      if (occupant.Relays == 0) continue;
      Add({},
          "No sweep while " + Named(SwitchSubject(occupant.Switch)) +
              " is closed: " + RelayList(occupant.Relays, Settings),
          SwitchSubject(occupant.Switch));
    }
  }

  void AddDisabled() {
    const auto add = [&](Mask items, Subject::Kind kind) {
      EachBit(items, [&](int i) {
        const Subject item{kind, i, 0};
        Add({}, "Disabled: " + Named(item) + " (" + HeldBy(item, Runner) + ")", item);
      });
    };
    add(State.Inputs.Disabled, Subject::Kind::Input);
    add(State.Days.DisabledTimers, Subject::Kind::Timer);
  }

  void AddInForce() {
    for (int i = 0; i < Items; ++i) {
      const Subject item{Subject::Kind::Preset, i, 0};
      if (PresetStands(State, i).value_or(false)) Add({}, "In force: " + Named(item), item);
    }
    for (const int number : Settings.Inputs.LevelSwitches) {
      if (!LevelSwitchInForce(State, number)) continue;
      const Subject item = SwitchSubject(number);
      Add({}, "In force while closed: " + Named(item), item);
    }
  }

  const Engine& Runner;
  const EngineState& State;
  const Configuration& Settings;
  std::vector<Running> List;
};

}  // namespace

std::vector<Running> RunningNow(const Engine& engine) {
  return Gatherer(engine).All();
}

std::string TimeLeft(const std::optional<Instant>& until, Instant now) {
  if (!until) return "-";
  const std::int64_t seconds = (std::max<std::int64_t>(*until - now, 0) + SecondMs - 1) / SecondMs;
  constexpr std::int64_t hour = 3600;
  const std::string rest = ":" + TwoDigits(static_cast<int>(seconds % 60));
  if (seconds < hour) return std::to_string(seconds / 60) + rest;
  return std::to_string(seconds / hour) + ":" + TwoDigits(static_cast<int>(seconds / 60 % 60)) +
         rest;
}

std::string HeldBy(const Subject& item, const Engine& engine) {
  const Configuration& settings = engine.Settings();
  std::string list;
  for (const int number : settings.Inputs.LevelSwitches) {
    const SwitchSetting& setting = settings.Inputs.Each[static_cast<std::size_t>(number)];
    using enum Subject::Kind;
    const bool speaksOfIt = setting.Kind == InputKind::InputDisable   ? item.What == Input
                            : setting.Kind == InputKind::TimerDisable ? item.What == Timer
                                                                      : item.What == Relay;
    const Mask items = setting.Kind == InputKind::OutputOverride ? setting.All() : setting.Rows[1];
    if (!speaksOfIt || !Has(items, item.Number)) continue;
    if (!LevelSwitchInForce(engine.Inside(), number)) continue;
    list += (list.empty() ? "" : ", ") + NamedText(SwitchSubject(number), settings);
  }
  return list;
}

}  // namespace simulator

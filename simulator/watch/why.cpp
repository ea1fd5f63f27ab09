#include "simulator/watch/why.h"

#include "simulator/memory/digits.h"
#include "simulator/watch/running.h"

namespace simulator {

namespace {

using Kind = Subject::Kind;

constexpr std::array KindNames{
    "Does nothing",  "Momentary On/Off", "Momentary PB",    "Maint. On/Off", "Maint. Multi-Way",
    "Set Preset",    "Timed On",         "HID Bi-Level",    "2 Step",        "4 Step",
    "Input Disable", "Timer Disable",    "Output Override", "Force Timer"};

/// What the codes of the rows mean, from 1.
std::array<const char*, 4> CodeNames(InputKind kind) {
  switch (kind) {
    case InputKind::HIDBiLevel:
      return {"On-Off", "Hi-Lo(NO)", "Hi-Lo(NC)", ""};
    case InputKind::TwoStep:
    case InputKind::FourStep:
      return {"Step A", "Step B", "", ""};
    case InputKind::OutputOverride:
      return {"Hold On", "Hold Off", "Hold Status", ""};
    case InputKind::TimedOn:
    case InputKind::InputDisable:
    case InputKind::TimerDisable:
    case InputKind::ForceTimer:
      return {"", "", "", ""};
    default:
      return {"On Only", "Off Only", "On And Off", "Blink Alert"};
  }
}

Kind SpokenOf(InputKind kind) {
  if (kind == InputKind::InputDisable) return Kind::Input;
  return SpeaksOfRelays(kind) ? Kind::Relay : Kind::Timer;
}

/// A group's name where these are its relays.
std::string ItemList(Kind kind, Mask items, const Configuration& settings) {
  if (kind != Kind::Relay) {
    std::string list;
    EachBit(items, [&](int item) {
      list += (list.empty() ? "" : ", ") + NamedText({kind, item, 0}, settings);
    });
    return list;
  }
  for (int group = 0; group < Items && std::popcount(items) > 1; ++group) {
    if (settings.Groups[static_cast<std::size_t>(group)] == items) {
      return NamedText({Kind::Group, group, 0}, settings);
    }
  }
  return RelayList(items, settings);
}

std::string ActiveTimes(int number, const Configuration& settings) {
  const auto at = static_cast<std::size_t>(number);
  const auto text = [](int quarter) {
    const int minutes = quarter * QuarterMinutes;
    return TwoDigits(minutes / 60) + ":" + TwoDigits(minutes % 60);
  };
  return text(settings.Inputs.EnableQuarter[at]) + " to " +
         text(settings.Inputs.DisableQuarter[at]);
}

int SwitchNumber(const Subject& item) {
  return item.What == Kind::Input ? item.Number : SwitchOf(item.Number, item.Sub);
}

bool IsSwitch(const Subject& item) {
  return item.What == Kind::Input || item.What == Kind::DeviceInput;
}

/// Why a switch is not heard; empty if it is.
std::string WhyDeaf(int number, const Engine& engine) {
  switch (DeafnessOf(engine.Inside(), number)) {
    case Deafness::Silent:
      return "its device does not answer";
    case Deafness::OutsideActiveTimes:
      return "it is outside its active times, " + ActiveTimes(number, engine.Settings());
    case Deafness::Disabled:
      return "it is disabled by " + HeldBy(SwitchSubject(number), engine);
    case Deafness::None:
      break;
  }
  return {};
}

/// What a switch is, and what it controls; with codes told each by its own.
std::string Controls(int number, const Configuration& settings, bool withCodes) {
  const SwitchSetting& setting = settings.Inputs.Each.at(static_cast<std::size_t>(number));
  std::string text = KindNames[static_cast<std::size_t>(setting.Kind)];
  if (setting.Kind == InputKind::TimedOn) text += ", " + std::to_string(setting.Minutes) + " min";
  std::string items;
  const auto add = [&items](const std::string& words) {
    items += (items.empty() ? "" : "; ") + words;
  };
  if (setting.Kind == InputKind::SetPreset) {
    if (setting.Preset < Items) add(NamedText({Kind::Preset, setting.Preset, 0}, settings));
  } else if (setting.Kind != InputKind::None && !withCodes && setting.All() != 0) {
    add(ItemList(SpokenOf(setting.Kind), setting.All(), settings));
  } else if (setting.Kind != InputKind::None) {
    const auto names = CodeNames(setting.Kind);
    for (std::size_t code = 1; code < setting.Rows.size(); ++code) {
      if (setting.Rows[code] == 0) continue;
      const std::string list = ItemList(SpokenOf(setting.Kind), setting.Rows[code], settings);
      std::string name = names[code - 1];
      if (!name.empty()) name += ' ';
      add(name += list);
    }
  }
  for (const DimmerSlot& slot : settings.Dimmers.Slots) {
    if (slot.What != DimmerSlot::Kind::Input || slot.Number != number) continue;
    add(Text(Subject{Kind::Dimmer, slot.Output / OutputsADimmer, slot.Output % OutputsADimmer}));
  }
  if (!items.empty()) return text + ": " + items;
  return setting.Kind == InputKind::None ? text : text + ", controls nothing";
}

/// Tells of one item, a function a kind of it.
class Teller {
 public:
  Teller(const Engine& engine, const LastChanges& past, const Outlook& ahead)
      : Runner(engine), Settings(engine.Settings()), Past(past), Ahead(ahead) {}

  std::string Tell(const Subject& item) const {
    std::string text = NamedText(item, Settings) + ": ";
    if (!Runner.Powered()) return text + "no power" + Since(item);
    switch (item.What) {
      case Kind::Relay:
        return text + OfRelay(item);
      case Kind::Group:
        return text + OfGroup(item);
      case Kind::Preset:
        return text + OfPreset(item);
      case Kind::Timer:
        return text + OfTimer(item);
      case Kind::Input:
      case Kind::DeviceInput:
        return text + OfSwitch(item);
      case Kind::Photocell:
        return text + OfPhotocell(item);
      case Kind::Dimmer:
        return text + OfDimmer(item);
      case Kind::Sweep:
        return text + OfSweep();
      default:
        return text;
    }
  }

 private:
  std::string Time(Instant at) const { return ShortTime(at, Runner.Now(), Runner.Days()); }

  std::string Since(const Subject& item) const {
    const Happening* last = Past.Of(item);
    return last ? " since " + Time(last->At) + Ending(item, *last) : std::string();
  }

  /// Who did it, but not what an item does itself.
  static std::string Ending(const Subject& item, const Happening& happening) {
    const Reason& why = *happening.Why;
    return why.HasDoer() && why.Cause == item ? std::string() : why.Ending();
  }

  std::string Next(const Subject& item) const {
    const std::vector<Happening> next = Ahead.Of(item);
    if (next.empty()) return ", no change within eight days";
    std::string text;
    for (const Happening& happening : next) {
      text +=
          ", " + ChangeText(item, happening) + " " + Time(happening.At) + happening.Why->Ending();
      if (happening.What != Change::Blinks) break;
    }
    return text;
  }

  std::string OfRelay(const Subject& item) const {
    const int relay = item.Number;
    const bool blinks = Has(Runner.BlinkingRelays(), relay);
    std::string text = (blinks ? "blinks" : Runner.Relay(relay) ? "on" : "off") + Since(item);
    if (Has(Runner.Inside().Relays.Held, relay)) text += ", held by " + HeldBy(item, Runner);
    if (!Has(SwitchedRelays(Settings), relay)) return text + ", nothing switches it";
    return text + Next(item);
  }

  std::string OfGroup(const Subject& item) const {
    const Mask members = Settings.Groups.at(static_cast<std::size_t>(item.Number));
    if (members == 0) return "it has no relays";
    return (Runner.Group(item.Number) ? "on" : "off") + Since(item) + ", " +
           std::to_string(std::popcount(members & Runner.Relays())) + " of " +
           std::to_string(std::popcount(members)) + " relays on" + Next(item);
  }

  std::string OfPreset(const Subject& item) const {
    const Outcome& wanted = Settings.Presets.at(static_cast<std::size_t>(item.Number));
    const Mask on = Runner.Relays();
    std::string text = (Runner.Preset(item.Number).value_or(false) ? "set" : "not set");
    text += Since(item);
    const auto tell = [&](Mask relays, const char* verb) {
      if (relays != 0) text += ", " + RelayList(relays, Settings) + verb;
    };
    tell(wanted.On & ~on, " off");
    tell(wanted.Off & on, " on");
    return text + Next(item);
  }

  std::string OfSweep() const {
    const std::optional<Instant>& next = Runner.Inside().Days.NextSweep;
    return next ? "next " + Time(*next) + ", for " +
                      ItemList(Kind::Relay, Settings.Hours.Swept, Settings)
                : "comes when the building closes";
  }

  std::string OfTimer(const Subject& item) const {
    const TimerSetting& timer = Settings.Timers.at(static_cast<std::size_t>(item.Number));
    std::string text = timer.Words;
    if (Has(Runner.Inside().Days.DisabledTimers, item.Number)) {
      text += ", disabled by " + HeldBy(item, Runner);
    }
    const Happening* last = Past.Of(item);
    if (last && last->What == Change::Fires) text += ", fired " + Time(last->At);
    bool fires = false;
    for (const Happening& next : Ahead.Of(item)) {
      if (next.What != Change::Fires || fires) continue;
      fires = true;
      text += ", fires " + Time(next.At);
    }
    if (!fires) text += ", does not fire within eight days";
    const auto tell = [&](const char* verb, Kind kind, Mask items) {
      if (items != 0) text += verb + ItemList(kind, items, Settings);
    };
    tell("; on: ", Kind::Relay, timer.Relays.On);
    tell("; off: ", Kind::Relay, timer.Relays.Off);
    return text;
  }

  std::string OfSwitch(const Subject& item) const {
    const int number = SwitchNumber(item);
    std::string text = (SwitchClosed(Runner.Inside(), number) ? "closed" : "open") + Since(item) +
                       ". " + WhatItDoes(number, Settings);
    const std::string deaf = WhyDeaf(number, Runner);
    if (!deaf.empty()) text += ". Not heard: " + deaf;
    text += OfPilot(number);
    const std::vector<Happening> next = Ahead.Of(item);
    const bool local = item.What == Kind::Input;
    if (local && !next.empty()) {
      text += ". " + Capitalized(ChangeText(item, next[0])) + " " + Time(next[0].At) +
              Ending(item, next[0]);
    }
    return text;
  }

  std::string OfPilot(int number) const {
    for (const PilotSetting& pilot : Settings.Inputs.Pilots) {
      using What = PilotSetting::Kind;
      if (pilot.Switch != number || pilot.What == What::Static) continue;
      const Kind kind = pilot.What == What::Relay   ? Kind::Relay
                        : pilot.What == What::Group ? Kind::Group
                                                    : Kind::Preset;
      return std::string(". Pilot ") + (PilotIsLit(Runner.Inside(), number) ? "lit" : "dark") +
             ", follows " + NamedText({kind, pilot.Number, 0}, Settings);
    }
    return {};
  }

  std::string OfPhotocell(const Subject& item) const {
    std::string text = "light " + std::to_string(Runner.PhotocellLevel(item.Number));
    if (Runner.FollowsSun()) text += ", which follows the sun";
    for (int i = 0; i < DeviceInputs; ++i) {
      const int number = SwitchOf(item.Number, i);
      const SwitchSetting& setting = Settings.Inputs.Each[static_cast<std::size_t>(number)];
      if (setting.OnLevel == setting.OffLevel || setting.All() == 0) continue;
      const Subject input = SwitchSubject(number);
      text += ". INPUT " + std::to_string(i + 1) + ", on at " + std::to_string(setting.OnLevel) +
              ", off at " + std::to_string(setting.OffLevel) + ": " +
              (SwitchClosed(Runner.Inside(), number) ? "on" : "off") + Since(input) + "; " +
              WhatItDoes(number, Settings);
    }
    const std::string deaf = WhyDeaf(SwitchOf(item.Number, 0), Runner);
    return deaf.empty() ? text : text + ". Not heard: " + deaf;
  }

  std::string OfDimmer(const Subject& item) const {
    const int output = item.Number * OutputsADimmer + item.Sub;
    const int level = Runner.DimmerLevel(output);
    const int goal = GoalLevel(Runner.Inside(), output);
    std::string text = "level " + std::to_string(level);
    if (goal != level) text += " on its way to " + std::to_string(goal);
    return text + Since(item) + Next(item);
  }

  const Engine& Runner;
  const Configuration& Settings;
  const LastChanges& Past;
  const Outlook& Ahead;
};

}  // namespace

std::string Why(const Subject& item, const Engine& engine, const LastChanges& past,
                const Outlook& ahead) {
  return Teller(engine, past, ahead).Tell(item);
}

std::string WhatItDoes(int number, const Configuration& settings) {
  return Controls(number, settings, true);
}

std::string WhatItControls(int number, const Configuration& settings) {
  return Controls(number, settings, false);
}

std::string SignOf(const Subject& item, const Engine& engine) {
  if (!engine.Powered()) return {};
  const EngineState& state = engine.Inside();
  if (item.What == Kind::Relay) {
    if (Has(state.Relays.Held, item.Number)) {
      return Has(state.Relays.HeldOn, item.Number) ? "held on" : "held off";
    }
    return Has(state.Relays.Warned, item.Number) ? "warning" : "";
  }
  if (item.What == Kind::Timer) {
    return Has(state.Days.DisabledTimers, item.Number) ? "disabled" : "";
  }
  if (!IsSwitch(item)) return {};
  switch (DeafnessOf(state, SwitchNumber(item))) {
    case Deafness::Silent:
      return "silent";
    case Deafness::OutsideActiveTimes:
      return "not now";
    case Deafness::Disabled:
      return "disabled";
    case Deafness::None:
      break;
  }
  return {};
}

std::string WhyNothing(const Subject& item, const Engine& engine) {
  const Configuration& settings = engine.Settings();
  const auto because = [&](const std::string& why) {
    return NamedText(item, settings) + " does nothing: " + why + ".";
  };
  if (!engine.Powered()) return because("there is no power");
  const auto at = static_cast<std::size_t>(item.Number);
  Mask relays = 0;
  bool idle = false;
  if (item.What == Kind::Relay) relays = Bit(item.Number);
  if (item.What == Kind::Group) relays = settings.Groups.at(at);
  if (item.What == Kind::Preset) relays = settings.Presets.at(at).All();
  if (item.What == Kind::Timer) relays = settings.Timers.at(at).Relays.All();
  if (IsSwitch(item)) {
    const int number = SwitchNumber(item);
    const std::string deaf = WhyDeaf(number, engine);
    if (!deaf.empty()) return because(deaf);
    const SwitchSetting& setting = settings.Inputs.Each.at(static_cast<std::size_t>(number));
    if (SpeaksOfRelays(setting.Kind)) relays = setting.All();
    if (setting.Kind == InputKind::SetPreset && setting.Preset < Items) {
      relays = settings.Presets[static_cast<std::size_t>(setting.Preset)].All();
    }
    idle = setting.Kind == InputKind::None;
  }
  if (relays == 0 || idle) return because("it controls nothing");
  const Mask held = relays & engine.Inside().Relays.Held;
  if (held == 0) return because("all that it controls stands so already");
  const Subject first{Kind::Relay, std::countr_zero(held), 0};
  const char* verb = std::popcount(held) == 1 ? " is held by " : " are held by ";
  return because(RelayList(held, settings) + verb + HeldBy(first, engine));
}

Mask SwitchedRelays(const Configuration& settings) {
  Mask used = settings.Hours.Swept;
  for (const TimerSetting& timer : settings.Timers) used |= timer.Relays.All();
  for (const Outcome& preset : settings.Presets) used |= preset.All();
  for (const SwitchSetting& setting : settings.Inputs.Each) {
    if (setting.Kind != InputKind::None && SpeaksOfRelays(setting.Kind)) used |= setting.All();
  }
  return used;
}

Mask UsedRelays(const Configuration& settings) {
  Mask used = SwitchedRelays(settings) | settings.Dimmers.Relays;
  for (const Mask members : settings.Groups) used |= members;
  return used;
}

}  // namespace simulator

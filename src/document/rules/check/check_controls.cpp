#include <algorithm>

#include "document/rules/check/check.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/field_facts.h"
#include "panel/input_actions.h"
#include "panel/lists_in_words.h"
#include "panel/panel_record.h"
#include "panel/pilot_code.h"
#include "panel/pilot_source.h"

// Inputs, their actions and their pilots.

namespace {

constexpr unsigned ActsOn = EffectOn | EffectOff | EffectRuns | EffectDisables;

bool IsInput(const Item& item) {
  return item.Kind == ItemKind::Input || item.Kind == ItemKind::DeviceInput;
}

/// Every input in use, with its cells in both tables.
template <typename Look>
void ForEachInput(const CheckScope& scope, Look look) {
  const auto& panel = scope.Of.Panel;
  for (int input = 0; input < scope.Points; ++input) {
    const auto options = [&](ControlTable table) {
      return LocalControlOptions(panel.InputType(input), table);
    };
    look(
        Item{ItemKind::Input, input}, options,
        [&](int row) { return panel.InputRelayControl(input, row); },
        [&](int row) { return panel.InputGroupControl(input, row); });
  }
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& device = scope.Of.Devices(n);
    for (int input = 0; input < FennlinkDevice(device.DeviceType).InputCount; ++input) {
      const auto options = [&](ControlTable table) {
        return FennlinkControlOptions(device.DeviceType, device.DeviceInputType(input), table);
      };
      look(
          Item{ItemKind::DeviceInput, n, input}, options,
          [&](int row) { return device.DeviceRelayControl(input, row); },
          [&](int row) { return device.DeviceGroupControl(input, row); });
    }
  }
}

void LookAtCutActions(const CheckScope& scope, const TellFinding& tell) {
  ForEachInput(scope, [&](const Item& input, auto options, auto relayCell, auto groupCell) {
    int cut = 0;
    const auto look = [&](ControlTable table, auto cell) {
      const auto offered = options(table);
      for (int row = 0; offered && row < ItemCount; ++row)
        cut += cell(row) > offered->MaxControlCode() ? 1 : 0;
    };
    look(ControlTable::Relay, relayCell);
    look(ControlTable::Group, groupCell);
    if (cut == 0) return;
    tell(input,
         QStringLiteral("%1 has %2 that its type \"%3\" does not offer. Looking at %4 turns %4 "
                        "into the last one that it does.")
             .arg(scope.Text(input), Counted(cut, QStringLiteral("action")), scope.InputType(input),
                  QLatin1String(cut == 1 ? "it" : "them")),
         TypeScreen(input));
  });
}

bool IsAnybody(const Item&) {
  return true;
}

/// Tells of the uses of wanted items, a row for what one user does; `one` follows a sentence of one
/// item, `many` that of several.
void TellOfUses(const CheckScope& scope, const TellFinding& tell,
                const std::function<bool(const Item& used)>& wanted, unsigned effects,
                bool (*isAsked)(const Item& user), const QString& one, const QString& many) {
  for (const GatheredUses& uses : scope.Gather(wanted, effects)) {
    if (!isAsked(uses.User)) continue;
    tell(uses.User, scope.Sentence(uses) + (uses.Used.size() == 1 ? one : many), uses.On);
  }
}

void LookBeyondPoints(const CheckScope& scope, const TellFinding& tell) {
  const auto relay = [&](const Item& used) { return scope.IsRelayBeyondPoints(used); };
  const auto relayOrInput = [&](const Item& used) {
    return relay(used) || (used.Kind == ItemKind::Input && !scope.IsInstalled(used));
  };
  const auto look = [&](const auto& isBeyond, unsigned effects, bool (*isAsked)(const Item& user)) {
    TellOfUses(scope, tell, isBeyond, effects, isAsked,
               QStringLiteral(", which %1.").arg(scope.AreBeyondPoints(1)),
               QStringLiteral(", which %1.").arg(scope.AreBeyondPoints(2)));
  };
  look(relayOrInput, ActsOn,
       [](const Item& user) { return IsInput(user) || user.Kind == ItemKind::Timer; });
  // An input beyond them is no source of a dimmer.
  look(relay, EffectFollows, [](const Item& user) { return user.Kind == ItemKind::DimmerOutput; });
}

/// The others that it holds go their way.
void LookAtHoldersBeyondPoints(const CheckScope& scope, const TellFinding& tell) {
  const auto relay = [&](const Item& used) { return scope.IsRelayBeyondPoints(used); };
  TellOfUses(scope, tell, relay, EffectHolds, IsAnybody,
             QStringLiteral(", which %1.").arg(scope.AreBeyondPoints(1)),
             QStringLiteral(", which %1.").arg(scope.AreBeyondPoints(2)));
}

void LookAtInputsBeyondPoints(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = scope.Of.Panel;
  std::vector<Item> meant;
  for (int input = scope.Points; input < ItemCount; ++input) {
    const Item item{ItemKind::Input, input};
    bool acts = LocalInputKind(panel.InputType(input)) == InputKind::SetPreset;
    for (int row = 0; row < ItemCount; ++row) {
      acts = acts || panel.InputRelayControl(input, row) != 0 ||
             panel.InputGroupControl(input, row) != 0;
    }
    if (acts || !scope.OwnName(item).isEmpty()) meant.push_back(item);
  }
  if (meant.empty()) return;
  tell(meant.front(),
       QStringLiteral("%1 %2 a name or actions, and %3.")
           .arg(ListOf(scope.Of, meant), QLatin1String(meant.size() == 1 ? "has" : "have"),
                scope.AreBeyondPoints(meant.size())),
       Screen::Setup);
}

void LookAtEmptyPresets(const CheckScope& scope, const TellFinding& tell) {
  const auto isEmpty = [&](const Item& used) {
    return used.Kind == ItemKind::Preset && used.Number < ItemCount && !scope.HoldsRelay(used) &&
           !scope.DimmersFollow(used);
  };
  TellOfUses(scope, tell, isEmpty, EffectRuns, IsAnybody,
             QStringLiteral(", which touches no relay and no dimmer."),
             QStringLiteral(", which touch no relay and no dimmer."));
}

void LookAtEmptyGroups(const CheckScope& scope, const TellFinding& tell) {
  const auto isEmpty = [&](const Item& used) {
    return used.Kind == ItemKind::Group && !scope.HoldsRelay(used);
  };
  // The sweep takes empty groups in its stride: who ticks all of them means those to come, too.
  const auto isNoSweep = [](const Item& user) { return user.Kind != ItemKind::Panel; };
  TellOfUses(scope, tell, isEmpty, ActsOn, isNoSweep, QStringLiteral(", which has no relay."),
             QStringLiteral(", which have no relay."));
}

void TellOfIdleTargets(const CheckScope& scope, const TellFinding& tell,
                       const std::function<bool(const Item& used)>& isIdle, unsigned effects) {
  TellOfUses(scope, tell, isIdle, effects, IsAnybody, QStringLiteral(", which does nothing."),
             QStringLiteral(", which do nothing."));
}

void LookAtForcedTimers(const CheckScope& scope, const TellFinding& tell) {
  const auto isIdle = [&](const Item& used) {
    return used.Kind == ItemKind::Timer && !scope.IsAtWork(used);
  };
  TellOfIdleTargets(scope, tell, isIdle, EffectRuns);
}

void LookAtDisabledIdle(const CheckScope& scope, const TellFinding& tell) {
  const auto isIdle = [&](const Item& used) {
    if (used.Kind == ItemKind::Timer) return !scope.IsAtWork(used);
    return used.Kind == ItemKind::Input && scope.IsInstalled(used) && scope.IsIdle(used);
  };
  const auto isParked = [&](const Item& used) {
    return used.Kind == ItemKind::Timer && scope.IsAtWork(used) && scope.IsParked(used);
  };
  TellOfIdleTargets(scope, tell, isIdle, EffectDisables);
  TellOfUses(scope, tell, isParked, EffectDisables, IsAnybody, QStringLiteral(", which is parked."),
             QStringLiteral(", which are parked."));
}

void LookAtSelfDisabling(const CheckScope& scope, const TellFinding& tell) {
  for (int input = 0; input < scope.Points; ++input) {
    const Item item{ItemKind::Input, input};
    const bool disables =
        LocalInputKind(scope.Of.Panel.InputType(input)) == InputKind::InputDisable;
    if (!disables || scope.Of.Panel.InputRelayControl(input, input) == 0) continue;
    tell(item, QStringLiteral("%1 disables itself, which changes nothing.").arg(scope.Text(item)),
         ActionScreen(item, false));
  }
}

void LookAtPilots(const CheckScope& scope, const TellFinding& tell) {
  const auto isMissing = [&](const Item& used) {
    if (used.Kind == ItemKind::Relay) return !scope.IsInstalled(used);
    const bool group = used.Kind == ItemKind::Group;
    return (group || used.Kind == ItemKind::Preset) && !scope.HoldsRelay(used) &&
           (group || !scope.DimmersFollow(used));
  };
  for (const GatheredUses& pilot : scope.Gather(isMissing, EffectFollows)) {
    if (!IsInput(pilot.User)) continue;
    tell(pilot.User,
         scope.Sentence(pilot) + (pilot.Used.front().Kind == ItemKind::Relay
                                      ? QStringLiteral(", which is not installed.")
                                      : QStringLiteral(", which holds no relay.")),
         pilot.On);
  }
  const auto lookAtSource = [&](const Item& input, Int16 pilot, int sources, Screen screen) {
    if (PilotSource(pilot) >= 0 && PilotSource(pilot) < sources) return;
    tell(input,
         QStringLiteral("The pilot of %1 follows a source that does not exist.")
             .arg(scope.Text(input)),
         screen);
  };
  for (int input = 0; input < scope.Points; ++input) {
    lookAtSource({ItemKind::Input, input}, scope.Of.Panel.LocalPilot(input), PilotPreset,
                 Screen::LocalInputPilots);
  }
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& device = scope.Of.Devices(n);
    if (device.DeviceType == DeviceTypePhotocell) continue;
    for (int input = 0; input < FennlinkDevice(device.DeviceType).InputCount; ++input) {
      lookAtSource({ItemKind::DeviceInput, n, input}, device.DevicePilot(input), PilotPreset + 1,
                   Screen::FennlinkPilots);
    }
  }
}

/// "INPUT 03 HALL does nothing.", or how many of them do.
void TellOfIdleInputs(const CheckScope& scope, const TellFinding& tell,
                      const std::vector<Item>& idle, const QString& have) {
  if (idle.empty()) return;
  const auto count = static_cast<qsizetype>(idle.size());
  tell(idle.front(),
       count == 1 ? QStringLiteral("%1 does nothing.").arg(scope.Text(idle.front()))
                  : QStringLiteral("%1 inputs have %2 and do nothing: %3.")
                        .arg(QString::number(count), have, ListOf(scope.Of, idle)),
       ActionScreen(idle.front(), false));
}

/// Whether the first input tells a relay whether it comes on with the power.
bool DecidesPowerOn(const CheckScope& scope) {
  const auto& types = scope.Of.Panel.RelayPowerOnType.elements;
  return std::find(types.begin(), types.begin() + scope.Points, PowerOnByInput) !=
         types.begin() + scope.Points;
}

void LookAtIdleInputs(const CheckScope& scope, const TellFinding& tell) {
  std::vector<Item> idle;
  bool named = false;
  bool typed = false;
  for (int i = 0; i < scope.Points; ++i) {
    const Item input{ItemKind::Input, i};
    const bool hasType = scope.Of.Panel.InputType(i) != 0;
    const bool hasName = !scope.OwnName(input).isEmpty();
    if ((!hasType && !hasName) || !scope.IsIdle(input)) continue;
    if (scope.IsUsed(input, EffectDisables)) continue;  // which tells that it does nothing
    if (i == 0 && DecidesPowerOn(scope)) continue;
    idle.push_back(input);
    typed = typed || hasType;
    named = named || hasName;
  }
  TellOfIdleInputs(scope, tell, idle,
                   typed && named ? QStringLiteral("a type or a name")
                   : typed        ? QStringLiteral("a type")
                                  : QStringLiteral("a name"));
}

/// Whether a dimmer would track the photocell, were its device enabled, which is told there.
bool IsMeantForDimmers(const CheckScope& scope, int device) {
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const DimmerOutput output(scope.Of.Dimmers, dev, out);
      if (output(dim::TrackMode) != TrackDisabled && output(dim::PhotocellDevice) + 1 == device)
        return true;
    }
  }
  return false;
}

/// Whether a lamp of a station shows anything.
bool HasPilot(const FennlinkRecord& station, int input) {
  const Int16 pilot = station.DevicePilot(input);
  return PilotSource(pilot) != PilotStatic || (pilot & 1) != 0;
}

void LookAtIdleDevices(const CheckScope& scope, const TellFinding& tell) {
  std::vector<Item> whole;
  std::vector<Item> inputs;
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& record = scope.Of.Devices(n);
    const int count = FennlinkDevice(record.DeviceType).InputCount;
    const bool photocell = record.DeviceType == DeviceTypePhotocell;
    int idle = 0;
    std::vector<Item> meant;
    for (int input = 0; input < count; ++input) {
      const Item item{ItemKind::DeviceInput, n, input};
      if (!scope.IsIdle(item) || (!photocell && HasPilot(record, input))) continue;
      ++idle;
      if (record.DeviceInputType(input) != 0 && !photocell) meant.push_back(item);
    }
    const Item device{ItemKind::Device, n};
    if (count == 0 || idle < count) {
      inputs.insert(inputs.end(), meant.begin(), meant.end());
    } else if (!scope.IsUsed(device, EffectFollows) &&
               !(photocell && IsMeantForDimmers(scope, n))) {
      whole.push_back(device);
    }
  }
  TellOfIdleInputs(scope, tell, inputs, QStringLiteral("a type"));
  if (whole.empty()) return;
  tell(whole.front(),
       QStringLiteral("None of the inputs of %1 does anything.").arg(ListOf(scope.Of, whole)),
       ActionScreen({ItemKind::DeviceInput}, false));
}

void LookAtPhotocellLevels(const CheckScope& scope, const TellFinding& tell) {
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& device = scope.Of.Devices(n);
    if (device.DeviceType != DeviceTypePhotocell) continue;
    for (int input = 0; input < DeviceInputCount; ++input) {
      const Item item{ItemKind::DeviceInput, n, input};
      if (scope.IsIdle(item)) continue;
      if (device.DeviceOffLevel(input) != device.DeviceOnLevel(input)) continue;
      tell(item,
           QStringLiteral("The on level and the off level of %1 are equal.").arg(scope.Text(item)),
           {});
    }
  }
}

constexpr auto RulesOfControls = std::to_array<CheckRule>({
    {"action-cut", Severity::Error, Screen::None, LookAtCutActions,
     "An input has actions that its type does not offer."},
    {"beyond-points", Severity::Error, Screen::None, LookBeyondPoints,
     "An action is on a relay or an input that is not installed, or a dimmer follows such a "
     "relay."},
    {"empty-preset", Severity::Error, Screen::None, LookAtEmptyPresets,
     "A preset is run that touches no relay and no dimmer."},
    {"empty-group", Severity::Error, Screen::None, LookAtEmptyGroups,
     "An action is on a group without relays."},
    {"idle-timer-forced", Severity::Error, Screen::None, LookAtForcedTimers,
     "A timer is forced that does nothing."},
    {"held-beyond-points", Severity::Warning, Screen::None, LookAtHoldersBeyondPoints,
     "A group or preset has relays that are not installed."},
    {"input-beyond-points", Severity::Warning, Screen::None, LookAtInputsBeyondPoints,
     "Inputs that are not installed have a name or actions."},
    {"disables-idle", Severity::Warning, Screen::None, LookAtDisabledIdle,
     "An input disables another, or a timer, that does nothing or is parked."},
    {"disables-itself", Severity::Warning, Screen::None, LookAtSelfDisabling,
     "An input disables itself."},
    {"pilot-source", Severity::Error, Screen::None, LookAtPilots,
     "A pilot follows nothing: a relay that is not installed, a group or preset without relays, an "
     "unknown source."},
    {"idle-input", Severity::Warning, Screen::None, LookAtIdleInputs,
     "An input with a name or a type does nothing."},
    {"idle-device", Severity::Warning, Screen::None, LookAtIdleDevices,
     "A bus device, or inputs of it with a type, do nothing."},
    {"equal-levels", Severity::Warning, Screen::ConfigureFennlinkDevices, LookAtPhotocellLevels,
     "On and off level of a photocell's input are equal."},
});

}  // namespace

std::span<const CheckRule> ControlRules() {
  return RulesOfControls;
}

#include <algorithm>

#include "document/rules/check/check.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/field_facts.h"
#include "panel/input_actions.h"
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
    const auto look = [&](ControlTable table, auto cell) {
      const auto offered = options(table);
      if (!offered) return;
      int cut = 0;
      for (int row = 0; row < ItemCount; ++row)
        cut += cell(row) > offered->MaxControlCode() ? 1 : 0;
      if (cut == 0) return;
      tell(input,
           QStringLiteral("%1 has %2 actions that its type \"%3\" does not offer; looking at it "
                          "cuts them to the last that it does.")
               .arg(scope.Text(input))
               .arg(cut)
               .arg(scope.InputType(input)),
           TypeScreen(input));
    };
    look(ControlTable::Relay, relayCell);
    look(ControlTable::Group, groupCell);
  });
}

void LookBeyondPoints(const CheckScope& scope, const TellFinding& tell) {
  for (const Use& use : scope.Uses) {
    const bool counted = use.Used.Kind == ItemKind::Relay || use.Used.Kind == ItemKind::Input;
    if (!counted || (use.Effect & ActsOn) == 0 || scope.IsInstalled(use.Used)) continue;
    if ((use.Effect & EffectHolds) != 0) continue;
    if (use.User.Kind == ItemKind::Panel) continue;
    tell(use.User,
         QStringLiteral("%1, which is beyond the %2 installed points.")
             .arg(scope.Sentence(use))
             .arg(scope.Points),
         ScreenOf(use));
  }
}

void LookAtEmptyPresets(const CheckScope& scope, const TellFinding& tell) {
  for (const Use& use : scope.UsesOfRuns) {
    const bool runs = (use.Effect & EffectRuns) != 0 || use.User.Kind == ItemKind::DimmerOutput;
    if (use.Used.Kind != ItemKind::Preset || !runs || scope.HoldsRelay(use.Used)) continue;
    tell(use.User, scope.Sentence(use) + QStringLiteral(", which touches no relay."),
         ScreenOf(use));
  }
}

void LookAtEmptyGroups(const CheckScope& scope, const TellFinding& tell) {
  for (const Use& use : scope.Uses) {
    const bool acts = (use.Effect & ActsOn) != 0;
    if (use.Used.Kind != ItemKind::Group || !acts || scope.HoldsRelay(use.Used)) continue;
    tell(use.User, scope.Sentence(use) + QStringLiteral(", which has no relay."), ScreenOf(use));
  }
}

void LookAtForcedTimers(const CheckScope& scope, const TellFinding& tell) {
  for (const Use& use : scope.UsesOfRuns) {
    if (use.Used.Kind != ItemKind::Timer || (use.Effect & EffectRuns) == 0) continue;
    if (scope.DoesAnything(use.Used)) continue;
    tell(use.User, scope.Sentence(use) + QStringLiteral(", which does nothing."), ScreenOf(use));
  }
}

void LookAtPilots(const CheckScope& scope, const TellFinding& tell) {
  for (const Use& use : scope.Uses) {
    if (!IsInput(use.User) || (use.Effect & EffectFollows) == 0) continue;
    const bool missing = use.Used.Kind == ItemKind::Relay ? !scope.IsInstalled(use.Used)
                                                          : !scope.HoldsRelay(use.Used);
    if (!missing) continue;
    tell(use.User,
         scope.Sentence(use) + (use.Used.Kind == ItemKind::Relay
                                    ? QStringLiteral(", which is not installed.")
                                    : QStringLiteral(", which holds no relay.")),
         ScreenOf(use));
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

void LookAtIdleInputs(const CheckScope& scope, const TellFinding& tell) {
  const auto isIdle = [&](const Item& input) {
    return !scope.DoesAnything(input, ActsOn) && !scope.IsUsed(input, EffectFollows);
  };
  for (int i = 0; i < scope.Points; ++i) {
    const Item input{ItemKind::Input, i};
    const bool meant = scope.Of.Panel.InputType(i) != 0 || !scope.OwnName(input).isEmpty();
    if (meant && isIdle(input)) {
      tell(input, QStringLiteral("%1 does nothing.").arg(scope.Text(input)),
           ActionScreen(input, false));
    }
  }
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& device = scope.Of.Devices(n);
    const int count = FennlinkDevice(device.DeviceType).InputCount;
    int idle = 0;
    for (int input = 0; input < count; ++input) {
      const Item item{ItemKind::DeviceInput, n, input};
      if (!isIdle(item)) continue;
      ++idle;
      if (device.DeviceInputType(input) == 0 || device.DeviceType == DeviceTypePhotocell) continue;
      tell(item, QStringLiteral("%1 does nothing.").arg(scope.Text(item)),
           ActionScreen(item, false));
    }
    const Item whole{ItemKind::Device, n};
    if (count > 0 && idle == count && !scope.IsUsed(whole, EffectFollows)) {
      tell(whole, QStringLiteral("None of the inputs of %1 does anything.").arg(scope.Text(whole)),
           ActionScreen({ItemKind::DeviceInput}, false));
    }
  }
}

void LookAtPhotocellLevels(const CheckScope& scope, const TellFinding& tell) {
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& device = scope.Of.Devices(n);
    if (device.DeviceType != DeviceTypePhotocell) continue;
    for (int input = 0; input < DeviceInputCount; ++input) {
      const Item item{ItemKind::DeviceInput, n, input};
      if (!scope.DoesAnything(item, ActsOn) && !scope.IsUsed(item, EffectFollows)) continue;
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
     "An action is on a relay or an input that is not installed."},
    {"empty-preset", Severity::Error, Screen::None, LookAtEmptyPresets,
     "A preset is run that touches no relay."},
    {"empty-group", Severity::Error, Screen::None, LookAtEmptyGroups,
     "An action is on a group without relays."},
    {"idle-timer-forced", Severity::Error, Screen::None, LookAtForcedTimers,
     "A timer is forced that does nothing."},
    {"pilot-source", Severity::Error, Screen::None, LookAtPilots,
     "A pilot follows nothing: a relay that is not installed, a group or preset without relays, an "
     "unknown source."},
    {"idle-input", Severity::Warning, Screen::None, LookAtIdleInputs,
     "An input with a name or a type does nothing."},
    {"equal-levels", Severity::Warning, Screen::ConfigureFennlinkDevices, LookAtPhotocellLevels,
     "On and off level of a photocell's input are equal."},
});

}  // namespace

std::span<const CheckRule> ControlRules() {
  return RulesOfControls;
}

#include <QStringList>
#include <algorithm>
#include <map>

#include "document/rules/check/check.h"
#include "panel/dimmer_fields.h"
#include "panel/lists_in_words.h"
#include "panel/panel_record.h"
#include "panel/words.h"

// What happens to each relay, and what groups, presets and the sweep do.

namespace {

// Power-on types that turn on.
constexpr Int16 PowerOnOn = 1;

/// Whether what is plugged into the panel may switch the relay, too.
bool ModuleMaySwitch(const PanelRecordType& panel, int relay) {
  const AddOnModule module = AddOnModuleOf(panel.AddOnModuleType);
  if (panel.AddOnModuleType == AddOnModuleDMX) return panel.DMXChannel(relay) != 0;
  return panel.AddOnModuleType != 0 && !module.EditorCaption.empty();
}

/// In one row, the installed relays that nothing else may switch and that `wanted`.
void TellOfRelays(const CheckScope& scope, const TellFinding& tell,
                  const std::function<bool(int relay)>& wanted, const QString& one,
                  const QString& many) {
  std::vector<Item> relays;
  for (int relay = 0; relay < scope.Points; ++relay) {
    if (ModuleMaySwitch(scope.Of.Panel, relay) || !wanted(relay)) continue;
    relays.push_back({ItemKind::Relay, relay});
  }
  if (relays.empty()) return;
  const auto count = static_cast<qsizetype>(relays.size());
  const QString items = ListOf(scope.Of, relays);
  tell(relays.front(), count == 1 ? one.arg(items) : many.arg(count).arg(items), {});
}

void LookAtUnusedRelays(const CheckScope& scope, const TellFinding& tell) {
  const auto isUnused = [&](int relay) {
    const auto at = static_cast<std::size_t>(relay);
    const Int16 powerOn = scope.Of.Panel.RelayPowerOnType(relay);
    return (scope.OnRelays[at] | scope.Holding[at]) == 0 && powerOn != PowerOnOn &&
           powerOn != PowerOnByInput;
  };
  TellOfRelays(scope, tell, isUnused, QStringLiteral("Nothing switches %1."),
               QStringLiteral("Nothing switches %1 relays: %2."));
}

void LookAtNeverOff(const CheckScope& scope, const TellFinding& tell) {
  const auto staysOn = [&](int relay) {
    const Int16 type = scope.Of.Panel.RelayTimerType(relay);
    return scope.OnRelays[static_cast<std::size_t>(relay)] == EffectOn && !OnIsForAWhile(type);
  };
  TellOfRelays(scope, tell, staysOn,
               QStringLiteral("%1 is turned on, and nothing ever turns it off."),
               QStringLiteral("%1 relays are turned on, and nothing ever turns them off: %2."));
}

void LookAtNeverOn(const CheckScope& scope, const TellFinding& tell) {
  const auto staysOff = [&](int relay) {
    const auto at = static_cast<std::size_t>(relay);
    const Int16 type = scope.Of.Panel.RelayTimerType(relay);
    const Int16 powerOn = scope.Of.Panel.RelayPowerOnType(relay);
    return (scope.OnRelays[at] | scope.Holding[at]) == EffectOff && !OffIsForAWhile(type) &&
           powerOn != PowerOnOn && powerOn != PowerOnByInput;
  };
  TellOfRelays(scope, tell, staysOff,
               QStringLiteral("%1 is turned off, and nothing ever turns it on."),
               QStringLiteral("%1 relays are turned off, and nothing ever turns them on: %2."));
}

bool IsInUse(const CheckScope& scope, const Item& item) {
  switch (item.Kind) {
    case ItemKind::Group:
      return scope.HoldsRelay(item);
    case ItemKind::Preset:
      return scope.HoldsRelay(item) || scope.DimmersFollow(item);
    case ItemKind::Timer:
      return scope.IsAtWork(item);
    default:
      return scope.DoesAnything(item, ~unsigned{EffectFollows});
  }
}

/// In one row, the groups or presets that the panel's keys alone are for.
void TellOfKeys(const CheckScope& scope, const TellFinding& tell, ItemKind kind,
                const QString& done) {
  std::vector<Item> items;
  for (int number = 0; number < ItemCount; ++number) {
    const Item item{kind, number};
    if (IsInUse(scope, item) && scope.IsForKeys(item)) items.push_back(item);
  }
  if (items.empty()) return;
  tell(items.front(),
       QStringLiteral("%1 %2 %3 by hand only: no input and no timer does it.")
           .arg(ListOf(scope.Of, items), QLatin1String(items.size() == 1 ? "is" : "are"), done),
       {});
}

void LookAtUnusedGroups(const CheckScope& scope, const TellFinding& tell) {
  TellOfKeys(scope, tell, ItemKind::Group, QStringLiteral("switched"));
}

void LookAtUnusedPresets(const CheckScope& scope, const TellFinding& tell) {
  TellOfKeys(scope, tell, ItemKind::Preset, QStringLiteral("activated"));
}

QString InUse(const CheckScope& scope, ItemKind kind, const char* one) {
  int count = 0;
  for (int number = 0; number < ItemCount; ++number)
    count += IsInUse(scope, {kind, number}) ? 1 : 0;
  return Counted(count, QLatin1String(one));
}

void CountItems(const CheckScope& scope, const TellFinding& tell) {
  const QStringList counts = {
      InUse(scope, ItemKind::Group, "group"), InUse(scope, ItemKind::Input, "input"),
      InUse(scope, ItemKind::Timer, "timer"), InUse(scope, ItemKind::Preset, "preset")};
  tell({},
       QStringLiteral("Of %1 each, %2 relays are installed, and %3 are in use.")
           .arg(ItemCount)
           .arg(scope.Points)
           .arg(counts.join(QStringLiteral(", "))),
       Screen::Setup);
}

void LookAtSweep(const CheckScope& scope, const TellFinding& tell) {
  if (!scope.DoesAnything({})) return;
  std::vector<Item> left;
  for (int relay = 0; relay < scope.Points; ++relay) {
    if (scope.BySweep[static_cast<std::size_t>(relay)] == 0)
      left.push_back({ItemKind::Relay, relay});
  }
  if (left.empty()) return;
  tell({}, QStringLiteral("The off hours sweep leaves on: %1.").arg(ListOf(scope.Of, left)), {});
}

void LookAtSweptBeyondPoints(const CheckScope& scope, const TellFinding& tell) {
  std::vector<Item> beyond;
  for (int relay = scope.Points; relay < ItemCount; ++relay) {
    if (scope.Of.Panel.OffHoursSweepRelay(relay) != 0) beyond.push_back({ItemKind::Relay, relay});
  }
  if (beyond.empty()) return;
  tell({},
       QStringLiteral("The off hours sweep takes %1, which %2.")
           .arg(ListOf(scope.Of, beyond), scope.AreBeyondPoints(beyond.size())),
       {});
}

void LookAtSharedChannels(const CheckScope& scope, const TellFinding& tell) {
  std::map<int, QStringList> users;
  for (int relay = 0; relay < scope.Points; ++relay) {
    users[scope.Of.Panel.DMXChannel(relay)] << scope.Text({ItemKind::Relay, relay});
  }
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (!DimmerEnabled(scope.Of.Dimmers, dev)) continue;
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const DimmerOutput output(scope.Of.Dimmers, dev, out);
      users[output(dim::DMXChannel)] << scope.Text({ItemKind::DimmerOutput, dev, out});
    }
  }
  for (const auto& [channel, items] : users) {
    if (channel == 0 || items.size() < 2) continue;
    tell({},
         QStringLiteral("%1 share DMX channel %2.")
             .arg(items.join(QStringLiteral(", ")))
             .arg(channel),
         {});
  }
}

constexpr auto RulesOfRelays = std::to_array<CheckRule>({
    {"unused-relay", Severity::Warning, Screen::InputToRelayControl, LookAtUnusedRelays,
     "Nothing switches a relay."},
    {"never-off", Severity::Warning, Screen::OffHoursSweepRelays, LookAtNeverOff,
     "A relay is turned on and never off."},
    {"never-on", Severity::Warning, Screen::InputToRelayControl, LookAtNeverOn,
     "A relay is turned off and never on."},
    {"unused-group", Severity::Note, Screen::RelayGrouping, LookAtUnusedGroups,
     "No input and no timer switches a group."},
    {"unused-preset", Severity::Note, Screen::EditPresets, LookAtUnusedPresets,
     "No input and no timer activates a preset."},
    {"swept-beyond-points", Severity::Warning, Screen::OffHoursSweepRelays, LookAtSweptBeyondPoints,
     "The sweep takes relays that are not installed."},
    {"items-in-use", Severity::Note, Screen::Setup, CountItems, "Tells how much is in use."},
    {"sweep-leaves", Severity::Note, Screen::OffHoursSweepRelays, LookAtSweep,
     "The sweep leaves relays on."},
    {"shared-channel", Severity::Note, Screen::AddOnModuleDMX, LookAtSharedChannels,
     "Items share a DMX channel."},
});

}  // namespace

std::span<const CheckRule> RelayRules() {
  return RulesOfRelays;
}

#include <QStringList>
#include <algorithm>
#include <map>

#include "document/rules/check/check.h"
#include "panel/dimmer_fields.h"
#include "panel/panel_record.h"
#include "panel/words.h"

// What happens to each relay, and what groups, presets and the sweep do.

namespace {

/// A relay of a type from this one on goes back by itself.
constexpr Int16 FirstTypeThatReturns = 2;

void LookAtSwitching(const CheckScope& scope, const TellFinding& tell, unsigned wanted,
                     const QString& words) {
  for (int relay = 0; relay < scope.Points; ++relay) {
    if (scope.OnRelays[static_cast<std::size_t>(relay)] != wanted) continue;
    if (wanted != 0 && scope.Of.Panel.RelayTimerType(relay) >= FirstTypeThatReturns) continue;
    const Item item{ItemKind::Relay, relay};
    tell(item, words.arg(scope.Text(item)), {});
  }
}

void LookAtUnusedRelays(const CheckScope& scope, const TellFinding& tell) {
  LookAtSwitching(scope, tell, 0, QStringLiteral("Nothing switches %1."));
}

void LookAtNeverOff(const CheckScope& scope, const TellFinding& tell) {
  LookAtSwitching(scope, tell, EffectOn,
                  QStringLiteral("%1 is turned on, and nothing ever turns it off."));
}

void LookAtNeverOn(const CheckScope& scope, const TellFinding& tell) {
  LookAtSwitching(scope, tell, EffectOff,
                  QStringLiteral("%1 is turned off, and nothing ever turns it on."));
}

void LookAtUnused(const CheckScope& scope, const TellFinding& tell, ItemKind kind) {
  for (int number = 0; number < ItemCount; ++number) {
    const Item item{kind, number};
    if (!scope.HoldsRelay(item) || scope.IsUsed(item, ~0U)) continue;
    tell(item, QStringLiteral("%1 has relays and is never used.").arg(scope.Text(item)), {});
  }
}

void LookAtUnusedGroups(const CheckScope& scope, const TellFinding& tell) {
  LookAtUnused(scope, tell, ItemKind::Group);
}

void LookAtUnusedPresets(const CheckScope& scope, const TellFinding& tell) {
  LookAtUnused(scope, tell, ItemKind::Preset);
}

QString InUse(const CheckScope& scope, ItemKind kind, const char* plural) {
  int count = 0;
  for (int number = 0; number < ItemCount; ++number) {
    const Item item{kind, number};
    const bool inUse = kind == ItemKind::Group || kind == ItemKind::Preset
                           ? scope.HoldsRelay(item)
                           : scope.DoesAnything(item, ~unsigned{EffectFollows});
    count += inUse ? 1 : 0;
  }
  return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(plural));
}

void CountItems(const CheckScope& scope, const TellFinding& tell) {
  const QStringList counts = {
      InUse(scope, ItemKind::Group, "groups"), InUse(scope, ItemKind::Input, "inputs"),
      InUse(scope, ItemKind::Timer, "timers"), InUse(scope, ItemKind::Preset, "presets")};
  tell({},
       QStringLiteral("Of %1 each, %2 relays are installed, and %3 are in use.")
           .arg(ItemCount)
           .arg(scope.Points)
           .arg(counts.join(QStringLiteral(", "))),
       Screen::Setup);
}

void LookAtSweep(const CheckScope& scope, const TellFinding& tell) {
  if (!scope.DoesAnything({})) return;
  QStringList left;
  for (int relay = 0; relay < scope.Points; ++relay) {
    if (scope.BySweep[static_cast<std::size_t>(relay)] == 0)
      left << scope.Text({ItemKind::Relay, relay});
  }
  if (left.isEmpty()) return;
  tell({},
       QStringLiteral("The off hours sweep leaves on: %1.").arg(left.join(QStringLiteral(", "))),
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
    {"unused-group", Severity::Warning, Screen::RelayGrouping, LookAtUnusedGroups,
     "A group has relays and is never used."},
    {"unused-preset", Severity::Warning, Screen::EditPresets, LookAtUnusedPresets,
     "A preset has relays and is never used."},
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

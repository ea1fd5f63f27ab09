#include "document/rules/check/check.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/lists_in_words.h"
#include "panel/panel_record.h"

// Dimmer outputs of the devices that are enabled.

namespace {

template <typename Look>
void ForEachOutput(const DimmerBlockType& dimmers, bool enabledAlone, Look look) {
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (enabledAlone && !DimmerEnabled(dimmers, dev)) continue;
    for (int out = 0; out < DimmerOutputCount; ++out) {
      try {
        look(Item{ItemKind::DimmerOutput, dev, out}, DimmerOutput(dimmers, dev, out));
      } catch (const RunTimeFailure&) {
        // A level that no percentage tells stops the document, whose rule says so.
      }
    }
  }
}

bool Exists(const CheckScope& scope, const Item& source) {
  switch (source.Kind) {
    case ItemKind::Input:
      return scope.IsInstalled(source);
    case ItemKind::DeviceInput:
      return source.Number <= DeviceCount &&
             source.Part < FennlinkDevice(scope.Of.Devices(source.Number).DeviceType).InputCount;
    case ItemKind::Device:
      return source.Number >= 1 && source.Number <= DeviceCount &&
             scope.Of.Devices(source.Number).DeviceType == DeviceTypePhotocell;
    case ItemKind::Timer:
    case ItemKind::Preset:
      return source.Number < ItemCount;
    default:
      return true;
  }
}

void LookAtSlots(const CheckScope& scope, const TellFinding& tell) {
  for (const Use& use : scope.Uses) {
    if (use.User.Kind != ItemKind::DimmerOutput || Exists(scope, use.Used)) continue;
    tell(use.User,
         QStringLiteral("%1 %2 %3, which %4.")
             .arg(scope.Text(use.User), use.Words, scope.Text(use.Used),
                  use.Used.Kind == ItemKind::Device ? QStringLiteral("is no photocell")
                                                    : QStringLiteral("does not exist")),
         {});
  }
}

void LookAtLimits(const CheckScope& scope, const TellFinding& tell) {
  ForEachOutput(scope.Of.Dimmers, true, [&](const Item& item, const DimmerOutput& output) {
    if (output(dim::MinFromPhotocell) != 0 || output(dim::MaxFromPhotocell) != 0) return;
    if (output(dim::MinLevel) <= output(dim::MaxLevel)) return;
    tell(item,
         QStringLiteral("The minimum of %1, %2%, is above its maximum, %3%.")
             .arg(scope.Text(item))
             .arg(output(dim::MinLevel))
             .arg(output(dim::MaxLevel)),
         {});
  });
}

void LookAtPoints(const CheckScope& scope, const TellFinding& tell) {
  ForEachOutput(scope.Of.Dimmers, true, [&](const Item& item, const DimmerOutput& output) {
    if (output(dim::TrackMode) != Track3Point) return;
    const Int16 b = output(dim::PointBIn);
    if (b >= output(dim::PointAIn) && b <= output(dim::PointCIn)) return;
    tell(item,
         QStringLiteral("Point B of the curve of %1 lies outside points A and C.")
             .arg(scope.Text(item)),
         {});
  });
}

bool HasSlots(const DimmerOutput& output) {
  for (int slot = 0; slot < ControlSlotCount; ++slot) {
    if (output(dim::ControlType, slot) != ControlUnused) return true;
  }
  return false;
}

/// A device that is not enabled follows its relays all the same.
void LookAtRelayLevels(const CheckScope& scope, const TellFinding& tell) {
  ForEachOutput(scope.Of.Dimmers, false, [&](const Item& item, const DimmerOutput& output) {
    const bool dark = output(dim::RelayOnLevel) == 0 && output(dim::RelayOffLevel) == 0;
    if (!dark || !FollowsRelays(output)) return;
    tell(item,
         QStringLiteral("%1 follows relays and goes to 0% whether they are on or off.")
             .arg(scope.Text(item)),
         Screen::DimmerRelayControl);
  });
}

void LookAtDisabledDevices(const CheckScope& scope, const TellFinding& tell) {
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (DimmerEnabled(scope.Of.Dimmers, dev)) continue;
    std::vector<Item> meant;
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const DimmerOutput output(scope.Of.Dimmers, dev, out);
      if (HasSlots(output) || output(dim::TrackMode) != TrackDisabled)
        meant.push_back({ItemKind::DimmerOutput, dev, out});
    }
    if (meant.empty()) continue;
    tell(meant.front(),
         QStringLiteral("%1 %2 control slots or a photocell, and the device is not enabled.")
             .arg(ListOf(scope.Of, meant), QLatin1String(meant.size() == 1 ? "has" : "have")),
         {});
  }
}

constexpr auto RulesOfDimmers = std::to_array<CheckRule>({
    {"dimmer-source", Severity::Error, Screen::DimmerOutput, LookAtSlots,
     "A dimmer slot or a tracking photocell names something that does not exist."},
    {"minimum-above-maximum", Severity::Error, Screen::DimmerOutput, LookAtLimits,
     "The minimum of a dimmer output is above its maximum."},
    {"point-order", Severity::Error, Screen::DimmerOutput, LookAtPoints,
     "Point B of a curve lies outside A and C."},
    {"dark-relay-levels", Severity::Warning, Screen::DimmerOutput, LookAtRelayLevels,
     "A dimmer output follows relays, and its on and off level are both 0%."},
    {"disabled-dimmer", Severity::Warning, Screen::DimmerOutput, LookAtDisabledDevices,
     "A dimmer output has control slots or tracks a photocell, and its device is not enabled."},
});

}  // namespace

std::span<const CheckRule> DimmerRules() {
  return RulesOfDimmers;
}

#include "dimmer/rules/dimmer_model.h"
#include "document/rules/check.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/panel_record.h"

// Dimmer outputs of the devices that are enabled.

namespace {

template <typename Look>
void ForEachOutput(Look look) {
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (DimGetEnabled(dev) == 0) continue;
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      try {
        look(Item{ItemKind::DimmerOutput, dev, out}, dev, out);
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
             source.Part < FennlinkDevice(FennlinkRecords(source.Number).DeviceType).InputCount;
    case ItemKind::Device:
      return source.Number >= 1 && source.Number <= DeviceCount &&
             FennlinkRecords(source.Number).DeviceType == DeviceTypePhotocell;
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
             .arg(ItemText(use.User), use.Words, ItemText(use.Used),
                  use.Used.Kind == ItemKind::Device ? QStringLiteral("is no photocell")
                                                    : QStringLiteral("does not exist")),
         {});
  }
}

void LookAtLimits(const CheckScope&, const TellFinding& tell) {
  ForEachOutput([&](const Item& item, Int16 dev, Int16 out) {
    if (DimGetMinPC(dev, out) != 0 || DimGetMaxPC(dev, out) != 0) return;
    if (DimGetMin(dev, out) <= DimGetMax(dev, out)) return;
    tell(item,
         QStringLiteral("The minimum of %1, %2%, is above its maximum, %3%.")
             .arg(ItemText(item))
             .arg(DimGetMin(dev, out))
             .arg(DimGetMax(dev, out)),
         {});
  });
}

void LookAtPoints(const CheckScope&, const TellFinding& tell) {
  ForEachOutput([&](const Item& item, Int16 dev, Int16 out) {
    if (DimGetTrackMode(dev, out) != Track3Point) return;
    const Int16 b = DimGetBIn(dev, out);
    if (b >= DimGetAIn(dev, out) && b <= DimGetCIn(dev, out)) return;
    tell(item,
         QStringLiteral("Point B of the curve of %1 lies outside points A and C.")
             .arg(ItemText(item)),
         {});
  });
}

constexpr auto RulesOfDimmers = std::to_array<CheckRule>({
    {"dimmer-source", Severity::Error, "frmT3DimmerOutput", LookAtSlots},
    {"minimum-above-maximum", Severity::Error, "frmT3DimmerOutput", LookAtLimits},
    {"point-order", Severity::Error, "frmT3DimmerOutput", LookAtPoints},
});

}  // namespace

std::span<const CheckRule> DimmerRules() {
  return RulesOfDimmers;
}

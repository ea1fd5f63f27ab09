#include "document/rules/item_names.h"

#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/hex.h"
#include "panel/panel_record.h"

namespace {

QString TwoDigitNumber(int number) {
  return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

QString DeviceCode(int device) {
  return QStringLiteral("FL ") + QString::fromStdString(HexByte(device));
}

/// The name as it is stored; empty for an item that has none or lies outside its table.
QString StoredName(const Item& item) {
  const auto of = [&](const NameArray& names) {
    const bool inside = item.Number >= 0 && item.Number < ItemCount;
    return inside ? ToUnicode(names(item.Number)).trimmed() : QString();
  };
  switch (item.Kind) {
    case ItemKind::Panel:
      return ToUnicode(PanelRecord.PanelName).trimmed();
    case ItemKind::Relay:
      return of(PanelRecord.RelayName);
    case ItemKind::Group:
      return of(PanelRecord.GroupName);
    case ItemKind::Input:
      return of(PanelRecord.InputName);
    case ItemKind::Timer:
      return of(PanelRecord.TimerName);
    case ItemKind::Preset:
      return of(PanelRecord.PresetName);
    case ItemKind::Device:
    case ItemKind::DeviceInput:
      return item.Number >= 1 && item.Number <= DeviceCount
                 ? ToUnicode(FennlinkRecords(item.Number).DeviceName).trimmed()
                 : QString();
    case ItemKind::DimmerOutput:
      break;
  }
  return {};
}

}  // namespace

QString ItemCode(const Item& item) {
  const QString number = TwoDigitNumber(item.Number + 1);
  switch (item.Kind) {
    case ItemKind::Panel:
      break;
    case ItemKind::Relay:
      return QStringLiteral("RELAY ") + number;
    case ItemKind::Group:
      return QStringLiteral("GROUP ") + number;
    case ItemKind::Input:
      return QStringLiteral("INPUT ") + number;
    case ItemKind::Timer:
      return QStringLiteral("TIMER ") + number;
    case ItemKind::Preset:
      return QStringLiteral("PRESET ") + number;
    case ItemKind::Device:
      return DeviceCode(item.Number);
    case ItemKind::DeviceInput:
      return QStringLiteral("%1 INPUT %2").arg(DeviceCode(item.Number)).arg(item.Part + 1);
    case ItemKind::DimmerOutput:
      return QStringLiteral("DIMMER %1 OUTPUT %2").arg(item.Number + 1).arg(item.Part + 1);
  }
  return QStringLiteral("PANEL");
}

QString OwnName(const Item& item) {
  const QString name = StoredName(item);
  const bool device = item.Kind == ItemKind::Device || item.Kind == ItemKind::DeviceInput;
  const QString fresh =
      device ? QStringLiteral("FLINK ") + DeviceCode(item.Number).mid(3) : ItemCode(item);
  return name == fresh ? QString() : name;
}

QString ItemText(const Item& item) {
  const QString name = OwnName(item);
  return name.isEmpty() ? ItemCode(item) : ItemCode(item) + u' ' + name;
}

#include "panel/items.h"

#include <algorithm>

#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/hex.h"

namespace {

QString Numbered(const char* word, int number) {
  return QLatin1String(word) + u' ' + QString::fromStdString(NumberText(number + 1, 2));
}

QString DeviceCode(int device) {
  return QStringLiteral("FL ") + QString::fromStdString(HexByte(device));
}

template <typename Name, typename AnyProject>
Name* NameIn(AnyProject& project, const Item& item) {
  auto& panel = project.Panel;
  const auto of = [&](auto& names) -> Name* {
    return item.Number >= 0 && item.Number < ItemCount ? &names(item.Number) : nullptr;
  };
  switch (item.Kind) {
    case ItemKind::Panel:
      return &panel.PanelName;
    case ItemKind::Relay:
      return of(panel.RelayName);
    case ItemKind::Group:
      return of(panel.GroupName);
    case ItemKind::Input:
      return of(panel.InputName);
    case ItemKind::Timer:
      return of(panel.TimerName);
    case ItemKind::Preset:
      return of(panel.PresetName);
    case ItemKind::Device:
    case ItemKind::DeviceInput:
      return item.Number >= 1 && item.Number <= DeviceCount
                 ? &project.Devices(item.Number).DeviceName
                 : nullptr;
    case ItemKind::DimmerOutput:
      break;
  }
  return nullptr;
}

}  // namespace

std::string* StoredName(Project& project, const Item& item) {
  return NameIn<std::string>(project, item);
}

const std::string* StoredName(const Project& project, const Item& item) {
  return NameIn<const std::string>(project, item);
}

QString ItemCode(const Item& item) {
  switch (item.Kind) {
    case ItemKind::Panel:
      break;
    case ItemKind::Relay:
      return Numbered("RELAY", item.Number);
    case ItemKind::Group:
      return Numbered("GROUP", item.Number);
    case ItemKind::Input:
      return Numbered("INPUT", item.Number);
    case ItemKind::Timer:
      return Numbered("TIMER", item.Number);
    case ItemKind::Preset:
      return Numbered("PRESET", item.Number);
    case ItemKind::Device:
      return DeviceCode(item.Number);
    case ItemKind::DeviceInput:
      return QStringLiteral("%1 INPUT %2").arg(DeviceCode(item.Number)).arg(item.Part + 1);
    case ItemKind::DimmerOutput:
      return QStringLiteral("DIMMER %1 OUTPUT %2").arg(item.Number + 1).arg(item.Part + 1);
  }
  return QStringLiteral("PANEL");
}

QString OwnName(const Project& project, const Item& item) {
  const auto* stored = NameIn<const std::string>(project, item);
  const QString name = stored ? ToUnicode(*stored).trimmed() : QString();
  return name == FreshName(item) ? QString() : name;
}

QString FreshName(const Item& item) {
  const bool device = item.Kind == ItemKind::Device || item.Kind == ItemKind::DeviceInput;
  return device ? QStringLiteral("FLINK ") + DeviceCode(item.Number).mid(3) : ItemCode(item);
}

QString ItemText(const Project& project, const Item& item) {
  const QString name = OwnName(project, item);
  return name.isEmpty() ? ItemCode(item) : ItemCode(item) + u' ' + name;
}

int InstalledPoints(const Project& project) {
  int points = 0;
  for (int node = 0; node < NodeCount; ++node) {
    points += project.Panel.IOCount(node) * PointsOfBlock;
  }
  return std::clamp(points, 0, ItemCount);
}

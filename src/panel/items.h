#pragma once

#include <QHashFunctions>
#include <QString>
#include <compare>

#include "panel/project.h"

enum class ItemKind {
  Panel,
  Relay,
  Group,
  Input,
  Timer,
  Preset,
  Device,
  DeviceInput,
  DimmerOutput
};

/// One item of a panel, as findings, comparisons and reports name it.
struct Item {
  ItemKind Kind = ItemKind::Panel;
  int Number = 0;  ///< From 0; of a bus device its address from 1.
  int Part = 0;    ///< From 0: the input of a bus device, the output of a dimmer device.

  // NOLINTNEXTLINE(modernize-use-nullptr): takes the 0 that orders compare with for a pointer.
  auto operator<=>(const Item&) const = default;
};

inline std::size_t qHash(const Item& item, std::size_t seed) {
  return qHashMulti(seed, static_cast<int>(item.Kind), item.Number, item.Part);
}

/// "RELAY 03", "FL 1A INPUT 2", "DIMMER 3 OUTPUT 1", "PANEL"; the same in every project.
QString ItemCode(const Item& item);

/// The user's name, trimmed; empty for an item without one, and for one that still has the name of
/// a new panel.
QString OwnName(const Project& project, const Item& item);

/// The name as it is stored; null for an item that has none or lies outside its table.
std::string* StoredName(Project& project, const Item& item);
const std::string* StoredName(const Project& project, const Item& item);

/// The name of a new panel: "RELAY 03", "FLINK 1A".
QString FreshName(const Item& item);

/// The code with the user's name behind it: "RELAY 03 FOYER".
QString ItemText(const Project& project, const Item& item);

/// Installed relays and inputs, 0 to 48 for a damaged project too.
int InstalledPoints(const Project& project);

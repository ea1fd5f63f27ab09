#pragma once

#include <QString>
#include <vector>

#include "panel/items.h"

/// One setting that differs.
struct Difference {
  QString Area;  ///< "Relays", "Bus devices".
  Item Where;
  QString Field;
  QString This;
  QString Other;

  bool operator==(const Difference&) const = default;
};

/// The settings in which two projects differ, in the order of the file; names only when asked.
/// Spare elements, which mean nothing, are left out.
std::vector<Difference> CompareProjects(const Project& one, const Project& other, bool names);

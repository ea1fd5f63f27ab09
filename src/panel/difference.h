#pragma once

#include <QString>
#include <vector>

#include "panel/fields.h"

/// Where a setting is edited.
struct Spot {
  Editor By = {Screen::None, ""};
  int Row = 0;     ///< Of the control, where the screen has one for each element.
  int Month = -1;  ///< Which the screen shows, where it shows one.

  bool operator==(const Spot&) const = default;
};

/// One setting that differs.
struct Difference {
  QString Area;  ///< "Relays", "Bus devices".
  Item Where;
  QString Field;
  QString This;
  QString Other;
  Spot At = {};

  bool operator==(const Difference&) const = default;
};

/// The settings in which two projects differ, in the order of the file; names only when asked.
/// Spare elements, which mean nothing, are left out.
std::vector<Difference> CompareProjects(const Project& one, const Project& other, bool names);

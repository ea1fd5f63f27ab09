#pragma once

#include <QString>
#include <vector>

#include "panel/setting.h"

/// One setting that differs.
struct Difference {
  QString Area;  ///< "Relays", "Bus devices".
  Item Where;
  QString Field;
  QString This;
  QString Other;
  Setting Of;  ///< What `TakeOver` takes; EditorOf tells the screen.
};

/// The settings in which two projects differ for a user, in the order of the file; names only when
/// asked. Spare elements, which mean nothing, are left out.
std::vector<Setting> DifferentSettings(const Project& one, const Project& other, bool names);

/// What each of the two projects has there, in words.
Difference DifferenceIn(const Setting& setting, const Project& one, const Project& other);

/// All that differs, in words.
std::vector<Difference> CompareProjects(const Project& one, const Project& other, bool names);

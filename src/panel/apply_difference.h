#pragma once

#include <vector>

#include "panel/setting.h"

/// A row of a comparison as it is printed.
struct DifferenceRow {
  QString Area;
  QString Item;
  QString Field;
  QString This;
  QString Other;
};

/// A row that cannot be applied, and why in a sentence's end: "is told twice".
struct RefusedRow {
  std::size_t Index;
  QString Reason;
};

/// Stores what the rows of a comparison tell of the other project. Each has to find its setting as
/// it tells it of this one. Gives the rows that are refused; the project is changed only where
/// there are none.
std::vector<RefusedRow> ApplyDifference(Project& project, const std::vector<DifferenceRow>& rows);

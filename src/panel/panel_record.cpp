#include "panel/panel_record.h"

#include <algorithm>

#include "panel/checked_arithmetic.h"

void SubscriptOutOfRange(int first, int second) {
  throw RunTimeFailure("Subscript out of range: (" + std::to_string(first) + ", " +
                       std::to_string(second) + ").");
}

Int16 PanelIOCount(const PanelRecordType& panel) {
  constexpr auto what = "the I/O count ";
  Int16 sum = 0;
  for (int node = 0; node < NodeCount; ++node) {
    sum = ToInt16(sum + ToInt16(panel.IOCount(node) * PointsOfBlock, what), what);
  }
  return std::min<Int16>(sum, ItemCount);
}

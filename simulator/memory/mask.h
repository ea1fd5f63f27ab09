#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <vector>

#include "simulator/memory/memory.h"

namespace simulator {

/// A bit an item: relays, groups, inputs, timers or presets.
using Mask = std::uint64_t;
constexpr Mask AllItems = (Mask{1} << Items) - 1;
constexpr Mask Bit(int item) {
  return Mask{1} << item;
}
constexpr bool Has(Mask mask, int item) {
  return (mask >> item & 1) != 0;
}
/// Calls `action` with the number of each set bit, in order.
template <typename Action>
void EachBit(Mask mask, Action action) {
  for (; mask != 0; mask &= mask - 1) action(std::countr_zero(mask));
}

/// By code, 1 to 4: the items that have it.
using CodeMasks = std::array<Mask, BlinkAlert + 1>;

/// One row of a bit matrix.
Mask RowBits(const PanelMemory& memory, int address);
/// The first rows of a table of codes, each with its columns.
std::vector<CodeMasks> RowsByCode(const PanelMemory& memory, const PlaneSet& set, int rows);
/// A table of items turned round: the columns, each with its rows.
std::vector<CodeMasks> ColumnsByCode(const PanelMemory& memory, const PlaneSet& set);

}  // namespace simulator

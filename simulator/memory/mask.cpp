#include "simulator/memory/mask.h"

namespace simulator {

Mask RowBits(const PanelMemory& memory, int address) {
  Mask bits = 0;
  for (int i = map::RowBytes - 1; i >= 0; --i) {
    bits = bits << 8 | static_cast<Mask>(memory.Byte(address + i));
  }
  return bits;
}

std::vector<CodeMasks> RowsByCode(const PanelMemory& memory, const PlaneSet& set, int rows) {
  std::vector<CodeMasks> result(static_cast<std::size_t>(rows));
  for (int row = 0; row < rows; ++row) {
    std::array<Mask, 3> planes{};
    for (int plane = 0; plane < set.Planes; ++plane) {
      planes[static_cast<std::size_t>(plane)] =
          RowBits(memory, set.Address + plane * set.PlaneSize + row * map::RowBytes);
    }
    CodeMasks& codes = result[static_cast<std::size_t>(row)];
    for (std::size_t code = 1; code < codes.size(); ++code) {
      codes[code] = AllItems;
      for (std::size_t plane = 0; plane < planes.size(); ++plane) {
        codes[code] &= (code >> plane & 1) != 0 ? planes[plane] : ~planes[plane];
      }
    }
  }
  return result;
}

std::vector<CodeMasks> ColumnsByCode(const PanelMemory& memory, const PlaneSet& set) {
  std::vector<CodeMasks> result(Items);
  const auto rows = RowsByCode(memory, set, Items);
  for (int row = 0; row < Items; ++row) {
    const CodeMasks& codes = rows[static_cast<std::size_t>(row)];
    for (std::size_t code = 1; code < codes.size(); ++code) {
      EachBit(codes[code],
              [&](int column) { result[static_cast<std::size_t>(column)][code] |= Bit(row); });
    }
  }
  return result;
}

}  // namespace simulator

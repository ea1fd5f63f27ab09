#include "link/panel_memory.h"

#include "link/panel_transact.h"
#include "panel/hex.h"

bool ReadPanelBlock(int block, PanelImageType& image, ImageSum& sum) {
  const int address = block * ImageBlockSize;
  if (PanelTransact("31" + HexWord(address) + HexByte(ImageBlockSize - 1), 132, 10) == 0) {
    return false;
  }
  for (int j = 0; j < ImageBlockSize; ++j) {
    const auto value = static_cast<Int16>(ReplyByte(2 + 2 * j));
    image(address + j) = value;
    sum.Add(value);
  }
  return true;
}

std::optional<Int32> PanelMemorySum() {
  if (PanelTransact("3400009FFF", 8, 6) == 0) return {};
  return ParseHexWord(ReplyMid(2, 4));
}

#include "simulator/memory/memory.h"

#include <algorithm>
#include <stdexcept>

namespace simulator {

bool IsPassword(std::string_view text) {
  return text.size() == map::PasswordLength &&
         text.find_first_not_of("0123456789") == std::string_view::npos;
}

void PanelMemory::SetByte(int address, int value) {
  auto& byte = Bytes.at(static_cast<std::size_t>(address));
  const auto changed = static_cast<std::uint8_t>(value);
  if (byte == changed) return;
  byte = changed;
  ++Changes;
}

void PanelMemory::SetWord(int address, int value) {
  SetByte(address, value / 256);
  SetByte(address + 1, value % 256);
}

std::string PanelMemory::Text(int address, int length) const {
  std::string text;
  for (int i = 0; i < length; ++i) text += static_cast<char>(Byte(address + i));
  return text;
}

void PanelMemory::SetText(int address, int length, std::string_view text) {
  for (int i = 0; i < length; ++i) {
    const auto at = static_cast<std::size_t>(i);
    SetByte(address + i, at < text.size() ? static_cast<unsigned char>(text[at]) : ' ');
  }
}

void PanelMemory::SetPassword(std::string_view digits) {
  if (!IsPassword(digits)) throw std::invalid_argument("a password has six digits");
  for (int i = 0; i < map::PasswordLength; ++i) {
    SetByte(map::Password + i, digits[static_cast<std::size_t>(i)] - '0');
  }
}

int PanelMemory::Code(const PlaneSet& set, int row, int column) const {
  int code = 0;
  for (int plane = 0; plane < set.Planes; ++plane) {
    const int byte = Byte(set.Address + plane * set.PlaneSize + row * map::RowBytes + column / 8);
    code |= ((byte >> (column % 8)) & 1) << plane;
  }
  return code;
}

void PanelMemory::SetCode(const PlaneSet& set, int row, int column, int code) {
  const int bit = 1 << (column % 8);
  for (int plane = 0; plane < set.Planes; ++plane) {
    const int address = set.Address + plane * set.PlaneSize + row * map::RowBytes + column / 8;
    const bool isSet = ((code >> plane) & 1) != 0;
    SetByte(address, isSet ? Byte(address) | bit : Byte(address) & ~bit);
  }
}

void PanelMemory::Clear(int first, int last) {
  for (int address = first; address <= last; ++address) SetByte(address, 0);
}

int PanelMemory::Points() const {
  int blocks = 0;
  for (int node = 0; node < map::IONodes; ++node) blocks += Byte(map::IOCount + node);
  return std::min(blocks * PointsABlock, Items);
}

int PanelMemory::Sum(int first, int last) const {
  int sum = 0;
  for (int address = first; address <= last; ++address) {
    sum = (sum + Byte(address)) % 65536 * 2;
    if (sum > 65535) sum -= 65535;
  }
  return sum;
}

void PanelMemory::SetContent(std::string_view content) {
  if (content.size() != Bytes.size()) {
    throw std::invalid_argument("a panel memory is exactly " + std::to_string(Size) +
                                " bytes, this one is " + std::to_string(content.size()));
  }
  std::transform(content.begin(), content.end(), Bytes.begin(),
                 [](char c) { return static_cast<std::uint8_t>(c); });
  ++Changes;
}

}  // namespace simulator

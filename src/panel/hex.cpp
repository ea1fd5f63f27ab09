#include "panel/hex.h"

#include <charconv>

namespace {

std::string Hex(unsigned value, int digits) {
  std::string text(static_cast<std::size_t>(digits), '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4) {
    *digit = "0123456789ABCDEF"[value & 15];
  }
  return text;
}

Int32 ParseHex(std::string_view text, std::size_t digits) {
  text = text.substr(0, digits);
  unsigned value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value, 16);
  return static_cast<Int32>(value);
}

}  // namespace

std::string HexByte(int value) {
  return Hex(static_cast<unsigned>(value), 2);
}

std::string HexWord(Int32 value) {
  return Hex(static_cast<unsigned>(value), 4);
}

Int32 ParseHexByte(std::string_view text) {
  return ParseHex(text, 2);
}

Int32 ParseHexWord(std::string_view text) {
  return ParseHex(text, 4);
}

#include "panel/hex.h"

#include <charconv>

namespace {

char HexDigit(int value) {
  return "0123456789ABCDEF"[value & 15];
}

Int32 ParseHex(std::string_view text, std::size_t digits) {
  text = text.substr(0, digits);
  unsigned value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value, 16);
  return static_cast<Int32>(value);
}

}  // namespace

void AppendHexByte(std::string& text, int value) {
  text += HexDigit(value >> 4);
  text += HexDigit(value);
}

std::string HexByte(int value) {
  return {HexDigit(value >> 4), HexDigit(value)};
}

std::string HexWord(Int32 value) {
  return HexByte(value >> 8) + HexByte(value);
}

Int32 ParseHexByte(std::string_view text) {
  return ParseHex(text, 2);
}

Int32 ParseHexWord(std::string_view text) {
  return ParseHex(text, 4);
}

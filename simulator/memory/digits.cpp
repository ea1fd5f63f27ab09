#include "simulator/memory/digits.h"

namespace simulator {

std::string Hex(unsigned value, int digits) {
  std::string text;
  for (int i = digits - 1; i >= 0; --i) text += "0123456789ABCDEF"[(value >> (4 * i)) & 15];
  return text;
}

std::optional<int> ParseHex(std::string_view digits) {
  if (digits.empty() || digits.size() > 7) return std::nullopt;
  int value = 0;
  for (const char c : digits) {
    if (c >= '0' && c <= '9') {
      value = value * 16 + (c - '0');
    } else if (c >= 'A' && c <= 'F') {
      value = value * 16 + (c - 'A' + 10);
    } else {
      return std::nullopt;
    }
  }
  return value;
}

std::string TwoDigits(int value, char pad) {
  std::string text = std::to_string(value);
  if (text.size() < 2) text.insert(text.begin(), pad);
  return text;
}

}  // namespace simulator

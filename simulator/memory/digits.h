#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// `value`'s low `digits` hex digits, upper case.
std::string Hex(unsigned value, int digits);

/// The value of a text of upper-case hex digits; nothing when it is empty or holds anything else.
std::optional<int> ParseHex(std::string_view digits);

/// Decimal, at least two characters, with `pad` in front of a single digit.
std::string TwoDigits(int value, char pad = '0');

}  // namespace simulator

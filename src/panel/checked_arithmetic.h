#pragma once

#include <limits>
#include <string>

#include "panel/numbers.h"

/// The value as an Int16; throws RunTimeFailure ("Overflow: <what><value> ...") when it does not
/// fit. Rules whose arithmetic is 16-bit pass each intermediate result through this.
inline Int16 ToInt16(Int32 value, const char* what = "") {
  if (value < std::numeric_limits<Int16>::min() || value > std::numeric_limits<Int16>::max()) {
    throw RunTimeFailure(std::string("Overflow: ") + what + std::to_string(value) +
                         " does not fit in 16 bits.");
  }
  return static_cast<Int16>(value);
}

/// The integer part of dividend / divisor, rounded towards minus infinity; divisor above 0.
constexpr int FloorDiv(int dividend, int divisor) {
  return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

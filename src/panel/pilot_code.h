#pragma once

#include "panel/fixed_array.h"

// What a pilot light follows, packed: source * 64 + number. The number counts from 0; of the 64
// that fit, 0 to 47 are items.

constexpr int PilotSource(Int16 pilot) {
  return pilot >> 6;
}

constexpr int PilotNumber(Int16 pilot) {
  return pilot & 63;
}

constexpr Int16 WithPilotSource(Int16 pilot, int source) {
  return static_cast<Int16>(source * 64 + PilotNumber(pilot));
}

/// Only the two low bits of the source stay, as the wire has no more.
constexpr Int16 WithPilotNumber(Int16 pilot, int number) {
  return static_cast<Int16>((pilot & 192) + number);
}

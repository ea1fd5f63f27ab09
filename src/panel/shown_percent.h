#pragma once

#include <cmath>

/// The percentage that screens show for a level byte on display: level / 2.55, rounded. Not the
/// rule of the stored percent fields.
inline int ShownPercent(int level) {
  return static_cast<int>(std::lround(level / 2.55));
}

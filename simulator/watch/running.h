#pragma once

#include <string>
#include <vector>

#include "simulator/watch/reason.h"

namespace simulator {

/// Something that runs, holds or is in force now.
struct Running {
  std::optional<Instant> Until;  // nothing: as long as it does
  std::string Words;             // as in "Blinks, then off: HALL (SWEEP of 21:00)"
  Subject About;                 // the first item of it

  bool operator==(const Running&) const = default;
};

/// What runs now, the next to end first, then what holds, what is disabled and what is in force.
std::vector<Running> RunningNow(const Engine& engine);

/// As in "9:12", "1:00:00"; "-" for what has no end.
std::string TimeLeft(const std::optional<Instant>& until, Instant now);

/// The switches that act as long as they are closed and do so now to the item: that disable an
/// input or timer, or hold a relay. As in "INPUT 07 KEY".
std::string HeldBy(const Subject& item, const Engine& engine);

}  // namespace simulator

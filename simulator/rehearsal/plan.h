#pragma once

#include <string>
#include <vector>

#include "simulator/engine/engine.h"

namespace simulator {

/// A relay that is on for a while.
struct Bar {
  int Relay = 0;
  Instant From = 0;
  Instant To = 0;
};

/// Gathers from an engine's rows when its relays are on, in order of their ends.
class BarKeeper {
 public:
  BarKeeper() = default;  // of relays that are all off
  explicit BarKeeper(const Engine& engine);

  void Take(const Row& row);
  /// All of them, with those that are still on ending at `end`.
  std::vector<Bar> Until(Instant end) const;

 private:
  std::vector<Bar> Bars;
  std::array<std::optional<Instant>, Items> Since;
};

/// What the relays will do from an engine's present on, `inputs` left as they are.
std::vector<Bar> BarsAhead(const Engine& engine, Instant to);

/// The days from `first` to `last`, counted from 1970, as a picture: a row a relay, bars while it
/// is on, sunrise, sunset, open and close as lines.
std::string PlanSvg(const Engine& engine, const PanelMemory& memory, const std::vector<Bar>& bars,
                    std::int64_t first, std::int64_t last);

}  // namespace simulator

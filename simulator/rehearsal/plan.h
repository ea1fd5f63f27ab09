#pragma once

#include <string>
#include <vector>

#include "simulator/watch/bars.h"

namespace simulator {

/// What a plan has rows for beside relays.
struct PlanRows {
  bool Dimmers = false;  // outputs that are fitted, their level as height
  bool Pilots = false;   // that follow something

  bool operator==(const PlanRows&) const = default;
};
std::vector<int> RowsOfPlan(const Configuration& settings, Mask relays, PlanRows wanted);

/// The days from `first` to `last`, counted from 1970, as a picture: a row an item, bars while it
/// is on, sunrise, sunset, open and close as lines, a legend below.
std::string PlanSvg(const Engine& engine, const PanelMemory& memory, const std::vector<Bar>& bars,
                    std::int64_t first, std::int64_t last, PlanRows wanted = {});

}  // namespace simulator

#include "simulator/engine/panel_clock.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr std::int64_t YearMs = 366 * DayMs;

}  // namespace

void PanelClock::SetSpeed(int factor, std::int64_t realMs) {
  Tick(realMs);
  Factor = factor;
}

void PanelClock::Tick(std::int64_t realMs) {
  const std::int64_t passed = std::max<std::int64_t>(realMs - LastRealMs, 0);
  LastRealMs = realMs;
  Runner.AdvanceTo(Runner.Now() + passed * Factor);
}

void PanelClock::JumpTo(std::int64_t wall) {
  const Calendar& days = Runner.Days();
  const Instant at = days.FromWall(wall);
  if (at < Runner.Now() || at > Runner.Now() + YearMs) {
    Runner.PowerOn(days.FromWall(wall / DayMs * DayMs));
  }
  Runner.AdvanceTo(at);
}

bool PanelClock::Step() {
  const std::optional<Instant> next = Runner.NextRow(YearMs);
  if (!next) return false;
  Runner.AdvanceTo(*next);
  return true;
}

}  // namespace simulator

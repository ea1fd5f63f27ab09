#include "simulator/engine/panel_clock.h"

#include <algorithm>
#include <utility>

namespace simulator {

QDateTime ComputersTime() {
  return QDateTime::currentDateTime();
}

QDateTime DateTimeOf(std::int64_t wall) {
  return QDateTime::fromMSecsSinceEpoch(wall, Qt::UTC);
}

std::int64_t WallOf(const QDateTime& time) {
  return QDateTime(time.date(), time.time(), Qt::UTC).toMSecsSinceEpoch();
}

PanelClock::PanelClock(Engine& engine, Clock computer)
    : Runner(engine), Real(std::move(computer)), LastRealMs(RealMs()) {}

void PanelClock::SetSpeed(int factor) {
  Tick();
  Factor = factor;
}

void PanelClock::Tick() {
  const std::int64_t realMs = RealMs();
  const std::int64_t passed = std::max<std::int64_t>(realMs - LastRealMs, 0);
  LastRealMs = realMs;
  Runner.AdvanceTo(Runner.Now() + passed * Factor);
}

bool PanelClock::JumpTo(const QDateTime& time) {
  Tick();
  const Calendar& days = Runner.Days();
  const std::int64_t wall = WallOf(time);
  const Instant at = days.FromWall(wall);
  const bool anew = at < Runner.Now() || at > Runner.Now() + FarMs;
  if (anew) Runner.PowerOn(days.FromWall(wall / DayMs * DayMs));
  Runner.AdvanceTo(at);
  return anew;
}

bool PanelClock::Step() {
  return Step([this](const Row& row) { return Matters(row, Runner.Settings()); });
}

bool PanelClock::Step(const std::function<bool(const Row&)>& wanted) {
  Tick();
  const std::optional<Instant> next = Runner.NextRow(FarMs, wanted);
  if (!next) return false;
  Runner.AdvanceTo(*next);
  return true;
}

void PanelClock::RunDaySoFar() {
  Tick();
  const Instant now = Runner.Now();
  Runner.PowerOn(Runner.Days().FromWall(Runner.Wall() / DayMs * DayMs));
  Runner.AdvanceTo(now);
}

}  // namespace simulator

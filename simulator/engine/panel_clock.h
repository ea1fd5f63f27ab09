#pragma once

#include <QDateTime>
#include <functional>

#include "simulator/engine/engine.h"

namespace simulator {

/// The present local date and time. Tests put a clock of their own in its place.
using Clock = std::function<QDateTime()>;
QDateTime ComputersTime();

/// A time of the wall clock, milliseconds since 1970, as a plain calendar time: the computer's own
/// daylight saving shifts nothing.
QDateTime DateTimeOf(std::int64_t wall);
std::int64_t WallOf(const QDateTime& time);

/// Lets an engine run with the computer's clock, at a multiple of it, or stand.
class PanelClock {
 public:
  /// Further away than this nothing is looked for.
  static constexpr std::int64_t FarMs = 366 * DayMs;

  PanelClock(Engine& engine, Clock computer);

  QDateTime Computer() const { return Real(); }
  int Speed() const { return Factor; }
  /// How many times as fast as real time; 0 stands still.
  void SetSpeed(int factor);
  /// Lets happen what real time has brought since the last call. Real time that has been set back
  /// brings nothing.
  void Tick();
  /// Goes to a time of the wall clock: forward through all that happens, backward, and further away
  /// than FarMs, by power coming anew at the beginning of that day; whether it did.
  bool JumpTo(const QDateTime& time);
  /// Goes to the next row that matters, or that is wanted; whether there is one, not far away.
  [[nodiscard]] bool Step();
  [[nodiscard]] bool Step(const std::function<bool(const Row&)>& wanted);
  /// As if power had come at midnight: the day so far happens.
  void RunDaySoFar();

 private:
  std::int64_t RealMs() const { return Real().toMSecsSinceEpoch(); }

  Engine& Runner;
  Clock Real;
  std::int64_t LastRealMs;
  int Factor = 1;
};

}  // namespace simulator

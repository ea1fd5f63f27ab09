#pragma once

#include "simulator/engine/engine.h"

namespace simulator {

/// Lets an engine run with real time, at a multiple of it, or stand.
class PanelClock {
 public:
  /// Real time is any count of milliseconds that goes on.
  PanelClock(Engine& engine, std::int64_t realMs) : Runner(engine), LastRealMs(realMs) {}

  int Speed() const { return Factor; }
  /// How many times as fast as real time; 0 stands still.
  void SetSpeed(int factor, std::int64_t realMs);
  /// Lets happen what real time has brought since the last call. Real time that has been set back
  /// brings nothing.
  void Tick(std::int64_t realMs);
  /// Goes to a time of the wall clock, milliseconds since 1970: forward through all that happens,
  /// backward, and further than a year, by power coming anew at the beginning of that day.
  void JumpTo(std::int64_t wall);
  /// Goes to the next instant at which something happens, at most a year ahead; false: nothing.
  bool Step();

 private:
  Engine& Runner;
  std::int64_t LastRealMs;
  int Factor = 1;
};

}  // namespace simulator

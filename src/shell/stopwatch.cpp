#include "shell/stopwatch.h"

#include <chrono>

#include "panel/fixed_array.h"

namespace {

FixedArray<qint64, 2> startedAt;

}  // namespace

std::function<qint64()> MonotonicMsSeam = [] {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
};
std::function<QDateTime()> NowSeam = [] { return QDateTime::currentDateTime(); };

void TimerRestart(int n) {
  startedAt(n) = MonotonicMsSeam();
}

qint64 TimerElapsedMs(int n) {
  return MonotonicMsSeam() - startedAt(n);
}

QDateTime Now() {
  return NowSeam();
}

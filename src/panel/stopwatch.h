#pragma once

#include <QDateTime>
#include <functional>

/// The clocks of the program; tests move them by hand.
extern std::function<qint64()> MonotonicMsSeam;
extern std::function<QDateTime()> NowSeam;
extern std::function<void(qint64)> PauseSeam;

/// Runs from where it is made or restarted.
class Stopwatch {
 public:
  void Restart() { startedAt_ = MonotonicMsSeam(); }
  qint64 ElapsedMs() const { return MonotonicMsSeam() - startedAt_; }

 private:
  qint64 startedAt_ = MonotonicMsSeam();
};

/// Lets `ms` milliseconds pass without delivering events.
void Pause(qint64 ms);

/// The PC's date and time.
QDateTime Now();

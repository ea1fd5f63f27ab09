#include "panel/stopwatch.h"

#include <QThread>
#include <chrono>

std::function<qint64()> MonotonicMsSeam = [] {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
};
std::function<QDateTime()> NowSeam = [] { return QDateTime::currentDateTime(); };
std::function<void(qint64)> PauseSeam = [](qint64 ms) {
  QThread::msleep(static_cast<unsigned long>(ms));
};

void Pause(qint64 ms) {
  PauseSeam(ms);
}

QDateTime Now() {
  return NowSeam();
}

#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

/// Resident memory of this process in kB.
inline long ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  std::string word;
  long kilobytes = 0;
  while (status >> word) {
    if (word == "VmRSS:") status >> kilobytes;
  }
  return kilobytes;
}

/// Runs `start`, which shows the window, prints "painted" once it has been painted, runs `work` and
/// prints the memory then in use. Returns what main is to return.
inline int ReportFirstPaint(QWidget& window, const std::function<void()>& start,
                            const std::function<void()>& work) {
  class PaintWatch : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) QTimer::singleShot(0, qApp, &QApplication::quit);
      return false;
    }
  } watch;
  window.installEventFilter(&watch);
  start();
  QApplication::exec();
  std::puts("painted");
  std::fflush(stdout);
  window.removeEventFilter(&watch);
  work();
  std::printf("%ld\n", ResidentKilobytes());
  return 0;
}

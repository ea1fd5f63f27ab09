#include "shell/window/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QSocketNotifier>
#include <array>
#include <csignal>

namespace {

std::array<int, 2> endPipe{-1, -1};

extern "C" void TellPipe(int) {
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(endPipe[1], &byte, 1);
}

void OnSignals(const std::function<void()>& end) {
  if (pipe2(endPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* notifier = new QSocketNotifier(endPipe[0], QSocketNotifier::Read, qApp);
  QObject::connect(notifier, &QSocketNotifier::activated, qApp, [notifier, end] {
    notifier->setEnabled(false);
    end();
  });
  for (const int number : {SIGTERM, SIGHUP, SIGINT}) std::signal(number, TellPipe);
}

}  // namespace

void OnEndFromOutside(const std::function<void()>& end) {
  OnSignals(end);
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp, [end] { end(); });
}

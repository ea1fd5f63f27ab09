#include "simulator/program/end_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <system_error>

namespace simulator {

namespace {

std::array<int, 2> SignalPipe{-1, -1};

extern "C" void WakeUp(int) {
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(SignalPipe[1], &byte, 1);
}

}  // namespace

void QuitOnSignals() {
  if (pipe2(SignalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "Signals cannot be taken");
  }
  auto* notifier =
      new QSocketNotifier(SignalPipe[0], QSocketNotifier::Read, QCoreApplication::instance());
  // Not quit(), which leaves a message box that stands before the event loop has begun.
  QObject::connect(notifier, &QSocketNotifier::activated, [] { QCoreApplication::exit(); });
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) signal(number, WakeUp);
  signal(SIGPIPE, SIG_IGN);
  // In the background the terminal has no commands for us, and must not stop us either.
  signal(SIGTTIN, SIG_IGN);
}

}  // namespace simulator

#include "project/interrupt.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <tuple>

#include "project/output.h"

namespace {

std::string lastWords;
int lastStatus = StatusGood;

/// Nothing else may be done in a signal's handler.
void End(int) {
  std::ignore = write(STDERR_FILENO, lastWords.data(), lastWords.size());
  _exit(lastStatus);
}

constexpr std::array EndSignals = {SIGINT, SIGTERM, SIGHUP};

void EndOnSignals() {
  for (const int signal : EndSignals) {
    // A shell lets what runs in the background, or after nohup, ignore it.
    if (std::signal(signal, End) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
}

}  // namespace

void ExitQuietlyOnInterrupt() {
  EndOnSignals();
}

void TellOnInterrupt(const QString& text) {
  // Not while they change.
  sigset_t ends;
  sigemptyset(&ends);
  for (const int signal : EndSignals) sigaddset(&ends, signal);
  sigprocmask(SIG_BLOCK, &ends, nullptr);
  lastWords = ("\ntamberloom3-project: " + text + "\n").toStdString();
  lastStatus = StatusFailed;
  EndOnSignals();
  sigprocmask(SIG_UNBLOCK, &ends, nullptr);
}

#include "project/interrupt.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <tuple>

#include "line/modem_transport.h"
#include "project/output.h"

namespace {

bool ends = false;  ///< On the signals, as somebody has said how.
std::string lastWords;
int lastStatus = StatusGood;
int keptTerminal = -1;  ///< None.
termios terminalAsKept{};

/// Nothing else may be done in a signal's handler.
void End(int) {
  if (keptTerminal >= 0) tcsetattr(keptTerminal, TCSANOW, &terminalAsKept);
  std::ignore = write(STDERR_FILENO, lastWords.data(), lastWords.size());
  HangUpAtOnce();
  _exit(lastStatus);
}

constexpr std::array EndSignals = {SIGINT, SIGTERM, SIGHUP};

void EndOnSignals() {
  ends = true;
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
  sigset_t endings;
  sigemptyset(&endings);
  for (const int signal : EndSignals) sigaddset(&endings, signal);
  sigprocmask(SIG_BLOCK, &endings, nullptr);
  lastWords = ("\ntamberloom3-project: " + text + "\n").toStdString();
  lastStatus = StatusFailed;
  EndOnSignals();
  sigprocmask(SIG_UNBLOCK, &endings, nullptr);
}

void HangUpOnInterrupt(const QString& text) {
  if (!ends) TellOnInterrupt(text);
}

void KeepTerminalOnInterrupt(int terminal) {
  if (tcgetattr(terminal, &terminalAsKept) == 0) keptTerminal = terminal;
}

#pragma once

#include <QString>
#include <functional>

#include "panel/numbers.h"

/// The stages of opening and closing a line that a user waits for.
enum class LineStage { ResetModem, DialModem, ModemConnected, CallSettled, HangUpModem, HungUp };

/// What the line asks of the program around it, and tells it. Any of these may be empty.
struct LineHooks {
  /// The connection type that is chosen, asked at each step. Empty: the one that was opened last.
  std::function<Int16()> ConnectionType;
  std::function<void(LineStage)> Stage;
  /// What has become of an attempt: "Connected", "Error - Retry: 1".
  std::function<void(const QString&)> LinkStatus;
  /// What a panel holds cannot be remembered, and why.
  std::function<void(const QString&)> NotRemembered;
  /// A wait is not over at once.
  std::function<void()> LongWait;
};
extern LineHooks Line;

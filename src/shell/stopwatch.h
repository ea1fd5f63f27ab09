#pragma once

#include <QDateTime>
#include <functional>

// Two numbered stopwatches: 0 belongs to the panel transactions, 1 to opening and closing a link.

/// Restarts stopwatch `n`, 0 or 1.
void TimerRestart(int n);

/// Milliseconds since stopwatch `n` was restarted.
qint64 TimerElapsedMs(int n);

/// The PC's date and time.
QDateTime Now();

/// The clocks behind them; tests move them by hand.
extern std::function<qint64()> MonotonicMsSeam;
extern std::function<QDateTime()> NowSeam;

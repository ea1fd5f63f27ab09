#pragma once

#include <QDateTime>
#include <vector>

#include "panel/items.h"
#include "panel/screens.h"

// What a timer does next, as its editor and the sheet of timers tell it.

/// What a timer does to relays, groups or presets, and where that is set.
struct TimerAct {
  QString Words;  ///< "turns HALLS and OFFICES on, STORE off"; "activates NIGHT".
  Screen On;
};

/// One for each screen that gives the timer something to do.
std::vector<TimerAct> ActsOfTimer(const Project& project, int timer);

/// "Thu 4:40 PM" within a week, else "Dec 31, 11:45 PM", with the year where it is not this one;
/// nothing where it never fires by itself.
QString NextInWords(const Project& project, int timer, const QDateTime& now);

#pragma once

#include <QDateTime>
#include <vector>

#include "panel/items.h"
#include "panel/screens.h"
#include "schedule/rules/timer_moments.h"

// What a timer does next, as its editor and the sheet of timers tell it.

/// "HALLS, OFFICES and STORE", or "HALLS, OFFICES and 4 more".
QString NamesInShort(const Project& project, const std::vector<Item>& items);

/// What a timer does to relays, groups, presets or dimmers, and where that is set.
struct TimerAct {
  QString Words;  ///< "turns HALLS and OFFICES on, STORE off"; "activates NIGHT".
  Screen On;
  Item Where;  ///< Which the screen is to show.
};

/// One for each screen that gives the timer something to do.
std::vector<TimerAct> ActsOfTimer(const Project& project, int timer);

/// All of them in one line; "-" for a timer that does nothing.
QString ActsInWords(const Project& project, int timer);

/// "Thu 4:40 PM" within a week, else "Dec 31, 11:45 PM", with the year where it is not this one.
QString MomentInWords(const TimerMoment& moment, const QDateTime& now);
/// The next one of a timer; nothing where it never fires by itself.
QString NextInWords(const Project& project, int timer, const QDateTime& now);

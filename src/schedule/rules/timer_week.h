#pragma once

#include "schedule/rules/lit_relays.h"

/// What timers alone have on in the seven days from one on.
struct TimerWeek {
  struct Row {
    QString Name;  ///< Of a group with just these relays, or theirs.
    std::vector<LitSpan> Spans;
  };
  /// A timer turns a row on or off.
  struct End {
    int Row;
    WallMinute At;
    int Timer;
    QString Words;  ///< "OFFICES on Thu 7:00 AM by TIMER 03 MORNING".
  };

  static constexpr int Days = 7;

  QDate First;
  std::vector<Row> Rows;
  std::vector<End> Ends;  ///< By row, then by time.

  WallMinute Begin() const { return FirstMinuteOf(First); }
  WallMinute Finish() const { return FirstMinuteOf(First.addDays(Days)); }
};

TimerWeek WeekOfTimers(const Project& project, QDate first);

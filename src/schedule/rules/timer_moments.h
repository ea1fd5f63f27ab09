#pragma once

#include <QDateTime>
#include <bitset>
#include <vector>

#include "panel/project.h"
#include "panel/time_values.h"
#include "schedule/rules/panel_days.h"

// When a panel's timers fire by themselves; what forces or disables one is none of it.

/// What the time of a timer counts from.
enum class TimerEvent { Midnight, Sunrise, Sunset, Open, Close };
constexpr int TimerEventCount = 5;

constexpr bool IsOfSun(TimerEvent event) {
  return event == TimerEvent::Sunrise || event == TimerEvent::Sunset;
}

/// The event from which a stored time counts.
TimerEvent EventOf(TimerTimeValue time);
/// By how many minutes it comes after that; below 0 before it.
int MinutesFromEvent(TimerTimeValue time);

/// A timer fires.
struct TimerMoment {
  WallMinute At;
  int Timer;  ///< From 0.

  QDate Day() const { return DayOf(At); }
  int MinuteOfDay() const { return static_cast<int>(At - FirstMinuteOf(Day())); }
  auto operator<=>(const TimerMoment&) const = default;
};

using TimerSet = std::bitset<ItemCount>;

class TimerMoments {
 public:
  enum class Days {
    Real,
    /// Without daylight saving, sunrise at 6:00, sunset at 18:00: how timers of one event, or of
    /// none of the sun's, stand to each other, for a small part of the work.
    Even
  };

  /// The project must outlive it.
  explicit TimerMoments(const Project& project, Days days = Days::Real,
                        const TimerSet& only = TimerSet().set());

  /// What fires on days of the wall clock, both included, by time and then by number.
  std::vector<TimerMoment> Between(QDate first, QDate last) const;
  std::vector<TimerMoment> OfDay(QDate day) const { return Between(day, day); }
  std::vector<TimerMoment> OfYear(int year) const { return Between({year, 1, 1}, {year, 12, 31}); }
  /// The timers whose day it is, whether or not what they count from comes.
  TimerSet RunningOn(QDate day) const;
  /// The first time that a timer fires after a time of the wall clock, if it ever does.
  std::optional<TimerMoment> Next(int timer, const QDateTime& after) const;

 private:
  struct Timer {
    int Number;
    TimerEvent From;
    int Offset;  ///< Minutes.
    int DaysLeftOut;
    bool RestsOnHolidays;
    int Month;  ///< 0: by weekdays.
    int Date;
  };
  /// Of one day.
  using Events = std::array<std::optional<WallMinute>, TimerEventCount>;

  static Timer Read(const PanelRecordType& panel, int timer);
  bool RunsOn(const Timer& timer, QDate day) const;
  Events EventsOf(QDate day, bool sun) const;
  WallMinute AsItComes(WallMinute minute) const;

  const PanelRecordType& panel_;
  Days kind_;
  PanelDays days_;
  std::vector<Timer> timers_;
};

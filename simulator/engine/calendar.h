#pragma once

#include <array>
#include <cstdint>

#include "simulator/memory/memory.h"

namespace simulator {

/// Milliseconds of the panel's standard time since 1970; daylight saving does not move it.
using Instant = std::int64_t;

constexpr std::int64_t SecondMs = 1000;
constexpr std::int64_t MinuteMs = 60 * SecondMs;
constexpr std::int64_t HourMs = 60 * MinuteMs;
constexpr std::int64_t DayMs = 24 * HourMs;
constexpr std::int64_t DayMinutes = 1440;

struct Date {
  int Year;
  int Month;  // 1..12
  int Day;    // 1..31
};

/// Days are counted from 1970-01-01.
Date DateOf(std::int64_t day);
std::int64_t DayOf(const Date& date);
/// 0 Sunday .. 6 Saturday.
int WeekdayOf(std::int64_t day);

inline constexpr std::array WeekdayNames{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

/// The panel's wall clock: standard time, and daylight saving by the rule in memory.
class Calendar {
 public:
  explicit Calendar(const PanelMemory& memory);

  /// The wall clock, milliseconds since 1970.
  std::int64_t Wall(Instant instant) const { return instant + (InSaving(instant) ? HourMs : 0); }
  /// The instant at which the wall clock shows a time: the first of two, and the end of the hour
  /// that is skipped for a time within it.
  Instant FromWall(std::int64_t wall) const;
  Instant FromWallMinute(std::int64_t minute) const { return FromWall(minute * MinuteMs); }
  bool InSaving(Instant instant) const;
  /// Minutes that the wall clock is behind universal time.
  int MinutesWest(Instant instant) const { return ZoneMinutesWest - (InSaving(instant) ? 60 : 0); }
  int StandardMinutesWest() const { return ZoneMinutesWest; }

  struct Saving {
    Instant Start = 0;
    Instant End = 0;  // equal to Start: none in this year
  };
  /// None outside the years that the panel knows.
  Saving SavingOf(int year) const;

  static constexpr int FirstYear = 2000;
  static constexpr int Years = 100;

 private:
  int ZoneMinutesWest;
  std::array<Saving, Years> Savings{};
};

}  // namespace simulator

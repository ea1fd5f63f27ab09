#include "simulator/engine/calendar.h"

#include <algorithm>
#include <chrono>

#include "simulator/engine/readings.h"

namespace simulator {

namespace {

constexpr int LastSunday = 5;

std::int64_t NthSunday(int year, int month, int week) {
  if (week == LastSunday) {
    const std::int64_t next = month == 12 ? DayOf({year + 1, 1, 1}) : DayOf({year, month + 1, 1});
    return next - 1 - WeekdayOf(next - 1);
  }
  const std::int64_t first = DayOf({year, month, 1});
  return first + (7 - WeekdayOf(first)) % 7 + std::int64_t{7} * (week - 1);
}

std::int64_t FloorDay(std::int64_t ms) {
  return ms / DayMs - (ms % DayMs < 0 ? 1 : 0);
}

}  // namespace

Date DateOf(std::int64_t day) {
  const std::chrono::year_month_day date{
      std::chrono::sys_days{std::chrono::days{static_cast<int>(day)}}};
  return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day()))};
}

std::int64_t DayOf(const Date& date) {
  const std::chrono::year_month_day day{std::chrono::year{date.Year},
                                        std::chrono::month{static_cast<unsigned>(date.Month)},
                                        std::chrono::day{static_cast<unsigned>(date.Day)}};
  return std::chrono::sys_days{day}.time_since_epoch().count();
}

int WeekdayOf(std::int64_t day) {
  return static_cast<int>(((day + 4) % 7 + 7) % 7);
}

Calendar::Calendar(const PanelMemory& memory) {
  constexpr int easternMinutesWest = 300;
  constexpr int lastZone = 4;
  ZoneMinutesWest = easternMinutesWest + 60 * std::min(memory.Byte(map::TimeZone), lastZone);

  const int startWeek = memory.Byte(map::DSTStartWeek);
  const int startMonth = memory.Byte(map::DSTStartWeek + 1);
  const int endWeek = memory.Byte(map::DSTStartWeek + 2);
  const int endMonth = memory.Byte(map::DSTStartWeek + 3);
  const auto within = [](int value, int last) { return value >= 1 && value <= last; };
  if (memory.Byte(map::DSTEnabled) != 1 || !within(startWeek, LastSunday) ||
      !within(endWeek, LastSunday) || !within(startMonth, 12) || !within(endMonth, 12)) {
    return;
  }
  for (int i = 0; i < Years; ++i) {
    const std::int64_t start = NthSunday(FirstYear + i, startMonth, startWeek);
    const std::int64_t end = NthSunday(FirstYear + i, endMonth, endWeek);
    if (start == end) continue;
    // The end is told in daylight saving time, an hour earlier in standard time.
    Savings[static_cast<std::size_t>(i)] = {start * DayMs + reading::ClockChangeHour * HourMs,
                                            end * DayMs + (reading::ClockChangeHour - 1) * HourMs};
  }
}

Calendar::Saving Calendar::SavingOf(int year) const {
  if (year < FirstYear || year >= FirstYear + Years) return {};
  return Savings[static_cast<std::size_t>(year - FirstYear)];
}

bool Calendar::InSaving(Instant instant) const {
  const Saving saving = SavingOf(DateOf(FloorDay(instant)).Year);
  if (saving.Start <= saving.End) return instant >= saving.Start && instant < saving.End;
  return instant >= saving.Start || instant < saving.End;
}

Instant Calendar::FromWall(std::int64_t wall) const {
  if (InSaving(wall - HourMs)) return wall - HourMs;
  if (!InSaving(wall)) return wall;
  return SavingOf(DateOf(FloorDay(wall)).Year).Start;
}

}  // namespace simulator

#include "schedule/rules/panel_days.h"

#include "panel/time_values.h"
#include "panel/words.h"
#include "schedule/rules/sun_times.h"

namespace {

constexpr int Hour = 60;
constexpr int ChangeHour = 2;  ///< Of the wall clock, as daylight saving begins and as it ends.
constexpr int QuarterMinutes = MinutesPerDay / QuarterHoursPerDay;
constexpr int LastWeek = static_cast<int>(DSTWeeks.size());  ///< The month's last Sunday.

bool IsWeek(Int16 week) {
  return week >= 1 && week <= LastWeek;
}

bool IsMonth(Int16 month) {
  return month >= 1 && month <= static_cast<int>(MonthNames.size());
}

QDate Sunday(int year, int month, int week) {
  const QDate first(year, month, 1);
  if (week == LastWeek) {
    const QDate last = first.addDays(first.daysInMonth() - 1);
    return last.addDays(-(last.dayOfWeek() % 7));
  }
  return first.addDays(7 - first.dayOfWeek() + 7 * (week - 1));
}

}  // namespace

WallMinute FirstMinuteOf(QDate day) {
  return QDate(1970, 1, 1).daysTo(day) * MinutesPerDay;
}

QDate DayOf(WallMinute minute) {
  const bool before = minute < 0 && minute % MinutesPerDay != 0;
  return QDate(1970, 1, 1).addDays(minute / MinutesPerDay - (before ? 1 : 0));
}

std::vector<int> DatesWithTimes(const PanelRecordType& panel, int month) {
  std::vector<int> dates;
  for (int date = 0; date < MonthDays.at(static_cast<std::size_t>(month)); ++date) {
    if (panel.DateOpenTime(month, date) < NoEntry || panel.DateCloseTime(month, date) < NoEntry) {
      dates.push_back(date);
    }
  }
  return dates;
}

PanelDays::PanelDays(const PanelRecordType& panel) : panel_(panel) {
  for (int month = 0; month < 12; ++month) {
    for (const int date : DatesWithTimes(panel, month)) {
      holidays_[static_cast<std::size_t>(month)][static_cast<std::size_t>(date)] = true;
    }
  }
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Int16 month = panel.TimerHolidayMonth(timer);
    const Int16 date = panel.TimerHolidayDate(timer);
    if (!IsMonth(month) || date < 1 || date > 31) continue;
    holidays_[static_cast<std::size_t>(month - 1)][static_cast<std::size_t>(date - 1)] = true;
  }
  if (panel.DSTEnabled == 0 || !IsWeek(panel.DSTStartWeek) || !IsMonth(panel.DSTStartMonth) ||
      !IsWeek(panel.DSTEndWeek) || !IsMonth(panel.DSTEndMonth)) {
    return;
  }
  for (int i = 0; i < Years; ++i) {
    const QDate start = Sunday(FirstYear + i, panel.DSTStartMonth, panel.DSTStartWeek);
    const QDate end = Sunday(FirstYear + i, panel.DSTEndMonth, panel.DSTEndWeek);
    if (start == end) continue;
    // The end is told in daylight saving time, an hour earlier in standard time.
    savings_[static_cast<std::size_t>(i)] = {FirstMinuteOf(start) + ChangeHour * Hour,
                                             FirstMinuteOf(end) + (ChangeHour - 1) * Hour};
  }
}

PanelDays::Saving PanelDays::SavingOf(QDate day) const {
  const int year = day.year() - FirstYear;
  return year >= 0 && year < Years ? savings_[static_cast<std::size_t>(year)] : Saving{};
}

bool PanelDays::InSaving(qint64 standardMinute) const {
  const Saving saving = SavingOf(DayOf(standardMinute));
  if (saving.Start > saving.End) {
    return standardMinute >= saving.Start || standardMinute < saving.End;
  }
  return standardMinute >= saving.Start && standardMinute < saving.End;
}

WallMinute PanelDays::FromStandard(qint64 standardMinute) const {
  return standardMinute + (InSaving(standardMinute) ? Hour : 0);
}

WallMinute PanelDays::AsItComes(WallMinute minute) const {
  const bool skipped = InSaving(minute) && !InSaving(minute - Hour);
  return skipped ? SavingOf(DayOf(minute)).Start + Hour : minute;
}

std::optional<WallMinute> PanelDays::HourOf(QDate day, bool close) const {
  const int month = day.month() - 1;
  const int date = day.day() - 1;
  const int weekday = day.dayOfWeek() % 7;
  const Int16 opens = panel_.DateOpenTime(month, date);
  const Int16 closes = panel_.DateCloseTime(month, date);
  int quarter = close ? panel_.NormalCloseTime(weekday) : panel_.NormalOpenTime(weekday);
  if (opens < NoEntry || closes < NoEntry) quarter = close ? closes : opens;
  if (quarter < 0 || quarter >= QuarterHoursPerDay) return {};
  return FirstMinuteOf(day) + quarter * QuarterMinutes;
}

std::optional<WallMinute> PanelDays::OpenTime(QDate day) const {
  return HourOf(day, false);
}

std::optional<WallMinute> PanelDays::CloseTime(QDate day) const {
  return HourOf(day, true);
}

PanelDays::Sun PanelDays::SunOf(QDate day) const {
  constexpr int easternMinutesWest = 5 * Hour;
  constexpr int lastZone = static_cast<int>(TimeZones.size()) - 1;
  const int zone = panel_.TimeZone < 0 ? lastZone : std::min<int>(panel_.TimeZone, lastZone);
  const auto wall = [&](std::optional<qint64> universal) -> std::optional<WallMinute> {
    if (!universal) return {};
    return FromStandard(*universal - easternMinutesWest - zone * Hour);
  };
  const SunTimes times = SunTimesOf(day, panel_.Latitude, panel_.Longitude);
  return {wall(times.Rise), wall(times.Set)};
}

bool PanelDays::IsHoliday(QDate day) const {
  return holidays_[static_cast<std::size_t>(day.month() - 1)]
                  [static_cast<std::size_t>(day.day() - 1)];
}

#pragma once

#include <QDate>
#include <array>
#include <optional>
#include <vector>

#include "panel/panel_record.h"

/// Minutes of a panel's wall clock since 1970-01-01 00:00.
using WallMinute = qint64;

WallMinute FirstMinuteOf(QDate day);
QDate DayOf(WallMinute minute);

/// The dates of a month that have open or close times of their own; all from 0.
std::vector<int> DatesWithTimes(const PanelRecordType& panel, int month);

/// The days of a panel: daylight saving, sun, open and close times, holidays.
class PanelDays {
 public:
  explicit PanelDays(const PanelRecordType& panel);

  /// What the wall clock shows at a minute of standard time.
  WallMinute FromStandard(qint64 standardMinute) const;
  /// What the wall clock shows as that minute comes: the end of the hour that is skipped for one
  /// within it.
  WallMinute AsItComes(WallMinute minute) const;

  /// The times of a date stand before those of its weekday.
  std::optional<WallMinute> OpenTime(QDate day) const;
  std::optional<WallMinute> CloseTime(QDate day) const;
  /// Nothing where the sun does not rise or set.
  struct Sun {
    std::optional<WallMinute> Rise;
    std::optional<WallMinute> Set;
  };
  Sun SunOf(QDate day) const;
  /// A date with times of its own, or that of a timer.
  bool IsHoliday(QDate day) const;

 private:
  /// Daylight saving of a year in minutes of standard time; none where both are equal.
  struct Saving {
    qint64 Start = 0;
    qint64 End = 0;
  };
  static constexpr int FirstYear = 2000;  ///< The panel's clock knows no others.
  static constexpr int Years = 100;

  bool InSaving(qint64 standardMinute) const;
  Saving SavingOf(QDate day) const;
  std::optional<WallMinute> HourOf(QDate day, bool close) const;

  const PanelRecordType& panel_;
  std::array<Saving, Years> savings_{};
  std::array<std::array<bool, 31>, 12> holidays_{};
};

#pragma once

#include <QDate>
#include <optional>

/// Sunrise and sunset in minutes of universal time since 1970, to the nearest one; nothing where
/// the sun does not rise or set.
struct SunTimes {
  std::optional<qint64> Rise;
  std::optional<qint64> Set;
};

/// Those of the solar day whose noon is that of `day` at a place, in degrees north and west.
SunTimes SunTimesOf(QDate day, int latitude, int longitudeWest);

/// The days of a year with the least and the most time between sunrise and sunset.
struct DaysOfSun {
  QDate Shortest;
  QDate Longest;
};

/// Nothing where the sun does not rise or set on every day.
std::optional<DaysOfSun> DaysOfSunIn(int year, int latitude, int longitudeWest);

#include "schedule/rules/sun_times.h"

#include <libnova/precession.h>
#include <libnova/sidereal_time.h>
#include <libnova/solar.h>

#include <QHash>
#include <cmath>
#include <numbers>

#include "panel/time_values.h"

namespace {

constexpr double JulianDayOf1970 = 2440587.5;
constexpr double TurnOfADay = 360.98564736629;  ///< Degrees of the stars in 24 hours.
constexpr double HorizonDegrees = -0.833;  ///< Of the sun's centre: refraction and half a disc.

/// Where the sun stands among the stars of the date, degrees.
struct SunPlace {
  double RightAscension;
  double Declination;
};

double Radians(double degrees) {
  return degrees * std::numbers::pi / 180;
}

double HalfTurn(double degrees) {
  return std::remainder(degrees, 360.0);
}

// A place is worth some hundred sines and changes evenly: every fourth day is reckoned, and what
// lies between follows from three of them to a second, as in the panel.
constexpr qint64 DaysBetweenKnots = 4;

const SunPlace& PlaceAtKnot(qint64 knot) {
  thread_local QHash<qint64, SunPlace> known;
  const auto found = known.constFind(knot);
  if (found != known.constEnd()) return *found;
  const double julianDay = JulianDayOf1970 + static_cast<double>(knot * DaysBetweenKnots);
  // The library counts from the stars of the year 2000, which have moved on.
  ln_equ_posn of2000{};
  ln_equ_posn ofDate{};
  ln_get_solar_equ_coords(julianDay, &of2000);
  ln_get_equ_prec(&of2000, julianDay, &ofDate);
  return *known.insert(knot, {ofDate.ra, ofDate.dec});
}

/// `day` counts from 1970, as below.
SunPlace PlaceAt(double day) {
  const auto knot = static_cast<qint64>(std::lround(day / DaysBetweenKnots));
  const double way = day / DaysBetweenKnots - static_cast<double>(knot);
  const SunPlace before = PlaceAtKnot(knot - 1);
  const SunPlace here = PlaceAtKnot(knot);
  const SunPlace after = PlaceAtKnot(knot + 1);
  const auto bend = [way](double toBefore, double toAfter) {
    return way * (toAfter - toBefore) / 2 + way * way * (toAfter + toBefore) / 2;
  };
  return {here.RightAscension + bend(HalfTurn(before.RightAscension - here.RightAscension),
                                     HalfTurn(after.RightAscension - here.RightAscension)),
          here.Declination +
              bend(before.Declination - here.Declination, after.Declination - here.Declination)};
}

/// How far the sun has gone past the south, degrees.
double PastSouth(double day, const SunPlace& sun, int longitudeWest) {
  const double sidereal = ln_get_mean_sidereal_time(JulianDayOf1970 + day) * 15;
  return HalfTurn(sidereal - longitudeWest - sun.RightAscension);
}

/// How far from the south the sun meets the horizon.
std::optional<double> HalfArc(const SunPlace& sun, int latitude) {
  const double up = std::sin(Radians(latitude)) * std::sin(Radians(sun.Declination));
  const double across = std::cos(Radians(latitude)) * std::cos(Radians(sun.Declination));
  const double cosine = (std::sin(Radians(HorizonDegrees)) - up) / across;
  if (!(cosine > -1 && cosine < 1)) return {};
  return std::acos(cosine) * 180 / std::numbers::pi;
}

/// From noon back (-1) or on (1) to the horizon.
std::optional<double> HorizonDay(double noon, int direction, int latitude, int longitudeWest) {
  constexpr int mostSteps = 6;
  constexpr double nearEnough = 1e-5;
  double day = noon;
  double step = 1;
  for (int i = 0; i < mostSteps && std::abs(step) >= nearEnough; ++i) {
    const SunPlace sun = PlaceAt(day);
    const auto arc = HalfArc(sun, latitude);
    if (!arc) return {};
    const double way = direction * *arc - PastSouth(day, sun, longitudeWest);
    // The first step may be longer than half a turn; those behind it mend it.
    step = (i == 0 ? way : HalfTurn(way)) / TurnOfADay;
    day += step;
  }
  return day;
}

struct HorizonDays {
  std::optional<double> Rise;
  std::optional<double> Set;
};

HorizonDays HorizonDaysOf(QDate day, int latitude, int longitudeWest) {
  constexpr int pole = 90;
  if (latitude < 0 || latitude >= pole) return {};
  const auto date = static_cast<double>(QDate(1970, 1, 1).daysTo(day));
  double noon = date + 0.5 + longitudeWest / 360.0;
  noon -= PastSouth(noon, PlaceAt(noon), longitudeWest) / TurnOfADay;
  return {HorizonDay(noon, -1, latitude, longitudeWest),
          HorizonDay(noon, 1, latitude, longitudeWest)};
}

}  // namespace

SunTimes SunTimesOf(QDate day, int latitude, int longitudeWest) {
  const HorizonDays days = HorizonDaysOf(day, latitude, longitudeWest);
  const auto minute = [](std::optional<double> at) {
    return at ? std::optional<qint64>(std::llround(*at * MinutesPerDay)) : std::nullopt;
  };
  return {minute(days.Rise), minute(days.Set)};
}

std::optional<DaysOfSun> DaysOfSunIn(int year, int latitude, int longitudeWest) {
  DaysOfSun found;
  double shortest = 1;
  double longest = 0;
  for (QDate day(year, 1, 1); day.year() == year; day = day.addDays(1)) {
    const HorizonDays days = HorizonDaysOf(day, latitude, longitudeWest);
    if (!days.Rise || !days.Set) return {};
    const double length = *days.Set - *days.Rise;
    if (length < shortest) found.Shortest = day;
    if (length > longest) found.Longest = day;
    shortest = std::min(shortest, length);
    longest = std::max(longest, length);
  }
  return found;
}

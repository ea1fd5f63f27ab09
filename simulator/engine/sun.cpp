#include "simulator/engine/sun.h"

#include <libnova/precession.h>
#include <libnova/sidereal_time.h>
#include <libnova/solar.h>

#include <cmath>
#include <numbers>
#include <unordered_map>

#include "simulator/engine/readings.h"

namespace simulator {

namespace {

constexpr double JulianDay1970 = 2440587.5;
constexpr double DegreesADay = 360.98564736629;
// The sun moves so evenly that three positions four days apart give all between to a second.
constexpr std::int64_t KnotDays = 4;

double Radians(double degrees) {
  return degrees * std::numbers::pi / 180;
}

double WithinHalfTurn(double degrees) {
  return std::remainder(degrees, 360.0);
}

}  // namespace

const Sun::Position& Sun::Knot(std::int64_t number) {
  // The same for every place and every copy of an engine, and most of the work of a year.
  thread_local std::unordered_map<std::int64_t, Position> known;
  const auto [place, isNew] = known.try_emplace(number);
  if (isNew) {
    // The library tells the sun among the stars of the year 2000, a third of a degree away by now.
    const double julianDay = JulianDay1970 + static_cast<double>(number * KnotDays);
    ln_equ_posn among{};
    ln_equ_posn position{};
    ln_get_solar_equ_coords(julianDay, &among);
    ln_get_equ_prec(&among, julianDay, &position);
    place->second = {position.ra, position.dec};
  }
  return place->second;
}

Sun::Position Sun::At(double day) {
  const auto middle = static_cast<std::int64_t>(std::lround(day / KnotDays));
  const double x = day / KnotDays - static_cast<double>(middle);  // -0.5 to 0.5
  const Position& before = Knot(middle - 1);
  const Position& here = Knot(middle);
  const Position& after = Knot(middle + 1);
  const auto between = [x](double down, double up) {
    return x * (up - down) / 2 + x * x * (up + down) / 2;
  };
  return {here.RightAscension + between(WithinHalfTurn(before.RightAscension - here.RightAscension),
                                        WithinHalfTurn(after.RightAscension - here.RightAscension)),
          here.Declination +
              between(before.Declination - here.Declination, after.Declination - here.Declination)};
}

double Sun::HourAngle(double day, const Position& position) const {
  const double sidereal = ln_get_mean_sidereal_time(JulianDay1970 + day) * 15;
  return WithinHalfTurn(sidereal - LongitudeWest - position.RightAscension);
}

std::optional<double> Sun::Crossing(double noon, int sign) const {
  double day = noon;
  for (int round = 0; round < 6; ++round) {
    const Position position = At(day);
    const double cosine = (std::sin(Radians(reading::Horizon)) -
                           std::sin(Radians(Latitude)) * std::sin(Radians(position.Declination))) /
                          (std::cos(Radians(Latitude)) * std::cos(Radians(position.Declination)));
    if (!(cosine > -1 && cosine < 1)) return std::nullopt;
    const double wanted = sign * std::acos(cosine) * 180 / std::numbers::pi;
    // From the noon on the way is known whole; later rounds only mend it.
    const double way = wanted - HourAngle(day, position);
    const double step = (round == 0 ? way : WithinHalfTurn(way)) / DegreesADay;
    day += step;
    if (std::abs(step) < 1e-5) break;
  }
  return day;
}

SunTimes Sun::Of(std::int64_t day) const {
  if (Latitude >= 90) return {};
  double noon = static_cast<double>(day) + 0.5 + LongitudeWest / 360.0;
  noon -= HourAngle(noon, At(noon)) / DegreesADay;
  const auto minutes = [](std::optional<double> at) {
    return at ? std::optional<std::int64_t>(std::llround(*at * DayMinutes)) : std::nullopt;
  };
  return {minutes(Crossing(noon, -1)), minutes(Crossing(noon, 1))};
}

}  // namespace simulator

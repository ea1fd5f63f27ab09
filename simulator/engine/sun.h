#pragma once

#include <cstdint>
#include <optional>

namespace simulator {

/// Sunrise and sunset in minutes of universal time since 1970, rounded; nothing where the sun does
/// not rise or set.
struct SunTimes {
  std::optional<std::int64_t> Rise;
  std::optional<std::int64_t> Set;
};

/// The sun over one place.
class Sun {
 public:
  Sun(int latitude, int longitudeWest) : Latitude(latitude), LongitudeWest(longitudeWest) {}

  /// Of the solar day whose noon is that of day `day`, counted from 1970, at the place.
  SunTimes Of(std::int64_t day) const;

 private:
  struct Position {
    double RightAscension, Declination;  // degrees
  };
  static Position At(double day);
  static const Position& Knot(std::int64_t number);
  std::optional<double> Crossing(double noon, int sign) const;
  /// Degrees west of the meridian, -180 to 180.
  double HourAngle(double day, const Position& position) const;

  int Latitude;
  int LongitudeWest;
};

}  // namespace simulator

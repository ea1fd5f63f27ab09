#pragma once

#include <array>
#include <string_view>

#include "panel/fixed_array.h"

struct City {
  std::string_view CityName;  ///< "State,City", as the list shows it.
  Int16 CityLatitude;         ///< Degrees north.
  Int16 CityLongitude;        ///< Degrees west.
};

/// North American cities, by state. The spellings are those that users know from the panel's list.
extern const std::array<City, 260> CityTable;

#pragma once

#include <bitset>

#include "panel/words.h"

/// A bit a time zone, by its code.
using ZoneSet = std::bitset<TimeZones.size()>;

/// The time zones that a place can have: those of the states of the cities around it, or, far from
/// all of them, those that reach its longitude. All of them where none does.
ZoneSet PlausibleZones(int latitude, int longitudeWest);

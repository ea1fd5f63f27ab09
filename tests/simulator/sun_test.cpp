#include "simulator/engine/sun.h"

#include <gtest/gtest.h>

#include "simulator/engine/calendar.h"
#include "simulator/memory/digits.h"

namespace simulator {
namespace {

std::string ClockOf(const std::optional<std::int64_t>& universal, int zone) {
  if (!universal) return "none";
  const auto minute = static_cast<int>((*universal + zone * 60 + DayMinutes) % DayMinutes);
  return TwoDigits(minute / 60) + ":" + TwoDigits(minute % 60);
}

int MinutesApart(const std::string& a, const std::string& b) {
  const auto minutes = [](const std::string& t) {
    return std::stoi(t.substr(0, 2)) * 60 + std::stoi(t.substr(3));
  };
  return std::abs(minutes(a) - minutes(b));
}

// Worked out by another way: the short series that an observatory gives away for spreadsheets.
TEST(SunTest, RisesAndSetsWithinAMinute) {
  struct Place {
    const char* Name;
    int Latitude, LongitudeWest, Zone;
    const char* RiseAndSet[4];  // standard time; 20 March, 21 June, 23 September, 21 December 2026
  };
  const Place places[]{
      {"New York", 41, 74, -5, {"05:59 18:08", "04:24 19:32", "05:45 17:51", "07:17 16:31"}},
      {"Chicago", 42, 88, -6, {"05:55 18:04", "04:17 19:31", "05:41 17:47", "07:17 16:24"}},
      {"Denver", 40, 105, -7, {"06:03 18:12", "04:31 19:32", "05:49 17:55", "07:18 16:38"}},
      {"Seattle", 48, 122, -8, {"06:10 18:21", "04:08 20:11", "05:56 18:03", "07:55 16:17"}},
      {"Anchorage", 61, 150, -9, {"07:00 19:16", "03:24 22:40", "06:47 18:56", "10:12 15:44"}},
      {"Far north", 70, 150, -9, {"06:57 19:19", "none none", "06:45 18:57", "none none"}},
  };
  const Date dates[]{{2026, 3, 20}, {2026, 6, 21}, {2026, 9, 23}, {2026, 12, 21}};
  for (const Place& place : places) {
    Sun sun(place.Latitude, place.LongitudeWest);
    for (std::size_t i = 0; i < 4; ++i) {
      const SunTimes times = sun.Of(DayOf(dates[i]));
      const std::string wanted = place.RiseAndSet[i];
      const std::string rise = wanted.substr(0, wanted.find(' '));
      const std::string set = wanted.substr(wanted.find(' ') + 1);
      for (const auto& [is, told] : {std::pair(ClockOf(times.Rise, place.Zone), rise),
                                     std::pair(ClockOf(times.Set, place.Zone), set)}) {
        if (is == told) continue;
        ASSERT_EQ(std::count(is.begin(), is.end(), ':') + std::count(told.begin(), told.end(), ':'),
                  2)
            << place.Name << i;
        EXPECT_LE(MinutesApart(is, told), 1) << place.Name << " " << i << " " << is;
      }
    }
  }
}

}  // namespace
}  // namespace simulator

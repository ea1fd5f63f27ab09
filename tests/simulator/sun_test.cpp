#include "simulator/engine/sun.h"

#include <gtest/gtest.h>

#include "simulator/engine/calendar.h"

namespace simulator {
namespace {

/// Of the day, as in "05:59"; nothing for "none".
std::optional<int> MinuteOf(const std::string& text) {
  if (text == "none") return {};
  return std::stoi(text.substr(0, 2)) * 60 + std::stoi(text.substr(3));
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
      const auto blank = wanted.find(' ');
      for (const auto& [is, told] : {std::pair(times.Rise, MinuteOf(wanted.substr(0, blank))),
                                     {times.Set, MinuteOf(wanted.substr(blank + 1))}}) {
        ASSERT_EQ(is.has_value(), told.has_value()) << place.Name << i;
        if (!is) continue;
        const auto minute = static_cast<int>((*is + place.Zone * 60 + DayMinutes) % DayMinutes);
        EXPECT_NEAR(minute, *told, 1) << place.Name << i;
      }
    }
  }
}

}  // namespace
}  // namespace simulator

#include "panel/time_values.h"

#include <gtest/gtest.h>

TEST(TimeValues, ReadAsTwelveHourTimes) {
  const std::pair<int, const char*> rows[] = {{0, "12:00A"},  {1, "12:15A"},  {4, "1:00A"},
                                              {48, "12:00P"}, {95, "11:45P"}, {96, "12:00A"},
                                              {100, "1:00A"}, {-1, "12:15A"}, {-97, "12:15A"}};
  for (const auto& [quarters, text] : rows) EXPECT_EQ(QuarterHourText(quarters), text);
  EXPECT_EQ(MinuteText(23 * 60 + 59), "11:59P");
}

TEST(TimeValues, KeepEventAndOffsetApart) {
  EXPECT_EQ(WithOffset({24, 0}, 999), (TimerTimeValue{27, 231}));
  EXPECT_EQ(WithOffset({251, 231}, 256), (TimerTimeValue{249, 0}));
  EXPECT_EQ(WithEvent({27, 231}, 3), (TimerTimeValue{123, 231}));
  EXPECT_EQ(WithEvent({251, 231}, 0), (TimerTimeValue{155, 231}));
  EXPECT_EQ(OffsetOfTime({123, 231}), 999);
  EXPECT_EQ(EventOfTime(216), 2);

  EXPECT_EQ(FirstTimeOf(TimeKind::Normal), TimerTimeValue());
  EXPECT_EQ(FirstTimeOf(TimeKind::Astro), (TimerTimeValue{24, 0}));
  EXPECT_EQ(FirstTimeOf(TimeKind::OpenClose), (TimerTimeValue{152, 0}));
  EXPECT_EQ(KindOfTime(23), TimeKind::Normal);
  EXPECT_EQ(KindOfTime(123), TimeKind::Astro);
  EXPECT_EQ(KindOfTime(152), TimeKind::OpenClose);
}

TEST(TimeValues, TellWhenATimerRuns) {
  const auto words = [](Int16 type, Int16 time, Int16 days, Int16 month = 0, Int16 date = 1) {
    return TimerInWords({type, time}, days, month, date);
  };
  EXPECT_EQ(words(88, 45, 0xC1), "45 min before sunset, Mon to Fri, not on holidays");
  EXPECT_EQ(words(18, 30, 0), "6:30 PM, every day");
  EXPECT_EQ(words(56, 0, 0xFF), "at sunrise, on no day");
  EXPECT_EQ(words(155, 231, 0x54), "999 min before open time, Sun, Mon, Wed, Fri");
  EXPECT_EQ(words(0, 0, 0, 2, 31), "12:00 AM, on no date of the year");
  EXPECT_EQ(words(0, 0, 0, 2, 29), "12:00 AM, on February 29");
  for (const TimerTimeValue& unknown : {TimerTimeValue{0, 75}, {-1, 0}, {40, 0}, {27, 255}}) {
    EXPECT_EQ(TimerInWords(unknown, 0, 0, 1), "at an unknown time, every day");
  }
  EXPECT_EQ(words(0, 0, 0, 13, 1), "12:00 AM, on no date of the year");
  EXPECT_EQ(DayMaskText(0x55), "-M-W-F-H");
}

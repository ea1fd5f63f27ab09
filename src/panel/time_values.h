#pragma once

#include <array>
#include <string>
#include <string_view>

#include "panel/fixed_array.h"

constexpr int MinutesPerDay = 1440;
constexpr int QuarterHoursPerDay = 96;
constexpr int LargestTimerOffset = 999;  ///< Minutes from an event.

/// Days of the months in the yearly table of open and close times: February has 29.
inline constexpr std::array<int, 12> MonthDays = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

/// The letters of the day mask, Sunday to Saturday and the holiday bit.
inline constexpr std::string_view DayLetters = "SMTWTFSH";
constexpr int HolidayBit = 7;

/// The eight daily events that a timer can run relative to: four of the sun, then four of the
/// building.
inline constexpr auto RelativeEvents = std::to_array<std::string_view>(
    {"Before Sunrise", "After Sunrise", "Before Sunset", "After Sunset", "Before Open",
     "After Open", "Before Close", "After Close"});
constexpr int AstroEventCount = 4;

/// How a timer's time is told, in the order of the editor's options.
enum class TimeKind { Normal, Astro, OpenClose };

/// The time of a timer as stored. Below 24 the type is the hour of the day and the time its minute;
/// from 24 on the type holds the event and the high bits of the offset, the time its low byte.
struct TimerTimeValue {
  Int16 Type = 0;
  Int16 Time = 0;

  bool operator==(const TimerTimeValue&) const = default;
};

/// The time "h:nnA/P" of a number of minutes since midnight: "12:00A" for 0, "11:45P" for 1425.
/// Whole days are left out, so a day later reads the same; a time before midnight counts its
/// minutes away from midnight, as a negative fraction of a day does: -15 reads "12:15A".
std::string MinuteText(int minutes);

/// The same for quarter hours since midnight.
std::string QuarterHourText(int quarterHours);

TimeKind KindOfTime(Int16 type);

/// Whether a time stays as it is when the user chooses this kind. By its bit 7 a negative type, of
/// a damaged file, stays as an open or close time too.
bool KeepsTime(Int16 type, TimeKind kind);

/// The event's number within its kind, 0 to 3. For relative types.
int EventOfTime(Int16 type);

/// The offset from the event in minutes, 0 to 999 in sound data. For relative types.
int OffsetOfTime(TimerTimeValue value);

/// A relative time with another event of its kind, 0 to 3, at the same offset.
TimerTimeValue WithEvent(TimerTimeValue value, int event);

/// A relative time with another offset, 0 to 1023 minutes, from the same event.
TimerTimeValue WithOffset(TimerTimeValue value, int offset);

/// What a timer starts from when its kind of time is chosen: 12:00 AM, or no minutes before
/// sunrise or opening.
TimerTimeValue FirstTimeOf(TimeKind kind);

/// The event's index in RelativeEvents when the type is one of the eight ranges of sound relative
/// values; -1 for any other type.
int RelativeEventOf(Int16 type);

/// "SMTWTFSH" with a dash for each set bit, which leaves the day out.
std::string DayMaskText(Int16 days);

/// When a timer runs, in words: "45 min before sunset, Mon to Fri, not on holidays".
/// With a month other than 0 it runs on one date of the year and `days` does not count. Says so of
/// a time that no timer can have and of a date that no year has.
std::string TimerInWords(TimerTimeValue time, Int16 days, Int16 month, Int16 date);

/// All that a timer runs by, as stored.
struct TimerRun {
  TimerTimeValue Time;
  Int16 Days = 0;
  Int16 Month = 0;
  Int16 Date = 0;
  bool operator==(const TimerRun&) const = default;
};

/// The way back from the words: what they tell, over a timer that keeps what they do not tell, and
/// what it tells alike.
TimerRun ReadTimerWords(std::string_view words, TimerRun over);

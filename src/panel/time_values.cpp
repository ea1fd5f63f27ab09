#include "panel/time_values.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <vector>

#include "panel/format.h"
#include "panel/words.h"

namespace {

constexpr int FirstRelativeType = 24;
constexpr int OpenCloseBit = 0x80;
constexpr int EventMask = 0x60;
constexpr int EventStep = 0x20;
constexpr int OffsetHighMask = 3;

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

std::string TimeInWords(TimerTimeValue time) {
  constexpr std::string_view unknown = "at an unknown time";
  const TimeKind kind = KindOfTime(time.Type);
  if (kind == TimeKind::Normal) {
    if (time.Type < 0 || time.Time < 0 || time.Time >= 60) return std::string(unknown);
    std::string text = MinuteText(time.Type * 60 + time.Time);
    text.insert(text.size() - 1, " ");
    return text + "M";
  }
  const int offset = OffsetOfTime(time);
  std::string event = Lower(Word(RelativeEvents, RelativeEventOf(time.Type)));
  if (event.empty() || offset < 0 || offset > LargestTimerOffset) return std::string(unknown);
  if (kind == TimeKind::OpenClose) event += " time";
  if (offset == 0) return "at" + event.substr(event.find(' '));
  return NumberText(offset) + " min " + event;
}

std::string DaysInWords(Int16 days) {
  constexpr int dayCount = static_cast<int>(WeekdayNames.size());
  const auto runs = [days](int day) { return day < dayCount && (days & (1 << day)) == 0; };
  std::string text;
  for (int day = 0; day < dayCount; ++day) {
    if (!runs(day)) continue;
    int last = day;
    while (runs(last + 1)) ++last;
    if (last - day == dayCount - 1) return "every day";
    if (!text.empty()) text += ", ";
    text += ShortName(Word(WeekdayNames, day));
    if (last - day >= 2) {
      text += " to ";
      text += ShortName(Word(WeekdayNames, last));
      day = last;
    }
  }
  return text.empty() ? "on no day" : text;
}

constexpr std::string_view TimeEnd = ", ";

std::string DateInWords(Int16 days, Int16 month, Int16 date) {
  if (month != 0) {
    const std::string_view name = Word(MonthNames, month - 1);
    const auto index = static_cast<std::size_t>(month - 1);
    const bool exists = !name.empty() && date >= 1 && date <= MonthDays[index];
    if (!exists) return "on no date of the year";
    return std::string("on ").append(name).append(" ").append(NumberText(date));
  }
  std::string text = DaysInWords(days);
  const bool someDay = (days & 0x7F) != 0x7F;
  if (someDay && (days & (1 << HolidayBit)) != 0) text += ", not on holidays";
  return text;
}

/// The first of some times that is told by these words.
std::optional<TimerTimeValue> ReadTime(std::string_view words) {
  int number = 0;
  const char* end = words.data() + words.size();
  const char* rest = std::from_chars(words.data(), end, number).ptr;
  std::vector<TimerTimeValue> times;
  if (rest != end && *rest == ':') {
    int minute = 0;
    std::from_chars(rest + 1, end, minute);
    for (const int hour : {number % 12, number % 12 + 12}) {
      times.push_back({static_cast<Int16>(hour), static_cast<Int16>(minute)});
    }
  } else if (number <= LargestTimerOffset) {
    for (std::size_t event = 0; event < RelativeEvents.size(); ++event) {
      const auto type = static_cast<Int16>(FirstRelativeType + event * EventStep);
      times.push_back(WithOffset({type, 0}, number));
    }
  }
  const auto told = std::find_if(times.begin(), times.end(), [words](TimerTimeValue time) {
    return TimeInWords(time) == words;
  });
  return told == times.end() ? std::nullopt : std::optional(*told);
}

void ReadDate(std::string_view words, TimerRun& run) {
  int date = 0;
  const std::size_t number = words.rfind(' ') + 1;
  std::from_chars(words.data() + number, words.data() + words.size(), date);
  for (Int16 month = 1; date > 0 && month <= static_cast<int>(MonthNames.size()); ++month) {
    if (DateInWords(0, month, static_cast<Int16>(date)) != words) continue;
    run.Month = month;
    run.Date = static_cast<Int16>(date);
    return;
  }
  std::vector<Int16> masks = {run.Days};
  for (int days = 0; days < 1 << (HolidayBit + 1); ++days) {
    masks.push_back(static_cast<Int16>(days));
  }
  for (const Int16 days : masks) {
    if (DateInWords(days, 0, 0) != words) continue;
    run.Days = days;
    run.Month = 0;
    return;
  }
}

}  // namespace

std::string MinuteText(int minutes) {
  const int minute = std::abs(minutes % MinutesPerDay);
  const int hour = minute / 60;
  std::string text;
  AppendNumber(text, hour % 12 == 0 ? 12 : hour % 12);
  text += ':';
  AppendNumber(text, minute % 60, 2);
  text += hour < 12 ? 'A' : 'P';
  return text;
}

std::string QuarterHourText(int quarterHours) {
  return MinuteText(quarterHours % QuarterHoursPerDay * 15);
}

TimeKind KindOfTime(Int16 type) {
  if (type < FirstRelativeType) return TimeKind::Normal;
  return (type & OpenCloseBit) == 0 ? TimeKind::Astro : TimeKind::OpenClose;
}

bool KeepsTime(Int16 type, TimeKind kind) {
  return kind == TimeKind::OpenClose ? (type & OpenCloseBit) != 0 : KindOfTime(type) == kind;
}

int EventOfTime(Int16 type) {
  return (type & EventMask) / EventStep;
}

int OffsetOfTime(TimerTimeValue value) {
  return (value.Type & OffsetHighMask) * 256 + value.Time;
}

TimerTimeValue WithEvent(TimerTimeValue value, int event) {
  constexpr int allButEvent = 0xFF ^ EventMask;
  value.Type = static_cast<Int16>((value.Type & allButEvent) + event * EventStep);
  return value;
}

TimerTimeValue WithOffset(TimerTimeValue value, int offset) {
  constexpr int allButOffset = 0xFF ^ OffsetHighMask;
  return {static_cast<Int16>((value.Type & allButOffset) + offset / 256),
          static_cast<Int16>(offset % 256)};
}

TimerTimeValue FirstTimeOf(TimeKind kind) {
  switch (kind) {
    case TimeKind::Astro:
      return {FirstRelativeType, 0};
    case TimeKind::OpenClose:
      return {FirstRelativeType | OpenCloseBit, 0};
    case TimeKind::Normal:
      break;
  }
  return {};
}

int RelativeEventOf(Int16 type) {
  constexpr int fixedBits = 0xFF ^ (OpenCloseBit | EventMask | OffsetHighMask);
  const bool sound =
      type >= FirstRelativeType && type <= 0xFF && (type & fixedBits) == FirstRelativeType;
  return sound ? type / EventStep : -1;
}

std::string DayMaskText(Int16 days) {
  std::string text(DayLetters);
  for (std::size_t bit = 0; bit < text.size(); ++bit) {
    if ((days & (1 << bit)) != 0) text[bit] = '-';
  }
  return text;
}

std::string TimerInWords(TimerTimeValue time, Int16 days, Int16 month, Int16 date) {
  return TimeInWords(time) + std::string(TimeEnd) + DateInWords(days, month, date);
}

TimerRun ReadTimerWords(std::string_view words, TimerRun over) {
  const std::size_t end = words.find(TimeEnd);
  if (end == std::string_view::npos) return over;
  const std::string_view time = words.substr(0, end);
  const std::string_view date = words.substr(end + TimeEnd.size());
  if (TimeInWords(over.Time) != time) over.Time = ReadTime(time).value_or(over.Time);
  if (DateInWords(over.Days, over.Month, over.Date) != date) ReadDate(date, over);
  return over;
}

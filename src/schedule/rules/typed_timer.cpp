#include "schedule/rules/typed_timer.h"

#include <QRegularExpression>
#include <QStringList>

#include "panel/code_page.h"
#include "panel/typed_time.h"
#include "panel/words.h"

namespace {

constexpr int DaysOfWeek = static_cast<int>(WeekdayNames.size());
constexpr int EveryDay = (1 << DaysOfWeek) - 1;
constexpr int Weekend = 1 | 1 << 6;
constexpr int RestsOnHolidays = 1 << HolidayBit;

/// The place of the only name that begins with a text; -1 for none.
int PlaceOfShort(std::span<const std::string_view> names, const QString& text) {
  const auto begins = [&](std::string_view name) {
    return ToUnicode(name).startsWith(text, Qt::CaseInsensitive);
  };
  const auto found = std::find_if(names.begin(), names.end(), begins);
  if (text.isEmpty() || std::count_if(names.begin(), names.end(), begins) != 1) return -1;
  return static_cast<int>(found - names.begin());
}

std::optional<TimerTimeValue> TypedOffset(const QRegularExpressionMatch& match,
                                          TimerTimeValue over) {
  constexpr int beforeAndAfter = 2;
  static const QStringList events = {QStringLiteral("sunrise"), QStringLiteral("sunset"),
                                     QStringLiteral("open"),    QStringLiteral("close"),
                                     QStringLiteral("sr"),      QStringLiteral("ss"),
                                     QStringLiteral("op"),      QStringLiteral("cl")};
  constexpr int eventCount = 4;
  const bool ahead = match.hasCaptured(1);
  const bool behind = match.hasCaptured(5);
  if (ahead && behind) return {};
  const bool after = ahead    ? match.captured(2).toLower() == QLatin1String("after")
                     : behind ? match.captured(4) != u'-'
                              : false;
  const int offset = ahead ? match.captured(1).toInt() : match.captured(5).toInt();
  const auto event = static_cast<int>(events.indexOf(match.captured(3).toLower())) % eventCount;
  const TimerTimeValue first = FirstTimeOf(event < 2 ? TimeKind::Astro : TimeKind::OpenClose);
  const TimerTimeValue time =
      WithOffset(WithEvent(first, event % 2 * beforeAndAfter + (after ? 1 : 0)), offset);
  // At an event is told of no minutes before it and of none after it.
  const bool same = offset == 0 && OffsetOfTime(over) == 0 && RelativeEventOf(over.Type) >= 0 &&
                    RelativeEventOf(over.Type) / beforeAndAfter == event;
  return same ? over : time;
}

std::optional<TimerTimeValue> TypedTime(const QString& text, TimerTimeValue over) {
  constexpr int minutesOfHour = 60;
  if (const auto minutes = MinutesOfTyped(text)) {
    return TimerTimeValue{static_cast<Int16>(*minutes / minutesOfHour),
                          static_cast<Int16>(*minutes % minutesOfHour)};
  }
  static const QRegularExpression number(QStringLiteral("^\\d{1,3}$"));
  if (number.match(text).hasMatch() && RelativeEventOf(over.Type) >= 0) {
    return WithOffset(over, text.toInt());
  }
  static const QRegularExpression fromEvent(
      QStringLiteral("^(?:(\\d{1,3})\\s*(?:m|min|minutes?)?\\s*(before|after)\\s+|at\\s+)?"
                     "(sunrise|sunset|open|close|sr|ss|op|cl)(?:\\s+time)?"
                     "(?:\\s*([+-]?)\\s*(\\d{1,3})(?:m|\\s*min(?:utes?)?)?)?$"),
      QRegularExpression::CaseInsensitiveOption);
  const auto match = fromEvent.match(text);
  return match.hasMatch() ? TypedOffset(match, over) : std::nullopt;
}

/// A bit a day, Sunday first, of "Mon", "Mon to Fri", "Fri-Mon" and the like; 0 for other words.
int TypedDays(const QString& words) {
  for (const QLatin1String daily : {QLatin1String("every day"), QLatin1String("daily")}) {
    if (!words.isEmpty() && daily.startsWith(words)) return EveryDay;
  }
  if (words == QLatin1String("weekdays") || words == QLatin1String("wd"))
    return EveryDay & ~Weekend;
  if (words == QLatin1String("weekend") || words == QLatin1String("weekends")) return Weekend;
  static const QRegularExpression fromTo(QStringLiteral("^([a-z]+)(?:\\s*(?:to|-)\\s*([a-z]+))?$"));
  const auto match = fromTo.match(words);
  const int first = PlaceOfShort(WeekdayNames, match.captured(1));
  const int last = match.hasCaptured(2) ? PlaceOfShort(WeekdayNames, match.captured(2)) : first;
  if (first < 0 || last < 0) return 0;
  int days = 1 << last;
  for (int day = first; day != last; day = (day + 1) % DaysOfWeek) days |= 1 << day;
  return days;
}

std::optional<TimerRun> TypedDate(const QString& words, TimerRun over) {
  static const QRegularExpression date(QStringLiteral("^(?:on )?([a-z]+) ?(\\d{1,2})$"));
  const auto match = date.match(words);
  const int month = PlaceOfShort(MonthNames, match.captured(1));
  const int number = match.captured(2).toInt();
  if (month < 0 || number < 1 || number > MonthDays.at(static_cast<std::size_t>(month))) return {};
  over.Month = static_cast<Int16>(month + 1);
  over.Date = static_cast<Int16>(number);
  return over;
}

/// Over a timer that keeps its time.
std::optional<TimerRun> TypedRunDays(const QString& text, TimerRun over) {
  static const QRegularExpression holiday(QStringLiteral(",? ?\\bnot?(?: on)? holidays?$"));
  const QString rest = QStringLiteral("not on holidays");
  const QString words = text.simplified().toLower().replace(holiday, u',' + rest);
  if (const auto date = TypedDate(words, over)) return date;
  int days = 0;
  bool rests = false;
  const QStringList parts = words.split(u',', Qt::SkipEmptyParts);
  if (parts.isEmpty()) return {};
  for (const QString& part : parts) {
    const QString word = part.trimmed();
    const bool holidays = word == rest;
    const int some = TypedDays(word);
    const bool none = word == QLatin1String("on no day");
    if (!holidays && some == 0 && !none) return {};
    rests = rests || holidays;
    days |= some;
  }
  const bool onlyHolidays = parts.size() == 1 && rests;
  over.Days = static_cast<Int16>((onlyHolidays ? over.Days & EveryDay : EveryDay & ~days) |
                                 (rests ? RestsOnHolidays : 0));
  over.Month = 0;
  return over;
}

std::optional<TimerRun> TypedBoth(const QString& time, const QString& days, TimerRun over) {
  const auto typed = TypedTime(time.trimmed(), over.Time);
  const auto run = typed ? TypedRunDays(days, over) : std::nullopt;
  if (!run) return {};
  over = *run;
  over.Time = *typed;
  return over;
}

/// Whether days may begin at a place without a blank before them: behind the last digit of a time,
/// its a or p, or an event in two letters.
bool EndsTimeAt(const QString& text, qsizetype at) {
  static const QRegularExpression clock(
      QStringLiteral("\\d\\s?[ap]m?$|[a-z:].*\\d$|^(?:sr|ss|op|cl)$"),
      QRegularExpression::CaseInsensitiveOption);
  return text[at].isLetter() && clock.match(text.first(at)).hasMatch();
}

}  // namespace

std::optional<TimerRun> ReadTypedTimer(const QString& typed, const TimerRun& over) {
  const QString text = typed.simplified();
  // What is told already keeps what its words do not tell.
  if (text == ToUnicode(TimerInWords(over.Time, over.Days, over.Month, over.Date))) return over;
  if (const auto time = TypedTime(text, over.Time)) {
    TimerRun run = over;
    run.Time = *time;
    return run;
  }
  if (const auto days = TypedRunDays(text, over)) return days;
  for (qsizetype at = text.size() - 1; at > 0; --at) {
    const bool parts = text[at] == u' ' || text[at] == u',';
    if (!parts && !EndsTimeAt(text, at)) continue;
    const QString before = text.first(at);
    const QString after = text.sliced(parts ? at + 1 : at);
    if (const auto run = TypedBoth(before, after, over)) return run;
    if (!parts) continue;
    if (const auto run = TypedBoth(after, before, over)) return run;
  }
  return {};
}

#include <algorithm>
#include <array>
#include <map>

#include "document/rules/check/check.h"
#include "panel/code_page.h"
#include "panel/field_facts.h"
#include "panel/lists_in_words.h"
#include "panel/panel_record.h"
#include "panel/time_values.h"
#include "panel/words.h"
#include "schedule/rules/time_zones.h"
#include "schedule/rules/timer_moments.h"

// The panel's clock: its place and zone, daylight saving, the building's open and close times.

namespace {

constexpr int Weekdays = 7;
constexpr int FebruaryIndex = 1;
constexpr int LeapDateIndex = 28;
constexpr int LastDate = 31;

TimerEvent EventOfTimer(const CheckScope& scope, int timer) {
  return EventOf({scope.Of.Panel.TimerTimeType(timer), scope.Of.Panel.TimerTime(timer)});
}

/// The timers at work that run by themselves and count from an event of some kind.
std::vector<Item> TimersBy(const CheckScope& scope, bool (*isWanted)(TimerEvent event)) {
  std::vector<Item> timers;
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    const bool runs = scope.IsAtWork(item) && scope.HasDay(item);
    if (runs && isWanted(EventOfTimer(scope, timer))) timers.push_back(item);
  }
  return timers;
}

void LookAtPosition(const CheckScope& scope, const TellFinding& tell) {
  if (!IsNewPanelsPlace(scope.Of.Panel)) return;
  const std::vector<Item> timers = TimersBy(scope, IsOfSun);
  if (timers.empty()) return;
  tell(timers.front(),
       QStringLiteral("%1 %2 the sun, and the panel's position is still that of a new panel.")
           .arg(ListOf(scope.Of, timers), QLatin1String(timers.size() == 1 ? "follows" : "follow")),
       {});
}

void LookAtZone(const CheckScope& scope, const TellFinding& tell) {
  const QString doubt = ZoneDoubt(scope.Of.Panel);
  if (!doubt.isEmpty()) tell({}, doubt, {});
}

void LookAtDaylightSaving(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = scope.Of.Panel;
  if (panel.DSTEnabled == 0 || panel.DSTStartMonth != panel.DSTEndMonth) return;
  constexpr int fourth = 4;  // the last one in most months
  const bool same = panel.DSTStartWeek == panel.DSTEndWeek ||
                    (panel.DSTStartWeek >= fourth && panel.DSTEndWeek >= fourth);
  if (!same) return;
  tell({},
       QStringLiteral("Daylight saving begins and ends on the %1 Sunday of %2.")
           .arg(ToUnicode(Word(DSTWeeks, panel.DSTStartWeek - 1)).toLower(),
                ToUnicode(Word(MonthNames, panel.DSTStartMonth - 1))),
       {});
}

/// Whether anything goes by the open and close times.
bool HoursAreUsed(const CheckScope& scope) {
  const auto isHour = [](TimerEvent event) {
    return event == TimerEvent::Open || event == TimerEvent::Close;
  };
  return scope.DoesAnything({}) || !TimersBy(scope, isHour).empty();
}

/// Quarter hours.
struct DayHours {
  int Open;
  int Close;

  bool AreSet() const { return IsTime(Open) && IsTime(Close); }
  // NOLINTNEXTLINE(modernize-use-nullptr): takes the 0 that orders compare with for a pointer.
  auto operator<=>(const DayHours&) const = default;

 private:
  static bool IsTime(int quarter) { return quarter >= 0 && quarter < QuarterHoursPerDay; }
};

DayHours OfWeekday(const PanelRecordType& panel, int day) {
  return {panel.NormalOpenTime(day % Weekdays), panel.NormalCloseTime(day % Weekdays)};
}

DayHours OfDate(const PanelRecordType& panel, const MonthDate& date) {
  return {panel.DateOpenTime(date.first, date.second),
          panel.DateCloseTime(date.first, date.second)};
}

constexpr int Months = static_cast<int>(MonthDays.size());

MonthDate NextDate(const MonthDate& date) {
  if (date.second + 1 < MonthDays[static_cast<std::size_t>(date.first)])
    return {date.first, date.second + 1};
  return {(date.first + 1) % Months, 0};
}

MonthDate DateBefore(const MonthDate& date) {
  if (date.second > 0) return {date.first, date.second - 1};
  const int month = (date.first + Months - 1) % Months;
  return {month, MonthDays[static_cast<std::size_t>(month)] - 1};
}

/// How a day's times stand to each other.
enum class HoursKind { Usual, Closed, EndsNightLate, Late, NeverCloses };

bool HasTimes(const DayHours& hours) {
  return hours.Open < NoEntry || hours.Close < NoEntry;
}

bool EndsTheNightBefore(const DayHours& hours) {
  return hours.AreSet() && hours.Close <= hours.Open;
}

/// Whether a night goes on until the day after is half over, or longer: the times of that day,
/// which stays closed, are nearer to those at which the one before opens than to those at which it
/// closes.
bool GoesOnUntil(const DayHours& closed, const DayHours& before) {
  return before.AreSet() && before.Close < before.Open &&
         2 * closed.Close >= before.Open + before.Close;
}

/// Closing before opening ends the night before, so it is the next day that ends a day's night.
HoursKind KindOf(const DayHours& hours, bool nextEndsTheNight, bool nightBeforeGoesOn) {
  if (!hours.AreSet() || hours.Open < hours.Close) return HoursKind::Usual;
  if (hours.Open == hours.Close) {
    return nightBeforeGoesOn ? HoursKind::EndsNightLate : HoursKind::Closed;
  }
  return nextEndsTheNight ? HoursKind::Late : HoursKind::NeverCloses;
}

/// Days of one kind with the same times, each list in order.
template <typename Day>
using DaysByHours = std::map<DayHours, std::vector<Day>>;

template <typename Day>
void AddDay(DaysByHours<Day>& days, DayHours hours, const Day& day, HoursKind kind) {
  // A day is as closed at one hour as at another.
  if (kind == HoursKind::Closed) hours = {};
  days[hours].push_back(day);
}

DaysByHours<int> WeekdaysOf(const PanelRecordType& panel, HoursKind kind) {
  DaysByHours<int> days;
  for (int day = 0; day < Weekdays; ++day) {
    const DayHours hours = OfWeekday(panel, day);
    const bool goesOn = GoesOnUntil(hours, OfWeekday(panel, day + Weekdays - 1));
    if (KindOf(hours, EndsTheNightBefore(OfWeekday(panel, day + 1)), goesOn) == kind)
      AddDay(days, hours, day, kind);
  }
  return days;
}

DaysByHours<MonthDate> DatesOf(const PanelRecordType& panel, HoursKind kind) {
  std::array<DayHours, Weekdays> weekdays;
  for (int day = 0; day < Weekdays; ++day) {
    weekdays[static_cast<std::size_t>(day)] = OfWeekday(panel, day);
  }
  const bool everyWeekdayEnds = std::all_of(weekdays.begin(), weekdays.end(), EndsTheNightBefore);
  DaysByHours<MonthDate> days;
  for (int month = 0; month < Months; ++month) {
    for (int date = 0; date < MonthDays[static_cast<std::size_t>(month)]; ++date) {
      const MonthDate day{month, date};
      const DayHours hours = OfDate(panel, day);
      const DayHours next = OfDate(panel, NextDate(day));
      const DayHours before = OfDate(panel, DateBefore(day));
      const auto goesOnAfter = [&](const DayHours& one) { return GoesOnUntil(hours, one); };
      const bool ends = HasTimes(next) ? EndsTheNightBefore(next) : everyWeekdayEnds;
      const bool goesOn = HasTimes(before)
                              ? goesOnAfter(before)
                              : std::any_of(weekdays.begin(), weekdays.end(), goesOnAfter);
      if (KindOf(hours, ends, goesOn) == kind) AddDay(days, hours, day, kind);
    }
  }
  return days;
}

/// The words of a kind, of one day and of many: "%1" are the days, "%2" and "%3" the times at which
/// they open and close.
struct HoursWords {
  HoursKind Kind;
  const char* One;
  const char* Many;
};

constexpr HoursWords ClosedWords{HoursKind::Closed,
                                 "%1 stays closed: its open and close times are equal.",
                                 "%1 stay closed: their open and close times are equal."};
constexpr HoursWords ApartWords{
    HoursKind::Closed,
    "%1 has equal open and close times, and does not stay closed: an opening timer runs, and no "
    "closing timer at its minute.",
    "%1 have equal open and close times, and do not stay closed: an opening timer runs, and no "
    "closing timer at its minute."};
constexpr HoursWords EndsNightLateWords{HoursKind::EndsNightLate,
                                        "%1 stays closed at %2: the night before ends only then.",
                                        "%1 stay closed at %2: the nights before end only then."};
constexpr HoursWords LateWords{HoursKind::Late,
                               "%1 opens at %2 and closes at %3, which ends the night before.",
                               "%1 open at %2 and close at %3, which ends the night before."};
constexpr HoursWords NeverClosesWords{
    HoursKind::NeverCloses,
    "%1: the open time %2 is after the close time %3, and the next day does not end the night.",
    "%1: the open time %2 is after the close time %3, and the next days do not end the nights."};

template <typename Day, typename Place>
void TellOfDays(const DaysByHours<Day>& days, const HoursWords& words, const TellFinding& tell,
                QString (*listOf)(const std::vector<Day>& days), Place place) {
  for (const auto& [hours, list] : days) {
    const QString sentence = QLatin1String(list.size() == 1 ? words.One : words.Many);
    const QString times[] = {QString::fromStdString(QuarterHourText(hours.Open)),
                             QString::fromStdString(QuarterHourText(hours.Close))};
    // Not each sentence tells both times.
    QString told = sentence;
    told.replace(QLatin1String("%1"), listOf(list))
        .replace(QLatin1String("%2"), times[0])
        .replace(QLatin1String("%3"), times[1]);
    tell({}, told, place(list.front()));
  }
}

Setting PlaceOf(const MonthDate& date) {
  return {&FactsOf(&PanelRecordType::DateOpenTime), nullptr, {0, date.first, date.second}};
}

void TellOfHours(const TellFinding& tell, const HoursWords& words, const DaysByHours<int>& weekdays,
                 const DaysByHours<MonthDate>& dates) {
  TellOfDays(weekdays, words, tell, ListOfWeekdays, [](int day) {
    return Setting{&FactsOf(&PanelRecordType::NormalOpenTime), nullptr, {0, day}};
  });
  TellOfDays(dates, words, tell, ListOf, PlaceOf);
}

void TellOfHours(const CheckScope& scope, const TellFinding& tell, const HoursWords& words) {
  if (!HoursAreUsed(scope)) return;
  const auto& panel = scope.Of.Panel;
  TellOfHours(tell, words, WeekdaysOf(panel, words.Kind), DatesOf(panel, words.Kind));
}

void LookAtLateHours(const CheckScope& scope, const TellFinding& tell) {
  TellOfHours(scope, tell, LateWords);
}

void LookAtEndlessNights(const CheckScope& scope, const TellFinding& tell) {
  TellOfHours(scope, tell, NeverClosesWords);
  TellOfHours(scope, tell, EndsNightLateWords);
}

/// What timers do on days whose open and close times are equal.
class ClosedDays {
 public:
  explicit ClosedDays(const CheckScope& scope)
      : scope_(scope), timers_(scope.Of), days_(scope.Of.Panel) {}

  bool IsOpened(int weekday) const {
    QDate day(FirstYear, 1, 1);
    const QDate end = day.addYears(1);
    while (day < end && (day.dayOfWeek() % Weekdays != weekday || days_.IsHoliday(day)))
      day = day.addDays(1);
    return day < end && IsOpenedOn(day);
  }

  /// In seven leap years each date is each day of the week.
  bool IsOpened(const MonthDate& date) const {
    constexpr int leapYears = 7;
    for (int year = FirstYear; year < FirstYear + 4 * leapYears; year += 4) {
      if (IsOpenedOn({year, date.first + 1, date.second + 1})) return true;
    }
    return false;
  }

  /// Of such days those that are opened all the same, or the others.
  template <typename Day>
  DaysByHours<Day> Chosen(const DaysByHours<Day>& days, bool opened) const {
    DaysByHours<Day> chosen;
    for (const auto& [hours, list] : days) {
      for (const Day& day : list) {
        if (IsOpened(day) == opened) chosen[hours].push_back(day);
      }
    }
    return chosen;
  }

 private:
  static constexpr int FirstYear = 2000;

  /// Whether an opening timer turns something on, and no closing timer runs at its minute, nor the
  /// sweep.
  bool IsOpenedOn(QDate day) const {
    const auto& panel = scope_.Of.Panel;
    const TimerSet running = timers_.RunningOn(day);
    std::vector<int> opening;
    std::vector<int> closing;
    if (scope_.DoesAnything({})) closing.push_back(0);
    for (int timer = 0; timer < ItemCount; ++timer) {
      const Item item{ItemKind::Timer, timer};
      const TimerEvent event = EventOfTimer(scope_, timer);
      const bool opens =
          event == TimerEvent::Open &&
          (scope_.DoesAnything(item, EffectOn | EffectRuns) || scope_.DimmersFollow(item));
      const bool runs = running[static_cast<std::size_t>(timer)];
      if (!runs || (!opens && event != TimerEvent::Close)) continue;
      (opens ? opening : closing)
          .push_back(MinutesFromEvent({panel.TimerTimeType(timer), panel.TimerTime(timer)}));
    }
    return std::any_of(opening.begin(), opening.end(), [&](int minutes) {
      return std::find(closing.begin(), closing.end(), minutes) == closing.end();
    });
  }

  const CheckScope& scope_;
  TimerMoments timers_;
  PanelDays days_;
};

void LookAtClosedDays(const CheckScope& scope, const TellFinding& tell) {
  if (!HoursAreUsed(scope)) return;
  const auto weekdays = WeekdaysOf(scope.Of.Panel, HoursKind::Closed);
  const auto dates = DatesOf(scope.Of.Panel, HoursKind::Closed);
  if (weekdays.empty() && dates.empty()) return;
  const ClosedDays closed(scope);
  for (const bool opened : {false, true}) {
    TellOfHours(tell, opened ? ApartWords : ClosedWords, closed.Chosen(weekdays, opened),
                closed.Chosen(dates, opened));
  }
}

void LookAtMissingDates(const CheckScope& scope, const TellFinding& tell) {
  std::vector<MonthDate> dates;
  const auto& panel = scope.Of.Panel;
  for (int month = 0; month < Months; ++month) {
    for (int date = MonthDays[static_cast<std::size_t>(month)]; date < LastDate; ++date) {
      if (HasTimes(OfDate(panel, {month, date}))) dates.emplace_back(month, date);
    }
  }
  if (dates.empty()) return;
  tell({},
       QStringLiteral("%1 %2 open and close times, and no calendar has %3.")
           .arg(ListOf(dates), QLatin1String(dates.size() == 1 ? "has" : "have"),
                QLatin1String(dates.size() == 1 ? "it" : "them")),
       Screen::OpenAndCloseTimeSingleDates);
}

void LookAtLoneTimes(const CheckScope& scope, const TellFinding& tell) {
  if (!HoursAreUsed(scope)) return;
  const auto& panel = scope.Of.Panel;
  for (const bool opens : {true, false}) {
    std::vector<MonthDate> dates;
    for (int month = 0; month < Months; ++month) {
      for (const int date : DatesWithTimes(panel, month)) {
        const DayHours hours = OfDate(panel, {month, date});
        // A number above is in no list, and told as such.
        if ((opens ? hours.Close : hours.Open) == NoEntry) dates.emplace_back(month, date);
      }
    }
    if (dates.empty()) continue;
    const QString times[] = {QStringLiteral("open"), QStringLiteral("close")};
    tell({},
         QStringLiteral("%1 %2 %3 time and no %4 time.")
             .arg(ListOf(dates), QLatin1String(dates.size() == 1 ? "has" : "have"),
                  opens ? QStringLiteral("an open") : QStringLiteral("a close"), times[opens]),
         PlaceOf(dates.front()));
  }
}

void LookAtLeapDate(const CheckScope& scope, const TellFinding& tell) {
  const auto isSet = [&](int date) {
    return OfDate(scope.Of.Panel, {FebruaryIndex, date}).Open < NoEntry;
  };
  if (!isSet(LeapDateIndex) || isSet(LeapDateIndex - 1)) return;
  tell({}, QStringLiteral("February 29 has open and close times, and February 28 has none."),
       PlaceOf({FebruaryIndex, LeapDateIndex}));
}

constexpr auto RulesOfClock = std::to_array<CheckRule>({
    {"default-position", Severity::Warning, Screen::AstroClockSettings, LookAtPosition,
     "A timer follows the sun, and the place is still that of a new project."},
    {"time-zone", Severity::Warning, Screen::AstroClockSettings, LookAtZone,
     "The time zone cannot be that of the place."},
    {"daylight-saving", Severity::Warning, Screen::DaylightSavingTime, LookAtDaylightSaving,
     "Daylight saving begins and ends on one Sunday."},
    {"open-after-close", Severity::Warning, Screen::None, LookAtEndlessNights,
     "A night past midnight has no close time to end it, or only one that comes half a day late."},
    {"leap-date", Severity::Warning, Screen::None, LookAtLeapDate,
     "February 29 has open and close times, and the day before has none."},
    {"lone-time", Severity::Warning, Screen::None, LookAtLoneTimes,
     "A date has an open time and no close time, or the other way round."},
    {"hours-on-no-date", Severity::Warning, Screen::None, LookAtMissingDates,
     "A date that no calendar has, has open and close times."},
    {"stays-closed", Severity::Note, Screen::None, LookAtClosedDays,
     "Days have equal open and close times."},
    {"closes-late", Severity::Note, Screen::None, LookAtLateHours,
     "Days have a close time before their open time, which ends the night before."},
});

}  // namespace

std::span<const CheckRule> ClockRules() {
  return RulesOfClock;
}

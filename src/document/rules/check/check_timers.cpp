#include <algorithm>

#include "document/rules/check/check.h"
#include "panel/code_page.h"
#include "panel/panel_record.h"
#include "panel/time_values.h"
#include "panel/words.h"

// When timers run, and the building's open and close times.

namespace {

constexpr Int16 AllWeekdays = 0x7F;
constexpr Int16 NewPanelLatitude = 45;
constexpr Int16 NewPanelLongitude = 90;
constexpr int February = 2;
constexpr int LeapDay = 29;

TimerTimeValue TimeOf(const CheckScope& scope, int timer) {
  return {scope.Of.Panel.TimerTimeType(timer), scope.Of.Panel.TimerTime(timer)};
}

bool IsOnDate(const CheckScope& scope, int timer) {
  return scope.Of.Panel.TimerHolidayMonth(timer) != 0;
}

bool IsCalendarDate(int month, int date) {
  return month >= 1 && month <= 12 && date >= 1 &&
         date <= MonthDays[static_cast<std::size_t>(month - 1)];
}

/// The timers that switch, force or activate anything.
template <typename Look>
void ForEachTimer(const CheckScope& scope, Look look) {
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    if (scope.DoesAnything(item)) look(timer, item);
  }
}

void LookAtDays(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int timer, const Item& item) {
    if (IsOnDate(scope, timer) || (scope.Of.Panel.TimerDays(timer) & AllWeekdays) != AllWeekdays)
      return;
    tell(item, QStringLiteral("%1 has actions and no day to run on.").arg(scope.Text(item)), {});
  });
}

void LookAtDates(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int timer, const Item& item) {
    const int month = scope.Of.Panel.TimerHolidayMonth(timer);
    const int date = scope.Of.Panel.TimerHolidayDate(timer);
    if (!IsOnDate(scope, timer) || IsCalendarDate(month, date)) return;
    const QString name = ToUnicode(Word(MonthNames, month - 1));
    tell(item,
         QStringLiteral("%1 runs on %2, which no calendar has.")
             .arg(scope.Text(item), QStringLiteral("%1 %2")
                                        .arg(name.isEmpty() ? QString::number(month) : name)
                                        .arg(date)),
         {});
  });
}

void LookAtLeapDay(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int timer, const Item& item) {
    if (scope.Of.Panel.TimerHolidayMonth(timer) != February ||
        scope.Of.Panel.TimerHolidayDate(timer) != LeapDay) {
      return;
    }
    tell(item, QStringLiteral("%1 runs in leap years only, on February 29.").arg(scope.Text(item)),
         {});
  });
  const auto isSet = [&](int date) {
    return scope.Of.Panel.DateOpenTime(February - 1, date - 1) < NoEntry;
  };
  if (isSet(LeapDay) && !isSet(LeapDay - 1)) {
    tell({}, QStringLiteral("February 29 has open and close times, and February 28 has none."),
         Screen::OpenAndCloseTimeSingleDates);
  }
}

void LookAtPosition(const CheckScope& scope, const TellFinding& tell) {
  if (scope.Of.Panel.Latitude != NewPanelLatitude || scope.Of.Panel.Longitude != NewPanelLongitude)
    return;
  ForEachTimer(scope, [&](int timer, const Item& item) {
    const int event = RelativeEventOf(scope.Of.Panel.TimerTimeType(timer));
    if (event < 0 || event >= AstroEventCount) return;
    tell(item,
         QStringLiteral("%1 follows the sun, and the panel's position is still that of a new "
                        "panel.")
             .arg(scope.Text(item)),
         {});
  });
}

void LookAtIdleTimers(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = scope.Of.Panel;
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    const bool meant = TimeOf(scope, timer) != TimerTimeValue() || panel.TimerDays(timer) != 0 ||
                       IsOnDate(scope, timer) || !scope.OwnName(item).isEmpty();
    if (!meant || scope.DoesAnything(item) || scope.IsUsed(item, EffectFollows)) continue;
    tell(item, QStringLiteral("%1 does nothing.").arg(scope.Text(item)),
         Screen::TimerToRelayControl);
  }
}

/// Whether two timers can run on the same day.
bool ShareADay(const CheckScope& scope, int one, int other) {
  const auto& panel = scope.Of.Panel;
  if (IsOnDate(scope, one) != IsOnDate(scope, other)) return false;
  if (IsOnDate(scope, one)) {
    return panel.TimerHolidayMonth(one) == panel.TimerHolidayMonth(other) &&
           panel.TimerHolidayDate(one) == panel.TimerHolidayDate(other);
  }
  return (~panel.TimerDays(one) & ~panel.TimerDays(other) & AllWeekdays) != 0;
}

void LookAtConflicts(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int one, const Item& first) {
    const RelayEffects& ofFirst = scope.ByTimer[static_cast<std::size_t>(one)];
    for (int other = one + 1; other < ItemCount; ++other) {
      const Item second{ItemKind::Timer, other};
      if (TimeOf(scope, one) != TimeOf(scope, other) || !ShareADay(scope, one, other)) continue;
      const RelayEffects& ofSecond = scope.ByTimer[static_cast<std::size_t>(other)];
      for (int relay = 0; relay < scope.Points; ++relay) {
        const auto at = static_cast<std::size_t>(relay);
        if ((ofFirst[at] ^ ofSecond[at]) != (EffectOn | EffectOff)) continue;
        tell(second,
             QStringLiteral("%1 and %2 switch %3 differently at the same minute.")
                 .arg(scope.Text(first), scope.Text(second), scope.Text({ItemKind::Relay, relay})),
             {});
      }
    }
  });
}

void LookAtOpenTimes(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = scope.Of.Panel;
  const auto look = [&](int open, int close, const QString& day, Screen screen) {
    if (open < close) return;
    tell({},
         QStringLiteral("%1: the open time %2 is at or after the close time %3.")
             .arg(day, QString::fromStdString(QuarterHourText(open)),
                  QString::fromStdString(QuarterHourText(close))),
         screen);
  };
  for (std::size_t day = 0; day < WeekdayNames.size(); ++day) {
    const int at = static_cast<int>(day);
    look(panel.NormalOpenTime(at), panel.NormalCloseTime(at), ToUnicode(WeekdayNames[day]), {});
  }
  for (int month = 0; month < 12; ++month) {
    for (int date = 0; date < MonthDays[static_cast<std::size_t>(month)]; ++date) {
      const int open = panel.DateOpenTime(month, date);
      if (open >= NoEntry) continue;
      look(open, panel.DateCloseTime(month, date),
           QStringLiteral("%1 %2").arg(ToUnicode(Word(MonthNames, month))).arg(date + 1),
           Screen::OpenAndCloseTimeSingleDates);
    }
  }
}

constexpr auto RulesOfTimers = std::to_array<CheckRule>({
    {"no-day", Severity::Error, Screen::TimersConfigure, LookAtDays,
     "A timer has actions and no day."},
    {"no-such-date", Severity::Error, Screen::TimersConfigure, LookAtDates,
     "A timer runs on a date that no calendar has."},
    {"leap-day", Severity::Warning, Screen::TimersConfigure, LookAtLeapDay,
     "A timer runs on February 29 only, or that date has open times and the day before has none."},
    {"default-position", Severity::Warning, Screen::AstroClockSettings, LookAtPosition,
     "A timer follows the sun, and the place is still that of a new project."},
    {"idle-timer", Severity::Warning, Screen::TimerToRelayControl, LookAtIdleTimers,
     "A timer with a name, time or days does nothing."},
    {"conflict", Severity::Warning, Screen::TimersConfigure, LookAtConflicts,
     "Two timers switch a relay differently at the same minute."},
    {"open-after-close", Severity::Warning, Screen::OpenAndCloseTimeNormalDays, LookAtOpenTimes,
     "The open time is at or after the close time."},
});

}  // namespace

std::span<const CheckRule> TimerRules() {
  return RulesOfTimers;
}

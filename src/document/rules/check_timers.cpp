#include <algorithm>

#include "document/rules/check.h"
#include "panel/code_page.h"
#include "panel/panel_record.h"
#include "panel/words.h"
#include "schedule/rules/time_values.h"

// When timers run, and the building's open and close times.

namespace {

constexpr Int16 AllWeekdays = 0x7F;
constexpr Int16 NewPanelLatitude = 45;
constexpr Int16 NewPanelLongitude = 90;
constexpr int February = 2;
constexpr int LeapDay = 29;

TimerTimeValue TimeOf(int timer) {
  return {PanelRecord.TimerTimeType(timer), PanelRecord.TimerTime(timer)};
}

bool IsOnDate(int timer) {
  return PanelRecord.TimerHolidayMonth(timer) != 0;
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
    if (IsOnDate(timer) || (PanelRecord.TimerDays(timer) & AllWeekdays) != AllWeekdays) return;
    tell(item, QStringLiteral("%1 has actions and no day to run on.").arg(ItemText(item)), {});
  });
}

void LookAtDates(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int timer, const Item& item) {
    const int month = PanelRecord.TimerHolidayMonth(timer);
    const int date = PanelRecord.TimerHolidayDate(timer);
    if (!IsOnDate(timer) || IsCalendarDate(month, date)) return;
    const QString name = ToUnicode(Word(MonthNames, month - 1));
    tell(item,
         QStringLiteral("%1 runs on %2, which no calendar has.")
             .arg(ItemText(item), QStringLiteral("%1 %2")
                                      .arg(name.isEmpty() ? QString::number(month) : name)
                                      .arg(date)),
         {});
  });
}

void LookAtLeapDay(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int timer, const Item& item) {
    if (PanelRecord.TimerHolidayMonth(timer) != February ||
        PanelRecord.TimerHolidayDate(timer) != LeapDay) {
      return;
    }
    tell(item, QStringLiteral("%1 runs in leap years only, on February 29.").arg(ItemText(item)),
         {});
  });
  const auto isSet = [](int date) {
    return PanelRecord.DateOpenTime(February - 1, date - 1) < NoEntry;
  };
  if (isSet(LeapDay) && !isSet(LeapDay - 1)) {
    tell({}, QStringLiteral("February 29 has open and close times, and February 28 has none."),
         "frmT3OpenAndCloseTimeSingleDates");
  }
}

void LookAtPosition(const CheckScope& scope, const TellFinding& tell) {
  if (PanelRecord.Latitude != NewPanelLatitude || PanelRecord.Longitude != NewPanelLongitude)
    return;
  ForEachTimer(scope, [&](int timer, const Item& item) {
    const int event = RelativeEventOf(PanelRecord.TimerTimeType(timer));
    if (event < 0 || event >= AstroEventCount) return;
    tell(item,
         QStringLiteral("%1 follows the sun, and the panel's position is still that of a new "
                        "panel.")
             .arg(ItemText(item)),
         {});
  });
}

void LookAtIdleTimers(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = PanelRecord;
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    const bool meant = TimeOf(timer) != TimerTimeValue() || panel.TimerDays(timer) != 0 ||
                       IsOnDate(timer) || !OwnName(item).isEmpty();
    if (!meant || scope.DoesAnything(item) || scope.IsUsed(item, EffectFollows)) continue;
    tell(item, QStringLiteral("%1 does nothing.").arg(ItemText(item)), "frmT3TimerToRelayControl");
  }
}

/// Whether two timers can run on the same day.
bool ShareADay(int one, int other) {
  const auto& panel = PanelRecord;
  if (IsOnDate(one) != IsOnDate(other)) return false;
  if (IsOnDate(one)) {
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
      if (TimeOf(one) != TimeOf(other) || !ShareADay(one, other)) continue;
      const RelayEffects& ofSecond = scope.ByTimer[static_cast<std::size_t>(other)];
      for (int relay = 0; relay < scope.Points; ++relay) {
        const auto at = static_cast<std::size_t>(relay);
        if ((ofFirst[at] ^ ofSecond[at]) != (EffectOn | EffectOff)) continue;
        tell(second,
             QStringLiteral("%1 and %2 switch %3 differently at the same minute.")
                 .arg(ItemText(first), ItemText(second), ItemText({ItemKind::Relay, relay})),
             {});
      }
    }
  });
}

void LookAtOpenTimes(const CheckScope&, const TellFinding& tell) {
  const auto& panel = PanelRecord;
  const auto look = [&](int open, int close, const QString& day, std::string_view screen) {
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
           "frmT3OpenAndCloseTimeSingleDates");
    }
  }
}

constexpr auto RulesOfTimers = std::to_array<CheckRule>({
    {"no-day", Severity::Error, "frmT3TimersConfigure", LookAtDays},
    {"no-such-date", Severity::Error, "frmT3TimersConfigure", LookAtDates},
    {"leap-day", Severity::Warning, "frmT3TimersConfigure", LookAtLeapDay},
    {"default-position", Severity::Warning, "frmT3AstroClockSettings", LookAtPosition},
    {"idle-timer", Severity::Warning, "frmT3TimerToRelayControl", LookAtIdleTimers},
    {"conflict", Severity::Warning, "frmT3TimersConfigure", LookAtConflicts},
    {"open-after-close", Severity::Warning, "frmT3OpenAndCloseTimeNormalDays", LookAtOpenTimes},
});

}  // namespace

std::span<const CheckRule> TimerRules() {
  return RulesOfTimers;
}

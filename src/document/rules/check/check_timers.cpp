#include <algorithm>
#include <map>

#include "document/rules/check/check.h"
#include "panel/code_page.h"
#include "panel/lists_in_words.h"
#include "panel/panel_record.h"
#include "panel/time_values.h"
#include "panel/words.h"
#include "schedule/rules/timer_moments.h"

// Timers: their days, and what they do against themselves and each other.

namespace {

constexpr int StoredFebruary = 2;
constexpr int StoredLeapDay = 29;

TimerTimeValue TimeOf(const CheckScope& scope, int timer) {
  return {scope.Of.Panel.TimerTimeType(timer), scope.Of.Panel.TimerTime(timer)};
}

bool IsOnDate(const CheckScope& scope, int timer) {
  return scope.Of.Panel.TimerHolidayMonth(timer) != 0;
}

/// A date that its list has, and not the month: "February 30".
bool IsNoDateOf(int month, int date) {
  constexpr int lastDate = 31;
  return !Word(MonthNames, month - 1).empty() && date <= lastDate &&
         date > MonthDays[static_cast<std::size_t>(month - 1)];
}

/// The timers that switch, force or activate anything, or that dimmers follow.
template <typename Look>
void ForEachTimer(const CheckScope& scope, Look look) {
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    if (scope.IsAtWork(item)) look(timer, item);
  }
}

/// The timers that never run by themselves, with all eight boxes clear or with a box left. One that
/// an input forces is a macro.
std::vector<Item> TimersWithoutDay(const CheckScope& scope, bool parked) {
  std::vector<Item> timers;
  ForEachTimer(scope, [&](int /*timer*/, const Item& item) {
    const bool runs = scope.HasDay(item) || scope.IsUsed(item, EffectRuns);
    if (!runs && scope.IsParked(item) == parked) timers.push_back(item);
  });
  return timers;
}

void LookAtDays(const CheckScope& scope, const TellFinding& tell) {
  for (const Item& item : TimersWithoutDay(scope, false)) {
    tell(item, QStringLiteral("%1 has actions and no day to run on.").arg(scope.Text(item)), {});
  }
}

void LookAtParkedTimers(const CheckScope& scope, const TellFinding& tell) {
  const std::vector<Item> timers = TimersWithoutDay(scope, true);
  if (timers.empty()) return;
  tell(timers.front(),
       QStringLiteral("%1 %2 parked: no day is checked.")
           .arg(ListOf(scope.Of, timers), QLatin1String(timers.size() == 1 ? "is" : "are")),
       {});
}

void LookAtDates(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int timer, const Item& item) {
    const int month = scope.Of.Panel.TimerHolidayMonth(timer);
    const int date = scope.Of.Panel.TimerHolidayDate(timer);
    if (!IsNoDateOf(month, date)) return;
    tell(item,
         QStringLiteral("%1 runs on %2 %3, which no calendar has.")
             .arg(scope.Text(item), ToUnicode(Word(MonthNames, month - 1)))
             .arg(date),
         {});
  });
}

void LookAtLeapDay(const CheckScope& scope, const TellFinding& tell) {
  ForEachTimer(scope, [&](int timer, const Item& item) {
    if (scope.Of.Panel.TimerHolidayMonth(timer) != StoredFebruary ||
        scope.Of.Panel.TimerHolidayDate(timer) != StoredLeapDay) {
      return;
    }
    tell(item, QStringLiteral("%1 runs in leap years only, on February 29.").arg(scope.Text(item)),
         {});
  });
}

void LookAtIdleTimers(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = scope.Of.Panel;
  std::vector<Item> idle;
  for (int timer = 0; timer < ItemCount; ++timer) {
    const Item item{ItemKind::Timer, timer};
    const bool meant = TimeOf(scope, timer) != TimerTimeValue() || panel.TimerDays(timer) != 0 ||
                       IsOnDate(scope, timer) || !scope.OwnName(item).isEmpty();
    // What forces or disables it tells that it does nothing.
    const bool told = scope.IsUsed(item, EffectRuns | EffectDisables);
    if (meant && !scope.IsParked(item) && !told && !scope.IsAtWork(item)) idle.push_back(item);
  }
  if (idle.empty()) return;
  const auto count = static_cast<qsizetype>(idle.size());
  const QString items = ListOf(scope.Of, idle);
  tell(idle.front(),
       count == 1 ? QStringLiteral("%1 does nothing.").arg(items)
                  : QStringLiteral("%1 timers do nothing: %2.").arg(count).arg(items),
       Screen::TimerToRelayControl);
}

/// What a timer tells relays, word by word: its relays, then its groups, then its presets.
struct TimerWord {
  Item By;
  RelayOutcome Tells;
};

class TimerWords {
 public:
  explicit TimerWords(const CheckScope& scope) : panel_(scope.Of.Panel), points_(scope.Points) {
    for (int holder = 0; holder < ItemCount; ++holder) {
      const auto at = static_cast<std::size_t>(holder);
      for (int relay = 0; relay < points_; ++relay) {
        const auto bit = static_cast<std::size_t>(relay);
        groups_[at][bit] = panel_.GroupRelayInclude(holder, relay) != 0;
        presets_[at].On[bit] = panel_.PresetRelayControl(holder, relay) == 1;
        presets_[at].Off[bit] = panel_.PresetRelayControl(holder, relay) == 2;
      }
    }
  }

  std::vector<TimerWord> Of(int timer) const {
    std::vector<TimerWord> words;
    const auto add = [&](const Item& by, const RelayOutcome& tells) {
      if ((tells.On | tells.Off).any()) words.push_back({by, tells});
    };
    const auto told = [](Int16 code, const ItemSet& relays) {
      return RelayOutcome{code == 1 ? relays : ItemSet(), code == 2 ? relays : ItemSet()};
    };
    for (int relay = 0; relay < points_; ++relay) {
      add({ItemKind::Relay, relay}, told(panel_.TimerRelayControl(timer, relay),
                                         ItemSet().set(static_cast<std::size_t>(relay))));
    }
    for (int group = 0; group < ItemCount; ++group) {
      add({ItemKind::Group, group},
          told(panel_.TimerGroupControl(timer, group), groups_[static_cast<std::size_t>(group)]));
    }
    for (int preset = 0; preset < ItemCount; ++preset) {
      if (panel_.TimerPresetControl(timer, preset) != 0)
        add({ItemKind::Preset, preset}, presets_[static_cast<std::size_t>(preset)]);
    }
    return words;
  }

 private:
  const PanelRecordType& panel_;
  int points_;
  std::array<ItemSet, ItemCount> groups_;
  std::array<RelayOutcome, ItemCount> presets_;
};

/// A word all of which is taken back by those behind it. That a group goes off and a preset brings
/// some of it on again is as meant.
void LookAtSelfConflicts(const CheckScope& scope, const TellFinding& tell) {
  const TimerWords words(scope);
  ForEachTimer(scope, [&](int timer, const Item& item) {
    const std::vector<TimerWord> told = words.Of(timer);
    RelayOutcome later;
    RelayOutcome lost;
    std::vector<Item> undone;
    // NOLINTNEXTLINE(modernize-loop-convert): this library cannot turn a range round.
    for (auto word = told.rbegin(); word != told.rend(); ++word) {
      const auto& [on, off] = word->Tells;
      if ((on & ~later.Off).none() && (off & ~later.On).none()) {
        undone.push_back(word->By);
        lost.On |= on;
        lost.Off |= off;
      }
      RelayOutcome both = word->Tells;
      both.Then(later);
      later = both;
    }
    if (undone.empty()) return;
    std::reverse(undone.begin(), undone.end());
    std::vector<Item> undoing;
    for (const TimerWord& word : told) {
      const bool takesBack = ((word.Tells.Off & lost.On) | (word.Tells.On & lost.Off)).any();
      if (takesBack && word.By > undone.front()) undoing.push_back(word.By);
    }
    tell(item,
         QStringLiteral("%1 contradicts itself: what it tells %2 is taken back by %3.")
             .arg(scope.Text(item), ListOf(scope.Of, undone), ListOf(scope.Of, undoing)),
         undone.front().Kind == ItemKind::Relay   ? Screen::TimerToRelayControl
         : undone.front().Kind == ItemKind::Group ? Screen::TimerToGroupControl
                                                  : Screen::TimerToPresetControl);
  });
}

/// Timers that switch relays differently at one instant.
class ConflictSearch {
 public:
  explicit ConflictSearch(const CheckScope& scope) : scope_(scope), days_(scope.Of.Panel) {
    const TimerWords words(scope);
    for (int timer = 0; timer < ItemCount; ++timer) {
      for (const TimerWord& word : words.Of(timer)) Told(timer).Then(word.Tells);
    }
    for (int one = 0; one < ItemCount; ++one) {
      for (int other = one + 1; other < ItemCount; ++other) {
        if (Opposed(one, other).none()) continue;
        opposed_.set(static_cast<std::size_t>(one)).set(static_cast<std::size_t>(other));
      }
    }
  }

  void Tell(const TellFinding& tell) {
    if (opposed_.none()) return;
    Search();
    for (const Conflict& conflict : Conflicts()) {
      QStringList timers;
      for (const int timer : InOrder(conflict.Timers)) {
        timers << scope_.Text({ItemKind::Timer, timer});
      }
      std::vector<Item> relays;
      for (const int relay : InOrder(conflict.Relays)) relays.push_back({ItemKind::Relay, relay});
      const QString last = timers.takeLast();
      tell({ItemKind::Timer, InOrder(conflict.Timers).back()},
           QStringLiteral("%1 and %2 switch %3 differently at the same minute%4.")
               .arg(timers.join(QLatin1String(", ")), last, ListOf(scope_.Of, relays),
                    conflict.Days),
           {});
    }
  }

 private:
  /// The days on which two timers meet.
  struct Dates {
    std::bitset<7> Weekdays;  ///< From Sunday, of days that are no holiday.
    std::map<MonthDate, bool> Special;
  };

  /// Timers that meet on the same days over the same relays.
  struct Conflict {
    TimerSet Timers;
    ItemSet Relays;
    QString Days;  ///< " on Sunday"; nothing for every day.
  };

  std::vector<Conflict> Conflicts() const {
    std::vector<Conflict> conflicts;
    for (const auto& [pair, dates] : met_) {
      const auto& [one, other] = pair;
      const TimerSet timers =
          TimerSet().set(static_cast<std::size_t>(one)).set(static_cast<std::size_t>(other));
      const QString list = dates.Weekdays.any() ? ListOfWeekdays(InOrder(dates.Weekdays))
                                                : ListOf(InOrder(dates.Special));
      const Conflict conflict{timers, Opposed(one, other),
                              dates.Weekdays.all() ? QString() : QStringLiteral(" on ") + list};
      const auto same = std::find_if(conflicts.begin(), conflicts.end(), [&](const Conflict& c) {
        return (c.Timers & timers).any() && c.Relays == conflict.Relays && c.Days == conflict.Days;
      });
      if (same == conflicts.end()) {
        conflicts.push_back(conflict);
      } else {
        same->Timers |= timers;
      }
    }
    return conflicts;
  }

  RelayOutcome& Told(int timer) { return told_[static_cast<std::size_t>(timer)]; }

  ItemSet Opposed(int one, int other) const {
    const RelayOutcome& first = told_[static_cast<std::size_t>(one)];
    const RelayOutcome& second = told_[static_cast<std::size_t>(other)];
    return (first.On & second.Off) | (first.Off & second.On);
  }

  static std::vector<MonthDate> InOrder(const std::map<MonthDate, bool>& dates) {
    std::vector<MonthDate> list;
    list.reserve(dates.size());
    for (const auto& [date, met] : dates) list.push_back(date);
    return list;
  }

  template <std::size_t Size>
  static std::vector<int> InOrder(const std::bitset<Size>& set) {
    std::vector<int> list;
    for (std::size_t i = 0; i < Size; ++i) {
      if (set[i]) list.push_back(static_cast<int>(i));
    }
    return list;
  }

  /// In seven leap years each date is each day of the week.
  void Search() {
    constexpr int firstYear = 2000;
    constexpr int leapYears = 7;
    const TimerMoments timers(scope_.Of, TimerMoments::Days::Even, opposed_);
    for (int year = firstYear; year < firstYear + 4 * leapYears; year += 4) {
      const std::vector<TimerMoment> moments = timers.OfYear(year);
      for (auto first = moments.begin(), end = first; first != moments.end(); first = end) {
        while (end != moments.end() && end->At == first->At) ++end;
        for (auto one = first; one != end; ++one) {
          for (auto other = one + 1; other != end; ++other) Meet(*one, *other);
        }
      }
    }
  }

  /// As far after opening as after closing timers run together on a day whose times are equal: it
  /// stays closed where the last word is that of closing.
  bool KeepsClosed(int first, int last) const {
    const TimerTimeValue opening = TimeOf(scope_, first);
    const TimerTimeValue closing = TimeOf(scope_, last);
    return EventOf(opening) == TimerEvent::Open && EventOf(closing) == TimerEvent::Close &&
           MinutesFromEvent(opening) == MinutesFromEvent(closing);
  }

  void Meet(const TimerMoment& one, const TimerMoment& other) {
    const auto sun = [&](const TimerMoment& moment) {
      const TimerEvent event = EventOf(TimeOf(scope_, moment.Timer));
      return IsOfSun(event) ? event : TimerEvent::Midnight;
    };
    // That the sun comes to a time of the clock is the chance of a day.
    if (sun(one) != sun(other) || Opposed(one.Timer, other.Timer).none()) return;
    if (KeepsClosed(one.Timer, other.Timer)) return;
    Dates& dates = met_[{one.Timer, other.Timer}];
    const QDate day = one.Day();
    if (days_.IsHoliday(day)) {
      dates.Special[{day.month() - 1, day.day() - 1}] = true;
    } else {
      dates.Weekdays.set(static_cast<std::size_t>(day.dayOfWeek() % 7));
    }
  }

  const CheckScope& scope_;
  PanelDays days_;
  std::array<RelayOutcome, ItemCount> told_;
  TimerSet opposed_;
  std::map<std::pair<int, int>, Dates> met_;
};

void LookAtConflicts(const CheckScope& scope, const TellFinding& tell) {
  ConflictSearch(scope).Tell(tell);
}

constexpr auto RulesOfTimers = std::to_array<CheckRule>({
    {"no-day", Severity::Error, Screen::TimersConfigure, LookAtDays,
     "A timer has actions or dimmers and no day, and no input forces it."},
    {"no-such-date", Severity::Error, Screen::TimersConfigure, LookAtDates,
     "A timer runs on a date that no calendar has."},
    {"leap-day", Severity::Warning, Screen::TimersConfigure, LookAtLeapDay,
     "A timer runs on February 29 only."},
    {"idle-timer", Severity::Warning, Screen::TimerToRelayControl, LookAtIdleTimers,
     "A timer with a name, time or days does nothing."},
    {"self-conflict", Severity::Warning, Screen::TimerToRelayControl, LookAtSelfConflicts,
     "What a timer tells a relay, group or preset is wholly taken back by a group or preset behind "
     "it."},
    {"conflict", Severity::Warning, Screen::TimersConfigure, LookAtConflicts,
     "Two timers switch a relay differently at the same minute."},
    {"parked-timer", Severity::Note, Screen::TimersConfigure, LookAtParkedTimers,
     "A timer has no day checked."},
});

}  // namespace

std::span<const CheckRule> TimerRules() {
  return RulesOfTimers;
}

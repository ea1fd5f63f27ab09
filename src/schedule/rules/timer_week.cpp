#include "schedule/rules/timer_week.h"

#include "schedule/rules/timer_words.h"

namespace {

QString NameTogether(const Project& project, const std::vector<Item>& relays) {
  RelaySet set = 0;
  for (const Item& relay : relays) set |= RelaySet{1} << relay.Number;
  const int points = InstalledPoints(project);
  const RelaySet installed = RelaysThat([points](int relay) { return relay < points; });
  for (int group = 0; relays.size() > 1 && group < ItemCount; ++group) {
    if ((RelaysOfGroup(project.Panel, group) & installed) == set) {
      return NamesInShort(project, {{ItemKind::Group, group}});
    }
  }
  return NamesInShort(project, relays);
}

}  // namespace

TimerWeek WeekOfTimers(const Project& project, QDate first) {
  // What fires in the week before tells what is on as this one begins.
  const std::vector<TimerMoment> moments = TimerMoments(project).Between(
      first.addDays(-TimerWeek::Days), first.addDays(TimerWeek::Days - 1));
  TimerWeek week{first, {}, {}};
  const auto lit = LitBetween(project.Panel, InstalledPoints(project),
                              SwitchingsOf(project, moments), week.Begin(), week.Finish());
  for (const auto& [relays, spans] : lit) {
    const auto row = static_cast<int>(week.Rows.size());
    week.Rows.push_back({NameTogether(project, relays), spans});
    const auto tell = [&](WallMinute at, int timer, QLatin1StringView what) {
      const QString when = MomentInWords({at, timer}, first.startOfDay());
      week.Ends.push_back({row, at, timer,
                           QStringLiteral("%1 %2 %3 by %4")
                               .arg(week.Rows.back().Name, what, when,
                                    ItemText(project, {ItemKind::Timer, timer}))});
    };
    for (const LitSpan& span : spans) {
      // What was on before is told as the week begins.
      if (span.From > week.Begin()) tell(span.From, span.OnBy, QLatin1StringView("on"));
      if (span.From == week.Begin())
        tell(span.From, span.OnBy, QLatin1StringView("on since before"));
      if (span.OffBy != NoTimer) tell(span.To, span.OffBy, QLatin1StringView("off"));
    }
  }
  return week;
}

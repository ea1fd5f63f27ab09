#include <algorithm>
#include <array>
#include <map>

#include "document/rules/report/report_chapters.h"
#include "panel/code_page.h"
#include "panel/time_values.h"
#include "schedule/rules/lit_relays.h"

// The year at a glance: when timers fire, and when they and the sweep have relays on.

namespace {

constexpr int MonthsOfYear = 12;
constexpr int HoursOfGraph = 24;

RelaySet Swept(const PanelRecordType& panel) {
  RelaySet set = RelaysThat([&](int relay) { return panel.OffHoursSweepRelay(relay) != 0; });
  for (int group = 0; group < ItemCount; ++group) {
    if (panel.OffHoursSweepGroup(group) != 0) set |= RelaysOfGroup(panel, group);
  }
  return set;
}

/// The sweeps: as the building closes and at the interval from then on, until it opens.
void AddSweeps(const PanelRecordType& panel, QDate first, QDate last,
               std::vector<Switching>& switchings) {
  constexpr WallMinute minutesOfHour = 60;
  const RelaySet swept = Swept(panel);
  const WallMinute interval = minutesOfHour * std::max(panel.OffHoursSweepInterval + 1, 1);
  if (swept == 0) return;
  const PanelDays days(panel);
  std::vector<std::pair<WallMinute, bool>> times;  // A day that opens as it closes stays closed.
  for (QDate day = first; day <= last; day = day.addDays(1)) {
    if (const auto open = days.OpenTime(day)) times.emplace_back(*open, false);
    if (const auto close = days.CloseTime(day)) times.emplace_back(*close, true);
  }
  std::sort(times.begin(), times.end());
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (!times[i].second) continue;
    const WallMinute end = i + 1 < times.size() ? times[i + 1].first : times[i].first + 1;
    for (WallMinute at = times[i].first; at < end; at += interval) {
      switchings.push_back({at, swept, 0});
    }
  }
}

/// All that is switched from a week before the year, which tells what is on as it begins.
std::vector<Switching> SwitchingsAndSweeps(const Project& project,
                                           const std::vector<TimerMoment>& moments, QDate first,
                                           QDate last) {
  std::vector<Switching> switchings = SwitchingsOf(project, moments);
  AddSweeps(project.Panel, first, last, switchings);
  std::stable_sort(switchings.begin(), switchings.end(),
                   [](const Switching& one, const Switching& other) { return one.At < other.At; });
  return switchings;
}

/// The parts of each day, from 0 to 1, of which those of days that are alike are drawn as one.
std::vector<QRectF> AreasOf(const std::vector<LitSpan>& spans, QDate first, int days) {
  std::vector<std::vector<LitSpan>> parts(static_cast<std::size_t>(days));
  const WallMinute begin = FirstMinuteOf(first);
  for (const LitSpan& span : spans) {
    for (WallMinute from = span.From - begin; from < span.To - begin;) {
      const WallMinute day = from / MinutesPerDay;
      const WallMinute to = std::min<WallMinute>(span.To - begin, (day + 1) * MinutesPerDay);
      parts[static_cast<std::size_t>(day)].push_back(
          {from % MinutesPerDay, to - day * MinutesPerDay});
      from = to;
    }
  }
  std::vector<QRectF> areas;
  for (std::size_t day = 0; day < parts.size();) {
    std::size_t next = day + 1;
    while (next < parts.size() && parts[next] == parts[day]) ++next;
    const auto across = [&](std::size_t at) { return static_cast<double>(at) / days; };
    const auto up = [](WallMinute at) { return 1 - static_cast<double>(at) / MinutesPerDay; };
    for (const LitSpan& part : parts[day]) {
      areas.emplace_back(QPointF(across(day), up(part.To)), QPointF(across(next), up(part.From)));
    }
    day = next;
  }
  return areas;
}

/// A graph for all relays that are on at the same times.
std::vector<ReportGraph> GraphsOf(const Project& project, const ReportUses& uses,
                                  const std::vector<LitTogether>& alike, QDate first) {
  const int days = first.daysInYear();
  std::vector<ReportGraph> graphs;
  for (const auto& [relays, spans] : alike) {
    ReportGraph graph;
    graph.Title = relays.size() == 1 ? ItemText(project, relays.front())
                                     : QStringLiteral("%1 and %2 more")
                                           .arg(ItemText(project, relays.front()))
                                           .arg(relays.size() - 1);
    if (relays.size() > 1) graph.Words = uses.Names(relays);
    graph.Areas = AreasOf(spans, first, days);
    for (const int month : {1, 4, 7, 10}) {
      const double at = static_cast<double>(QDate(first.year(), month, 1).dayOfYear() - 1) / days;
      graph.Across.push_back({at, ToUnicode(ShortName(Word(MonthNames, month - 1)))});
    }
    for (const int hour : {0, 6, 12, 18, HoursOfGraph}) {
      constexpr int minutesOfHour = 60;
      graph.Up.push_back({1 - static_cast<double>(hour) / HoursOfGraph,
                          ToUnicode(MinuteText(hour * minutesOfHour))});
    }
    graphs.push_back(std::move(graph));
  }
  return graphs;
}

/// The first and the last time of each month.
std::vector<ReportRow> FiringRows(const Project& project, const std::vector<TimerMoment>& moments,
                                  int year) {
  struct Month {
    int First = MinutesPerDay;
    int Last = -1;
  };
  std::map<int, std::array<Month, MonthsOfYear>> timers;
  for (const TimerMoment& moment : moments) {
    if (moment.Day().year() != year) continue;
    Month& month = timers[moment.Timer][static_cast<std::size_t>(moment.Day().month() - 1)];
    month.First = std::min(month.First, moment.MinuteOfDay());
    month.Last = std::max(month.Last, moment.MinuteOfDay());
  }
  std::vector<ReportRow> rows;
  for (const auto& [timer, months] : timers) {
    QStringList cells = {ItemText(project, {ItemKind::Timer, timer})};
    for (const Month& month : months) {
      QString told = month.Last < 0 ? QStringLiteral("-") : ToUnicode(MinuteText(month.First));
      if (month.Last > month.First) told += u'\n' + ToUnicode(MinuteText(month.Last));
      cells << told;
    }
    rows.push_back({cells});
  }
  return rows;
}

}  // namespace

ReportChapter YearChapter(const Project& project, const ReportUses& uses, int year) {
  ReportChapter chapter{
      QStringLiteral("The Year %1").arg(year),
      {"Timer"},
      {16},
      {},
      {},
      false,
      QStringLiteral("Each timer's first and last time in a month; below, when timers "
                     "and the sweep alone have relays on."),
      true};
  for (const std::string_view month : MonthNames) {
    chapter.Columns << ToUnicode(ShortName(month));
    chapter.Widths.push_back(7);
  }
  constexpr int daysBefore = 7;
  const QDate first(year, 1, 1);
  const QDate begin = first.addDays(-daysBefore);
  const QDate last(year, MonthsOfYear, 31);
  const std::vector<TimerMoment> moments = TimerMoments(project).Between(begin, last);
  chapter.Rows = FiringRows(project, moments, year);
  if (chapter.Rows.empty()) return chapter;
  const auto switchings = SwitchingsAndSweeps(project, moments, begin, last);
  chapter.Graphs = GraphsOf(project, uses,
                            LitBetween(project.Panel, InstalledPoints(project), switchings,
                                       FirstMinuteOf(first), FirstMinuteOf(last.addDays(1))),
                            first);
  return chapter;
}

#include "document/rules/report/report_uses.h"

#include <QStringList>
#include <algorithm>
#include <cstdint>
#include <tuple>

#include "panel/code_page.h"
#include "panel/panel_record.h"
#include "panel/time_values.h"
#include "panel/words.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// "turns RELAY 01, RELAY 02 on and off" of "turns on and off".
QString WordsAround(const QString& words, const QString& used) {
  const QString verb = words.section(u' ', 0, 0);
  const bool parted = verb != words && QStringList{"turns", "switches", "sweeps", "holds",
                                                   "turn",  "switch",   "sweep",  "hold"}
                                           .contains(verb);
  return parted ? verb + u' ' + used + words.mid(verb.size()) : words + u' ' + used;
}

/// "turn" of "turns", "are controlled by" of "is controlled by".
QString OfSeveral(const QString& words) {
  QString verb = words.section(u' ', 0, 0);
  const QString rest = words.mid(verb.size());
  if (verb == u"is") return QStringLiteral("are") + rest;
  if (verb == u"has") return QStringLiteral("have") + rest;
  verb.chop(verb.endsWith(QLatin1StringView("ches")) ? 2 : 1);
  return verb + rest;
}

/// A pilot shows what an item does and acts on nothing.
bool IsPilot(const Use& use) {
  const ItemKind user = use.User.Kind;
  return use.Effect == EffectFollows && (user == ItemKind::Input || user == ItemKind::DeviceInput);
}

/// Whether the second is the next of its kind.
bool IsNext(Item item, const Item& second) {
  const bool part = item.Kind == ItemKind::DeviceInput || item.Kind == ItemKind::DimmerOutput;
  ++(part ? item.Part : item.Number);
  return item == second;
}

std::vector<Item> ItemsOf(ItemKind kind, std::uint64_t numbers) {
  std::vector<Item> items;
  for (int number = 0; number < ItemCount; ++number) {
    if ((numbers >> number & 1) != 0) items.push_back({kind, number});
  }
  return items;
}

}  // namespace

struct ReportUses::Ways {
  bool Direct = false;
  std::uint64_t Groups = 0;   ///< A bit for each that it does it through.
  std::uint64_t Presets = 0;  ///< The same.

  bool operator==(const Ways&) const = default;
  bool Any() const { return Direct || Groups != 0 || Presets != 0; }
  /// Direct ones stand first, then those through groups.
  int Order() const { return Direct ? 0 : Groups != 0 ? 1 : 2; }
};

QString InputActive(const Project& project, int input) {
  const int from = project.Panel.InputEnableTime(input);
  const int to = project.Panel.InputDisableTime(input);
  return from == to ? QString() : ToUnicode(QuarterHourText(from) + " to " + QuarterHourText(to));
}

QString TimerRuns(const Project& project, int timer) {
  const auto& panel = project.Panel;
  return ToUnicode(TimerInWords({panel.TimerTimeType(timer), panel.TimerTime(timer)},
                                panel.TimerDays(timer), panel.TimerHolidayMonth(timer),
                                panel.TimerHolidayDate(timer)));
}

ReportUses::ReportUses(const Project& project) : project_(project), uses_(UsesOfProject(project)) {
  const auto place = [](auto& list, const auto& value) {
    // Uses of one user, and of the same words, follow one another.
    const auto known = std::find(list.rbegin(), list.rend(), value);
    if (known != list.rend()) return static_cast<std::size_t>(list.rend() - known) - 1;
    list.push_back(value);
    return list.size() - 1;
  };
  for (const Use& use : uses_) {
    const Entry entry{&use, place(users_, use.User), place(words_, use.Words)};
    byUser_[use.User].push_back(entry);
    byUsed_[use.Used].push_back(entry);
  }
}

bool ReportUses::DoesAnything(const Item& user) const {
  const auto& uses = In(byUser_, user);
  return !std::all_of(uses.begin(), uses.end(), [](const Entry& use) { return IsPilot(*use.Of); });
}

QString ReportUses::WhatItDoes(const Item& user) const {
  std::vector<std::pair<QLatin1StringView, std::vector<Item>>> lists;
  for (const Entry& use : In(byUser_, user)) {
    auto known = std::find_if(lists.begin(), lists.end(),
                              [&](const auto& list) { return list.first == use.Of->Words; });
    if (known == lists.end()) known = lists.insert(lists.end(), {use.Of->Words, {}});
    known->second.push_back(use.Of->Used);
  }
  QStringList lines;
  for (auto& [words, items] : lists) {
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
    lines << WordsAround(words, Names(items));
  }
  return lines.join(u'\n');
}

/// By words and user, those of one word one behind the other.
std::vector<ReportUses::Ways> ReportUses::WaysTo(const Item& used) const {
  std::vector<Ways> ways(words_.size() * users_.size());
  for (const Entry& held : In(byUsed_, used)) {
    if (!IsPilot(*held.Of)) ways[held.Words * users_.size() + held.User].Direct = true;
    const Item& holder = held.Of->User;
    const bool group = holder.Kind == ItemKind::Group;
    if (!group && holder.Kind != ItemKind::Preset) continue;
    const std::uint64_t bit = std::uint64_t{1} << holder.Number;
    for (const Entry& use : In(byUsed_, holder)) {
      if (use.Of->Effect == EffectFollows) continue;
      Ways& way = ways[(group ? use : held).Words * users_.size() + use.User];
      (group ? way.Groups : way.Presets) |= bit;
    }
  }
  return ways;
}

QString ReportUses::WhatActsOnIt(const Item& used, bool several) const {
  const auto it = QLatin1StringView(several ? "them" : "it");
  struct Line {
    std::size_t Words;
    Ways How;
    std::vector<Item> Users;
  };
  std::vector<Line> lines;
  const std::vector<Ways> ways = WaysTo(used);
  Ways through;
  for (std::size_t i = 0; i < ways.size(); ++i) {
    if (!ways[i].Any()) continue;
    const std::size_t words = i / users_.size();
    const Ways how = ways[i].Direct ? Ways{.Direct = true} : ways[i];
    through.Groups |= how.Groups;
    through.Presets |= how.Presets;
    auto known = std::find_if(lines.begin(), lines.end(), [&](const Line& line) {
      return line.Words == words && line.How == how;
    });
    if (known == lines.end()) known = lines.insert(lines.end(), {words, how, {}});
    known->Users.push_back(users_[i % users_.size()]);
  }
  std::stable_sort(lines.begin(), lines.end(), [](const Line& one, const Line& other) {
    return one.How.Order() < other.How.Order();
  });
  QStringList direct;
  std::vector<std::pair<Ways, QStringList>> indirect;
  for (Line& line : lines) {
    // What acts through a group or preset tells of it.
    std::erase_if(line.Users, [&](const Item& user) {
      const std::uint64_t told = user.Kind == ItemKind::Group    ? through.Groups
                                 : user.Kind == ItemKind::Preset ? through.Presets
                                                                 : 0;
      return (told >> user.Number & 1) != 0;
    });
    if (line.Users.empty()) continue;
    std::sort(line.Users.begin(), line.Users.end());
    const QString words = words_[line.Words];
    const QString does = Names(line.Users, true) + QStringLiteral(": ") +
                         WordsAround(line.Users.size() > 1 ? OfSeveral(words) : words, it);
    if (line.How.Direct) {
      direct << does;
      continue;
    }
    auto known = std::find_if(indirect.begin(), indirect.end(),
                              [&](const auto& other) { return other.first == line.How; });
    if (known == indirect.end()) known = indirect.insert(indirect.end(), {line.How, {}});
    known->second << does;
  }
  for (const auto& [how, told] : indirect) {
    std::vector<Item> holders = ItemsOf(ItemKind::Group, how.Groups);
    const std::vector<Item> presets = ItemsOf(ItemKind::Preset, how.Presets);
    holders.insert(holders.end(), presets.begin(), presets.end());
    direct << QStringLiteral("Through ") + Names(holders) + QStringLiteral(": ") +
                  told.join(QStringLiteral("; "));
  }
  return direct.join(u'\n');
}

const std::vector<ReportUses::Entry>& ReportUses::In(const Index& index, const Item& item) {
  static const std::vector<Entry> none;
  const auto found = index.find(item);
  return found == index.end() ? none : found->second;
}

const ReportUses::Told& ReportUses::Tell(const Item& item) const {
  const auto known = told_.find(item);
  if (known != told_.end()) return known->second;
  QString when;
  // A damaged slot may name what does not exist.
  const bool exists = item.Number >= 0 && item.Number < ItemCount;
  if (exists && item.Kind == ItemKind::Timer) {
    when = TimerRuns(project_, item.Number).replace(QLatin1StringView(" AM"), u"\u00a0AM"_s);
    when.replace(QLatin1StringView(" PM"), u"\u00a0PM"_s);
  }
  if (exists && item.Kind == ItemKind::Input) when = InputActive(project_, item.Number);
  QString text = ItemText(project_, item);
  if (item.Kind == ItemKind::Panel) {
    text = QStringLiteral("Off hours sweep");
    when = ToUnicode(Word(OffHoursSweepIntervals, project_.Panel.OffHoursSweepInterval));
  }
  // "RELAY 03" is not to be parted at the end of a line.
  text.replace(u' ', QChar::Nbsp);
  return told_.emplace(item, Told{text, when, !OwnName(project_, item).isEmpty()}).first->second;
}

QString ReportUses::Names(const std::vector<Item>& items, bool when) const {
  // Of so many in a row the first and the last tell all; names are told more readily.
  constexpr std::size_t leastRun = 3;
  constexpr std::size_t leastNamedRun = 6;
  QStringList names;
  for (std::size_t first = 0; first < items.size();) {
    const Told& told = Tell(items[first]);
    std::size_t end = first + 1;
    while (end < items.size() && IsNext(items[end - 1], items[end])) {
      const Told& next = Tell(items[end]);
      if (next.Named != told.Named || (when && next.When != told.When)) break;
      ++end;
    }
    if (end - first < (told.Named ? leastNamedRun : leastRun)) end = first + 1;
    QString name = told.Text;
    if (end - first > 1) {
      const QString last = Tell(items[end - 1]).Text;
      name += told.Named ? QStringLiteral(" to ") + last
                         : QStringLiteral("\u00a0to\u00a0") + last.section(QChar::Nbsp, -1);
    }
    if (when && !told.When.isEmpty()) name += QStringLiteral(" (") + told.When + u')';
    names << name;
    first = end;
  }
  return names.join(QStringLiteral(", "));
}

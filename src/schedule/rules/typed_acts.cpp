#include "schedule/rules/typed_acts.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <vector>

#include "schedule/rules/timer_words.h"

namespace {

constexpr Int16 TurnsOnCode = 1;
constexpr Int16 TurnsOffCode = 2;

struct ActTable {
  ItemKind Kind;
  ItemTable PanelRecordType::*Codes;
};
/// In the order in which a name is looked for.
constexpr auto ActTables = std::to_array<ActTable>({
    {ItemKind::Group, &PanelRecordType::TimerGroupControl},
    {ItemKind::Relay, &PanelRecordType::TimerRelayControl},
    {ItemKind::Preset, &PanelRecordType::TimerPresetControl},
});

/// All that a timer may turn on or off, as the code of each relay and group.
template <typename Panel, typename Do>
void ForEachTurned(Panel& panel, int timer, const Do& act) {
  for (const auto& [kind, codes] : ActTables) {
    for (int target = 0; kind != ItemKind::Preset && target < ItemCount; ++target) {
      act((panel.*codes)(timer, target));
    }
  }
}

/// What a timer switches, while it is read.
class TypedActs {
 public:
  TypedActs(const Project& project, int timer) : project_(project), timer_(timer) {}

  bool Read(const QString& typed) {
    for (QString part : typed.split(QRegularExpression(QStringLiteral("[,;]")))) {
      part = part.trimmed();
      // Dimmers are told, and are set elsewhere.
      if (!part.startsWith(QLatin1String("sets "), Qt::CaseInsensitive) && !ReadPart(part)) {
        return false;
      }
    }
    const auto usual = UsualCode();
    if (usual) TurnWaiting(*usual);
    return std::all_of(waiting_.begin(), waiting_.end(), IsPreset);
  }

  /// Why a text could not be read, where more can be said than that it means nothing.
  const QString& WhyNot() const { return several_; }

  void Put(PanelRecordType& panel) const {
    for (const auto& [kind, codes] : ActTables) {
      for (int target = 0; target < ItemCount; ++target) (panel.*codes)(timer_, target) = 0;
    }
    for (const auto& [item, code] : acts_) (panel.*TableOf(item.Kind))(timer_, item.Number) = code;
    for (const Item& preset : waiting_) panel.TimerPresetControl(timer_, preset.Number) = 1;
  }

 private:
  static ItemTable PanelRecordType::*TableOf(ItemKind kind) {
    return std::find_if(ActTables.begin(), ActTables.end(),
                        [kind](const ActTable& table) { return table.Kind == kind; })
        ->Codes;
  }

  static bool IsPreset(const Item& item) { return item.Kind == ItemKind::Preset; }

  /// Names wait for the on or off behind them, or have a minus before them for off; presets for
  /// none.
  bool ReadPart(const QString& part) {
    static const QRegularExpression words(
        QStringLiteral("^(?:turns? |(activates? )|(-) ?)?(.+?)( on| off)?$"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = words.match(part);
    onlyPresets_ = match.hasCaptured(1);
    const auto before = static_cast<std::ptrdiff_t>(waiting_.size());
    const bool minus = match.hasCaptured(2);
    if (!match.hasMatch() || (minus && match.hasCaptured(4))) return false;
    // A name may end as if it were turned.
    if (!ReadNames(match.captured(3))) return ReadNames(part);
    if (!minus && !match.hasCaptured(4)) return true;
    const bool on = match.captured(4).trimmed().toLower() == QLatin1String("on");
    // No preset is turned off.
    if (!on && std::any_of(waiting_.begin() + before, waiting_.end(), IsPreset)) return false;
    TurnWaiting(on ? TurnsOnCode : TurnsOffCode, minus ? before : 0);
    return true;
  }

  /// Those that wait from a place on.
  void TurnWaiting(Int16 code, std::ptrdiff_t from = 0) {
    const auto first = std::stable_partition(waiting_.begin() + from, waiting_.end(), IsPreset);
    for (auto item = first; item != waiting_.end(); ++item) acts_.emplace_back(*item, code);
    waiting_.erase(first, waiting_.end());
  }

  /// What the timer does with all that it turns; one that turns nothing would turn it on.
  std::optional<Int16> UsualCode() const {
    std::set<Int16> used;
    ForEachTurned(project_.Panel, timer_, [&used](Int16 code) { used.insert(code); });
    used.erase(0);
    if (used.size() > 1) return {};
    return used.empty() ? TurnsOnCode : *used.begin();
  }

  /// A name may hold an "and" itself.
  bool ReadNames(const QString& names) {
    if (const auto item = ItemNamed(names)) {
      waiting_.push_back(*item);
      return true;
    }
    const QString between = QStringLiteral(" and ");
    for (qsizetype at = 0; (at = names.indexOf(between, at, Qt::CaseInsensitive)) > 0; ++at) {
      const auto item = ItemNamed(names.first(at));
      if (!item || !ReadNames(names.sliced(at + between.size()))) continue;
      waiting_.push_back(*item);
      return true;
    }
    return false;
  }

  /// The one of this name or code, else the only one whose name begins so. Relays, which have names
  /// like those of their group, come after groups and presets.
  std::optional<Item> ItemNamed(const QString& name) {
    std::vector<Item> found = Items([&](const Item& item) { return IsName(name, item); });
    for (const bool relays : {false, true}) {
      if (!found.empty()) break;
      found = Items([&](const Item& item) {
        return (item.Kind == ItemKind::Relay) == relays &&
               OwnName(project_, item).startsWith(name, Qt::CaseInsensitive);
      });
      const auto isOther = [&](const Item& item) {
        return !IsName(OwnName(project_, found.front()), item);
      };
      if (!std::any_of(found.begin(), found.end(), isOther)) continue;
      several_ = QStringLiteral("\"%1\" is the beginning of several names: %2.")
                     .arg(name, NamesInShort(project_, found));
      return {};
    }
    // Of several with one name that which the timer switches already.
    const auto switched = std::find_if(found.begin(), found.end(), [this](const Item& item) {
      return (project_.Panel.*TableOf(item.Kind))(timer_, item.Number) != 0;
    });
    if (switched != found.end()) return *switched;
    return found.empty() ? std::nullopt : std::optional(found.front());
  }

  template <typename Wanted>
  std::vector<Item> Items(const Wanted& wanted) const {
    std::vector<Item> items;
    for (const auto& [kind, codes] : ActTables) {
      for (int number = 0; number < ItemCount; ++number) {
        const Item item{kind, number};
        if ((IsPreset(item) || !onlyPresets_) && wanted(item)) items.push_back(item);
      }
    }
    return items;
  }

  bool IsName(const QString& name, const Item& item) const {
    const auto is = [&name](const QString& other) {
      return name.compare(other, Qt::CaseInsensitive) == 0;
    };
    const QString code = ItemCode(item);
    return is(OwnName(project_, item)) || is(code) ||
           is(code.first(1) + QString::number(item.Number + 1)) || is(code.first(1) + code.last(2));
  }

  const Project& project_;
  int timer_;
  bool onlyPresets_ = false;  ///< In the part that is read.
  QString several_;           ///< Why a beginning names nothing.
  std::vector<Item> waiting_;
  std::vector<std::pair<Item, Int16>> acts_;
};

/// Whether there is anything that can be turned.
bool TurnAll(PanelRecordType& panel, int timer, Int16 code) {
  bool any = false;
  ForEachTurned(panel, timer, [&](Int16& cell) {
    any = any || cell != 0;
    if (cell != 0) cell = code;
  });
  return any;
}

}  // namespace

QString PutTypedActs(Project& project, int timer, const QString& typed) {
  const QString text = typed.simplified();
  const QString word = text.toLower();
  const QString nonsense = QStringLiteral(
      "\"%1\" is not what a timer does (such as OFFICES on, GATE off; activates NIGHT).");
  // What is told already keeps what its words do not tell.
  if (text == ActsInWords(project, timer)) return {};
  const bool on = word == QLatin1String("on");
  if (on || word == QLatin1String("off")) {
    const bool any = TurnAll(project.Panel, timer, on ? TurnsOnCode : TurnsOffCode);
    return any ? QString() : nonsense.arg(typed);
  }
  TypedActs acts(project, timer);
  if (word != QLatin1String("-") && !acts.Read(text)) {
    return acts.WhyNot().isEmpty() ? nonsense.arg(typed) : acts.WhyNot();
  }
  acts.Put(project.Panel);
  return {};
}

void TurnOtherWay(Project& project, int timer) {
  ForEachTurned(project.Panel, timer, [](Int16& cell) {
    if (cell == TurnsOnCode || cell == TurnsOffCode) cell = TurnsOnCode + TurnsOffCode - cell;
  });
}

#include <algorithm>
#include <map>

#include "document/rules/check/check.h"
#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/field_facts.h"
#include "panel/lists_in_words.h"
#include "panel/panel_record.h"

// Names as they are and as the panel keeps them.

namespace {

template <typename Owner, typename Names>
Screen ScreenOfName(Names Owner::*names) {
  return FactsOf(names).Where.Value.On;
}

struct NameKind {
  ItemKind Kind;
  int First;
  int Count;
  Screen On;
};

const auto NameKinds = std::to_array<NameKind>({
    {ItemKind::Relay, 0, ItemCount, ScreenOfName(&PanelRecordType::RelayName)},
    {ItemKind::Group, 0, ItemCount, ScreenOfName(&PanelRecordType::GroupName)},
    {ItemKind::Input, 0, ItemCount, ScreenOfName(&PanelRecordType::InputName)},
    {ItemKind::Timer, 0, ItemCount, ScreenOfName(&PanelRecordType::TimerName)},
    {ItemKind::Preset, 0, ItemCount, ScreenOfName(&PanelRecordType::PresetName)},
    {ItemKind::Device, 1, DeviceCount, ScreenOfName(&FennlinkRecord::DeviceName)},
});

template <typename Look>
void ForEachOwnName(const CheckScope& scope, const NameKind& kind, Look look) {
  for (int number = kind.First; number < kind.First + kind.Count; ++number) {
    const Item item{kind.Kind, number};
    const QString name = scope.OwnName(item);
    if (!name.isEmpty()) look(item, name);
  }
}

/// Whether anybody meets the item.
bool IsMet(const CheckScope& scope, const Item& item) {
  switch (item.Kind) {
    case ItemKind::Relay:
    case ItemKind::Input:
      return scope.IsInstalled(item);
    case ItemKind::Timer:
      return scope.IsAtWork(item);
    case ItemKind::Device:
      return scope.Of.Devices(item.Number).DeviceType != 0;
    default:
      return scope.HoldsRelay(item) || (item.Kind == ItemKind::Preset && scope.DimmersFollow(item));
  }
}

/// How names that are one to the panel, or nearly one to a reader, differ.
QString SameNameWords(const std::vector<QString>& names) {
  const auto alike = [&](Qt::CaseSensitivity sensitivity) {
    return std::all_of(names.begin(), names.end(), [&](const QString& name) {
      return name.compare(names.front(), sensitivity) == 0;
    });
  };
  if (alike(Qt::CaseSensitive)) return QStringLiteral("have the same name, %1.").arg(names.front());
  if (alike(Qt::CaseInsensitive)) {
    return QStringLiteral("have names that differ in upper and lower case alone.");
  }
  return QStringLiteral("have the same name in the panel, which keeps %1 characters.")
      .arg(NameLength);
}

void LookAtSameNames(const CheckScope& scope, const TellFinding& tell) {
  for (const NameKind& kind : NameKinds) {
    std::map<QString, std::vector<Item>> owners;
    ForEachOwnName(scope, kind, [&](const Item& item, const QString& name) {
      const bool counted = kind.Kind == ItemKind::Relay || kind.Kind == ItemKind::Input;
      if (counted && !scope.IsInstalled(item)) return;
      owners[name.left(NameLength).trimmed().toCaseFolded()].push_back(item);
    });
    for (const auto& [name, items] : owners) {
      if (items.size() < 2) continue;
      std::vector<QString> names;
      for (const Item& item : items) names.push_back(scope.OwnName(item));
      tell(items.front(), CodesOf(items) + u' ' + SameNameWords(names), kind.On);
    }
  }
}

void LookAtNamesOfOthers(const CheckScope& scope, const TellFinding& tell) {
  for (const NameKind& kind : NameKinds) {
    ForEachOwnName(scope, kind, [&](const Item& item, const QString& name) {
      for (int number = kind.First; number < kind.First + kind.Count; ++number) {
        const Item other{kind.Kind, number};
        if (other == item || name.compare(FreshName(other), Qt::CaseInsensitive) != 0) continue;
        tell(item,
             QStringLiteral("%1 is named %2, as another is in a new project.")
                 .arg(ItemCode(item), name),
             kind.On);
      }
    });
  }
}

/// In one row the items of a kind whose stored names are `wanted`.
void TellOfNames(const CheckScope& scope, const TellFinding& tell,
                 const std::function<bool(const Item& item, const QString& stored)>& wanted,
                 const QString& one, const QString& many) {
  for (const NameKind& kind : NameKinds) {
    std::vector<Item> items;
    for (int number = kind.First; number < kind.First + kind.Count; ++number) {
      const Item item{kind.Kind, number};
      if (wanted(item, ToUnicode(*StoredName(scope.Of, item)))) items.push_back(item);
    }
    if (!items.empty()) {
      tell(items.front(), CodesOf(items) + (items.size() == 1 ? one : many), kind.On);
    }
  }
}

void LookAtBlankNames(const CheckScope& scope, const TellFinding& tell) {
  TellOfNames(
      scope, tell,
      [&](const Item& item, const QString& stored) {
        return stored.trimmed().isEmpty() && IsMet(scope, item);
      },
      QStringLiteral(" has a blank name."), QStringLiteral(" have blank names."));
}

void LookAtCharacters(const CheckScope& scope, const TellFinding& tell) {
  const auto cannotBeRead = [](const QString& name) {
    return std::any_of(name.begin(), name.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
  };
  TellOfNames(
      scope, tell, [&](const Item&, const QString& stored) { return cannotBeRead(stored); },
      QStringLiteral(" has a name with characters that cannot be read."),
      QStringLiteral(" have names with characters that cannot be read."));
  if (cannotBeRead(ToUnicode(scope.Of.Panel.PanelName))) {
    tell({}, QStringLiteral("The panel's name has characters that cannot be read."),
         ScreenOfName(&PanelRecordType::PanelName));
  }
}

void LookAtLongNames(const CheckScope& scope, const TellFinding& tell) {
  const auto tellOf = [&](const std::vector<Item>& items, const QString& name, int chars,
                          Screen screen) {
    const QString sentence =
        items.size() == 1
            ? QStringLiteral("The panel keeps %1 characters of the name of %2: \"%3\".")
                  .arg(QString::number(chars), scope.Text(items.front()), name.left(chars))
            : QStringLiteral("The panel keeps %1 characters of %2 names: of %3.")
                  .arg(chars)
                  .arg(items.size())
                  .arg(CodesOf(items));
    tell(items.front(), sentence, screen);
  };
  for (const NameKind& kind : NameKinds) {
    std::vector<Item> items;
    QString last;
    ForEachOwnName(scope, kind, [&](const Item& item, const QString& name) {
      if (name.size() <= NameLength) return;
      items.push_back(item);
      last = name;
    });
    if (!items.empty()) tellOf(items, last, NameLength, kind.On);
  }
  const QString name = ToUnicode(scope.Of.Panel.PanelName);
  if (name.size() <= PanelNameLength) return;
  tellOf({{}}, name, PanelNameLength, ScreenOfName(&PanelRecordType::PanelName));
}

constexpr auto RulesOfNames = std::to_array<CheckRule>({
    {"same-name", Severity::Warning, Screen::None, LookAtSameNames,
     "Items of a kind have the same name, but for case, or in the ten characters that the panel "
     "keeps."},
    {"name-of-another", Severity::Warning, Screen::None, LookAtNamesOfOthers,
     "An item has the name that another has in a new project."},
    {"blank-name", Severity::Warning, Screen::None, LookAtBlankNames,
     "An item in use has a blank name."},
    {"name-characters", Severity::Warning, Screen::None, LookAtCharacters,
     "A name has characters that cannot be read."},
    {"long-name", Severity::Warning, Screen::None, LookAtLongNames,
     "A name is longer than the panel keeps."},
});

}  // namespace

std::span<const CheckRule> NameRules() {
  return RulesOfNames;
}

#include <map>

#include "document/rules/check/check.h"
#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/field_facts.h"
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

void LookAtSameNames(const CheckScope& scope, const TellFinding& tell) {
  for (const NameKind& kind : NameKinds) {
    std::map<QString, Item> owners;
    ForEachOwnName(scope, kind, [&](const Item& item, const QString& name) {
      const auto [owner, isNew] = owners.try_emplace(name, item);
      if (isNew) return;
      tell(item,
           QStringLiteral("%1 and %2 have the same name, %3.")
               .arg(ItemCode(owner->second), ItemCode(item), name),
           kind.On);
    });
  }
}

void LookAtLongNames(const CheckScope& scope, const TellFinding& tell) {
  const auto look = [&](const Item& item, const QString& name, int chars, Screen screen) {
    if (name.size() <= chars) return;
    tell(item,
         QStringLiteral("The panel keeps %1 characters of the name of %2: \"%3\".")
             .arg(chars)
             .arg(scope.Text(item), name.left(chars)),
         screen);
  };
  for (const NameKind& kind : NameKinds) {
    ForEachOwnName(scope, kind, [&](const Item& item, const QString& name) {
      look(item, name, NameLength, kind.On);
    });
  }
  look({}, ToUnicode(scope.Of.Panel.PanelName), PanelNameLength,
       ScreenOfName(&PanelRecordType::PanelName));
}

constexpr auto RulesOfNames = std::to_array<CheckRule>({
    {"same-name", Severity::Warning, Screen::None, LookAtSameNames,
     "Two items of a kind have the same name."},
    {"long-name", Severity::Warning, Screen::None, LookAtLongNames,
     "A name is longer than the panel keeps."},
});

}  // namespace

std::span<const CheckRule> NameRules() {
  return RulesOfNames;
}

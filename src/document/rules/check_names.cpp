#include <map>

#include "document/rules/check.h"
#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/panel_record.h"

// Names as they are and as the panel keeps them.

namespace {

constexpr int PanelNameChars = 18;
constexpr int NameChars = 10;

struct NameKind {
  ItemKind Kind;
  int First;
  int Count;
  std::string_view Screen;
};

constexpr auto NameKinds = std::to_array<NameKind>({
    {ItemKind::Relay, 0, ItemCount, "frmT3EditRelayNames"},
    {ItemKind::Group, 0, ItemCount, "frmT3EditGroupNames"},
    {ItemKind::Input, 0, ItemCount, "frmT3EditInputNames"},
    {ItemKind::Timer, 0, ItemCount, "frmT3EditTimerNames"},
    {ItemKind::Preset, 0, ItemCount, "frmT3EditPresetNames"},
    {ItemKind::Device, 1, DeviceCount, "frmT3EditFennlinkNames"},
});

template <typename Look>
void ForEachOwnName(const NameKind& kind, Look look) {
  for (int number = kind.First; number < kind.First + kind.Count; ++number) {
    const Item item{kind.Kind, number};
    const QString name = OwnName(item);
    if (!name.isEmpty()) look(item, name);
  }
}

void LookAtSameNames(const CheckScope&, const TellFinding& tell) {
  for (const NameKind& kind : NameKinds) {
    std::map<QString, Item> owners;
    ForEachOwnName(kind, [&](const Item& item, const QString& name) {
      const auto [owner, isNew] = owners.try_emplace(name, item);
      if (isNew) return;
      tell(item,
           QStringLiteral("%1 and %2 have the same name, %3.")
               .arg(ItemCode(owner->second), ItemCode(item), name),
           kind.Screen);
    });
  }
}

void LookAtLongNames(const CheckScope&, const TellFinding& tell) {
  const auto look = [&](const Item& item, const QString& name, int chars, std::string_view screen) {
    if (name.size() <= chars) return;
    tell(item,
         QStringLiteral("The panel keeps %1 characters of the name of %2: \"%3\".")
             .arg(chars)
             .arg(ItemText(item), name.left(chars)),
         screen);
  };
  for (const NameKind& kind : NameKinds) {
    ForEachOwnName(kind, [&](const Item& item, const QString& name) {
      look(item, name, NameChars, kind.Screen);
    });
  }
  look({}, ToUnicode(PanelRecord.PanelName), PanelNameChars, "frmT3EditPanelName");
}

constexpr auto RulesOfNames = std::to_array<CheckRule>({
    {"same-name", Severity::Warning, "", LookAtSameNames},
    {"long-name", Severity::Warning, "", LookAtLongNames},
});

}  // namespace

std::span<const CheckRule> NameRules() {
  return RulesOfNames;
}

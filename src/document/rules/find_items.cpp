#include "document/rules/find_items.h"

#include <QStringList>
#include <array>

#include "document/rules/uses.h"
#include "panel/fennlink_record.h"
#include "panel/panel_record.h"

namespace {

struct SearchedKind {
  ItemKind Kind;
  int First;
  int Count;
  std::string_view Screen;
};

constexpr auto SearchedKinds = std::to_array<SearchedKind>({
    {ItemKind::Relay, 0, ItemCount, "frmT3RelayOutputOptions"},
    {ItemKind::Group, 0, ItemCount, "frmT3RelayGrouping"},
    {ItemKind::Input, 0, ItemCount, "frmT3InputOptions"},
    {ItemKind::Timer, 0, ItemCount, "frmT3TimersConfigure"},
    {ItemKind::Preset, 0, ItemCount, "frmT3EditPresets"},
    {ItemKind::Device, 1, DeviceCount, "frmT3ConfigureFennlinkDevices"},
});

/// "RELAY 08" without blanks and leading zeros: "RELAY8".
QString Plain(const QString& code) {
  QString plain;
  for (const QChar character : code.toUpper()) {
    const bool zero = character == u'0' && (plain.isEmpty() || !plain.back().isDigit());
    if (!character.isSpace() && !zero) plain += character;
  }
  return plain;
}

}  // namespace

std::vector<FoundItem> FindItems(const QString& text) {
  std::vector<FoundItem> found;
  const QString wanted = text.simplified();
  const QString plain = Plain(wanted);
  if (plain.isEmpty()) return found;
  const std::vector<Use> uses = UsesOfProject();
  for (const SearchedKind& kind : SearchedKinds) {
    for (int number = kind.First; number < kind.First + kind.Count; ++number) {
      const Item item{kind.Kind, number};
      const bool named = OwnName(item).contains(wanted, Qt::CaseInsensitive);
      if (!named && Plain(ItemCode(item)) != plain) continue;
      found.push_back({ItemText(item), item, kind.Screen});
      for (const Use& use : uses) {
        const bool ofItem = use.User == item ||
                            (kind.Kind == ItemKind::Device &&
                             use.User.Kind == ItemKind::DeviceInput && use.User.Number == number);
        if (!ofItem && use.Used != item) continue;
        found.push_back({QStringLiteral("    ") + SentenceOf(use), use.User, ScreenOf(use)});
      }
    }
  }
  return found;
}

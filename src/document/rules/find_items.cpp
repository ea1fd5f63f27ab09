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
  Screen On;
};

constexpr auto SearchedKinds = std::to_array<SearchedKind>({
    {ItemKind::Relay, 0, ItemCount, Screen::RelayOutputOptions},
    {ItemKind::Group, 0, ItemCount, Screen::RelayGrouping},
    {ItemKind::Input, 0, ItemCount, Screen::InputOptions},
    {ItemKind::Timer, 0, ItemCount, Screen::TimersConfigure},
    {ItemKind::Preset, 0, ItemCount, Screen::EditPresets},
    {ItemKind::Device, 1, DeviceCount, Screen::ConfigureFennlinkDevices},
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

std::vector<FoundItem> FindItems(const Project& project, const QString& text) {
  std::vector<FoundItem> found;
  const QString wanted = text.simplified();
  const QString plain = Plain(wanted);
  if (plain.isEmpty()) return found;
  const std::vector<Use> uses = UsesOfProject(project);
  for (const SearchedKind& kind : SearchedKinds) {
    for (int number = kind.First; number < kind.First + kind.Count; ++number) {
      const Item item{kind.Kind, number};
      const bool named = OwnName(project, item).contains(wanted, Qt::CaseInsensitive);
      if (!named && Plain(ItemCode(item)) != plain) continue;
      found.push_back({ItemText(project, item), item, kind.On});
      for (const Use& use : uses) {
        const bool ofItem = use.User == item ||
                            (kind.Kind == ItemKind::Device &&
                             use.User.Kind == ItemKind::DeviceInput && use.User.Number == number);
        if (!ofItem && use.Used != item) continue;
        found.push_back(
            {QStringLiteral("    ") + SentenceOf(project, use), use.User, ScreenOf(use)});
      }
    }
  }
  return found;
}

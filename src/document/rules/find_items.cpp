#include "document/rules/find_items.h"

#include <QStringList>
#include <array>
#include <utility>

#include "document/rules/uses.h"
#include "panel/dimmer_fields.h"
#include "panel/fennlink_record.h"
#include "panel/panel_record.h"

namespace {

struct SearchedKind {
  ItemKind Kind;
  int First;
  int Count;
  Screen On;
  const char* Letter = "";  ///< "R08".
  int Parts = 1;
};

constexpr auto SearchedKinds = std::to_array<SearchedKind>({
    {ItemKind::Relay, 0, ItemCount, Screen::RelayOutputOptions, "R"},
    {ItemKind::Group, 0, ItemCount, Screen::RelayGrouping, "G"},
    {ItemKind::Input, 0, ItemCount, Screen::InputOptions, "I"},
    {ItemKind::Timer, 0, ItemCount, Screen::TimersConfigure, "T"},
    {ItemKind::Preset, 0, ItemCount, Screen::EditPresets, "P"},
    {ItemKind::Device, 1, DeviceCount, Screen::ConfigureFennlinkDevices},
    {ItemKind::DeviceInput, 1, DeviceCount, Screen::FennlinkInputToRelayControl, "",
     DeviceInputCount},
    {ItemKind::DimmerOutput, 0, DimmerDeviceCount, Screen::DimmerOutput, "D", DimmerOutputCount},
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

/// Whether a plain text is the item's code, its letter and number, or its number alone.
bool IsCodeOf(const QString& plain, const SearchedKind& kind, const Item& item) {
  constexpr int hexadecimal = 16;
  const QString code = Plain(ItemCode(item));
  if (plain == code) return true;
  const QLatin1StringView letter(kind.Letter);
  switch (kind.Kind) {
    case ItemKind::DeviceInput:
      return false;
    case ItemKind::DimmerOutput: {
      const QString device = QString::number(item.Number + 1);
      // The screens count the devices 01 to 0C.
      const QString shown = QString::number(item.Number + 1, hexadecimal).toUpper();
      return plain == device || plain == QStringLiteral("DIMMER") + device ||
             plain == QStringLiteral("DIMMER") + shown || plain == letter + device ||
             plain == QStringLiteral("%1%2.%3").arg(letter, device).arg(item.Part + 1);
    }
    case ItemKind::Device:
      return plain[0].isDigit() && plain == code.mid(2);
    default: {
      const QString number = QString::number(item.Number + 1);
      return plain == number || plain == letter + number;
    }
  }
}

class Search {
 public:
  explicit Search(const Project& project) : of_(project), uses_(UsesOfProject(project)) {}

  void Add(const Item& item, Screen screen) {
    AddLine(ItemText(of_, item), item, screen);
    for (const Use& use : uses_) {
      const bool ofDevice = item.Kind == ItemKind::Device &&
                            use.User.Kind == ItemKind::DeviceInput &&
                            use.User.Number == item.Number;
      if (use.User == item || ofDevice) AddUse(use, 1);
    }
    AddReach(item, 1);
  }

  std::vector<FoundItem> Take() { return std::move(found_); }

 private:
  bool IsFull() const { return found_.size() >= MostFound; }

  void AddLine(const QString& words, const Item& where, Screen screen) {
    if (!IsFull()) found_.push_back({words, where, screen});
  }

  void AddUse(const Use& use, int depth) {
    constexpr qsizetype indent = 4;
    AddLine(QString(depth * indent, u' ') + SentenceOf(of_, use), use.User, ScreenOf(use));
  }

  /// What uses the item, and behind it what uses that.
  void AddReach(const Item& item, int depth) {
    for (const Use& use : uses_) {
      if (IsFull()) return;
      if (use.Used != item) continue;
      AddUse(use, depth);
      const bool passesOn = use.User.Kind == ItemKind::Group || use.User.Kind == ItemKind::Preset ||
                            use.User.Kind == ItemKind::Timer;
      if (passesOn) AddReach(use.User, depth + 1);
    }
  }

  const Project& of_;
  std::vector<Use> uses_;
  std::vector<FoundItem> found_;
};

}  // namespace

std::vector<FoundItem> FindItems(const Project& project, const QString& text) {
  const QString wanted = text.simplified();
  const QString plain = Plain(wanted);
  if (plain.isEmpty()) return {};
  Search search(project);
  for (const SearchedKind& kind : SearchedKinds) {
    const bool named = kind.Parts == 1;
    for (int number = kind.First; number < kind.First + kind.Count; ++number) {
      for (int part = 0; part < kind.Parts; ++part) {
        const Item item{kind.Kind, number, part};
        const bool fits = (named && OwnName(project, item).contains(wanted, Qt::CaseInsensitive)) ||
                          IsCodeOf(plain, kind, item);
        if (fits) search.Add(item, kind.On);
      }
    }
  }
  return search.Take();
}

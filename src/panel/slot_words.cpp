#include "panel/slot_words.h"

#include <QRegularExpression>

#include "panel/hex.h"

namespace {

constexpr QLatin1StringView Unused("Unused");
constexpr QLatin1StringView Inverted("inverted ");
constexpr QLatin1StringView Then(", ");

/// What operates it; nothing where that does not exist.
std::optional<Item> SourceOf(const ControlSlot& slot) {
  const auto within = [&](int count) { return slot.Number >= 0 && slot.Number < count; };
  const auto of = [&](ItemKind kind) {
    return within(ItemCount) ? std::optional(Item{kind, slot.Number}) : std::nullopt;
  };
  switch (slot.Type) {
    case ControlInput:
    case ControlInvertInput:
      if (slot.Device == 0) return of(ItemKind::Input);
      if (slot.Device < 0 || slot.Device > DeviceCount || !within(DeviceInputCount)) return {};
      return Item{ItemKind::DeviceInput, slot.Device, slot.Number};
    case ControlTimer:
      return of(ItemKind::Timer);
    case ControlPreset:
      return of(ItemKind::Preset);
    default:
      return {};
  }
}

QString ActionInWords(int code) {
  switch (code) {
    case RevertToPhotocellCode:
      return QStringLiteral("reverts to the photocell");
    case LowerCode:
      return QStringLiteral("lowers by 10 %");
    case RaiseCode:
      return QStringLiteral("raises by 10 %");
    case RampDownCode:
      return QStringLiteral("ramps down");
    case RampUpCode:
      return QStringLiteral("ramps up");
    default:
      break;
  }
  if (code < 0 || code >= ControlActionCount) return {};
  return QStringLiteral("goes to %1 %").arg(code - FirstGotoCode);
}

QString FadeInWords(int instant) {
  return instant != 0 ? QStringLiteral("at once") : QStringLiteral("fades");
}

QString RevertInWords(int code) {
  if (code < 0 || code >= ControlRevertCount) return {};
  if (code == 0) return QStringLiteral("back when the input opens");
  if (code == NeverRevertCode) return QStringLiteral("stays");
  return QStringLiteral("back after %1 min").arg(RevertMinutes(code));
}

/// The code, of `count` from `first` on, whose words `suits` finds.
template <typename Words, typename Suits>
std::optional<Int16> CodeWith(int first, int count, Words words, Suits suits) {
  for (int code = first; code < first + count; ++code) {
    if (suits(words(code))) return static_cast<Int16>(code);
  }
  return {};
}

bool ReadSource(const QString& words, ControlSlot& slot) {
  static const QRegularExpression form(
      QStringLiteral("^(inverted )?(?:FL (..) INPUT (\\d+)|(INPUT|TIMER|PRESET) (\\d+))(?: .*)?$"),
      QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpressionMatch match = form.match(words);
  if (!match.hasMatch()) return false;
  const bool bus = match.hasCaptured(2);
  const QString kind = match.captured(4);
  const bool inverted = match.hasCaptured(1);
  slot.Type = kind == u"TIMER"    ? ControlTimer
              : kind == u"PRESET" ? ControlPreset
              : inverted          ? ControlInvertInput
                                  : ControlInput;
  if (bus || kind == u"INPUT") {
    slot.Device = static_cast<Int16>(bus ? ParseHexByte(match.captured(2).toStdString()) : 0);
  } else if (inverted) {
    return false;
  }
  slot.Number = static_cast<Int16>(match.captured(bus ? 3 : 5).toInt() - 1);
  const auto source = SourceOf(slot);
  return source &&
         words.startsWith((inverted ? Inverted : QLatin1StringView()) + ItemCode(*source));
}

}  // namespace

ControlSlot ControlSlotOf(const DimmerOutput& output, int slot) {
  ControlSlot all;
  for (const ControlSlotPart& part : ControlSlotParts) all.*part.Member = output(*part.Field, slot);
  return all;
}

QString SlotInWords(const Project& project, const ControlSlot& slot) {
  if (slot.Type == ControlUnused) return Unused;
  const auto source = SourceOf(slot);
  const QString action = ActionInWords(slot.Action);
  const QString revert = RevertInWords(slot.Revert);
  if (!source || action.isEmpty() || revert.isEmpty()) return {};
  const QString inverted = slot.Type == ControlInvertInput ? QString(Inverted) : QString();
  return inverted + ItemText(project, *source) + u' ' + action + Then + FadeInWords(slot.Instant) +
         Then + revert;
}

std::optional<ControlSlot> ReadSlotWords(const QString& words, ControlSlot over) {
  if (words == Unused) {
    over.Type = ControlUnused;
    return over;
  }
  // From the end: a name may hold anything.
  const qsizetype revertAt = words.lastIndexOf(Then);
  const qsizetype fadeAt = revertAt > 0 ? words.lastIndexOf(Then, revertAt - 1) : -1;
  if (fadeAt < 0) return {};
  const QString does = words.first(fadeAt);
  const auto is = [&](qsizetype at, qsizetype end) {
    const QString part = words.mid(at + Then.size(), end - at - Then.size());
    return [part](const QString& told) { return told == part; };
  };
  const auto revert = CodeWith(0, ControlRevertCount, RevertInWords, is(revertAt, words.size()));
  const auto instant = CodeWith(-1, 2, FadeInWords, is(fadeAt, revertAt));
  const auto action = CodeWith(0, ControlActionCount, ActionInWords,
                               [&](const QString& told) { return does.endsWith(u' ' + told); });
  if (!revert || !instant || !action) return {};
  over.Revert = *revert;
  over.Instant = *instant;
  over.Action = *action;
  if (!ReadSource(does.chopped(ActionInWords(*action).size() + 1), over)) return {};
  return over;
}

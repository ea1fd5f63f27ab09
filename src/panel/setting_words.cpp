#include <QStringList>
#include <algorithm>
#include <optional>

#include "panel/code_page.h"
#include "panel/setting.h"
#include "panel/slot_words.h"
#include "panel/time_values.h"

namespace {

/// The signs for control characters, which would end a cell or a row where a name holds them.
constexpr char16_t ControlPictures = 0x2400;

QString TextWords(const std::string& text) {
  QString words = ToUnicode(text);
  for (QChar& character : words) {
    if (character < u' ') character = QChar(ControlPictures + character.unicode());
  }
  return words;
}

std::string TextOfWords(QString words) {
  for (QChar& character : words) {
    const int control = character.unicode() - ControlPictures;
    if (control >= 0 && control < u' ') character = QChar(control);
  }
  return FromUnicode(words);
}

const Words& WordsFor(const Setting& setting) {
  if (setting.Dimmer) return setting.Dimmer->Told;
  const SpareUse* spare = SpareOf(setting);
  return spare ? spare->Told : setting.Field->Told.Value;
}

/// A part of what a timer runs by: "After Sunset", "30 min", "-MTWTF--", "December".
QString TimerPartInWords(const Project& project, const Setting& setting, Int32 value) {
  using P = PanelRecordType;
  const FieldFacts* part = setting.Field;
  QString number = QString::number(value);
  const auto isWord = [value](int count) { return value >= 0 && value < count; };
  if (part == &FactsOf(&P::TimerTimeType)) {
    constexpr int hours = 24;
    const auto type = static_cast<Int16>(value);
    const int event = RelativeEventOf(type);
    if (event < 0) return isWord(hours) ? QStringLiteral("hour %1").arg(value) : number;
    const int minutes = OffsetOfTime({type, 0});
    const QString word = ToUnicode(Word(RelativeEvents, event));
    return minutes == 0 ? word : QStringLiteral("%1 + %2 min").arg(word).arg(minutes);
  }
  if (part == &FactsOf(&P::TimerTime)) return told::Minutes(project, setting.At, value);
  if (part == &FactsOf(&P::TimerDays) && isWord(ByteRange.Last + 1)) {
    return ToUnicode(DayMaskText(static_cast<Int16>(value)));
  }
  if (part == &FactsOf(&P::TimerHolidayMonth)) {
    return value == 0 ? QStringLiteral("None") : told::Month(project, setting.At, value);
  }
  return number;
}

QString ToldMeaning(const Project& project, const Setting& setting, Int32 meaning) {
  if (!setting.Dimmer && WholeOf(setting)) return TimerPartInWords(project, setting, meaning);
  return WordsFor(setting).Tell(project, setting.At, meaning);
}

/// Nothing for a level that no percentage tells.
std::optional<Int32> MeaningIfAny(const Setting& setting, Int32 number) {
  try {
    return MeaningOf(setting, number);
  } catch (const RunTimeFailure&) {
    return {};
  }
}

QString ToldNumber(const Project& project, const Setting& setting, Int32 number) {
  const auto meaning = MeaningIfAny(setting, number);
  return meaning ? ToldMeaning(project, setting, *meaning) : QString::number(number);
}

/// The first number in a text.
std::optional<std::int64_t> NumberIn(const QString& text) {
  const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
  const auto* first = std::find_if(text.begin(), text.end(), isDigit);
  const auto* last = std::find_if_not(first, text.end(), isDigit);
  if (first != text.begin() && *(first - 1) == u'-') --first;
  bool is = false;
  const std::int64_t number = QStringView(first, last).toLongLong(&is);
  return is ? std::optional(number) : std::nullopt;
}

/// The soundest number that has these words, which those of `known` are.
std::optional<Int32> NumberOf(const Project& project, const Setting& setting, const QString& words,
                              std::optional<Int32> known = {}) {
  std::optional<Int32> found;
  const auto look = [&](Int32 meaning) {
    if (meaning != known && ToldMeaning(project, setting, meaning) != words) return false;
    try {
      found = NumberOfMeaning(setting, meaning);
    } catch (const RunTimeFailure&) {
      // No number means it.
    }
    return found.has_value();
  };
  constexpr int codes = 256;
  const auto choices = static_cast<int>(WordsFor(setting).Choices.size());
  for (int code = 0; code < choices; ++code) {
    if (look(code)) return found;
  }
  const auto told = NumberIn(words);
  const NumberRange range = told ? RangeOf(project, setting) : NumberRange{};
  for (const std::int64_t number : {told.value_or(0), told.value_or(0) - 1}) {
    if (told && range.Has(number) && look(static_cast<Int32>(number))) return found;
  }
  for (int code = 0; code < codes; ++code) {
    if (look(code)) return found;
  }
  // One that means nothing.
  if (told && range.Has(*told) && words == QString::number(*told)) {
    found = static_cast<Int32>(*told);
  }
  return found;
}

QString WithNumber(const QString& words, Int32 number) {
  return QStringLiteral("%1 (%2)").arg(words).arg(number);
}

/// The number behind words that others share.
std::optional<Int32> NumberBehind(const Project& project, const Setting& setting,
                                  const QString& words) {
  const qsizetype start = words.lastIndexOf(QLatin1String(" ("));
  const auto number = start < 0 ? std::nullopt : NumberIn(words.mid(start));
  if (!number || !RangeOf(project, setting).Has(*number)) return {};
  const auto found = static_cast<Int32>(*number);
  return words == WithNumber(words.first(start), found) ? std::optional(found) : std::nullopt;
}

TimerRun RunOf(const Project& project, int timer) {
  const PanelRecordType& panel = project.Panel;
  return {{panel.TimerTimeType(timer), panel.TimerTime(timer)},
          panel.TimerDays(timer),
          panel.TimerHolidayMonth(timer),
          panel.TimerHolidayDate(timer)};
}

void PutRun(Project& project, int timer, const TimerRun& run) {
  PanelRecordType& panel = project.Panel;
  panel.TimerTimeType(timer) = run.Time.Type;
  panel.TimerTime(timer) = run.Time.Time;
  panel.TimerDays(timer) = run.Days;
  panel.TimerHolidayMonth(timer) = run.Month;
  panel.TimerHolidayDate(timer) = run.Date;
}

ControlSlot SlotOf(const Project& project, const Setting& whole) {
  return ControlSlotOf(DimmerOutput(project.Dimmers, whole.At.Device, whole.At.First),
                       whole.At.Second);
}

void PutSlot(Project& project, const Setting& whole, const ControlSlot& slot) {
  for (const ControlSlotPart& part : ControlSlotParts) {
    const Setting setting{nullptr, part.Field, whole.At};
    const Int32 meaning = slot.*part.Member;
    // Bits that mean nothing stay where it has that meaning.
    if (MeaningOf(setting, std::get<Int32>(ValueOf(project, setting))) != meaning) {
      PutValue(project, setting, NumberOfMeaning(setting, meaning));
    }
  }
}

/// Of what is told whole; empty where no sentence tells it.
QString SentenceOf(const Project& project, const Setting& whole) {
  return whole.Dimmer ? SlotInWords(project, SlotOf(project, whole))
                      : told::TimerRuns(project, whole.At, 0);
}

QString WordsOfParts(const Project& project, const Setting& whole) {
  QStringList words;
  for (const Setting& part : PartsOf(whole)) words << WordsOf(project, part);
  return words.join(QLatin1String(", "));
}

}  // namespace

bool HasWords(const Project& project, const Setting& whole) {
  return !SentenceOf(project, whole).isEmpty();
}

QString WordsOf(const Project& project, const Setting& setting) {
  if (setting.Whole) {
    const QString words = SentenceOf(project, setting);
    return words.isEmpty() ? WordsOfParts(project, setting) : words;
  }
  const SettingValue value = UsualValueOf(project, setting);
  if (const auto* text = std::get_if<std::string>(&value)) return TextWords(*text);
  const Int32 number = std::get<Int32>(value);
  const QString words = ToldNumber(project, setting, number);
  const bool sound = NumberOf(project, setting, words, MeaningIfAny(setting, number)) == number;
  return sound ? words : WithNumber(words, number);
}

QString NumberedWordsOf(const Project& project, const Setting& setting) {
  const SettingValue value = UsualValueOf(project, setting);
  const Int32* number = std::get_if<Int32>(&value);
  return number && !setting.Whole ? WithNumber(ToldNumber(project, setting, *number), *number)
                                  : WordsOf(project, setting);
}

bool IsListed(const Project& project, const Setting& setting) {
  const SettingValue value = ValueOf(project, setting);
  const auto* number = std::get_if<Int32>(&value);
  if (!number) return true;
  const auto meaning = MeaningIfAny(setting, *number);
  return meaning && IsListed(WordsFor(setting), project, setting.At, *meaning);
}

bool IsToldBy(const Project& project, const Setting& setting, const QString& words) {
  if (setting.Whole && setting.Dimmer) {
    const ControlSlot slot = SlotOf(project, setting);
    return ReadSlotWords(words, slot) == slot;
  }
  return words == WordsOf(project, setting) || words == NumberedWordsOf(project, setting);
}

void PutWords(Project& project, const Setting& setting, const QString& words) {
  if (setting.Whole && setting.Dimmer) {
    const auto slot = ReadSlotWords(words, SlotOf(project, setting));
    if (slot) PutSlot(project, setting, *slot);
  } else if (setting.Whole) {
    const int timer = setting.At.First;
    PutRun(project, timer, ReadTimerWords(words.toStdString(), RunOf(project, timer)));
  } else if (std::holds_alternative<std::string>(ValueOf(project, setting))) {
    PutValue(project, setting, TextOfWords(words));
  } else {
    auto number = NumberBehind(project, setting, words);
    if (!number) number = NumberOf(project, setting, words);
    if (number) PutValue(project, setting, *number);
  }
}

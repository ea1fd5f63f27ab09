#include <algorithm>
#include <optional>

#include "panel/code_page.h"
#include "panel/setting.h"
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

QString ToldMeaning(const Project& project, const Setting& setting, Int32 meaning) {
  if (IsPartOfTimer(setting)) return QString::number(meaning);
  return WordsFor(setting).Tell(project, setting.At, meaning);
}

QString ToldNumber(const Project& project, const Setting& setting, Int32 number) {
  try {
    return ToldMeaning(project, setting, MeaningOf(setting, number));
  } catch (const RunTimeFailure&) {
    return QString::number(number);  // a level that no percentage tells
  }
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

/// The number that is stored for a meaning, where these are its words.
std::optional<Int32> NumberIfTold(const Project& project, const Setting& setting,
                                  const QString& words, Int32 meaning) {
  if (ToldMeaning(project, setting, meaning) != words) return {};
  try {
    return NumberOfMeaning(setting, meaning);
  } catch (const RunTimeFailure&) {
    return {};
  }
}

/// The soundest number that has these words.
std::optional<Int32> NumberOf(const Project& project, const Setting& setting,
                              const QString& words) {
  constexpr int codes = 256;
  const auto choices = static_cast<int>(WordsFor(setting).Choices.size());
  const auto told = NumberIn(words);
  const NumberRange range = RangeOf(project, setting);
  std::optional<Int32> found;
  const auto look = [&](std::int64_t meaning) {
    if (range.Has(meaning)) {
      found = NumberIfTold(project, setting, words, static_cast<Int32>(meaning));
    }
    return found.has_value();
  };
  for (int code = 0; code < choices; ++code) {
    if (look(code)) return found;
  }
  if (told && (look(*told) || look(*told - 1))) return found;
  for (int code = 0; code < codes; ++code) {
    if (look(code)) return found;
  }
  // One that means nothing.
  const bool is = told && range.Has(*told) && words == QString::number(*told);
  return is ? std::optional(static_cast<Int32>(*told)) : std::nullopt;
}

QString NumberWords(const Project& project, const Setting& setting, Int32 number) {
  const QString words = ToldNumber(project, setting, number);
  return NumberOf(project, setting, words) == number
             ? words
             : QStringLiteral("%1 (%2)").arg(words).arg(number);
}

/// The number behind words that others share.
std::optional<Int32> NumberBehind(const Project& project, const Setting& setting,
                                  const QString& words) {
  const qsizetype start = words.lastIndexOf(QLatin1String(" ("));
  if (start < 0 || !words.endsWith(u')')) return {};
  const auto number = NumberIn(words.mid(start));
  if (!number || !RangeOf(project, setting).Has(*number)) return {};
  return static_cast<Int32>(*number);
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

}  // namespace

QString WordsOf(const Project& project, const Setting& setting) {
  if (setting.Runs) return told::TimerRuns(project, setting.At, 0);
  const SettingValue value = UsualValueOf(project, setting);
  if (const Int32* number = std::get_if<Int32>(&value)) {
    return NumberWords(project, setting, *number);
  }
  return TextWords(std::get<std::string>(value));
}

void PutWords(Project& project, const Setting& setting, const QString& words) {
  if (setting.Runs) {
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

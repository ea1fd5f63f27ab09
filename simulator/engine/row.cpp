#include "simulator/engine/row.h"

#include <array>

#include "simulator/memory/digits.h"

namespace simulator {

namespace {

/// "@" is the number from 1 in two digits, "#" in as many as it has, "%" in hex, "+" the second
/// number from 1.
constexpr std::array SubjectForms{"-",       "POWER",        "HOST",         "HAND",
                                  "SWEEP",   "CLOCK",        "TIMER @",      "RELAY @",
                                  "GROUP @", "PRESET @",     "INPUT @",      "PILOT @",
                                  "FL %",    "FL % INPUT +", "FL % PILOT +", "DIMMER # OUTPUT +"};

constexpr std::array ChangeWords{"on", "off", "blinks", "level ", "disabled", "enabled", "fires"};

void AppendSubject(std::string& text, const Subject& subject) {
  for (const char* c = SubjectForms[static_cast<std::size_t>(subject.What)]; *c != 0; ++c) {
    switch (*c) {
      case '@':
        text += TwoDigits(subject.Number + 1);
        break;
      case '#':
        text += std::to_string(subject.Number + 1);
        break;
      case '%':
        text += Hex(static_cast<unsigned>(subject.Number), 2);
        break;
      case '+':
        text += static_cast<char>('1' + subject.Sub);
        break;
      default:
        text += *c;
    }
  }
}

void AppendChange(std::string& text, Change change, int level) {
  text += ChangeWords[static_cast<std::size_t>(change)];
  if (change == Change::Level) text += std::to_string(level);
}

}  // namespace

std::string Text(const Subject& subject) {
  std::string text;
  AppendSubject(text, subject);
  return text;
}

std::string Text(Change change, int level) {
  std::string text;
  AppendChange(text, change, level);
  return text;
}

std::string TimeText(const Calendar& calendar, Instant instant) {
  const std::int64_t wall = calendar.Wall(instant);
  const Date date = DateOf(wall / DayMs);
  const auto seconds = static_cast<int>(wall % DayMs / SecondMs);
  const int west = calendar.MinutesWest(instant);
  std::string text = std::to_string(date.Year);
  text += '-';
  text += TwoDigits(date.Month);
  text += '-';
  text += TwoDigits(date.Day);
  text += 'T';
  text += TwoDigits(seconds / 3600);
  text += ':';
  text += TwoDigits(seconds / 60 % 60);
  text += ':';
  text += TwoDigits(seconds % 60);
  text += '-';
  text += TwoDigits(west / 60);
  text += ':';
  text += TwoDigits(west % 60);
  return text;
}

void RowWriter::Append(std::string& text, const Row& row) {
  if (row.Time != Known) {
    Known = row.Time;
    KnownText = TimeText(Days, row.Time) + '\t';
  }
  if (!(row.Cause == KnownCause)) {
    KnownCause = row.Cause;
    KnownCauseText = Text(row.Cause);
  }
  text += KnownText;
  text += KnownCauseText;
  text += '\t';
  AppendSubject(text, row.Item);
  text += '\t';
  AppendChange(text, row.What, row.Level);
  text += '\t';
  text += row.Words;
  text += '\n';
}

}  // namespace simulator

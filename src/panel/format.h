#pragma once

#include <QString>
#include <charconv>
#include <string>

/// Appends the number with at least `digits` digits, zeros in front; a minus stands before them.
inline void AppendNumber(std::string& text, int value, int digits = 1) {
  char buffer[12];
  const unsigned magnitude =
      value < 0 ? 0U - static_cast<unsigned>(value) : static_cast<unsigned>(value);
  char* end = std::to_chars(buffer, buffer + sizeof buffer, magnitude).ptr;
  if (value < 0) text += '-';
  for (auto count = end - buffer; count < digits; ++count) text += '0';
  text.append(static_cast<char*>(buffer), end);
}

/// The number alone: NumberText(7, 2) is "07".
inline std::string NumberText(int value, int digits = 1) {
  std::string text;
  AppendNumber(text, value, digits);
  return text;
}

/// The number in at least two digits, of which a minus is one.
inline QString TwoDigits(int number) {
  return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

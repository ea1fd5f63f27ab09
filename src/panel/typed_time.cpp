#include "panel/typed_time.h"

#include <QRegularExpression>

std::optional<int> MinutesOfTyped(const QString& text) {
  static const QRegularExpression time(
      QStringLiteral("^(\\d{1,2})(?|:(\\d\\d)(?::00)?|(\\d\\d)(?=\\s*[ap]))?\\s*"
                     "(?:([ap])\\.?\\s?m?\\.?)?$"),
      QRegularExpression::CaseInsensitiveOption);
  const auto match = time.match(text.simplified());
  if (!match.hasMatch()) return std::nullopt;
  const bool halfDays = match.hasCaptured(3);
  if (!match.hasCaptured(2) && !halfDays) return std::nullopt;
  int hour = match.captured(1).toInt();
  const int minute = match.captured(2).toInt();
  if (minute > 59 || (halfDays ? hour < 1 || hour > 12 : hour > 23)) return std::nullopt;
  if (halfDays) hour = hour % 12 + (match.captured(3).toLower() == u'p' ? 12 : 0);
  return hour * 60 + minute;
}

#include "panel/code_page.h"

#include <algorithm>
#include <array>

namespace {

/// Bytes 0x80 to 0x9F.
constexpr std::array<char16_t, 32> HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString ToUnicode(std::string_view bytes) {
  QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
  std::transform(bytes.begin(), bytes.end(), text.begin(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return QChar(byte >= 0x80 && byte <= 0x9F ? HighControls[byte - 0x80] : char16_t{byte});
  });
  return text;
}

std::string FromUnicode(const QString& text) {
  std::string bytes(static_cast<std::size_t>(text.size()), '?');
  std::transform(text.begin(), text.end(), bytes.begin(), [](QChar c) {
    const char16_t unit = c.unicode();
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
    const auto* found = std::find(HighControls.begin(), HighControls.end(), unit);
    return found == HighControls.end() ? '?'
                                       : static_cast<char>(0x80 + (found - HighControls.begin()));
  });
  return bytes;
}

#include "panel/lists_in_words.h"

#include <QStringList>

#include "panel/code_page.h"
#include "panel/time_values.h"
#include "panel/words.h"

namespace {

/// `follows(one, next)`; `one(element)` is told alone, `range(first, last)` of three and more.
template <typename Element, typename Follows, typename One, typename Range>
QString InRanges(const std::vector<Element>& elements, Follows follows, One one, Range range) {
  constexpr std::size_t leastOfRange = 3;
  QStringList parts;
  for (std::size_t first = 0, end = 0; first < elements.size(); first = end) {
    end = first + 1;
    while (end < elements.size() && follows(elements[end - 1], elements[end])) ++end;
    if (end - first >= leastOfRange) {
      parts << range(elements[first], elements[end - 1]);
    } else {
      for (std::size_t i = first; i < end; ++i) parts << one(elements[i]);
    }
  }
  return parts.join(QStringLiteral(", "));
}

QString To(const QString& first, const QString& last) {
  return first + QStringLiteral(" to ") + last;
}

bool Follows(Item one, const Item& next) {
  const bool parts = one.Kind == ItemKind::DeviceInput || one.Kind == ItemKind::DimmerOutput;
  ++(parts ? one.Part : one.Number);
  return one == next;
}

QString RangeOfItems(const Item& first, const Item& last) {
  return To(ItemCode(first), ItemCode(last).section(u' ', -1));
}

bool IsNextDate(const MonthDate& one, const MonthDate& next) {
  const bool last = one.second + 1 == MonthDays[static_cast<std::size_t>(one.first)];
  return next == (last ? MonthDate{one.first + 1, 0} : MonthDate{one.first, one.second + 1});
}

QString DateText(const MonthDate& date) {
  return QStringLiteral("%1 %2").arg(ToUnicode(Word(MonthNames, date.first))).arg(date.second + 1);
}

}  // namespace

QString Counted(qsizetype count, const QString& one, const QString& many) {
  return QStringLiteral("%1 %2").arg(QString::number(count), count == 1 ? one : many);
}

QString ListOf(const Project& project, const std::vector<Item>& items) {
  return InRanges(
      items, Follows, [&](const Item& item) { return ItemText(project, item); }, RangeOfItems);
}

QString CodesOf(const std::vector<Item>& items) {
  return InRanges(items, Follows, ItemCode, RangeOfItems);
}

QString ListOf(const std::vector<MonthDate>& dates) {
  return InRanges(dates, IsNextDate, DateText, [](const MonthDate& first, const MonthDate& last) {
    return To(DateText(first),
              first.first == last.first ? QString::number(last.second + 1) : DateText(last));
  });
}

QString ListOfWeekdays(const std::vector<int>& days) {
  const auto name = [](int day) { return ToUnicode(Word(WeekdayNames, day)); };
  return InRanges(
      days, [](int one, int next) { return next == one + 1; }, name,
      [&](int first, int last) { return To(name(first), name(last)); });
}

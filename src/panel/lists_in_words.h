#pragma once

#include <utility>
#include <vector>

#include "panel/items.h"

// Many things in one sentence.

/// "1 action", "2 actions".
QString Counted(qsizetype count, const QString& one, const QString& many);
inline QString Counted(qsizetype count, const QString& one) {
  return Counted(count, one, one + u's');
}

/// "INPUT 03 HALL, INPUT 14 to 24": three and more that follow one another are a range. In order.
QString ListOf(const Project& project, const std::vector<Item>& items);

/// The same without names.
QString CodesOf(const std::vector<Item>& items);

/// A month and a date, both from 0.
using MonthDate = std::pair<int, int>;
/// "February 3, December 24 to 31". In order.
QString ListOf(const std::vector<MonthDate>& dates);

/// "Sunday, Tuesday to Friday" of days from 0, Sunday. In order.
QString ListOfWeekdays(const std::vector<int>& days);

#pragma once

#include "simulator/watch/log_lines.h"

namespace simulator {

/// What an engine will do if nobody touches anything.
class Outlook {
 public:
  static constexpr std::int64_t WithinMs = 8 * DayMs;

  Outlook() = default;
  /// With the first `lines` of the log to come.
  Outlook(const Engine& engine, std::size_t lines);

  /// The next changes of an item, at most two; of timers when they fire.
  std::vector<Happening> Of(const Subject& item) const;
  const std::vector<LogLines::Line>& Lines() const { return Coming; }

 private:
  std::map<Subject, std::vector<Happening>> Next;
  std::vector<LogLines::Line> Coming;
};

}  // namespace simulator

#pragma once

#include <string>
#include <vector>

#include "simulator/engine/row.h"

namespace simulator {

/// Makes of an engine's rows sentences of what happened and why, as in
/// "TIMER 03 (20 min before sunrise) turned FOYER, HALL on".
class LogLines {
 public:
  enum class When { Past, Coming };
  explicit LogLines(When tense) : Tense(tense) {}

  struct Line {
    std::int64_t Wall = 0;  // milliseconds since 1970
    std::string Sentence;   // in UTF-8
  };

  void Take(const Row& row, const Calendar& days);
  /// The lines since the last call.
  std::vector<Line> Fetch();

 private:
  /// What one cause did to some items.
  struct Deed {
    std::string Verb;
    std::string Items;
    std::string Ending;
  };
  void Finish();

  When Tense;
  std::vector<Line> Lines;
  Row Cause;  // the last row, for its cause and time
  std::int64_t Wall = 0;
  std::string Why;  // the cause in words
  Deed Doing;       // nothing yet: it fires
  bool Open = false;
};

}  // namespace simulator

#pragma once

#include <string>
#include <vector>

#include "simulator/watch/reason.h"

namespace simulator {

/// Makes of an engine's rows sentences of what happened and why, as in
/// "TIMER 03 DUSK (20 min before sunrise) turned FOYER, HALL on". Rows of which nothing comes are
/// passed over; relays whose times run out at one instant are told in one line.
class LogLines {
 public:
  enum class When { Past, Coming };
  explicit LogLines(When tense) : Tense(tense) {}

  struct Line {
    std::int64_t Wall = 0;  // milliseconds since 1970
    std::string Sentence;   // in UTF-8
  };

  void Take(const Row& row, const Configuration& settings);
  /// The lines since the last call.
  std::vector<Line> Fetch();

 private:
  /// What one cause did to some items in one way.
  struct Deed {
    std::string Verb;
    std::vector<std::string> Items;
    std::string Ending;
  };
  void Finish();
  std::string Sentence() const;
  /// What was done so far is one part of the sentence.
  void FinishDeed();

  When Tense;
  std::vector<Line> Lines;
  ReasonKeeper Reasons;
  SharedReason Why;
  std::int64_t Wall = 0;
  Deed Doing;  // nothing yet: it fires
  std::string Done;
  bool Open = false;
};

}  // namespace simulator

#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// Bytes to put on the line, `After` the moment the reply was ready.
struct TimedBytes {
  std::chrono::milliseconds After{0};
  std::string Bytes;
};

/// What becomes of one reply on its way to the host.
struct Delivery {
  std::vector<TimedBytes> Pieces;
  bool Drop = false;  // the connection breaks once the pieces are out
};

/// One way in which replies go wrong, and for which of them.
struct Fault {
  enum class Kind { Lost, Late, Short, Long, Junk, Split, Checksum, NonHex, Drop, Sum };
  static constexpr int Always = -1;

  Kind What = Kind::Lost;
  int Amount = 0;  // milliseconds, characters or pieces, as the kind says
  int Gap = 0;     // milliseconds between the pieces of Split
  int First = 1;   // counted from when the fault was set, 1 = the next reply
  int Count = 1;   // how many replies, or Always
};

/// Reads "KIND[:AMOUNT[:GAP]][@FIRST][xCOUNT]", for example "late:2500", "lost@10x3",
/// "split:4:20x*" (x* = every reply). Throws std::invalid_argument with a text for the user.
Fault ParseFault(const std::string& text);

/// The same text again.
std::string FaultText(const Fault& fault);

/// One line a kind: name, meaning of the amount, what it does.
std::string FaultHelp();

/// Applies the faults that are set to the replies that pass.
class FaultInjector {
 public:
  void Add(const Fault& fault) { Faults.push_back({fault, 0}); }
  void Clear() { Faults.clear(); }
  /// The faults that still have replies to spoil.
  std::vector<Fault> Pending() const;

  /// `frame` is the host's, `reply` the panel's right answer, both with brackets.
  Delivery Deliver(std::string_view frame, const std::string& reply);

 private:
  struct Counted {
    Fault What;
    int Seen;
  };
  std::vector<Counted> Faults;
};

}  // namespace simulator

#pragma once

#include <string>
#include <vector>

#include "simulator/line/fault.h"

namespace simulator {

/// The modem between the host's port and the panel, seen from the host. It echoes and answers AT
/// commands until a call is up; then every byte belongs to the panel until the panel hangs up.
class Modem {
 public:
  struct Options {
    bool Busy = false;  // every call ends in "NO CARRIER"
    std::chrono::milliseconds DialTime{1500};
  };
  explicit Modem(Options options) : Setting(options) {}

  bool OnLine() const { return Call; }

  /// The modem's answer to one byte. While a call is up there is none, except that "ATZ" and a
  /// carriage return end it: a host lowers DTR before it resets the modem, and the line here has
  /// no DTR.
  std::vector<TimedBytes> Receive(char byte);

  /// Ends the call; the text that the host sees.
  std::vector<TimedBytes> HangUp();

 private:
  std::vector<TimedBytes> Answer(const std::string& line);

  Options Setting;
  bool Call = false;
  std::string Line;
};

}  // namespace simulator

#pragma once

#include <optional>
#include <string>

#include "simulator/fault.h"
#include "simulator/frame.h"
#include "simulator/frame_log.h"
#include "simulator/panel.h"

namespace simulator {

/// What every line of a simulator shares.
struct Shared {
  Panel ThePanel;
  FaultInjector Faults;
  FrameLog Log;
};

/// One host's bytes in, the panel's replies out, faults and log on the way.
class Conversation {
 public:
  Conversation(Shared& shared, const char* line) : Common(shared), Line(line) {}

  struct Result {
    Delivery Reply;
    bool Escape = false;  // the host ended the modem call
  };
  /// Takes the line's next byte; a result when it ended a frame that calls for something.
  std::optional<Result> Receive(char byte);

 private:
  Shared& Common;
  const char* Line;
  FrameSplitter Splitter;
};

}  // namespace simulator

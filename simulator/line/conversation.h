#pragma once

#include <optional>
#include <string>

#include "simulator/engine/panel.h"
#include "simulator/line/fault.h"
#include "simulator/line/frame.h"
#include "simulator/line/frame_log.h"

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

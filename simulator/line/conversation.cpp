#include "simulator/line/conversation.h"

#include "simulator/line/commands.h"

namespace simulator {

std::optional<Conversation::Result> Conversation::Receive(char byte) {
  using Direction = FrameLog::Direction;
  const auto event = Splitter.Push(byte);
  if (!event) return std::nullopt;
  Common.Log.Add(Line, Direction::FromHost, event->Text);
  if (event->What == LineEvent::Kind::Escape) return Result{{}, true};
  const auto reply = Answer(Common.ThePanel, event->Text);
  if (!reply) {
    Common.Log.Add(Line, Direction::Note, "no reply to this");
    return std::nullopt;
  }
  Result result{Common.Faults.Deliver(event->Text, *reply), false};
  for (const TimedBytes& piece : result.Reply.Pieces) {
    const auto delay = piece.After.count();
    Common.Log.Add(Line, Direction::ToHost, piece.Bytes);
    if (delay > 0) {
      Common.Log.Add(Line, Direction::Note, "held back " + std::to_string(delay) + " ms");
    }
  }
  if (result.Reply.Pieces.empty()) {
    Common.Log.Add(Line, Direction::Note,
                   result.Reply.Drop ? "connection dropped" : "reply withheld");
  }
  return result;
}

}  // namespace simulator

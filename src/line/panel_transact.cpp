#include "line/panel_transact.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <utility>

#include "line/frame_log.h"
#include "line/line_hooks.h"
#include "line/line_kinds.h"
#include "line/session.h"
#include "panel/hex.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"

std::string ReplyText;
Int16 ReplyLength = 0;

namespace {

constexpr int Attempts = 3;
constexpr int Drains = 4;

bool endedWhileWaiting = false;

Transport& Carrier() {
  return LineKindOf(LineType()).Line();
}

void Drain(Transport& line) {
  for (int i = 0; i < Drains; ++i) line.Take();
}

void TellLinkStatus(const QString& text) {
  if (Line.LinkStatus) Line.LinkStatus(text);
}

/// An 8-bit rotate left with the carry wrapped round, and the character added.
int FrameChecksum(std::string_view text) {
  std::uint8_t sum = 0;
  for (const char character : text) {
    sum = static_cast<std::uint8_t>(std::rotl(sum, 1) + static_cast<unsigned char>(character));
  }
  return sum;
}

/// Waits until `count` characters are there, the line is gone or the time is up. Whether they came
/// before the deadline; what comes with its last instant has not. Each wait has a stopwatch of its
/// own, so that one inside another does not put the outer deadline off.
bool Await(Transport& line, int count, Int32 deadlineMs) {
  const Stopwatch stopwatch;
  qint64 left = deadlineMs;
  while (left > 0 && line.Waiting() < count && line.IsOpen()) {
    line.Wait(count, left);
    left = deadlineMs - stopwatch.ElapsedMs();
  }
  return left > 0 && line.Waiting() >= count;
}

/// Counted from the end of the reply: nothing else of it is tested.
bool ReplyVerified() {
  constexpr std::size_t tail = 3;
  if (ReplyText.size() < tail) return false;
  const std::string_view reply = ReplyText;
  const std::size_t end = reply.size() - tail;
  return ParseHexByte(reply.substr(end, 2)) ==
         FrameChecksum(reply.substr(0, end).substr(end > 0 ? 1 : 0));
}

Int32 Milliseconds(Int32 seconds, int factor) {
  const std::int64_t ms = std::int64_t{seconds} * 1000 * factor;
  if (ms > std::numeric_limits<Int32>::max() || ms < std::numeric_limits<Int32>::min()) {
    throw RunTimeFailure("Overflow: a time-out of " + std::to_string(seconds) + " seconds.");
  }
  return static_cast<Int32>(ms);
}

}  // namespace

std::string_view ReplyMid(int position, int length) {
  const std::string_view reply = ReplyText;
  const auto from = static_cast<std::size_t>(position) - 1;
  return from < reply.size() ? reply.substr(from, static_cast<std::size_t>(length))
                             : std::string_view();
}

Int32 ReplyByte(int position) {
  return ParseHexByte(ReplyMid(position, 2));
}

Int16 ReplyCode(int position) {
  const std::string_view character = ReplyMid(position, 1);
  return character.empty() ? Int16{-1} : static_cast<unsigned char>(character.front());
}

std::string PanelFrame(std::string_view command) {
  std::string frame = "[00";
  frame.reserve(frame.size() + command.size() + 3);
  frame += command;
  frame += HexByte(FrameChecksum(std::string_view(frame).substr(1)));
  return frame += ']';
}

Int16 LineType() {
  return Line.ConnectionType ? Line.ConnectionType() : OpenedType();
}

Int16 PanelTransact(const std::string& command, Int16 expectedLength, Int32 timeoutSeconds) {
  endedWhileWaiting = false;
  const Int32 deadlineMs = Milliseconds(timeoutSeconds, LineKindOf(LineType()).TimeOutFactor);
  if (Connected == 0) return 0;
  Drain(Carrier());
  const std::string frame = PanelFrame(command);
  for (int retry = 1;; ++retry) {
    Drain(Carrier());
    Carrier().Send(frame);
    LogSent(command, frame);
    const bool answered = Await(Carrier(), expectedLength, deadlineMs);
    if (Connected == 0) {
      endedWhileWaiting = true;
      return 0;
    }
    if (answered) {
      ReplyText = Carrier().Take();
      ReplyLength = static_cast<Int16>(ReplyText.size());
      LogReply(command, ReplyText);
      if (ReplyVerified()) {
        TellLinkStatus(QStringLiteral("Connected"));
        return -1;
      }
    }
    if (!answered) LogReply(command, {});
    if (retry == Attempts) return 0;
    TellLinkStatus(QStringLiteral("Error - Retry: %1").arg(retry));
  }
}

bool ModemTransact(const std::string& text, Int16 expectedLength, Int32 timeoutSeconds) {
  if (Connected == 0) return false;
  const Int32 deadlineMs = Milliseconds(timeoutSeconds, 1);
  Drain(comQZ());
  comQZ().Send(text);
  const bool answered = Await(comQZ(), expectedLength, deadlineMs);
  ReplyText = comQZ().Take();
  if (answered) ReplyLength = static_cast<Int16>(ReplyText.size());
  return answered;
}

bool EndedWhileWaiting() {
  return std::exchange(endedWhileWaiting, false);
}

#include "simulator/line/frame.h"

namespace simulator {

int FrameChecksum(std::string_view text) {
  int sum = 0;
  for (const char c : text) {
    sum *= 2;
    if (sum > 255) sum -= 255;
    sum = (sum + static_cast<unsigned char>(c)) % 256;
  }
  return sum;
}

std::string FrameReply(std::string_view data) {
  return "[" + std::string(data) + Hex(static_cast<unsigned>(FrameChecksum(data)), 2) + "]";
}

std::string FrameCommand(std::string_view command) {
  return FrameReply("00" + std::string(command));
}

std::optional<std::string> UnframeCommand(std::string_view frame) {
  if (frame.size() < 7 || frame.front() != '[' || frame.back() != ']') return std::nullopt;
  const std::string_view body = frame.substr(1, frame.size() - 4);
  const std::string_view digits = frame.substr(frame.size() - 3, 2);
  if (ParseHex(digits) != FrameChecksum(body) || body.substr(0, 2) != "00") return std::nullopt;
  return std::string(body.substr(2));
}

std::optional<LineEvent> FrameSplitter::Push(char byte) {
  if (byte == '[') {
    Frame = "[";
    return std::nullopt;
  }
  if (Frame.empty()) return std::nullopt;
  Frame += byte;
  if (byte != ']' && Frame != "[%%%%%") {
    if (Frame.size() >= MaxFrame) Frame.clear();
    return std::nullopt;
  }
  LineEvent event{byte == ']' ? LineEvent::Kind::Frame : LineEvent::Kind::Escape, Frame};
  Frame.clear();
  return event;
}

std::vector<LineEvent> FrameSplitter::Feed(std::string_view bytes) {
  std::vector<LineEvent> events;
  for (const char byte : bytes) {
    if (auto event = Push(byte)) events.push_back(*std::move(event));
  }
  return events;
}

}  // namespace simulator

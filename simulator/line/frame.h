#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/memory/digits.h"

namespace simulator {

/// The running 8-bit sum of a frame: before each character is added the value is rotated left by
/// one bit. Taken over everything between "[" and the two checksum digits.
int FrameChecksum(std::string_view text);

/// "[", the data, its checksum as two upper-case hex digits, "]". Empty data gives "[00]".
std::string FrameReply(std::string_view data);

/// A frame as the host sends it: "[00", the command, the checksum, "]".
std::string FrameCommand(std::string_view command);

/// The command inside a frame that is addressed to panel 00 and whose checksum agrees; nothing
/// for any other text.
std::optional<std::string> UnframeCommand(std::string_view frame);

/// What the bytes of a line amount to: a frame, or the escape "[%%%%%" that ends a modem call.
struct LineEvent {
  enum class Kind { Frame, Escape };
  Kind What;
  std::string Text;  // with its brackets
};

/// Cuts a stream of bytes into frames. A "[" always begins a new frame, so that line noise or a
/// broken frame costs no more than itself; bytes outside a frame are dropped, as is a frame longer
/// than any command.
class FrameSplitter {
 public:
  /// The longest frame kept: a memory write of 256 bytes.
  static constexpr std::size_t MaxFrame = 3 + 8 + 2 * 256 + 3;

  std::optional<LineEvent> Push(char byte);
  std::vector<LineEvent> Feed(std::string_view bytes);

 private:
  std::string Frame;  // empty outside a frame
};

}  // namespace simulator

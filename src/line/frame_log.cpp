#include "line/frame_log.h"

#include <QDateTime>
#include <algorithm>
#include <deque>
#include <optional>
#include <tuple>

#include "panel/hex.h"
#include "panel/panel_image.h"
#include "panel/panel_record.h"
#include "panel/stopwatch.h"

namespace {

constexpr std::size_t MostLines = 4000;
/// "30" or "31", four digits of the address, two of the count.
constexpr std::size_t MemoryCommand = 8;

struct LoggedFrame {
  qint64 Ms;  ///< Since the session began: a date for each frame would be felt in a transfer.
  bool Sent;
  std::string Text;
};
std::deque<LoggedFrame> lines;
QDateTime begun;
std::optional<Stopwatch> sinceBegun;

/// Stars for the password's bytes among those that begin at `first` of the text, and for the
/// checksum, by which they could be guessed.
std::string Blanked(std::string_view command, std::string_view text, std::size_t first) {
  std::string blanked(text);
  if (command.size() < MemoryCommand ||
      (!command.starts_with("30") && !command.starts_with("31"))) {
    return blanked;
  }
  const int start = ParseHexByte(command.substr(2, 2)) * 256 + ParseHexByte(command.substr(4, 2));
  const int end = start + ParseHexByte(command.substr(6, 2)) + 1;
  constexpr int passWordEnd = PasswordAddress + static_cast<int>(std::tuple_size_v<PasswordDigits>);
  if (start >= passWordEnd || end <= PasswordAddress) return blanked;
  const auto star = [&](std::size_t at) {
    if (at < blanked.size()) blanked[at] = '*';
  };
  for (int address = std::max(start, PasswordAddress); address < std::min(end, passWordEnd);
       ++address) {
    const std::size_t at = first + 2 * static_cast<std::size_t>(address - start);
    star(at);
    star(at + 1);
  }
  constexpr std::size_t tail = 3;
  if (blanked.size() >= tail) {
    star(blanked.size() - tail);
    star(blanked.size() - tail + 1);
  }
  return blanked;
}

void Add(bool sent, std::string text) {
  if (lines.size() == MostLines) lines.pop_front();
  if (!sinceBegun) ClearFrameLog();
  lines.push_back({sinceBegun->ElapsedMs(), sent, std::move(text)});
}

}  // namespace

void ClearFrameLog() {
  lines.clear();
  begun = Now();
  sinceBegun.emplace();
}

void LogSent(std::string_view command, std::string_view frame) {
  constexpr std::size_t frameStart = 3;  // "[00"
  Add(true, Blanked(command, frame, frameStart + MemoryCommand));
}

void LogReply(std::string_view command, std::string_view reply) {
  Add(false, reply.empty() ? "(nothing)" : Blanked(command, reply, 1));
}

bool FrameLogEmpty() {
  return lines.empty();
}

QByteArray FrameLogText() {
  QByteArray text;
  for (const LoggedFrame& line : lines) {
    text += begun.addMSecs(line.Ms).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")).toUtf8();
    text += line.Sent ? " > " : " < ";
    for (const char character : line.Text) {
      // Noise on the line must not spoil the file.
      const bool plain = character >= ' ' && character <= '~';
      text +=
          plain ? QByteArray(1, character) : '<' + QByteArray(1, character).toHex().toUpper() + '>';
    }
    text += '\n';
  }
  return text;
}

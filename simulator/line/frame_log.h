#pragma once

#include <QFile>
#include <QString>
#include <deque>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/engine/panel_clock.h"

namespace simulator {

/// The conversation on the lines: kept for tests to look at, and written one line a frame when
/// a file has been given.
class FrameLog {
 public:
  explicit FrameLog(Clock clock = &ComputersTime) : Now(std::move(clock)) {}

  enum class Direction { FromHost, ToHost, Note };
  struct Entry {
    Direction Way;
    std::string Text;
  };
  static constexpr std::size_t MaxEntries = 10'000;

  /// `path` "-" is standard output. Throws std::runtime_error when the file cannot be opened.
  void Open(const QString& path);
  void SetEnabled(bool enabled) { Enabled = enabled; }

  /// `line` names the connection, for example "tcp" or "pty".
  void Add(const char* line, Direction way, std::string_view text);

  /// The latest entries, oldest first.
  const std::deque<Entry>& Entries() const { return Kept; }
  void Forget() { Kept.clear(); }

 private:
  std::string Failure(const std::string& reason) const;

  Clock Now;
  QString Path;
  QFile File;
  bool Failed = false;  // the user has been told
  bool Enabled = true;
  std::deque<Entry> Kept;
};

}  // namespace simulator

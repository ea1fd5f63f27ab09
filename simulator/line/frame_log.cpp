#include "simulator/line/frame_log.h"

#include <unistd.h>

#include <QDateTime>
#include <QFileInfo>
#include <cstdio>
#include <stdexcept>

#include "simulator/memory/digits.h"
#include "simulator/memory/write_file.h"

namespace simulator {

namespace {

std::string Printable(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code < 0x7F && c != '\\') {
      shown += c;
    } else {
      shown += "\\x" + Hex(code, 2);
    }
  }
  return shown;
}

}  // namespace

void FrameLog::Open(const QString& path) {
  if (File.isOpen()) File.close();
  Path = path;
  File.setFileName(path);
  // Unbuffered: what a full disk does not take must not wait for better times.
  constexpr auto mode = QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered;
  const QFileInfo there(path);
  if (path != "-" && there.exists() && !there.isFile()) {
    try {
      OpenInPlace(File, path);
    } catch (const std::runtime_error& refusal) {
      throw std::runtime_error(Failure(refusal.what()));
    }
  } else {
    const bool opened = path == "-" ? File.open(STDOUT_FILENO, mode) : File.open(mode);
    if (!opened) throw std::runtime_error(Failure(File.errorString().toStdString()));
    if (path != "-") File.setPermissions(OwnersAlone);
  }
  Enabled = true;
}

void FrameLog::Add(const char* line, Direction way, std::string_view text) {
  Kept.push_back({way, std::string(text)});
  if (Kept.size() > MaxEntries) Kept.pop_front();
  if (!Enabled || !File.isOpen()) return;
  const char* arrow = way == Direction::FromHost ? " > " : way == Direction::ToHost ? " < " : " - ";
  const std::string stamp = Now().toString("yyyy-MM-dd HH:mm:ss.zzz").toStdString();
  const std::string row = stamp + " " + line + arrow + Printable(text) + "\n";
  const auto size = static_cast<qint64>(row.size());
  const bool written = File.write(row.data(), size) == size;
  if (!written && !Failed)
    std::fprintf(stderr, "%s\n", Failure(File.errorString().toStdString()).c_str());
  Failed = !written;
}

std::string FrameLog::Failure(const std::string& reason) const {
  return "The log " + Path.toStdString() + " cannot be written: " + reason;
}

}  // namespace simulator

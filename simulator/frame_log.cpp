#include "simulator/frame_log.h"

#include <QDateTime>
#include <cstdio>
#include <stdexcept>

#include "simulator/digits.h"

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
  File.setFileName(path);
  const bool opened = path == "-" ? File.open(stdout, QIODevice::WriteOnly)
                                  : File.open(QIODevice::WriteOnly | QIODevice::Append);
  if (!opened) {
    throw std::runtime_error("The log " + path.toStdString() +
                             " cannot be written: " + File.errorString().toStdString());
  }
  Enabled = true;
}

void FrameLog::Add(const char* line, Direction way, std::string_view text) {
  Kept.push_back({way, std::string(text)});
  if (Kept.size() > MaxEntries) Kept.pop_front();
  if (!Enabled || !File.isOpen()) return;
  const char* arrow = way == Direction::FromHost ? " > " : way == Direction::ToHost ? " < " : " - ";
  const std::string stamp =
      QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm:ss.zzz").toStdString();
  const std::string row = stamp + " " + line + arrow + Printable(text) + "\n";
  File.write(row.data(), static_cast<qint64>(row.size()));
  File.flush();
}

}  // namespace simulator

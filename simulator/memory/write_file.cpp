#include "simulator/memory/write_file.h"

#include <fcntl.h>

#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <stdexcept>

namespace simulator {

namespace {

[[noreturn]] void Refuse(const QString& reason) {
  throw std::runtime_error(reason.toStdString());
}

void WriteAll(QFileDevice& file, std::string_view content) {
  while (!content.empty()) {
    const qint64 taken = file.write(content.data(), static_cast<qint64>(content.size()));
    if (taken <= 0) Refuse(file.errorString());
    content.remove_prefix(static_cast<std::size_t>(taken));
  }
}

void Replace(const QString& path, std::string_view content, QFileDevice::Permissions permissions) {
  QSaveFile file(path);
  // Unbuffered, because a commit does not say why a disk did not take what was buffered; one that
  // fills up takes a part first and tells its reason at the next attempt.
  const bool ready = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                     (permissions == 0 || file.setPermissions(permissions));
  if (!ready) Refuse(file.errorString());
  WriteAll(file, content);
  if (!file.commit()) Refuse(file.errorString());
}

}  // namespace

void OpenInPlace(QFile& file, const QString& path) {
  constexpr int mode = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const int descriptor = open(QFile::encodeName(path).constData(), mode);
  if (descriptor < 0) Refuse(qt_error_string(errno));
  fcntl(descriptor, F_SETFL, 0);
  const bool opened = file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                                QFileDevice::AutoCloseHandle);
  if (!opened) Refuse(file.errorString());
}

void WriteFile(const QString& path, std::string_view content, std::string_view what,
               QFileDevice::Permissions permissions) {
  try {
    // A device or a pipe is written to; for root a file would take its place.
    const QFileInfo there(path);
    if (!there.exists() || there.isFile()) {
      Replace(path, content, permissions);
      return;
    }
    QFile file;
    OpenInPlace(file, path);
    WriteAll(file, content);
  } catch (const std::runtime_error& refusal) {
    throw std::runtime_error(std::string(what) + " " + path.toStdString() +
                             " cannot be written: " + refusal.what());
  }
}

}  // namespace simulator

#include "simulator/memory/write_file.h"

#include <fcntl.h>

#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <stdexcept>

namespace simulator {

QString OpenInPlace(QFile& file, const QString& path) {
  constexpr int mode = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const int descriptor = open(QFile::encodeName(path).constData(), mode);
  if (descriptor < 0) return qt_error_string(errno);
  fcntl(descriptor, F_SETFL, 0);
  const bool opened = file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                                QFileDevice::AutoCloseHandle);
  return opened ? QString() : file.errorString();
}

void WriteFile(const QString& path, std::string_view content, std::string_view what,
               QFileDevice::Permissions permissions) {
  QSaveFile whole(path);
  QFile inPlace;
  // A device or a pipe is written to; for root a file would take its place.
  const QFileInfo there(path);
  const bool replaces = !there.exists() || there.isFile();
  QFileDevice& file = replaces ? static_cast<QFileDevice&>(whole) : inPlace;
  // Unbuffered, because a commit does not say why a disk did not take what was buffered; one that
  // fills up takes a part first and tells its reason at the next attempt.
  QString refusal;
  if (!replaces) {
    refusal = OpenInPlace(inPlace, path);
  } else if (!whole.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
    refusal = whole.errorString();
  }
  bool written = refusal.isEmpty();
  if (written && replaces && permissions != 0) written = whole.setPermissions(permissions);
  while (written && !content.empty()) {
    const qint64 taken = file.write(content.data(), static_cast<qint64>(content.size()));
    written = taken > 0;
    if (written) content.remove_prefix(static_cast<std::size_t>(taken));
  }
  if (written && replaces) written = whole.commit();
  if (!written) {
    const QString reason = refusal.isEmpty() ? file.errorString() : refusal;
    throw std::runtime_error(std::string(what) + " " + path.toStdString() +
                             " cannot be written: " + reason.toStdString());
  }
}

}  // namespace simulator

#include "simulator/write_file.h"

#include <QFileInfo>
#include <QSaveFile>
#include <stdexcept>

namespace simulator {

void WriteFile(const QString& path, std::string_view content, std::string_view what) {
  QSaveFile whole(path);
  QFile inPlace(path);
  // A device or a pipe is written to; for root a file would take its place.
  const QFileInfo there(path);
  const bool replaces = !there.exists() || there.isFile();
  QFileDevice& file = replaces ? static_cast<QFileDevice&>(whole) : inPlace;
  // Unbuffered, because a commit does not say why a disk did not take what was buffered; one that
  // fills up takes a part first and tells its reason at the next attempt.
  bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
  while (written && !content.empty()) {
    const qint64 taken = file.write(content.data(), static_cast<qint64>(content.size()));
    written = taken > 0;
    if (written) content.remove_prefix(static_cast<std::size_t>(taken));
  }
  if (written && replaces) written = whole.commit();
  if (!written) {
    throw std::runtime_error(std::string(what) + " " + path.toStdString() +
                             " cannot be written: " + file.errorString().toStdString());
  }
}

}  // namespace simulator

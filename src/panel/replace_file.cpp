#include "panel/replace_file.h"

#include <QSaveFile>

QString ReplaceFile(const QString& path, std::string_view bytes) {
  QSaveFile file(path);
  // Unbuffered, because commit says nothing of a failure to write what is still buffered.
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return file.errorString();
  // A disk that fills up takes a part first and tells its reason at the next attempt.
  while (!bytes.empty()) {
    const qint64 written = file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    if (written <= 0) return file.errorString();
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return file.commit() ? QString() : file.errorString();
}

#include "panel/replace_file.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QUuid>
#include <cerrno>
#include <cstdio>

namespace {

/// A save under way has a name that says nothing of its file's, which may be as long as names get,
/// and that nobody gives to a file of their own.
const QString SavingMark = QStringLiteral(".tamberloom3-saving-");

/// Why a file could not be written.
struct Refusal {
  QString Reason;
  bool OfFolder = false;
};

/// A save holds a lock on its file for as long as it lives.
bool Lock(const QFile& file) {
  return flock(file.handle(), LOCK_EX | LOCK_NB) == 0;
}

/// The file itself behind a chain of links; the path as it stands when there is none yet.
QString TargetOf(const QString& path) {
  QString target = path;
  constexpr int longestChain = 40;
  for (int i = 0; QFileInfo(target).isSymLink(); ++i) {
    if (i == longestChain) throw Refusal{QStringLiteral("it is a link that leads to itself")};
    target = QFileInfo(target).symLinkTarget();
  }
  return target;
}

void RemoveDeadSaves(const QDir& folder) {
  static const QRegularExpression form(
      QRegularExpression::anchoredPattern(QRegularExpression::escape(SavingMark) + "[0-9a-f]{32}"));
  for (const QString& name : folder.entryList({SavingMark + u'*'}, QDir::Files | QDir::Hidden)) {
    QFile left(folder.filePath(name));
    if (form.match(name).hasMatch() && left.open(QIODevice::ReadWrite) && Lock(left)) left.remove();
  }
}

void SetRights(const QFile& file, const QString& target, Readers readers) {
  struct stat old {};
  mode_t mode = S_IRUSR | S_IWUSR;
  if (readers == Readers::AsBefore) {
    if (stat(QFile::encodeName(target).constData(), &old) == 0) {
      mode = old.st_mode & 07777;
    } else {
      const mode_t mask = umask(0);
      umask(mask);
      mode = 0666 & ~mask;
    }
  }
  [[maybe_unused]] const int ignored = fchmod(file.handle(), mode);
}

/// All bytes, and from the program's memory to the disk.
void Write(QFile& file, std::string_view bytes) {
  // A disk that fills up takes a part first and tells its reason at the next attempt.
  while (!bytes.empty()) {
    const qint64 written = file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    if (written <= 0) throw Refusal{file.errorString()};
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  if (!file.flush()) throw Refusal{file.errorString()};
  if (fsync(file.handle()) != 0) throw Refusal{qt_error_string()};
}

void WriteInPlace(const QString& target, std::string_view bytes) {
  QFile file(target);
  if (!file.open(QIODevice::ReadWrite)) throw Refusal{file.errorString()};
  Write(file, bytes);
  if (!file.resize(static_cast<qint64>(bytes.size()))) throw Refusal{file.errorString()};
}

/// False where the new file was tidied away before it was held.
bool WriteAside(const QString& target, std::string_view bytes, Readers readers) {
  const QFileInfo info(target);
  QFile file(info.dir().filePath(SavingMark + QUuid::createUuid().toString(QUuid::Id128)));
  if (!file.open(QIODevice::ReadWrite | QIODevice::NewOnly,
                 QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
    const QString reason = QStringLiteral("no file can be made in the folder \"%1\" (%2)")
                               .arg(info.absolutePath(), file.errorString());
    // Rights are missing; a disk without room or that is gone would refuse the file as well.
    if (info.exists() && (errno == EACCES || errno == EPERM)) throw Refusal{reason, true};
    throw Refusal{reason};
  }
  // Not through the file itself, which would first try to write what the disk did not take.
  auto remove = qScopeGuard([name = file.fileName()] { QFile::remove(name); });
  // Who tidies just now may have taken it for a dead one.
  struct stat own {};
  if (!Lock(file) || fstat(file.handle(), &own) != 0 || own.st_nlink == 0) return false;
  Write(file, bytes);
  SetRights(file, target, readers);
  if (std::rename(QFile::encodeName(file.fileName()).constData(),
                  QFile::encodeName(target).constData()) != 0) {
    throw Refusal{qt_error_string()};
  }
  remove.dismiss();
  return true;
}

void Replace(const QString& path, std::string_view bytes, Saving saving, Readers readers) {
  const QString target = TargetOf(path);
  const QFileInfo info(target);
  RemoveDeadSaves(info.dir());
  if (info.isDir()) throw Refusal{QStringLiteral("it is a folder")};
  // A device or a pipe would be gone.
  if (info.exists() && !info.isFile()) {
    throw Refusal{QStringLiteral("it is not a regular file")};
  }
  if (info.exists() && !info.isWritable()) throw Refusal{QStringLiteral("Permission denied")};
  if (saving == Saving::InPlace) {
    WriteInPlace(target, bytes);
  } else {
    while (!WriteAside(target, bytes, readers)) {
    }
  }
}

}  // namespace

void ReplaceFile(const QString& path, std::string_view bytes, Saving saving, Readers readers) {
  try {
    Replace(path, bytes, saving, readers);
  } catch (const Refusal& refusal) {
    const std::string message = QStringLiteral("Cannot save \"%1\": %2.")
                                    .arg(QDir::toNativeSeparators(path), refusal.Reason)
                                    .toStdString();
    if (refusal.OfFolder) throw FolderRefuses(message);
    throw RunTimeFailure(message);
  }
}

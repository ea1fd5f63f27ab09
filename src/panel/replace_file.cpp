#include "panel/replace_file.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <algorithm>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

/// What stands between a file's name and the random letters of a save under way.
const QString SavingMark = QStringLiteral(".saving-");

/// A save holds a lock on its file for as long as it lives.
bool LockSave([[maybe_unused]] int handle) {
#ifdef Q_OS_UNIX
  return flock(handle, LOCK_EX | LOCK_NB) == 0;
#else
  return true;
#endif
}

/// The file itself behind a chain of links; the path as it stands when there is none yet.
QString TargetOf(const QString& path) {
  QString target = path;
  constexpr int longestChain = 40;
  for (int i = 0; i < longestChain && QFileInfo(target).isSymLink(); ++i) {
    target = QFileInfo(target).symLinkTarget();
  }
  return target;
}

/// Earlier versions of the program saved under the file's name, a dot and six letters drawn by
/// chance. Small letters and capitals mix there as in no ending that people give, such as "backup",
/// "Backup" or "BACKUP".
bool SavedByEarlierVersion(QStringView ending) {
  const auto capital = [](QChar c) { return c >= u'A' && c <= u'Z'; };
  const auto small = [](QChar c) { return c >= u'a' && c <= u'z'; };
  const auto capitals = std::count_if(ending.begin(), ending.end(), capital);
  return ending.size() == 6 && capitals > 0 && !(capitals == 1 && capital(ending[0])) &&
         std::count_if(ending.begin(), ending.end(), small) == 6 - capitals && capitals < 6;
}

void RemoveDeadSaves(const QString& target) {
  const QFileInfo info(target);
  QDir folder = info.dir();
  for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
    if (!name.startsWith(info.fileName() + SavingMark) &&
        !(name.startsWith(info.fileName() + u'.') &&
          SavedByEarlierVersion(QStringView(name).mid(info.fileName().size() + 1)))) {
      continue;
    }
    QFile left(folder.filePath(name));
    if (left.open(QIODevice::ReadWrite) && LockSave(left.handle())) left.remove();
  }
}

/// The rights of the file that is replaced, or those of any new file.
void SetRights([[maybe_unused]] const QFile& file, [[maybe_unused]] const QString& target) {
#ifdef Q_OS_UNIX
  struct stat old {};
  mode_t mode = 0;
  if (stat(QFile::encodeName(target).constData(), &old) == 0) {
    mode = old.st_mode & 07777;
  } else {
    const mode_t mask = umask(0);
    umask(mask);
    mode = 0666 & ~mask;
  }
  [[maybe_unused]] const int ignored = fchmod(file.handle(), mode);
#endif
}

bool OntoDisk([[maybe_unused]] const QFile& file) {
#ifdef Q_OS_UNIX
  return fsync(file.handle()) == 0;
#else
  return true;
#endif
}

bool Rename(const QString& from, const QString& to) {
  return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

}  // namespace

QString ReplaceFile(const QString& path, std::string_view bytes) {
  const QString target = TargetOf(path);
  RemoveDeadSaves(target);
  const QFileInfo info(target);
  if (info.isDir()) return QStringLiteral("it is a folder");
  // A device or a pipe would be gone.
  if (info.exists() && !info.isFile()) return QStringLiteral("it is not a regular file");
  if (info.exists() && !info.isWritable()) return QStringLiteral("Permission denied");
  QTemporaryFile file(target + SavingMark + QStringLiteral("XXXXXX"));
  if (!file.open()) return file.errorString();
  LockSave(file.handle());
  // A disk that fills up takes a part first and tells its reason at the next attempt.
  while (!bytes.empty()) {
    const qint64 written = file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    if (written <= 0) return file.errorString();
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  if (!file.flush()) return file.errorString();
  SetRights(file, target);
  if (!OntoDisk(file)) return qt_error_string();
  if (!Rename(file.fileName(), target)) return qt_error_string();
  file.setAutoRemove(false);
  return {};
}

#include "project/find_files.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include "project/output.h"
#include "project/places.h"

namespace {

constexpr qint64 LongestList = 100'000'000;

/// The lines of a list, or what zeros part in it.
QStringList NamesIn(const QString& list) {
  const QByteArray bytes = QByteArray::fromStdString(LoadBytes(list, LongestList));
  QStringList names;
  for (QByteArray name : bytes.split(bytes.contains('\0') ? '\0' : '\n')) {
    if (name.endsWith('\r')) name.chop(1);
    if (!name.trimmed().isEmpty()) names << QFile::decodeName(name);
  }
  return names;
}

/// Adds the projects of a folder in the order of their names. Gives whether all could be read.
bool AddProjects(const QString& folder, bool recursive, QStringList& files) {
  const QDir dir(folder);
  if (!dir.isReadable()) {
    TellFailure(qUtf8Printable(folder + ": the folder cannot be read"));
    return false;
  }
  for (const QString& name : dir.entryList({"*.T3"}, QDir::Files, QDir::Name)) {
    files << dir.filePath(name);
  }
  bool allRead = true;
  if (!recursive) return allRead;
  // One that is linked may lead back.
  const auto folders = QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks;
  for (const QString& name : dir.entryList(folders, QDir::Name)) {
    allRead = AddProjects(dir.filePath(name), recursive, files) && allRead;
  }
  return allRead;
}

/// A file that is named twice is one, however it is written.
QStringList EachOnce(const QStringList& places) {
  QSet<QString> known;
  QStringList once;
  for (const QString& place : places) {
    const QString path = QFileInfo(place).canonicalFilePath();
    if (!path.isEmpty() && known.contains(path)) continue;
    known << path;
    once << place;
  }
  return once;
}

}  // namespace

FoundFiles FindFiles(const CommandLine& line) {
  FoundFiles found;
  const QStringList listed = line.FilesFrom.isEmpty() ? QStringList() : NamesIn(line.FilesFrom);
  if (line.Files.isEmpty() && listed.isEmpty()) {
    throw RunTimeFailure((line.FilesFrom + ": there is no file in the list").toStdString());
  }
  for (const QString& place : line.Files + listed) {
    if (!QFileInfo(place).isDir()) {
      found.Files << place;
      continue;
    }
    const qsizetype before = found.Files.size();
    const bool read = AddProjects(place, line.Recursive, found.Files);
    found.AllRead = found.AllRead && read;
    if (!read || found.Files.size() > before) continue;
    TellFailure(qUtf8Printable(place + ": there is no .T3 file in the folder"));
    found.AllRead = false;
  }
  found.Files = EachOnce(found.Files);
  return found;
}

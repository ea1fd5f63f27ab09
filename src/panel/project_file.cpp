#include "panel/project_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_codec.h"

namespace {

QByteArray knownContent;
QString shortFile;  ///< The name of the file that ended early; empty for none.

QByteArray Fingerprint(QByteArrayView bytes) {
  return QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Sha1).toHex();
}

[[noreturn]] void Fail(const char* action, const QString& name, const QString& reason) {
  throw RunTimeFailure(QStringLiteral("Cannot %1 \"%2\": %3.")
                           .arg(QString::fromLatin1(action), QDir::toNativeSeparators(name), reason)
                           .toStdString());
}

/// The bytes from `offset` on, up to `limit` of them.
QByteArray ReadBytes(const char* action, const QString& name, qint64 offset) {
  const QFileInfo info(name);
  if (info.isDir()) Fail(action, name, QStringLiteral("it is a folder"));
  if (info.exists() && !info.isFile()) {
    Fail(action, name, QStringLiteral("it is not a regular file"));
  }
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly) || (offset > 0 && !file.seek(offset))) {
    Fail(action, name, file.errorString());
  }
  QByteArray bytes = file.read(std::clamp<qint64>(file.size() - offset, 0, LargestProjectFile));
  if (file.error() != QFileDevice::NoError) Fail(action, name, file.errorString());
  return bytes;
}

}  // namespace

ProjectRead ReadProject(const QString& name, Project over) {
  const QByteArray bytes = ReadBytes("open", name, 0);
  ProjectRead read{std::move(over), false, Fingerprint(bytes)};
  try {
    read.Whole =
        DecodeProject({bytes.constData(), static_cast<std::size_t>(bytes.size())}, read.Content);
  } catch (const RunTimeFailure& failure) {
    Fail("open", name, QString::fromUtf8(failure.what()));
  }
  return read;
}

QByteArray WriteProject(const QString& name, const Project& project, Saving saving) {
  std::string bytes = EncodeProject(project);
  const QFileInfo old(name);
  if (old.exists()) {
    if (old.size() > LargestProjectFile)
      Fail("save", name, QStringLiteral("what is there is not a project file"));
    bytes += ReadBytes("save", name, static_cast<qint64>(bytes.size())).toStdString();
  }
  ReplaceFile(name, bytes, saving);
  return Fingerprint({bytes.data(), static_cast<qsizetype>(bytes.size())});
}

void ReadProjectFile() {
  ProjectRead read = ReadProject(CurrentFileName, LiveProject);
  LiveProject = std::move(read.Content);
  knownContent = read.Fingerprint;
  shortFile = read.Whole ? QString() : CurrentFileName;
  CheckLoadedData();
}

void WriteProjectFile(Saving saving) {
  knownContent = WriteProject(CurrentFileName, LiveProject, saving);
  shortFile.clear();
}

bool FileEndsEarly() {
  return !shortFile.isEmpty() && shortFile == CurrentFileName;
}

QByteArray KnownContent() {
  return knownContent;
}

void SetKnownContent(const QByteArray& known) {
  knownContent = known;
}

bool ChangedByOthers() {
  QFile file(CurrentFileName);
  return !knownContent.isEmpty() && QFileInfo(CurrentFileName).isFile() &&
         file.open(QIODevice::ReadOnly) &&
         Fingerprint(file.read(LargestProjectFile)) != knownContent;
}

void CheckLoadedData() {}

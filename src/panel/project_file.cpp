#include "panel/project_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <memory>

#include "panel/defaults.h"
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

/// Whether the bytes hold a whole project.
bool Decode(const QString& name, const QByteArray& bytes, ProjectDocument& document) {
  try {
    return DecodeProject({bytes.constData(), static_cast<std::size_t>(bytes.size())}, document);
  } catch (const RunTimeFailure& failure) {
    Fail("open", name, QString::fromUtf8(failure.what()));
  }
}

}  // namespace

void ReadProjectFile() {
  const QByteArray bytes = ReadBytes("open", CurrentFileName, 0);
  const QByteArray known = Fingerprint(bytes);
  bool whole = false;
  ChangeDocument(
      [&](ProjectDocument& document) { whole = Decode(CurrentFileName, bytes, document); });
  knownContent = known;
  shortFile = whole ? QString() : CurrentFileName;
  CheckLoadedData();
}

ProjectDocument ReadOtherProject(const QString& name) {
  auto document = std::make_unique<ProjectDocument>(NewPanel());
  Decode(name, ReadBytes("open", name, 0), *document);
  return *document;
}

void WriteProjectFile(Saving saving) {
  std::string bytes = EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock);
  const QFileInfo old(CurrentFileName);
  if (old.exists()) {
    if (old.size() > LargestProjectFile)
      Fail("save", CurrentFileName, QStringLiteral("what is there is no project file"));
    bytes += ReadBytes("save", CurrentFileName, static_cast<qint64>(bytes.size())).toStdString();
  }
  ReplaceFile(CurrentFileName, bytes, saving);
  knownContent = Fingerprint({bytes.data(), static_cast<qsizetype>(bytes.size())});
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

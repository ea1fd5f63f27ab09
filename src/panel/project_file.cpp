#include "panel/project_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "panel/program_state.h"
#include "panel/project_codec.h"
#include "panel/replace_file.h"

namespace {

QByteArray knownContent;

QByteArray Fingerprint(QByteArrayView bytes) {
  return QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Sha1).toHex();
}

[[noreturn]] void Fail(const char* action, const QString& reason) {
  throw RunTimeFailure(
      QStringLiteral("Cannot %1 \"%2\": %3.")
          .arg(QString::fromLatin1(action), QDir::toNativeSeparators(CurrentFileName), reason)
          .toStdString());
}

/// The bytes from `offset` on, up to `limit` of them.
QByteArray ReadBytes(const char* action, qint64 offset, qint64 limit) {
  const QFileInfo info(CurrentFileName);
  if (info.isDir()) Fail(action, QStringLiteral("it is a folder"));
  if (info.exists() && !info.isFile()) Fail(action, QStringLiteral("it is not a regular file"));
  QFile file(CurrentFileName);
  if (!file.open(QIODevice::ReadOnly) || (offset > 0 && !file.seek(offset))) {
    Fail(action, file.errorString());
  }
  QByteArray bytes = file.read(std::clamp<qint64>(file.size() - offset, 0, limit));
  if (file.error() != QFileDevice::NoError) Fail(action, file.errorString());
  return bytes;
}

}  // namespace

void ReadProjectFile() {
  const QByteArray bytes = ReadBytes("open", 0, LargestProjectFile);
  const QByteArray known = Fingerprint(bytes);
  try {
    ChangeDocument([&bytes](ProjectDocument& document) {
      DecodeProject({bytes.constData(), static_cast<std::size_t>(bytes.size())}, document);
    });
  } catch (const RunTimeFailure& failure) {
    Fail("open", QString::fromUtf8(failure.what()));
  }
  knownContent = known;
  CheckLoadedData();
}

void WriteProjectFile() {
  std::string bytes = EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock);
  const QFileInfo old(CurrentFileName);
  if (old.exists()) {
    if (old.size() > LargestProjectFile)
      Fail("save", QStringLiteral("what is there is no project file"));
    bytes += ReadBytes("save", static_cast<qint64>(bytes.size()), LargestProjectFile).toStdString();
  }
  const QString failure = ReplaceFile(CurrentFileName, bytes);
  if (!failure.isEmpty()) Fail("save", failure);
  knownContent = Fingerprint({bytes.data(), static_cast<qsizetype>(bytes.size())});
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

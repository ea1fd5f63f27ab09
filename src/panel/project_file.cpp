#include "panel/project_file.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "panel/program_state.h"
#include "panel/project_codec.h"
#include "panel/replace_file.h"

namespace {

/// Far above the longest file that a panel with the longest names can have.
constexpr qint64 LargestFile = qint64{64} * 1024 * 1024;

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
  const QByteArray bytes = ReadBytes("open", 0, LargestFile);
  try {
    ChangeDocument([&bytes](ProjectDocument& document) {
      DecodeProject({bytes.constData(), static_cast<std::size_t>(bytes.size())}, document);
    });
  } catch (const RunTimeFailure& failure) {
    Fail("open", QString::fromUtf8(failure.what()));
  }
  CheckLoadedData();
}

void WriteProjectFile() {
  std::string bytes = EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock);
  const QFileInfo old(CurrentFileName);
  if (old.exists()) {
    if (old.size() > LargestFile) Fail("save", QStringLiteral("what is there is no project file"));
    bytes += ReadBytes("save", static_cast<qint64>(bytes.size()), LargestFile).toStdString();
  }
  const QString failure = ReplaceFile(CurrentFileName, bytes);
  if (!failure.isEmpty()) Fail("save", failure);
}

void CheckLoadedData() {}

#include "panel/recovery_copy.h"

#include <QCoreApplication>
#include <QDir>
#include <QUuid>
#include <algorithm>

#include "panel/program_state.h"
#include "panel/project_codec.h"
#include "panel/project_document.h"
#include "panel/project_file.h"
#include "panel/replace_file.h"

namespace {

const QString CopySuffix = QStringLiteral(".recovery");
const QString LockSuffix = QStringLiteral(".lock");

QString CopyFolder() {
  return DataPath(QStringLiteral("Recovery"));
}

std::string LiveProject() {
  return EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock);
}

std::unique_ptr<QLockFile> LockOf(const QString& copy) {
  auto lock = std::make_unique<QLockFile>(copy + LockSuffix);
  lock->setStaleLockTime(0);
  return lock;
}

/// A lock names its owner by a number that another process may have by now, in a sandbox always
/// has. Whether somebody holds it is told by the attempt to remove it.
bool OwnerIsDead(QLockFile& lock) {
  return lock.tryLock() || (lock.removeStaleLockFile() && lock.tryLock());
}

/// Two lines, the file's name and what is known of its content, and the project behind them.
struct Copy {
  QString ProjectName;
  QByteArray Known;
  QByteArray Project;
};

Copy Split(const QByteArray& bytes) {
  const qsizetype name = bytes.indexOf('\n');
  const qsizetype known = bytes.indexOf('\n', name + 1);
  if (name < 0 || known < 0) throw RunTimeFailure("The kept copy is damaged.");
  return {QString::fromUtf8(bytes.left(name)), bytes.mid(name + 1, known - name - 1),
          bytes.mid(known + 1)};
}

QByteArray ReadCopy(const QString& path, qint64 most) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw RunTimeFailure(file.errorString().toStdString());
  return file.read(most);
}

}  // namespace

void RecoveryCopy::Settle() {
  settled_ = LiveProject();
  Remove();
}

void RecoveryCopy::Update() {
  std::string project;
  try {
    project = LiveProject();
  } catch (const RunTimeFailure&) {
    return;  // What no file can hold no copy can.
  }
  if (project == settled_) {
    Remove();
    return;
  }
  const std::string content =
      ((FileNotInMemory ? NoFileName : CurrentFileName).toUtf8() + '\n' + KnownContent() + '\n')
          .toStdString() +
      project;
  if (content == kept_) return;
  if (!alive_) {
    QDir().mkpath(CopyFolder());
    path_ = CopyFolder() + u'/' + QUuid::createUuid().toString(QUuid::Id128) + CopySuffix;
    alive_ = LockOf(path_);
    alive_->tryLock();
  }
  if (ReplaceFile(path_, content).isEmpty()) kept_ = content;
}

void RecoveryCopy::Remove() {
  if (!alive_) return;
  QFile::remove(path_);
  alive_.reset();
  kept_.clear();
}

std::vector<KeptWork> FindKeptWork() {
  std::vector<KeptWork> found;
  const QDir folder(CopyFolder());
  constexpr qint64 longestName = 65'536;
  for (const QFileInfo& copy : folder.entryInfoList({u'*' + CopySuffix}, QDir::Files, QDir::Time)) {
    const auto lock = LockOf(copy.filePath());
    if (!OwnerIsDead(*lock)) continue;
    try {
      found.push_back({copy.filePath(), Split(ReadCopy(copy.filePath(), longestName)).ProjectName,
                       copy.lastModified()});
    } catch (const RunTimeFailure&) {
      // Nobody could take it up.
    }
  }
  // What a program left that died between its lock and its copy; a lock goes as it is let go.
  for (const QString& name :
       folder.entryList({u'*' + CopySuffix + QStringLiteral(".*")}, QDir::Files)) {
    const auto lock = LockOf(folder.filePath(name.section(CopySuffix, 0, 0) + CopySuffix));
    if (OwnerIsDead(*lock) && !name.endsWith(LockSuffix)) QFile::remove(folder.filePath(name));
  }
  return found;
}

void TakeUpKeptWork(const KeptWork& work) {
  const Copy copy = Split(ReadCopy(work.Path, LargestProjectFile));
  ChangeDocument([&copy](ProjectDocument& document) {
    DecodeProject({copy.Project.constData(), static_cast<std::size_t>(copy.Project.size())},
                  document);
  });
  CurrentFileName = copy.ProjectName;
  SetKnownContent(copy.Known);
  FileNotInMemory = false;
  DataChanged = -1;
}

void DeleteKeptWork(const KeptWork& work) {
  QFile::remove(work.Path);
}

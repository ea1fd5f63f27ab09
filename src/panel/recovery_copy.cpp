#include "panel/recovery_copy.h"

#include <QCoreApplication>
#include <QDir>
#include <QUuid>
#include <algorithm>

#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_codec.h"
#include "panel/project_file.h"
#include "panel/replace_file.h"

namespace {

const QString CopySuffix = QStringLiteral(".recovery");
const QString LockSuffix = QStringLiteral(".lock");

QString CopyFolder() {
  return DataPath(QStringLiteral("Recovery"));
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
  Project Content;
};

/// A name may hold a line end.
QByteArray InOneLine(const QString& name) {
  return name.toUtf8().toPercentEncoding("/ ");
}

/// Throws RunTimeFailure.
std::unique_ptr<Copy> ReadCopy(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw RunTimeFailure(file.errorString().toStdString());
  const QByteArray bytes = file.read(LargestProjectFile);
  const qsizetype name = bytes.indexOf('\n');
  const qsizetype known = bytes.indexOf('\n', name + 1);
  auto copy = std::make_unique<Copy>();
  const std::string project = bytes.mid(known + 1).toStdString();
  if (name < 0 || known < 0 || !DecodeProject(project, copy->Content) ||
      EncodeProject(copy->Content) != project) {
    throw RunTimeFailure("The kept copy is damaged.");
  }
  copy->ProjectName = QString::fromUtf8(QByteArray::fromPercentEncoding(bytes.left(name)));
  copy->Known = bytes.mid(name + 1, known - name - 1);
  return copy;
}

}  // namespace

void RecoveryCopy::Settle(const Project& project) {
  settled_ = EncodeProject(project);
  Remove();
}

bool RecoveryCopy::IsUnsaved(const Project& project) const {
  try {
    return EncodeProject(project) != settled_;
  } catch (const RunTimeFailure&) {
    return true;  // no file holds it
  }
}

std::unique_ptr<Project> RecoveryCopy::Saved() const {
  auto saved = std::make_unique<Project>();
  return DecodeProject(settled_, *saved) ? std::move(saved) : nullptr;
}

void RecoveryCopy::Update(const Project& project) {
  trouble_.reset();
  try {
    const std::string bytes = EncodeProject(project);
    if (bytes == settled_) {
      Remove();
    } else {
      Keep(
          (InOneLine(FileNotInMemory ? NoFileName : CurrentFileName) + '\n' + KnownContent() + '\n')
              .toStdString() +
          bytes);
    }
  } catch (const RunTimeFailure& failure) {
    trouble_ = failure.what();
  }
}

void RecoveryCopy::Keep(const std::string& content) {
  if (content == kept_) return;
  if (!alive_) {
    QDir().mkpath(CopyFolder());
    QFile::setPermissions(CopyFolder(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    path_ = CopyFolder() + u'/' + QUuid::createUuid().toString(QUuid::Id128) + CopySuffix;
    alive_ = LockOf(path_);
    alive_->tryLock();
  }
  ReplaceFile(path_, content, Saving::Aside, Readers::OwnerAlone);
  kept_ = content;
}

void RecoveryCopy::Remove() {
  if (!alive_) return;
  QFile::remove(path_);
  Leave();
}

void RecoveryCopy::Leave() {
  alive_.reset();
  kept_.clear();
}

std::vector<KeptWork> FindKeptWork() {
  std::vector<KeptWork> found;
  const QDir folder(CopyFolder());
  for (const QFileInfo& copy : folder.entryInfoList({u'*' + CopySuffix}, QDir::Files, QDir::Time)) {
    const auto lock = LockOf(copy.filePath());
    if (!OwnerIsDead(*lock)) continue;
    KeptWork work{copy.filePath(), {}, copy.lastModified()};
    try {
      work.ProjectName = ReadCopy(work.Path)->ProjectName;
    } catch (const RunTimeFailure&) {
      work.Damaged = true;
    }
    found.push_back(work);
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
  const std::unique_ptr<Copy> copy = ReadCopy(work.Path);
  LiveProject = std::move(copy->Content);
  CurrentFileName = copy->ProjectName;
  SetKnownContent(copy->Known);
  FileNotInMemory = false;
}

void DeleteKeptWork(const KeptWork& work) {
  QFile::remove(work.Path);
}

#include "document/rehearse.h"

#include <QCoreApplication>
#include <QLockFile>
#include <QProcess>
#include <QStandardPaths>

#include "panel/live_project.h"
#include "panel/panel_image.h"
#include "panel/program_state.h"
#include "panel/replace_file.h"

namespace {

/// Beside this program, or where the desktop finds programs; empty where it is not installed.
QString PanelProgram() {
  const QString name = QStringLiteral("tamberloom3-panel");
  const QString beside =
      QStandardPaths::findExecutable(name, {QCoreApplication::applicationDirPath()});
  return beside.isEmpty() ? QStandardPaths::findExecutable(name) : beside;
}

/// The window holds a lock beside the file that it follows.
bool IsShown(const QString& file) {
  QLockFile lock(file + QStringLiteral(".lock"));
  lock.setStaleLockTime(0);
  return !lock.tryLock() && lock.error() == QLockFile::LockFailedError;
}

}  // namespace

QString Rehearse() {
  const QString program = PanelProgram();
  if (program.isEmpty()) return QStringLiteral("The simulated panel is not installed.");
  const QString file = DataPath(QStringLiteral("Rehearsal.memory"));
  ReplaceFile(file, FreshPanelMemory(LiveProject));
  if (IsShown(file)) return QStringLiteral("The panel's window has the new settings.");
  if (!QProcess::startDetached(program, {"--window", "--follow", file})) {
    return QStringLiteral("The simulated panel cannot be started.");
  }
  return QStringLiteral("The project runs in a window of its own.");
}

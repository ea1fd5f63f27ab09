#include "document/rehearse.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLockFile>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QWidget>

#include "panel/live_project.h"
#include "panel/panel_image.h"
#include "panel/program_state.h"
#include "panel/replace_file.h"
#include "shell/shell.h"

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

/// Where the main window stands, "x,y,width,height". It makes room at its right where neither side
/// has room for the panel's.
QString PlaceOfProgram() {
  constexpr int panelWidth = 520;
  QWidget& window = *MainWindow();
  const QRect screen = window.screen()->availableGeometry();
  QRect frame = window.frameGeometry();
  const int most = std::max(frame.left() - screen.left(), screen.right() - frame.right());
  if (most < panelWidth && frame.width() < screen.width()) {
    frame.moveLeft(screen.left());
    window.move(frame.topLeft());
  }
  return QStringLiteral("%1,%2,%3,%4")
      .arg(frame.x())
      .arg(frame.y())
      .arg(frame.width())
      .arg(frame.height());
}

}  // namespace

QString Rehearse() {
  const QString program = PanelProgram();
  if (program.isEmpty()) return QStringLiteral("The simulated panel is not installed.");
  const QString file = DataPath(QStringLiteral("Rehearsal.memory"));
  const QString name =
      CurrentFileName == NoFileName ? QString() : QFileInfo(CurrentFileName).completeBaseName();
  ReplaceFile(file + QStringLiteral(".title"), name.toStdString() + '\n');
  ReplaceFile(file, FreshPanelMemory(LiveProject));
  if (IsShown(file)) return QStringLiteral("The panel's window has the new settings.");
  if (!QProcess::startDetached(
          program, {"--window", "--follow", file, "--beside", PlaceOfProgram(), "--until",
                    QString::number(QCoreApplication::applicationPid())})) {
    return QStringLiteral("The simulated panel cannot be started.");
  }
  return QStringLiteral("The project runs in a window of its own.");
}

#include <QApplication>
#include <QIcon>
#include <QLockFile>
#include <QMessageBox>
#include <QSettings>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <stdexcept>

#include "simulator/program/command_line.h"
#include "simulator/program/end_signals.h"
#include "simulator/window/beside.h"
#include "simulator/window/frame_style.h"
#include "simulator/window/panel_window.h"

namespace {

QtMessageHandler usualHandler = nullptr;

/// While the toolkit looks for a display: it would tell much and abort.
void TellNoDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs("tamberloom3-panel --window needs a display, and none can be reached.\n", stderr);
    std::_Exit(1);
  }
  if (!QByteArray(context.category).startsWith("qt.qpa")) usualHandler(type, context, text);
}

void TellFailure(const char* what) {
  std::fprintf(stderr, "tamberloom3-panel: %s\n", what);
  QMessageBox::critical(nullptr, QStringLiteral("Orv Tamberloom 3 Simulated Panel"),
                        QString::fromUtf8(what));
}

}  // namespace

int main(int argc, char** argv) {
  usualHandler = qInstallMessageHandler(TellNoDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usualHandler);
  QApplication::setStyle(new simulator::FrameStyle);
  QApplication::setApplicationName(QStringLiteral("tamberloom3-panel"));
  QApplication::setDesktopFileName(QStringLiteral("com.example.tamberloom3-panel"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/tamberloom3-panel.png")));
  try {
    const simulator::CommandLine line = simulator::ParseCommandLine(QApplication::arguments());
    const QString& followed = line.Wanted.FollowedFile;
    std::optional<QLockFile> shown;
    if (!followed.isEmpty()) {
      shown.emplace(followed + QStringLiteral(".lock"));
      shown->setStaleLockTime(0);
      if (!shown->tryLock() && shown->error() == QLockFile::LockFailedError) return 0;
    }
    simulator::QuitOnSignals();
    simulator::Simulator panel(line.Wanted);
    simulator::PanelWindow window(panel);
    const auto stand = [&] {
      if (!line.Beside) return;
      const auto [x, y, width, height] = *line.Beside;
      simulator::StandBeside(window, {x, y, width, height}, simulator::PanelWindow::FoldedWidth);
    };
    QSettings kept(QStringLiteral("tamberloom3-panel"), QStringLiteral("window"));
    const QString folded = QStringLiteral("Folded");
    window.Folded = [&](bool now) {
      kept.setValue(folded, now);
      if (now) stand();
    };
    // Only what is on show knows how narrow it can be.
    window.show();
    if (kept.value(folded, line.Beside.has_value()).toBool()) {
      window.Fold(true);
      stand();
    }
    if (line.Until != 0) window.EndWith(line.Until);
    return QApplication::exec();
  } catch (const std::invalid_argument& failure) {
    TellFailure(failure.what());
    return 2;
  } catch (const std::exception& failure) {
    TellFailure(failure.what());
    return 1;
  }
}

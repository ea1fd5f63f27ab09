#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include "first_paint.h"
#include "panel/live_project.h"
#include "ratio.h"
#include "screen_table.h"
#include "shell/window/application.h"
#include "shell/window/main_window.h"

// Start and memory of the whole program, each against an empty Qt window started the same way.

namespace {

void Open(frmT3MasterMDI& window, Screen screen) {
  window.UnloadAllForms();
  window.ShowForm(screen);
  QApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void OpenEveryScreen(frmT3MasterMDI& window) {
  for (const ScreenEntry& entry : ScreenTable()) {
    if (entry.Create) Open(window, entry.Name);
  }
}

void OpenAgain(frmT3MasterMDI& window, Screen screen, int times) {
  for (int i = 0; i < times; ++i) Open(window, screen);
}

/// The program itself, in a child process.
int RunProgram(Application& application, const QString& mode) {
  MsgBoxSeam = [](const Message&) { return MsgAnswer::No; };
  frmT3MasterMDI window(AllScreens());
  Q_UNUSED(application)
  return ReportFirstPaint(
      window, [&] { window.MDIForm_Load(); },
      [&] {
        for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = 1;
        if (mode != QLatin1String("start")) OpenEveryScreen(window);
        if (mode == QLatin1String("again")) OpenAgain(window, Screen::RelayOutputOptions, 1000);
      });
}

struct Run {
  double Milliseconds;
  double Kilobytes;
};

Run Start(const QString& program, const QStringList& arguments) {
  QProcess process;
  QElapsedTimer clock;
  clock.start();
  process.start(program, arguments);
  QByteArray output;
  double painted = 0;
  while (process.waitForReadyRead(60'000)) {
    output += process.readAllStandardOutput();
    if (painted == 0 && output.contains("painted")) {
      painted = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }
  }
  process.waitForFinished();
  return {painted, output.mid(output.indexOf('\n') + 1).toDouble()};
}

}  // namespace

int main(int argc, char** argv) {
  const bool display = qEnvironmentVariableIsSet("DISPLAY");
  if (!display) qputenv("QT_QPA_PLATFORM", "offscreen");
  Application application(argc, argv);
  if (argc > 1) return RunProgram(application, QString::fromLocal8Bit(argv[1]));

  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  const QString self = QCoreApplication::applicationFilePath();
  const QString bare = QFileInfo(self).absolutePath() + QStringLiteral("/empty_window");
  // In turn, so that both meet the same state of the machine.
  std::vector<double> starts;
  std::vector<double> emptyStarts;
  for (int i = 0; i < 41; ++i) {
    emptyStarts.push_back(Start(bare, {}).Milliseconds);
    starts.push_back(Start(self, {QStringLiteral("start")}).Milliseconds);
  }
  const Run empty = Start(bare, {});
  const Run screens = Start(self, {QStringLiteral("screens")});
  const Run again = Start(self, {QStringLiteral("again")});

  RatioReport report;
  if (display) {
    report.Line("start to first paint", Median(starts), "empty Qt window", Median(emptyStarts), 1.5,
                "ms");
  } else {
    std::puts("start to first paint: needs a display, such as xvfb-run gives");
  }
  report.Line("above an empty window", (screens.Kilobytes - empty.Kilobytes) / 1024, "allowed", 20,
              1, "MB");
  report.Line("growth over 1,000 opens", (again.Kilobytes - screens.Kilobytes) / 1024, "allowed", 1,
              1, "MB");
  return report.ExitCode();
}

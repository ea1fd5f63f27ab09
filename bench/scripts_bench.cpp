#include <sys/resource.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <deque>

#include "panel/defaults.h"
#include "panel/project_file.h"
#include "ratio.h"
#include "simulator/program/panel_thread.h"

// The program for scripts as it is run: what has changed over a slow line, many panels at a time, a
// watch of hours.

namespace {

using simulator::PanelThread;

const QString Program = QStringLiteral(PROJECT_PROGRAM);

simulator::Options PacedPort(int baud) {
  simulator::PtyServer::Options pty;
  pty.Baud = baud;
  return PanelThread::PtyOptions(pty);
}

QString AddressOf(PanelThread& panel) {
  return QStringLiteral("serial:") + panel.PtyPath();
}

/// Runs `program` to its end, with `look` now and then.
double Milliseconds(const QString& program, const QStringList& arguments,
                    const QByteArray& input = {}, const std::function<void()>& look = {}) {
  QElapsedTimer timer;
  timer.start();
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  constexpr int lookMs = 50;
  while (!process.waitForFinished(lookMs) && process.state() != QProcess::NotRunning) {
    if (look) look();
  }
  const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6;
  if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) std::exit(1);
  return ms;
}

void MeasureChanges(RatioReport& report, const QString& folder) {
  PanelThread panel(PacedPort(9600));
  const QString at = AddressOf(panel);
  const QString file = folder + QStringLiteral("/hall.T3");
  Project project = NewProject();
  project.Panel.IOCount(0) = 4;
  WriteProject(file, project);
  const double connecting = Milliseconds(Program, {"switch", at, "-"});
  const double all = Milliseconds(Program, {"send", file, at}) - connecting;
  project.Panel.TimerTime(3) = 7;
  WriteProject(file, project);
  panel.With([](simulator::Simulator& s) { s.Log().Forget(); });
  const double changes = Milliseconds(Program, {"send", file, at, "--changes"}) - connecting;
  report.Line("send --changes, 9600 baud", changes, "send", all, 0.03, "ms");
  const auto exchanges = static_cast<double>(panel.FramesFromHost().size()) - 1;
  report.Line("its exchanges", exchanges, "allowed", 5, 1, "");
}

/// The most memory of one of the programs that run now.
double PeakMegabytes() {
  double most = 0;
  for (const QString& process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly)) continue;
    const QByteArray facts = status.readAll();
    if (!facts.startsWith("Name:\ttamberloom3-pro")) continue;
    const auto at = facts.indexOf("VmHWM:");
    if (at >= 0)
      most = std::max(most, facts.mid(at + 6, 12).trimmed().split(' ')[0].toDouble() / 1024);
  }
  return most;
}

void MeasureMany(RatioReport& report, const QString& folder) {
  constexpr int count = 200;
  constexpr int few = 3;
  constexpr int baud = 230400;
  std::deque<PanelThread> panels;
  QStringList lines;
  for (int i = 0; i < count; ++i) {
    lines << QStringLiteral("%1 %2/%3.T3")
                 .arg(AddressOf(panels.emplace_back(PacedPort(baud))), folder)
                 .arg(i);
  }
  double memory = 0;
  const auto read = [&](const char* atATime, const QStringList& from) {
    return Milliseconds(QStringLiteral("xargs"), {"-P", atATime, "-n", "2", Program, "read"},
                        from.join(u'\n').toUtf8(),
                        [&] { memory = std::max(memory, PeakMegabytes()); }) /
           static_cast<double>(from.size());
  };
  const double one = read("1", lines.mid(0, few));
  report.Line("a panel read, 20 at a time", read("20", lines), "one by one", one, 0.1, "ms");
  report.Line("memory of a process", memory, "allowed", 30, 1, "MB");
}

void MeasureWatch(RatioReport& report) {
  PanelThread panel;
  constexpr int watchMs = 20'000;
  QProcess watch;
  watch.start(Program, {"watch", QStringLiteral("tcp:127.0.0.1:%1").arg(panel.TcpPort())});
  const auto processorMs = [] {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto ms = [](const timeval& time) {
      return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
  };
  const double before = processorMs();
  watch.waitForFinished(watchMs);
  watch.terminate();
  watch.waitForFinished();
  report.Line("processor of a watch at 2 s", processorMs() - before, "its time", watchMs, 0.01,
              "ms");
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  // A panel's port, its ends and its clocks are a handful of descriptors.
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  qputenv("TAMBERLOOM3_PASSWORD", "000000");
  RatioReport report;
  MeasureChanges(report, home.path());
  MeasureMany(report, home.path());
  MeasureWatch(report);
  return report.ExitCode();
}

#include <QEventLoop>
#include <ctime>

#include "bench_program.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "ratio.h"
#include "simulator/program/panel_thread.h"

// What automatic updates cost over loopback, while everything on the panel changes from poll to
// poll: the program's processor time a poll (its one thread's; the panel runs on another) against
// the 250 ms between two polls.

namespace {

constexpr double PollIntervalMs = 250;
constexpr double AllowedShare = 0.03;
constexpr int Polls = 200;

double ThreadCpuMs() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void Spin(int ms) {
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
}

/// Turns over whatever the screens show.
void ChangePanel(simulator::Panel& panel, bool on) {
  panel.SetAllRelays(on);
  panel.Front.Press(on ? 0x20 : 0x10);
  for (int input = 0; input < simulator::Items; ++input) {
    panel.SetContact(input, simulator::Contact::On, on);
  }
  for (int device = 1; device <= simulator::Devices; ++device) {
    panel.SetPresence(
        device, on ? simulator::Panel::Presence::Present : simulator::Panel::Presence::Dropped);
  }
}

/// Processor time of one poll in milliseconds.
double PollCost(frmT3MasterMDI& window, simulator::PanelThread& panel, Screen screen) {
  window.UnloadAllForms();
  ChildForm* form = window.ShowForm(screen);
  Spin(100);
  if (auto* devices = form->findChild<ComboBox*>(QStringLiteral("cboFLinkDevice"))) {
    devices->SetListIndex(1);
  }
  auto* timer = form->findChild<Timer*>(QStringLiteral("Timer1"));
  double spent = 0;
  for (int poll = 0; poll < Polls; ++poll) {
    panel.With([poll](simulator::Panel& p) { ChangePanel(p, poll % 2 == 0); });
    const double before = ThreadCpuMs();
    RunHandler(timer->Tick);
    Spin(2);
    spent += ThreadCpuMs() - before;
  }
  return spent / Polls;
}

}  // namespace

int main(int argc, char** argv) {
  BenchProgram program(argc, argv, MsgAnswer::No);
  frmT3MasterMDI& window = program.Window;
  PanelRecord.IOCount.elements.fill(1);
  FennlinkRecords(1).DeviceType = 8;

  const QString address =
      QStringLiteral("127.7.%1.1").arg(QCoreApplication::applicationPid() % 250);
  simulator::Options options;
  options.Host = address;
  options.TcpPort = 10001;
  simulator::PanelThread panel(options);
  ConnectionType() = 2;
  TcpAddress() = address.toStdString();
  window.ShowForm(Screen::Connect)->findChild<Button*>(QStringLiteral("cmdConnect"))->click();
  if (Connected == 0) {
    std::puts("no connection to the simulated panel");
    return 1;
  }

  RatioReport report;
  for (const Screen screen :
       {Screen::RelayStatus, Screen::RelayGroupStatus, Screen::InputStatus, Screen::FennlinkStatus,
        Screen::CapturePresets, Screen::VirtualKeypad}) {
    report.Line(ScreenName(screen), PollCost(window, panel, screen), "3 % of 250 ms",
                PollIntervalMs * AllowedShare, 1, "ms");
  }
  return report.ExitCode();
}

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <tuple>

#include "line/panel_commands.h"
#include "link/connect_form.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "ratio.h"
#include "screen_table.h"
#include "shell/shell.h"
#include "shell/window/application.h"
#include "shell/window/main_window.h"
#include "simulator/program/panel_thread.h"
#include "status/output_status_form.h"

// Transfers of 640 blocks against the bare conversation of the same frames, and against the time
// that the bytes themselves take on a line of 115200 baud.

namespace {

using Frames = std::vector<std::string>;

constexpr const char* Address = "127.24.10.1";
constexpr int Baud = 115200;

double CpuMs() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto ms = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return ms(usage.ru_utime) + ms(usage.ru_stime);
}

template <typename Work>
double Milliseconds(Work work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// A host without logic: sends each frame and reads up to the closing bracket.
class BareHost {
 public:
  BareHost() : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    const int on = 1;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(10001);
    inet_pton(AF_INET, Address, &address.sin_addr);
    if (connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
      std::perror("connect");
      std::exit(1);
    }
  }
  ~BareHost() { close(socket_); }
  BareHost(const BareHost&) = delete;
  BareHost& operator=(const BareHost&) = delete;

  std::size_t Converse(const Frames& frames) {
    std::size_t received = 0;
    for (const std::string& frame : frames) {
      if (send(socket_, frame.data(), frame.size(), 0) < 0) std::exit(1);
      char reply[512];
      ssize_t count = 0;
      do {
        const ssize_t more =
            read(socket_, reply + count, sizeof reply - static_cast<std::size_t>(count));
        if (more <= 0) std::exit(1);
        count += more;
      } while (reply[count - 1] != ']');
      received += static_cast<std::size_t>(count);
    }
    return received;
  }

 private:
  int socket_;
};

/// The main window with a link to a simulated panel.
class Host {
 public:
  Host() { window_.MDIForm_Load(); }

  void Connect(Int16 type) {
    ConnectionType() = type;
    TcpAddress() = Address;
    PanelRecord.ComPort = 7;
    window_.UnloadAllForms();
    form_ = dynamic_cast<frmT3Connect*>(window_.ShowForm(Screen::Connect));
    form_->cmdConnect_Click();
    if (Connected == 0) {
      std::puts("no connection");
      std::exit(1);
    }
    form_->findChild<Timer*>(QStringLiteral("Timer1"))->SetEnabled(false);
  }
  frmT3Connect& Form() { return *form_; }
  frmT3MasterMDI& Window() { return window_; }

 private:
  frmT3MasterMDI window_{AllScreens()};
  frmT3Connect* form_ = nullptr;
};

/// No block of the image is empty, so that each goes as a write of 64 bytes.
void FillDocument() {
  PanelRecord.IOCount(0) = 8;
  PanelRecord.IOCount(1) = 4;
  for (int i = 0; i < ItemCount; ++i) {
    PanelRecord.RelayTimerType(i) = static_cast<Int16>(i % 7);
    for (int j = 0; j < ItemCount; ++j) PanelRecord.InputRelayControl(i, j) = 5;
  }
  for (int device = 1; device <= DeviceCount; ++device) FennlinkRecords(device).DeviceType = 1;
}

/// The frames of one run of `work`.
template <typename Work>
Frames FramesOf(simulator::PanelThread& panel, Work work) {
  panel.With([](simulator::Simulator& s) { s.Log().Forget(); });
  work();
  return panel.FramesFromHost();
}

std::size_t Size(const Frames& frames) {
  std::size_t size = 0;
  for (const std::string& frame : frames) size += frame.size();
  return size;
}

void MeasureTcp(Host& host, RatioReport& report) {
  simulator::Options options;
  options.Host = Address;
  options.TcpPort = 10001;
  simulator::PanelThread panel(options);
  host.Connect(2);
  BareHost bare;
  const auto compare = [&](const char* topic, auto work, double limit) {
    const Frames frames = FramesOf(panel, work);
    // Run by run in turn, so that a busy machine bears upon both alike.
    constexpr int runs = 60;
    std::vector<double> measured;
    std::vector<double> base;
    for (int run = 0; run < runs; ++run) {
      measured.push_back(Milliseconds(work));
      base.push_back(Milliseconds([&] { bare.Converse(frames); }));
    }
    report.Line(topic, Median(measured), "bare socket", Median(base), limit, "ms");
  };
  FillDocument();
  compare(
      "download, TCP", [&] { host.Form().DownLoadSettings(); }, 1.3);
  compare(
      "upload, TCP", [&] { host.Form().UpLoadSettings(); }, 1.3);

  panel.AddFault("late:1000");
  double cpu = CpuMs();
  double wall = Milliseconds([] { std::ignore = ReadRelays(); });
  report.Line("processor in a TCP wait", CpuMs() - cpu, "the wait", wall, 0.1, "ms");

  host.Window().UnloadAllForms();
  auto* status = dynamic_cast<OutputStatusForm*>(host.Window().ShowForm(Screen::RelayStatus));
  QApplication::processEvents();
  compare(
      "100 status polls, TCP",
      [&] {
        for (int i = 0; i < 100; ++i) status->cmdUpdateStatus_Click();
      },
      1.3);
  Link.DisconnectQZ();
}

void MeasureSerial(Host& host, RatioReport& report) {
  simulator::PtyServer::Options pty;
  pty.Link = DataPath(QStringLiteral("Ports/COM7"));
  pty.Baud = Baud;
  simulator::PanelThread panel(simulator::PanelThread::PtyOptions(pty));
  host.Connect(0);
  const auto compare = [&](const char* topic, std::size_t replyBytes, auto work) {
    double measured = 0;
    const Frames frames = FramesOf(panel, [&] { measured = Milliseconds(work); });
    constexpr double bitsOfByte = 10;
    const double line = static_cast<double>(Size(frames) + replyBytes) * bitsOfByte * 1e3 / Baud;
    report.Line(topic, measured, "bytes on the wire", line, 1.05, "ms");
  };
  compare("download, 115200 baud", 640 * 4 + 8, [&] { host.Form().DownLoadSettings(); });
  // What Continue runs for one timer's new time, against all of it.
  const double all = Milliseconds([&] { host.Form().DownLoadSettings(); });
  ++PanelRecord.TimerTime(3);
  double changes = 0;
  const Frames frames = FramesOf(panel, [&] {
    changes = Milliseconds([&] {
      host.Form().cmdSendChanges_Click();
      host.Form().cmdPassWordContinue_Click();
    });
  });
  report.Line("send changes, one timer", changes, "a download", all, 0.03, "ms");
  report.Line("its exchanges", static_cast<double>(frames.size()), "allowed", 5, 1, "");
  compare("upload, 115200 baud", 640 * 132 + 8, [&] { host.Form().UpLoadSettings(); });

  panel.AddFault("late:1000");
  const double cpu = CpuMs();
  const double wall = Milliseconds([] { std::ignore = ReadRelays(); });
  report.Line("processor in a serial wait", CpuMs() - cpu, "the wait", wall, 0.1, "ms");
  Link.DisconnectQZ();
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  const Application application(argc, argv);
  MsgBoxSeam = [](const Message& message) {
    if (message.Title == QStringLiteral("Error")) {
      std::puts(qPrintable(message.Text));
      std::exit(1);
    }
    return message.Buttons == MsgButtons::Ok ? MsgAnswer::Ok : MsgAnswer::Yes;
  };
  RatioReport report;
  Host host;
  MeasureTcp(host, report);
  MeasureSerial(host, report);
  return report.ExitCode();
}

#include <pthread.h>

#include <QCoreApplication>
#include <QTcpSocket>
#include <ctime>
#include <deque>

#include "ratio.h"
#include "simulator/line/frame.h"
#include "simulator/program/panel_thread.h"

// How long the simulated panel works before it answers one host's firmware question while four
// others send as much as it takes, by the processor time of the panel's thread.

using namespace simulator;

namespace {

constexpr double AnswerLimitMs = 50;

struct Flood {
  const char* Topic;
  std::string Commands;  // over and over again
};

double MillisecondsOf(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class Host {
 public:
  explicit Host(PanelThread& panel) {
    Socket.connectToHost(QStringLiteral("127.0.0.1"), panel.TcpPort());
    Socket.waitForConnected();
  }
  void Send(const std::string& bytes) {
    Socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
    Socket.flush();
  }
  bool Receive(qint64 length) {
    while (Socket.bytesAvailable() < length && Socket.waitForReadyRead()) continue;
    return Socket.bytesAvailable() >= length;
  }

 private:
  QTcpSocket Socket;
};

/// The worst of several questions.
double AnswerMs(const Flood& flood) {
  constexpr int questions = 10;
  constexpr int hosts = 4;
  constexpr std::size_t floodSize = 16'384;
  constexpr qint64 answerSize = 44;
  std::string bytes;
  while (bytes.size() < floodSize) bytes += flood.Commands;
  PanelThread panel;
  clockid_t clock{};
  panel.With([&](Panel&) { pthread_getcpuclockid(pthread_self(), &clock); });
  double worst = 0;
  for (int question = 0; question < questions; ++question) {
    Host asker(panel);
    std::deque<Host> floods;
    for (int i = 0; i < hosts; ++i) floods.emplace_back(panel).Send(bytes);
    const double start = MillisecondsOf(clock);
    asker.Send(FrameCommand("05"));
    if (!asker.Receive(answerSize)) std::exit(1);
    worst = std::max(worst, MillisecondsOf(clock) - start);
  }
  return worst;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const Flood floods[]{
      {"beside 4 that read the keys", FrameCommand("0700")},
      {"beside 4 that add it all up", FrameCommand("3400009FFF")},
      {"beside 4 that write settings", FrameCommand("301F500001") + FrameCommand("23FF") +
                                           FrameCommand("301F500002") + FrameCommand("23FF")},
      {"beside 4 that send noise", "[]][0005D8]"},
  };
  RatioReport report;
  for (const Flood& flood : floods) {
    report.Within(flood.Topic, AnswerMs(flood), AnswerLimitMs);
  }
  return report.ExitCode();
}

#include "simulator/program/panel_thread.h"

namespace simulator {

Options PanelThread::TcpOptions() {
  Options options;
  options.TcpPort = 0;
  return options;
}

Options PanelThread::PtyOptions(PtyServer::Options pty) {
  Options options;
  options.Pty = std::move(pty);
  return options;
}

PanelThread::PanelThread(Options options) : Thread(std::move(options)) {
  Thread.start();
  Thread.Begun.acquire();
  if (!Thread.Failure) return;
  Thread.wait();
  std::rethrow_exception(Thread.Failure);
}

PanelThread::~PanelThread() {
  Thread.quit();
  Thread.wait();
}

void PanelThread::Worker::run() {
  std::unique_ptr<Simulator> simulator;
  try {
    simulator = std::make_unique<Simulator>(std::move(Setting));
    Serving = simulator.get();
  } catch (...) {
    Failure = std::current_exception();
  }
  Begun.release();
  if (!Failure) exec();
}

void PanelThread::Call(const std::function<void(Simulator&)>& action) {
  std::exception_ptr failure;
  const auto guarded = [&] {
    try {
      action(*Thread.Serving);
    } catch (...) {
      failure = std::current_exception();
    }
  };
  QMetaObject::invokeMethod(Thread.Serving, guarded, Qt::BlockingQueuedConnection);
  if (failure) std::rethrow_exception(failure);
}

quint16 PanelThread::TcpPort() {
  return With([](Simulator& simulator) { return simulator.TcpPort(); });
}

QString PanelThread::PtyPath() {
  return With([](Simulator& simulator) { return simulator.PtyPath(); });
}

void PanelThread::AddFault(const std::string& text) {
  const Fault fault = ParseFault(text);
  With([&fault](Simulator& simulator) { simulator.Faults().Add(fault); });
}

std::vector<std::string> PanelThread::FramesFromHost() {
  return With([](Simulator& simulator) {
    std::vector<std::string> frames;
    for (const FrameLog::Entry& entry : simulator.Log().Entries()) {
      if (entry.Way == FrameLog::Direction::FromHost) frames.push_back(entry.Text);
    }
    return frames;
  });
}

}  // namespace simulator

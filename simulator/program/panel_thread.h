#pragma once

#include <QSemaphore>
#include <QThread>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>

#include "simulator/program/simulator.h"

namespace simulator {

/// A simulated panel on a thread of its own, for hosts that block theirs while they wait. Made for
/// tests:
///
///     PanelThread panel;  // TCP on a free port
///     ... connect the host to 127.0.0.1 and panel.TcpPort() ...
///     EXPECT_TRUE(panel.With([](Panel& p) { return p.Relay(3); }));
class PanelThread {
 public:
  /// Options that serve TCP on a free port, and the pseudo-terminal when `pty` is given.
  static Options TcpOptions();
  static Options PtyOptions(PtyServer::Options pty = {});

  /// Returns when the lines are being served. Throws what Simulator's constructor throws.
  explicit PanelThread(Options options = TcpOptions());
  ~PanelThread();
  PanelThread(const PanelThread&) = delete;
  PanelThread& operator=(const PanelThread&) = delete;

  quint16 TcpPort();
  QString PtyPath();

  /// Runs `action`, which takes a Panel& or a Simulator&, on the panel's thread between two
  /// frames, waits for it and returns what it returns or throws what it throws.
  template <typename Action>
  auto With(Action action) {
    if constexpr (std::is_invocable_v<Action, Panel&>) {
      return Run([&action](Simulator& simulator) { return action(simulator.ThePanel()); });
    } else {
      return Run(std::move(action));
    }
  }

  /// Sets a fault by its text, for example "lost x2" without the blank: "lostx2".
  void AddFault(const std::string& text);

  /// The frames that the host has sent since the start, oldest first (the latest 10,000 log
  /// entries).
  std::vector<std::string> FramesFromHost();

 private:
  template <typename Action>
  auto Run(Action action) {
    using Result = std::invoke_result_t<Action, Simulator&>;
    if constexpr (std::is_void_v<Result>) {
      Call(action);
    } else {
      std::optional<Result> result;
      Call([&](Simulator& simulator) { result.emplace(action(simulator)); });
      return std::move(*result);
    }
  }

  void Call(const std::function<void(Simulator&)>& action);

  class Worker : public QThread {
   public:
    explicit Worker(Options options) : Setting(std::move(options)) {}
    QSemaphore Begun;  ///< Released when one of these two is there:
    Simulator* Serving = nullptr;
    std::exception_ptr Failure;

   private:
    void run() override;
    Options Setting;
  };

  Worker Thread;
};

}  // namespace simulator

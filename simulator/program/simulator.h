#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulator/line/conversation.h"
#include "simulator/line/pty_server.h"
#include "simulator/line/tcp_server.h"

namespace simulator {

/// How a simulated panel is reached and what it starts with.
struct Options {
  std::optional<quint16> TcpPort;  // 0: a free port
  QString Host = "127.0.0.1";
  std::chrono::milliseconds Turn{5};  // of one TCP host, while others wait
  std::optional<PtyServer::Options> Pty;
  bool Blank = false;    // memory all 0 in place of the small installation
  std::string Password;  // six digits, or empty: as in memory
  QString MemoryFile;    // empty: the memory is not kept
  QString FollowedFile;  // in its place: read, and read again when it has changed
  std::vector<Fault> Faults;
  bool Daylight = false;  // follows the sun
  QString LogFile;        // "-": standard output; empty: none
  Clock Now = &ComputersTime;
};

/// The memory that a panel starts with. Throws std::runtime_error when the file cannot be had.
PanelMemory StartMemory(const Options& options);

/// A panel with its lines, on the event loop of the thread that makes it.
class Simulator : public QObject {
 public:
  /// Throws std::runtime_error when a line, the memory file or the log cannot be had.
  explicit Simulator(Options options);
  ~Simulator() override;

  Panel& ThePanel() { return Common.ThePanel; }
  FaultInjector& Faults() { return Common.Faults; }
  FrameLog& Log() { return Common.Log; }

  const QString& FollowedFile() const { return Setting.FollowedFile; }

  /// 0 or empty for a line that is not served.
  quint16 TcpPort() const { return Tcp ? Tcp->Port() : 0; }
  QString PtyPath() const { return Pty ? Pty->Path() : QString(); }

  /// Writes the memory to a file, as a whole or not at all. An empty path is the file given at
  /// the start. Throws std::runtime_error.
  void SaveMemory(const QString& path = {});

  /// Called when the followed file has brought new settings.
  std::function<void()> TakenOver;

 private:
  void KeepMemory();
  void Follow();

  Options Setting;
  Shared Common;
  std::unique_ptr<TcpServer> Tcp;
  std::unique_ptr<PtyServer> Pty;
  QTimer Keeper;
  QDateTime FollowedState;  // when the followed file was written
  std::uint64_t SavedRevision = 0;
  bool SaveFailed = false;  // the user has been told
};

}  // namespace simulator

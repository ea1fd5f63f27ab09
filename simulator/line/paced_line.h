#pragma once

#include <QObject>
#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

class QSocketNotifier;

namespace simulator {

using LineTime = std::chrono::steady_clock::time_point;

/// Calls back on the event loop at an absolute time, to within some tens of microseconds: a
/// QTimer's millisecond is eleven bytes at 115200 baud.
class PreciseAlarm {
 public:
  explicit PreciseAlarm(std::function<void()> callback);
  ~PreciseAlarm();
  PreciseAlarm(const PreciseAlarm&) = delete;
  PreciseAlarm& operator=(const PreciseAlarm&) = delete;

  void Start(LineTime when);

 private:
  void Ring();

  std::function<void()> Callback;
  int Descriptor;
  QSocketNotifier* Notifier;
};

/// One direction of a line: hands bytes on, in order, no sooner than a real line of its speed
/// would. Every byte has its own absolute due time, so that errors do not add up.
class PacedLine {
 public:
  /// Gets the bytes and the time at which the last of them was due.
  using Deliver = std::function<void(std::string_view, LineTime)>;

  /// A byte time of 0 passes everything at once.
  PacedLine(std::chrono::nanoseconds byteTime, Deliver deliver);

  /// Bytes waiting at most; what comes on top of them is lost, as in any full buffer.
  static constexpr std::size_t MaxWaiting = 1 << 20;

  /// The bytes start on the line at `notBefore` or when it has become free.
  void Send(std::string_view bytes, LineTime notBefore);

  /// When an answer to the bytes that were handed on last would have come in, had this computer
  /// been on time: `now` less the lateness of those bytes and of a usual wake-up, but never before
  /// they were due. So the simulator's own delays do not slow a transfer, and a host's do.
  LineTime Punctual(LineTime now);

  void Clear() {
    Queue.clear();
    Waiting = 0;
    Free = {};
  }

 private:
  struct Piece {
    LineTime Due;
    std::string Bytes;
  };
  void Run();

  std::chrono::nanoseconds ByteTime;
  Deliver Sink;
  PreciseAlarm Alarm;
  std::deque<Piece> Queue;
  std::size_t Waiting = 0;
  LineTime Free{};
  LineTime LastDue{};
  std::chrono::nanoseconds Lateness{0};       // of the last bytes, until asked for
  std::chrono::nanoseconds UsualLateness{0};  // running mean
  bool Running = false;
};

/// The time of a byte, ten bits with start and stop; 0 for a baud rate of 0.
std::chrono::nanoseconds ByteTimeOf(int baud);

}  // namespace simulator

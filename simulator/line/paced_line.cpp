#include "simulator/line/paced_line.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

namespace simulator {

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

PreciseAlarm::PreciseAlarm(std::function<void()> callback)
    : Callback(std::move(callback)),
      Descriptor(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {
  if (Descriptor < 0) throw std::system_error(errno, std::generic_category(), "timerfd_create");
  Notifier = new QSocketNotifier(Descriptor, QSocketNotifier::Read);
  QObject::connect(Notifier, &QSocketNotifier::activated, Notifier, [this] { Ring(); });
}

PreciseAlarm::~PreciseAlarm() {
  // The alarm may be destroyed from its own callback.
  Notifier->setEnabled(false);
  QObject::disconnect(Notifier, nullptr, nullptr, nullptr);
  Notifier->deleteLater();
  close(Descriptor);
}

void PreciseAlarm::Start(LineTime when) {
  // 0 would switch the timer off.
  const auto since = std::max<std::int64_t>(nanoseconds(when.time_since_epoch()).count(), 1);
  itimerspec setting{};
  setting.it_value.tv_sec = since / 1'000'000'000;
  setting.it_value.tv_nsec = since % 1'000'000'000;
  timerfd_settime(Descriptor, TFD_TIMER_ABSTIME, &setting, nullptr);
}

void PreciseAlarm::Ring() {
  std::uint64_t rings = 0;
  if (read(Descriptor, &rings, sizeof rings) == sizeof rings) Callback();
}

PacedLine::PacedLine(nanoseconds byteTime, Deliver deliver)
    : ByteTime(byteTime), Sink(std::move(deliver)), Alarm([this] { Run(); }) {}

void PacedLine::Send(std::string_view bytes, LineTime notBefore) {
  if (bytes.empty() || bytes.size() > MaxWaiting - Waiting) return;
  Waiting += bytes.size();
  // Handing on about a millisecond at a time keeps the processor idle; the last piece of a frame
  // is exact all the same.
  constexpr nanoseconds pieceTime(1'000'000);
  const std::size_t most =
      ByteTime.count() == 0
          ? bytes.size()
          : static_cast<std::size_t>(std::max<std::int64_t>(pieceTime / ByteTime, 1));
  LineTime due = std::max(Free, notBefore);
  for (std::size_t at = 0; at < bytes.size(); at += most) {
    const std::string_view piece = bytes.substr(at, most);
    due += ByteTime * static_cast<std::int64_t>(piece.size());
    Queue.push_back({due, std::string(piece)});
  }
  Free = due;
  Run();
}

void PacedLine::Run() {
  if (std::exchange(Running, true)) return;
  while (!Queue.empty()) {
    const LineTime now = steady_clock::now();
    if (Queue.front().Due > now) {
      Alarm.Start(Queue.front().Due);
      break;
    }
    const Piece piece = std::move(Queue.front());
    Queue.pop_front();
    Waiting -= piece.Bytes.size();
    LastDue = piece.Due;
    Lateness = now - piece.Due;
    if (ByteTime.count() > 0) UsualLateness += (Lateness - UsualLateness) / 16;
    Sink(piece.Bytes, piece.Due);
  }
  Running = false;
}

LineTime PacedLine::Punctual(LineTime now) {
  const LineTime arrival = now - std::exchange(Lateness, nanoseconds(0)) - UsualLateness;
  return std::max(arrival, std::min(LastDue, now));
}

nanoseconds ByteTimeOf(int baud) {
  return baud > 0 ? nanoseconds(10'000'000'000 / baud) : nanoseconds(0);
}

}  // namespace simulator

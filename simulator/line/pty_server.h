#pragma once

#include <QSocketNotifier>
#include <QString>
#include <memory>
#include <optional>
#include <utility>

#include "simulator/line/conversation.h"
#include "simulator/line/modem.h"
#include "simulator/line/paced_line.h"

namespace simulator {

/// A file descriptor that closes itself.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : Number(number) {}
  Descriptor(Descriptor&& other) noexcept : Number(std::exchange(other.Number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(Number, other.Number);
    return *this;
  }
  ~Descriptor();

  int Get() const { return Number; }

 private:
  int Number = -1;
};

/// Serves the panel on a pseudo-terminal, like a serial line or a modem on one.
class PtyServer {
 public:
  struct Options {
    QString Link;  // a link to the port, empty for none
    std::optional<Modem::Options> WithModem;
    int Baud = 0;  // 0: as fast as the computer goes
  };

  /// Throws std::runtime_error when the port or its link cannot be made.
  PtyServer(Shared& shared, Options options);
  ~PtyServer();
  PtyServer(const PtyServer&) = delete;
  PtyServer& operator=(const PtyServer&) = delete;

  /// The port's path, for example "/dev/pts/5". A dropped connection closes the port like a pulled
  /// plug and gives it a new path; a link follows.
  QString Path() const { return PortPath; }

 private:
  void OpenPort();
  void PullPlug();
  void NoteCall();
  void Read();
  void Process(std::string_view bytes, LineTime time);
  void Write(std::string_view bytes);
  void SendAll(const std::vector<TimedBytes>& pieces, LineTime time);

  Shared& Common;
  Options Setting;
  Descriptor Master;
  Descriptor Slave;  // held open, so that the port outlives each host
  QString PortPath;
  std::unique_ptr<QSocketNotifier> Readable;
  std::optional<Conversation> Talk;
  std::optional<Modem> TheModem;
  PacedLine FromHost;
  PacedLine ToHost;
};

/// Makes `link` a symbolic link to `target`, with the folders on its way. An older link to a
/// pseudo-terminal or to nothing is replaced; throws std::runtime_error for anything else there.
void MakePortLink(const QString& link, const QString& target);

/// Removes the link if it still leads to `target`.
void RemovePortLink(const QString& link, const QString& target);

}  // namespace simulator

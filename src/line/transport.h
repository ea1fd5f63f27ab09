#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string>

#include "panel/fixed_array.h"

/// A line that cannot be opened; the text says why and what to do about it.
class TransportFailure : public RunTimeFailure {
 public:
  explicit TransportFailure(const QString& text) : RunTimeFailure(text.toStdString()) {}
};

constexpr quint16 PanelTcpPort = 10001;

/// Where a panel is. Each kind of line asks for some of these.
struct LineSettings {
  QString Port = {};  ///< "COM1" to "COM16", or the path of a device.
  int Baud = 0;       ///< 0: as is usual for the kind. Parity none, 8 data bits, 1 stop bit.
  std::string PhoneNumber = {};  ///< As the modem is to dial it.
  QString Host = {};             ///< A name or an address.
  quint16 TcpPort = PanelTcpPort;
  /// Waits for the end of what a session that was broken off has still coming.
  bool AwaitQuiet = false;
};

/// Replies are at most some hundred characters. A serial line with more than this many waiting is
/// held back, a TCP connection is closed.
constexpr int ReceiveBufferSize = 0x7FFF;

/// A reply that comes within this time comes at once: nobody could read what shows meanwhile.
constexpr int PromptMs = 10;

/// A line to a panel.
class Transport {
 public:
  Transport() = default;
  virtual ~Transport() = default;
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;

  /// Runs once in each wait that is not over at once, before it goes on.
  std::function<void()> LongWait;

  /// Closes what is open and opens the line for this program alone. Over TCP this takes up to five
  /// seconds, in which events are delivered. Throws TransportFailure; the line is closed then.
  virtual void Open(const LineSettings& settings) = 0;
  /// False too once the device or the peer has gone away.
  virtual bool IsOpen() const = 0;
  virtual void Close() = 0;

  /// Sends the text; does nothing while the line is closed.
  virtual void Send(const std::string& text) = 0;
  /// Everything received so far, possibly nothing; empties the buffer.
  virtual std::string Take() = 0;
  /// How many characters have been received and not taken.
  virtual int Waiting() = 0;

  /// Returns when `count` characters are waiting, `ms` milliseconds have passed or the line is
  /// gone. A serial line blocks and delivers no events. TCP delivers them unless the characters
  /// come at once, so that waits may stand inside each other.
  virtual void Wait(int count, qint64 ms) = 0;

  /// The system's number of an open device; -1 where there is none.
  virtual int Descriptor() const { return -1; }

  // A line without modem control ignores these two.
  virtual void SetRTSEnable(bool) {}
  virtual void SetDTREnable(bool) {}
};

/// The program's two communication objects, made once, on first use.
Transport& comQZ();
Transport& WinSockQZ();

/// Closes both; makes no TCP object for it.
void CloseTransports();

/// Tests put objects of their own in their place; null stands for the real one.
void ReplaceTransports(std::unique_ptr<Transport> serial, std::unique_ptr<Transport> socket);

std::unique_ptr<Transport> NewSerialTransport();
/// Loads the module that holds it. Throws TransportFailure.
std::unique_ptr<Transport> NewTcpTransport();

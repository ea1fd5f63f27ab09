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

/// Replies are at most some hundred characters. A serial line with more than this many waiting is
/// held back, a TCP connection is closed.
constexpr int ReceiveBufferSize = 0x7FFF;

/// A serial line.
class SerialControl {
 public:
  virtual ~SerialControl() = default;

  /// Runs once in each wait that is not over at once, before it goes on.
  std::function<void()> LongWait;

  virtual void SetCommPort(int port) = 0;  ///< 1 to 16, for the next opening.
  /// Baud rate, parity, data and stop bits, such as "115200,n,8,1", for the next opening.
  virtual void SetSettings(const std::string& settings) = 0;

  /// Opens the port for this program alone, or closes it. Throws TransportFailure.
  virtual void SetPortOpen(bool open) = 0;
  /// False too once the device has gone away.
  virtual bool PortOpen() const = 0;

  // A port without modem-control lines ignores these two.
  virtual void SetRTSEnable(bool on) = 0;
  virtual void SetDTREnable(bool on) = 0;

  /// Sends the text; does nothing while the port is closed.
  virtual void Output(const std::string& text) = 0;
  /// Everything received so far, possibly nothing; empties the buffer.
  virtual std::string Input() = 0;
  virtual int InBufferCount() = 0;

  /// Blocks until `count` characters are waiting, `ms` milliseconds have passed or the port is
  /// gone. Delivers no events.
  virtual void Wait(int count, qint64 ms) = 0;
};

/// A TCP connection.
class SocketControl {
 public:
  enum States { Closed = 0, Resolving = 4, Connecting = 6, Up = 7, Closing = 8 };

  virtual ~SocketControl() = default;

  /// Runs once in each wait that is not over at once, before it goes on.
  std::function<void()> LongWait;

  virtual void SetLocalPort(quint16 port) = 0;  ///< 0: the system chooses one.
  virtual void SetRemoteHost(const QString& host) = 0;
  virtual void SetRemotePort(quint16 port) = 0;

  /// Starts to connect; State tells what comes of it.
  virtual void Connect() = 0;
  virtual int State() const = 0;
  virtual void Close() = 0;

  /// Sends the text; does nothing while the connection is not up.
  virtual void SendData(const std::string& text) = 0;
  /// Everything received so far, possibly nothing; empties the buffer.
  virtual std::string GetData() = 0;
  virtual int BytesReceived() = 0;

  /// Delivers events until `count` bytes are waiting, `ms` milliseconds have passed or the state
  /// has changed; what comes at once comes without. Waits may stand inside each other.
  virtual void Wait(int count, qint64 ms) = 0;
};

/// A reply that comes within this time comes at once: nobody could read what shows meanwhile.
constexpr int PromptMs = 10;

/// What a long transaction has to show while it waits; PaintNow follows it. Prompt replies cost no
/// picture.
extern std::function<void()> BeforeLongWait;

/// The program's two communication objects, made once, on first use.
SerialControl& comQZ();
SocketControl& WinSockQZ();

/// Closes the TCP connection if there is one; makes no object for it.
void CloseSocket();

/// Tests put objects of their own in their place; null stands for the real one.
void ReplaceTransports(std::unique_ptr<SerialControl> serial,
                       std::unique_ptr<SocketControl> socket);

std::unique_ptr<SerialControl> NewSerialControl();
/// Loads the module that holds it. Throws TransportFailure.
std::unique_ptr<SocketControl> NewSocketControl();

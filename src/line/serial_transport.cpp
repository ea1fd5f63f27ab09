#include <linux/serial.h>
#include <sys/ioctl.h>

#include <QDeadlineTimer>
#include <QSerialPort>
#include <algorithm>

#include "line/com_port.h"
#include "line/line_kinds.h"

namespace {

/// USB adapters hold short replies back for some 16 ms unless they are asked not to.
void AskForLowLatency(QSerialPort& port) {
  serial_struct line{};
  if (ioctl(port.handle(), TIOCGSERIAL, &line) != 0) return;
  line.flags |= ASYNC_LOW_LATENCY;
  ioctl(port.handle(), TIOCSSERIAL, &line);
}

class SerialTransport : public Transport {
 public:
  SerialTransport() { port_.setReadBufferSize(ReceiveBufferSize); }

  void Open(const LineSettings& settings) override {
    port_.close();
    // All links are n,8,1, as the port is when nothing else is said.
    if (settings.Baud != 0) port_.setBaudRate(settings.Baud);
    port_.setPortName(PortDevice(settings.Port));
    // Qt searches the computer for a missing device, for some 10 ms.
    if (!PortExists(settings.Port) || !port_.open(QIODevice::ReadWrite)) {
      throw TransportFailure(PortTrouble(
          settings.Port, port_.error() == QSerialPort::PermissionError, port_.errorString()));
    }
    AskForLowLatency(port_);
  }

  bool IsOpen() const override { return port_.isOpen(); }
  void Close() override { port_.close(); }
  int Descriptor() const override { return port_.isOpen() ? port_.handle() : -1; }

  void SetRTSEnable(bool on) override {
    if (port_.isOpen()) port_.setRequestToSend(on);
  }

  void SetDTREnable(bool on) override {
    if (port_.isOpen()) port_.setDataTerminalReady(on);
  }

  void Send(const std::string& text) override {
    if (!port_.isOpen()) return;
    port_.write(text.data(), static_cast<qint64>(text.size()));
    port_.flush();
  }

  std::string Take() override {
    Fetch(0);
    return port_.isOpen() ? port_.readAll().toStdString() : std::string();
  }

  int Waiting() override {
    Fetch(0);
    return static_cast<int>(port_.bytesAvailable());
  }

  void Wait(int count, qint64 ms) override {
    const QDeadlineTimer deadline(ms);
    FetchUntil(count, QDeadlineTimer(std::min<qint64>(ms, PromptMs)));
    if (LongWait && port_.bytesAvailable() < count && !deadline.hasExpired()) LongWait();
    FetchUntil(count, deadline);
  }

 private:
  void FetchUntil(int count, const QDeadlineTimer& deadline) {
    while (port_.isOpen() && port_.bytesAvailable() < count && !deadline.hasExpired()) {
      Fetch(static_cast<int>(deadline.remainingTime()));
    }
  }

  /// Takes in what the device has, or what comes first within `ms` milliseconds.
  void Fetch(int ms) {
    if (!port_.isOpen()) return;
    port_.clearError();
    if (!port_.waitForReadyRead(ms) && port_.error() != QSerialPort::TimeoutError &&
        port_.error() != QSerialPort::NoError) {
      port_.close();
    }
  }

  QSerialPort port_;
};

}  // namespace

std::unique_ptr<Transport> NewSerialTransport() {
  return std::make_unique<SerialTransport>();
}

void OpenDirect(const LineSettings& settings) {
  constexpr int directBaud = 115200;
  LineSettings port = settings;
  if (port.Baud == 0) port.Baud = directBaud;
  comQZ().Open(port);
  comQZ().SetRTSEnable(true);
  comQZ().SetDTREnable(true);
}

QString NoPanelAtPort(const LineSettings& settings) {
  return QStringLiteral(
             "No panel answers at %1. Check the cable, the panel's power and the number "
             "of the port.")
      .arg(PortText(settings.Port));
}

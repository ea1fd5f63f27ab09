#include <linux/serial.h>
#include <sys/ioctl.h>

#include <QDeadlineTimer>
#include <QSerialPort>
#include <algorithm>

#include "link/com_port.h"
#include "link/transport.h"

namespace {

/// USB adapters hold short replies back for some 16 ms unless they are asked not to.
void AskForLowLatency(QSerialPort& port) {
  serial_struct line{};
  if (ioctl(port.handle(), TIOCGSERIAL, &line) != 0) return;
  line.flags |= ASYNC_LOW_LATENCY;
  ioctl(port.handle(), TIOCSSERIAL, &line);
}

class QtSerialControl : public SerialControl {
 public:
  QtSerialControl() { port_.setReadBufferSize(ReceiveBufferSize); }

  void SetCommPort(int port) override { commPort_ = port; }

  void SetSettings(const std::string& settings) override {
    // Both links are n,8,1, as the port is when nothing else is said.
    port_.setBaudRate(std::stoi(settings));
  }

  void SetPortOpen(bool open) override {
    port_.close();
    if (!open) return;
    port_.setPortName(ComPortDevice(commPort_));
    // Qt searches the computer for a missing device, for some 10 ms.
    if (!ComPortExists(commPort_) || !port_.open(QIODevice::ReadWrite)) {
      throw TransportFailure(ComPortTrouble(
          commPort_, port_.error() == QSerialPort::PermissionError, port_.errorString()));
    }
    AskForLowLatency(port_);
  }

  bool PortOpen() const override { return port_.isOpen(); }

  void SetRTSEnable(bool on) override {
    if (port_.isOpen()) port_.setRequestToSend(on);
  }

  void SetDTREnable(bool on) override {
    if (port_.isOpen()) port_.setDataTerminalReady(on);
  }

  void Output(const std::string& text) override {
    if (!port_.isOpen()) return;
    port_.write(text.data(), static_cast<qint64>(text.size()));
    port_.flush();
  }

  std::string Input() override {
    Fetch(0);
    return port_.isOpen() ? port_.readAll().toStdString() : std::string();
  }

  int InBufferCount() override {
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
  int commPort_ = 1;
};

}  // namespace

std::unique_ptr<SerialControl> NewSerialControl() {
  return std::make_unique<QtSerialControl>();
}

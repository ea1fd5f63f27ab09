#include <QEventLoop>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>

#include "link/transport.h"

namespace {

class QtSocketControl : public SocketControl {
 public:
  QtSocketControl() {
    socket_.setProxy(QNetworkProxy::NoProxy);
    socket_.setReadBufferSize(ReceiveBufferSize);
  }

  void SetLocalPort(quint16 port) override { localPort_ = port; }
  void SetRemoteHost(const QString& host) override { remoteHost_ = host; }
  void SetRemotePort(quint16 port) override { remotePort_ = port; }

  void Connect() override {
    socket_.abort();
    if (localPort_ != 0) socket_.bind(localPort_);
    socket_.connectToHost(remoteHost_, remotePort_);
    // Each frame waits for its reply, so holding small packets back only costs time.
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
  }

  int State() const override {
    switch (socket_.state()) {
      case QAbstractSocket::HostLookupState:
        return Resolving;
      case QAbstractSocket::ConnectingState:
        return Connecting;
      case QAbstractSocket::ConnectedState:
        return Up;
      case QAbstractSocket::ClosingState:
        return Closing;
      default:
        return Closed;
    }
  }

  void Close() override { socket_.abort(); }

  void SendData(const std::string& text) override {
    if (State() != Up) return;
    socket_.write(text.data(), static_cast<qint64>(text.size()));
    socket_.flush();
  }

  std::string GetData() override {
    if (State() == Up) socket_.waitForReadyRead(0);
    return socket_.isOpen() ? socket_.readAll().toStdString() : std::string();
  }

  int BytesReceived() override { return static_cast<int>(socket_.bytesAvailable()); }

  void Wait(int count, qint64 ms) override {
    if (BytesReceived() >= count) return;
    QEventLoop loop;
    QObject::connect(&socket_, &QIODevice::readyRead, &loop, [&] {
      if (BytesReceived() >= count) loop.quit();
    });
    QObject::connect(&socket_, &QAbstractSocket::stateChanged, &loop, &QEventLoop::quit);
    QTimer::singleShot(std::chrono::milliseconds(ms), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
  }

 private:
  QTcpSocket socket_;
  QString remoteHost_;
  quint16 remotePort_ = 0;
  quint16 localPort_ = 0;
};

}  // namespace

std::unique_ptr<SocketControl> NewSocketControl() {
  return std::make_unique<QtSocketControl>();
}

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <array>
#include <utility>

#include "link/transport.h"

namespace {

/// The socket hands its bytes straight on, without a buffer and the bookkeeping of its own.
class QtSocketControl : public SocketControl {
 public:
  QtSocketControl() {
    socket_.setProxy(QNetworkProxy::NoProxy);
    QObject::connect(&socket_, &QIODevice::readyRead, &socket_, [this] { Fetch(); });
  }

  void SetLocalPort(quint16 port) override { localPort_ = port; }
  void SetRemoteHost(const QString& host) override { remoteHost_ = host; }
  void SetRemotePort(quint16 port) override { remotePort_ = port; }

  void Connect() override {
    Close();
    if (localPort_ != 0) socket_.bind(localPort_);
    socket_.connectToHost(remoteHost_, remotePort_, QIODevice::ReadWrite | QIODevice::Unbuffered);
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

  void Close() override {
    socket_.abort();
    buffer_.clear();
  }

  void SendData(const std::string& text) override {
    if (State() == Up) socket_.write(text.data(), static_cast<qint64>(text.size()));
  }

  std::string GetData() override {
    // A look costs a call into the system, and to drain is to read four times in a row: looking
    // each time makes transfers a third slower.
    constexpr qint64 lookAgainNs = 20'000;
    if (State() == Up && (!looked_.isValid() || looked_.nsecsElapsed() > lookAgainNs)) {
      if (socket_.bytesAvailable() > 0) Fetch();
      looked_.start();
    }
    return std::exchange(buffer_, {});
  }

  int BytesReceived() override { return static_cast<int>(buffer_.size()); }

  void Wait(int count, qint64 ms) override {
    const auto over = [&] { return BytesReceived() >= count || State() == Closed; };
    // The reply of a panel close by comes before an event loop has begun. A peer that lets bytes
    // drip must not hold up the window for longer than that.
    const QDeadlineTimer deadline(ms);
    const QDeadlineTimer prompt(std::min<qint64>(ms, PromptMs));
    while (State() == Up && !over() && !prompt.hasExpired() &&
           socket_.waitForReadyRead(static_cast<int>(prompt.remainingTime()))) {
    }
    if (over() || deadline.hasExpired()) return;
    if (LongWait) LongWait();
    QEventLoop loop;
    QObject::connect(&socket_, &QIODevice::readyRead, &loop, [&] {
      if (over()) loop.quit();
    });
    QObject::connect(&socket_, &QAbstractSocket::stateChanged, &loop, &QEventLoop::quit);
    QTimer::singleShot(std::chrono::milliseconds(deadline.remainingTime()), Qt::PreciseTimer, &loop,
                       &QEventLoop::quit);
    loop.exec();
  }

 private:
  void Fetch() {
    std::array<char, 1024> bytes;
    const qint64 count = socket_.read(bytes.data(), static_cast<qint64>(bytes.size()));
    if (count > 0) buffer_.append(bytes.data(), static_cast<std::size_t>(count));
    if (static_cast<int>(buffer_.size()) > ReceiveBufferSize) Close();
  }

  QTcpSocket socket_;
  std::string buffer_;
  QElapsedTimer looked_;
  QString remoteHost_;
  quint16 remotePort_ = 0;
  quint16 localPort_ = 0;
};

}  // namespace

extern "C" Q_DECL_EXPORT SocketControl* MakeSocketControl() {
  return new QtSocketControl;
}

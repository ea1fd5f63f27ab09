#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <array>
#include <cerrno>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "line/transport.h"

namespace {

constexpr int SendFlags = MSG_NOSIGNAL | MSG_DONTWAIT;

using Addresses = QList<QHostAddress>;

/// Asks the system for a host's addresses, in a thread that nobody waits for: while no name server
/// answers that takes longer than people wait, and the toolkit's own look-up would keep the program
/// from ending.
class LookUp {
 public:
  LookUp(const QString& host, const std::function<void(const Addresses&)>& told) {
    asker_->Receiver = &receiver_;
    const auto find = [asker = asker_, name = QUrl::toAce(host), told] {
      const Addresses found = Find(name);
      const std::lock_guard lock(asker->Lock);
      if (!asker->Receiver) return;
      QMetaObject::invokeMethod(
          asker->Receiver, [told, found] { told(found); }, Qt::QueuedConnection);
    };
    std::thread(find).detach();
  }
  /// Nothing is told any more.
  ~LookUp() {
    const std::lock_guard lock(asker_->Lock);
    asker_->Receiver = nullptr;
  }
  LookUp(const LookUp&) = delete;
  LookUp& operator=(const LookUp&) = delete;

 private:
  struct Asker {
    std::mutex Lock;
    QObject* Receiver;
  };

  static Addresses Find(const QByteArray& name) {
    addrinfo wanted{};
    wanted.ai_flags = AI_ADDRCONFIG;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* first = nullptr;
    Addresses found;
    if (getaddrinfo(name.constData(), nullptr, &wanted, &first) != 0) return found;
    for (const addrinfo* one = first; one; one = one->ai_next) found << QHostAddress(one->ai_addr);
    freeaddrinfo(first);
    return found;
  }

  QObject receiver_;
  std::shared_ptr<Asker> asker_ = std::make_shared<Asker>();
};

/// Digits and dots that are no address are nobody's name.
bool IsNumber(const QString& host) {
  return std::all_of(host.begin(), host.end(),
                     [](QChar c) { return c == u'.' || (c >= u'0' && c <= u'9'); });
}

/// The socket hands its bytes straight on, without a buffer and the bookkeeping of its own.
class TcpTransport : public Transport {
 public:
  TcpTransport() {
    socket_.setProxy(QNetworkProxy::NoProxy);
    QObject::connect(&socket_, &QIODevice::readyRead, &socket_, [this] { Fetch(); });
    // The name's next address, where nobody answers at one.
    const auto tryNext = [this] {
      if (socket_.state() == QAbstractSocket::UnconnectedState) ConnectToNext();
    };
    QObject::connect(&socket_, &QAbstractSocket::stateChanged, &socket_, tryNext,
                     Qt::QueuedConnection);
  }

  void Open(const LineSettings& settings) override {
    constexpr int openTimeoutMs = 5000;
    Close();
    const QString host = settings.Host.trimmed();
    port_ = settings.TcpPort;
    isUnknown_ = false;
    if (const QHostAddress address(host); !address.isNull()) {
      ConnectTo({address});
    } else if (!IsNumber(host)) {
      lookUp_.emplace(host, [this](const Addresses& found) { ConnectTo(found); });
    }
    const QDeadlineTimer deadline(openTimeoutMs);
    while (UnderWay() && !deadline.hasExpired()) RunUntil([] { return false; }, deadline);
    mayHaveMore_ = true;
    if (IsOpen()) return;
    Close();
    if (host.isEmpty()) {
      throw TransportFailure(QStringLiteral("Enter the panel's TCP/IP address."));
    }
    throw TransportFailure(
        QStringLiteral("Nobody answers at %1, port %2. %3")
            .arg(host, QString::number(port_),
                 isUnknown_ ? QStringLiteral("No host has that name: check it, and the network.")
                            : QStringLiteral("Check the address, the network and the panel's "
                                             "power.")));
  }

  bool IsOpen() const override { return socket_.state() == QAbstractSocket::ConnectedState; }

  void Close() override {
    lookUp_.reset();
    addresses_.clear();
    socket_.abort();
    buffer_.clear();
  }

  void Send(const std::string& text) override {
    if (!IsOpen()) return;
    mayHaveMore_ = true;
    // Straight to the system; what it does not take at once is the toolkit's.
    const auto size = static_cast<qint64>(text.size());
    const qint64 sent = std::max<qint64>(
        0,
        socket_.bytesToWrite() > 0 ? 0 : send(Descriptor(), text.data(), text.size(), SendFlags));
    if (sent < size) socket_.write(text.data() + sent, size - sent);
  }

  std::string Take() override {
    // A look costs a call into the system, and to drain is to take eight times in a row.
    if (buffer_.empty() && std::exchange(mayHaveMore_, false)) FetchWithin(0);
    return std::exchange(buffer_, {});
  }

  int Waiting() override { return static_cast<int>(buffer_.size()); }

  void Wait(int count, qint64 ms) override {
    const auto over = [&] { return Waiting() >= count || !IsOpen(); };
    mayHaveMore_ = true;
    if (over()) return;
    // The reply of a panel close by comes before an event loop has begun. A peer that lets bytes
    // drip must not hold up the window for longer than that.
    const QDeadlineTimer deadline(ms);
    const qint64 afterPrompt = std::max<qint64>(0, ms - PromptMs);
    for (qint64 left = ms; left > afterPrompt; left = deadline.remainingTime()) {
      FetchWithin(static_cast<int>(left - afterPrompt));
      if (over()) return;
    }
    if (deadline.hasExpired()) return;
    if (LongWait) LongWait();
    RunUntil(over, deadline);
  }

 private:
  bool UnderWay() const {
    return lookUp_ || !addresses_.isEmpty() || socket_.state() == QAbstractSocket::ConnectingState;
  }

  /// Delivers events until what has arrived makes it `over`, the connection comes, fails or goes,
  /// or the time is up.
  template <typename Over>
  void RunUntil(Over over, const QDeadlineTimer& deadline) {
    QEventLoop loop;
    QObject::connect(&socket_, &QIODevice::readyRead, &loop, [&] {
      if (over()) loop.quit();
    });
    QObject::connect(&socket_, &QAbstractSocket::stateChanged, &loop, &QEventLoop::quit);
    QObject::connect(&socket_, &QAbstractSocket::errorOccurred, &loop, &QEventLoop::quit);
    QTimer::singleShot(std::chrono::milliseconds(deadline.remainingTime()), Qt::PreciseTimer, &loop,
                       &QEventLoop::quit);
    loop.exec();
  }

  void ConnectTo(const Addresses& addresses) {
    lookUp_.reset();
    addresses_ = addresses;
    isUnknown_ = addresses_.isEmpty();
    if (isUnknown_) Q_EMIT socket_.errorOccurred(QAbstractSocket::HostNotFoundError);
    ConnectToNext();
  }

  void ConnectToNext() {
    if (addresses_.isEmpty()) return;
    const QHostAddress address = addresses_.takeFirst();
    socket_.connectToHost(address, port_, QIODevice::ReadWrite | QIODevice::Unbuffered);
    // Each frame waits for its reply, so holding small packets back only costs time.
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
  }

  int Descriptor() const override { return static_cast<int>(socket_.socketDescriptor()); }

  /// Takes in what comes first within `ms` milliseconds, straight from the system: the toolkit's
  /// own wait costs a third of what a panel close by takes to answer. An end or an error is its to
  /// tell.
  void FetchWithin(int ms) {
    if (!IsOpen()) return;
    pollfd line{Descriptor(), POLLIN, 0};
    if (ms > 0 && poll(&line, 1, ms) <= 0) return;
    std::array<char, 1024> bytes;
    const ssize_t count = recv(line.fd, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count > 0) {
      Append(bytes.data(), count);
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
      socket_.waitForReadyRead(0);
    }
  }

  void Fetch() {
    std::array<char, 1024> bytes;
    Append(bytes.data(), socket_.read(bytes.data(), static_cast<qint64>(bytes.size())));
  }

  void Append(const char* bytes, qint64 count) {
    if (count > 0) buffer_.append(bytes, static_cast<std::size_t>(count));
    if (static_cast<int>(buffer_.size()) > ReceiveBufferSize) Close();
  }

  QTcpSocket socket_;
  std::optional<LookUp> lookUp_;
  Addresses addresses_;  ///< Those of the host that have not been tried.
  std::string buffer_;
  /// Since the last look something may have come.
  bool mayHaveMore_ = false;
  bool isUnknown_ = false;  ///< The host has no address.
  quint16 port_ = 0;
};

}  // namespace

extern "C" Q_DECL_EXPORT Transport* MakeTcpTransport() {
  return new TcpTransport;
}

#include "simulator/tcp_server.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <stdexcept>

#include "simulator/paced_line.h"

namespace simulator {

namespace {

/// One host; lives as long as its socket.
class Client : public QObject {
 public:
  Client(Shared& shared, QTcpSocket* socket)
      : QObject(socket),
        Socket(socket),
        Talk(shared, "tcp"),
        Output(std::chrono::nanoseconds(0),
               [this](std::string_view bytes, LineTime) { Write(bytes); }) {
    constexpr qint64 readBuffer = 16'384;
    Socket->setReadBufferSize(readBuffer);
    connect(Socket, &QTcpSocket::readyRead, this, [this] { Read(); });
    connect(Socket, &QTcpSocket::bytesWritten, this, [this] {
      if (Socket->bytesAvailable() > 0) Read();
    });
    connect(Socket, &QTcpSocket::disconnected, Socket, &QObject::deleteLater);
  }

 private:
  /// A host that sends more than any host would must not hold up the others: it is read a little
  /// at a time, and not at all while it does not take its replies.
  void Read() {
    constexpr qint64 mostAtOnce = 2048;
    constexpr qint64 mostUntaken = 65'536;
    if (Socket->bytesToWrite() > mostUntaken) return;
    const QByteArray bytes = Socket->read(mostAtOnce);
    if (Socket->bytesAvailable() > 0) {
      QMetaObject::invokeMethod(
          this, [this] { Read(); }, Qt::QueuedConnection);
    }
    for (const char byte : bytes) {
      const auto result = Talk.Receive(byte);
      if (!result) continue;
      const LineTime now = std::chrono::steady_clock::now();
      for (const TimedBytes& piece : result->Reply.Pieces) {
        Output.Send(piece.Bytes, now + piece.After);
      }
      if (result->Reply.Drop) {
        Socket->abort();
        return;
      }
    }
  }

  void Write(std::string_view bytes) {
    // A host that asks and never reads must not fill the memory.
    constexpr qint64 most = 1 << 20;
    if (Socket->state() != QAbstractSocket::ConnectedState) return;
    if (Socket->bytesToWrite() > most) {
      Socket->abort();
      return;
    }
    Socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
    // At once: a host may end its half of the connection behind its command.
    Socket->flush();
  }

  QTcpSocket* Socket;
  Conversation Talk;
  PacedLine Output;
};

}  // namespace

TcpServer::TcpServer(Shared& shared, const QString& host, quint16 port) : Common(shared) {
  const QHostAddress address(host == "localhost" ? QString("127.0.0.1") : host);
  if (address.isNull() || !Server.listen(address, port)) {
    const QString reason =
        address.isNull() ? QString("that is no address of this computer") : Server.errorString();
    throw std::runtime_error("TCP port " + std::to_string(port) + " of " + host.toStdString() +
                             " cannot be served: " + reason.toStdString());
  }
  QObject::connect(&Server, &QTcpServer::newConnection, &Server, [this] { NewConnection(); });
}

void TcpServer::NewConnection() {
  while (QTcpSocket* socket = Server.nextPendingConnection()) {
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    new Client(Common, socket);
  }
}

}  // namespace simulator

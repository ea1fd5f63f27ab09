#include "simulator/line/tcp_server.h"

#include <sys/resource.h>

#include <QHostAddress>
#include <QTcpSocket>
#include <algorithm>
#include <stdexcept>
#include <utility>

namespace simulator {

namespace {

/// Whether a host's descriptor is among the last ones, which the panel needs to keep its memory.
bool IsSpare(qintptr descriptor) {
  constexpr rlim_t spare = 16;
  rlimit limit{};
  return getrlimit(RLIMIT_NOFILE, &limit) == 0 &&
         static_cast<rlim_t>(descriptor) + spare >= limit.rlim_cur;
}

}  // namespace

/// One host; lives as long as its socket.
class TcpServer::Client : public QObject {
 public:
  Client(TcpServer& server, QTcpSocket* socket)
      : QObject(socket),
        Owner(server),
        Socket(socket),
        Talk(server.Common, "tcp"),
        Output(std::chrono::nanoseconds(0),
               [this](std::string_view bytes, LineTime) { Write(bytes); }) {
    constexpr qint64 readBuffer = 16'384;
    Socket->setReadBufferSize(readBuffer);
    connect(Socket, &QTcpSocket::readyRead, this, [this] { Owner.Serve(this); });
    connect(Socket, &QTcpSocket::bytesWritten, this, [this] { Owner.Serve(this); });
    connect(Socket, &QTcpSocket::disconnected, Socket, &QObject::deleteLater);
  }
  ~Client() override { std::erase(Owner.Waiting, this); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  /// Answers commands until the time has come; whether any are left. None are taken from a host
  /// that does not take its replies.
  bool TakeTurn(LineTime end) {
    constexpr qint64 mostUntaken = 65'536;
    while (Socket->isOpen() && Socket->bytesToWrite() <= mostUntaken) {
      if (Next == Bytes.size()) {
        Bytes = Socket->readAll();
        Next = 0;
        if (Bytes.isEmpty()) break;
      }
      const char byte = Bytes[Next++];
      Take(byte);
      if (byte == ']' && std::chrono::steady_clock::now() >= end) {
        return Next < Bytes.size() || Socket->bytesAvailable() > 0;
      }
    }
    return false;
  }

 private:
  void Take(char byte) {
    const auto result = Talk.Receive(byte);
    if (!result) return;
    const LineTime now = std::chrono::steady_clock::now();
    for (const TimedBytes& piece : result->Reply.Pieces) {
      Output.Send(piece.Bytes, now + piece.After);
    }
    if (result->Reply.Drop) Socket->abort();
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

  TcpServer& Owner;
  QTcpSocket* Socket;
  QByteArray Bytes;  // taken from the socket
  qsizetype Next = 0;
  Conversation Talk;
  PacedLine Output;
};

TcpServer::TcpServer(Shared& shared, const QString& host, quint16 port,
                     std::chrono::milliseconds turn)
    : Common(shared), Turn(turn), Turns([this] { NextTurn(); }) {
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
    if (IsSpare(socket->socketDescriptor())) {
      Common.Log.Add("tcp", FrameLog::Direction::Note, "a host refused, too many are connected");
      delete socket;
      continue;
    }
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    new Client(*this, socket);
  }
}

void TcpServer::Serve(Client* client) {
  if (client == Served || std::find(Waiting.begin(), Waiting.end(), client) != Waiting.end())
    return;
  Waiting.push_back(client);
  // At once, if nobody else is there: the event loop has its turn already.
  if (Waiting.size() == 1 && Served == nullptr) NextTurn();
}

void TcpServer::NextTurn() {
  if (Waiting.empty()) return;
  Served = Waiting.front();
  Waiting.pop_front();
  const bool goesOn = Served->TakeTurn(std::chrono::steady_clock::now() + Turn);
  if (goesOn) Waiting.push_back(Served);
  Served = nullptr;
  if (!Waiting.empty()) Turns.Start(std::chrono::steady_clock::now());
}

}  // namespace simulator

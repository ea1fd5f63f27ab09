#pragma once

#include <QTcpServer>
#include <chrono>
#include <deque>

#include "simulator/line/conversation.h"
#include "simulator/line/paced_line.h"

namespace simulator {

/// Serves the panel over TCP. Any number of hosts are served at once; each has its own
/// conversation with the one panel. They take turns, so that a host that sends more than any host
/// would does not hold up the others, and between two turns the event loop looks at its sockets.
class TcpServer {
 public:
  /// Throws std::runtime_error when the address cannot be listened on. Port 0 takes a free one. A
  /// turn ends with the command during which its time is over.
  TcpServer(Shared& shared, const QString& host, quint16 port, std::chrono::milliseconds turn);

  quint16 Port() const { return Server.serverPort(); }

 private:
  class Client;

  void NewConnection();
  /// The client may have commands.
  void Serve(Client* client);
  void NextTurn();

  Shared& Common;
  std::chrono::milliseconds Turn;
  PreciseAlarm Turns;
  std::deque<Client*> Waiting;
  Client* Served = nullptr;
  QTcpServer Server;  // the last one: its sockets' clients leave the queue as they go
};

}  // namespace simulator

#pragma once

#include <QTcpServer>

#include "simulator/conversation.h"

namespace simulator {

/// Serves the panel over TCP. Any number of hosts are served at once; each has its own
/// conversation with the one panel.
class TcpServer {
 public:
  /// Throws std::runtime_error when the address cannot be listened on. Port 0 takes a free one.
  TcpServer(Shared& shared, const QString& host, quint16 port);

  quint16 Port() const { return Server.serverPort(); }

 private:
  void NewConnection();

  Shared& Common;
  QTcpServer Server;
};

}  // namespace simulator

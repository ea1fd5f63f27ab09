#include "link/transport.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>

#include "shell/stopwatch.h"

TEST(TransportTest, APeerThatFloodsIsClosed) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
    server.nextPendingConnection()->write(QByteArray(10 * ReceiveBufferSize, '['));
  });
  const auto socket = NewSocketControl();
  socket->SetRemoteHost(QStringLiteral("127.0.0.1"));
  socket->SetRemotePort(server.serverPort());
  socket->Connect();
  socket->Wait(1, 5000);
  EXPECT_EQ(socket->State(), SocketControl::Up);
  const Stopwatch stopwatch;
  while (socket->State() == SocketControl::Up && stopwatch.ElapsedMs() < 5000) {
    QCoreApplication::processEvents();
    EXPECT_LE(socket->BytesReceived(), ReceiveBufferSize);
  }
  EXPECT_EQ(socket->State(), SocketControl::Closed);
  EXPECT_EQ(socket->GetData(), "");
  socket->SendData("[0005D7]");
}

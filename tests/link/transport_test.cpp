#include "link/transport.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>
#include <thread>

#include "panel/program_state.h"
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

TEST(TransportTest, TheWindowLivesWhileAPeerLetsBytesDrip) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const auto socket = NewSocketControl();
  socket->SetRemoteHost(QStringLiteral("127.0.0.1"));
  socket->SetRemotePort(server.serverPort());
  socket->Connect();
  ASSERT_TRUE(server.waitForNewConnection(5000));
  QTcpSocket* peer = server.nextPendingConnection();
  socket->Wait(1, 5000);
  ASSERT_EQ(socket->State(), SocketControl::Up);
  std::thread drip([descriptor = static_cast<int>(peer->socketDescriptor())] {
    for (int i = 0; i < 150; ++i) {
      if (send(descriptor, "x", 1, MSG_NOSIGNAL) < 0) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(4));
    }
  });
  int events = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++events; });
  timer.start(10);
  socket->Wait(1 << 14, 500);
  drip.join();
  EXPECT_GT(events, 5);
}

TEST(TransportTest, ASerialFloodIsHeldBack) {
  const QTemporaryDir home;
  const QByteArray oldHome = qgetenv("HOME");
  qputenv("HOME", home.path().toLocal8Bit());
  const int device = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  ASSERT_TRUE(device >= 0 && grantpt(device) == 0 && unlockpt(device) == 0);
  QDir().mkpath(DataPath(QStringLiteral("Ports")));
  ASSERT_TRUE(
      QFile::link(QString::fromLocal8Bit(ptsname(device)), DataPath(QStringLiteral("Ports/COM7"))));
  const auto port = NewSerialControl();
  port->SetCommPort(7);
  port->SetSettings("115200,n,8,1");
  port->SetPortOpen(true);
  const std::string much(4096, '[');
  int most = 0;
  for (int i = 0; i < 200; ++i) {
    [[maybe_unused]] const ssize_t taken = write(device, much.data(), much.size());
    port->Wait(1 << 20, 1);
    most = std::max(most, port->InBufferCount());
  }
  EXPECT_GT(most, 0);
  EXPECT_LE(most, ReceiveBufferSize);
  close(device);
  qputenv("HOME", oldHome);
}

#include "link/transport.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netdb.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>
#include <atomic>
#include <thread>

#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "shell/window/application.h"

namespace {

std::atomic<bool> nameServerAsked = false;

}  // namespace

/// In place of the system's: "two.test" has two addresses, no name server knows "none.test" and
/// none answers for any other.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** found) {
  const auto systems = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
  const std::string_view asked = name ? name : "";
  if (asked == "none.test") return EAI_NONAME;
  if (asked != "two.test") {
    nameServerAsked = true;
    while (true) pause();
  }
  const int failure = systems("127.0.0.1", service, hints, found);
  addrinfo* first = nullptr;
  if (failure != 0 || systems("127.0.0.2", service, hints, &first) != 0) return EAI_NONAME;
  first->ai_next = *found;
  *found = first;
  return 0;
}

TEST(TransportTest, AHostIsFoundByNameAtAnyOfItsAddressesOrToldAtOnce) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const auto socket = NewSocketControl();
  socket->SetRemotePort(server.serverPort());
  bool late = false;
  constexpr int lateMs = 10'000;
  QTimer::singleShot(lateMs, [&] { late = true; });
  const auto stateAt = [&](const char* host) {
    socket->SetRemoteHost(QString::fromLatin1(host));
    socket->Connect();
    const auto underWay = [&] {
      return socket->State() == SocketControl::Resolving ||
             socket->State() == SocketControl::Connecting;
    };
    while (underWay() && !late) socket->Wait(1, lateMs);
    return socket->State();
  };
  EXPECT_EQ(stateAt("two.test"), SocketControl::Up);
  for (const char* nowhere : {"none.test", "192.168.1.300", "1.2.3.4.5", ""}) {
    EXPECT_EQ(stateAt(nowhere), SocketControl::Closed) << nowhere;
  }
  EXPECT_FALSE(late);
  EXPECT_FALSE(nameServerAsked);
}

TEST(TransportTest, TheProgramEndsWhileNoNameServerAnswers) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // the end in a process of its own
  const auto end = [] {
    constexpr int patience = 20;
    alarm(patience);
    auto socket = NewSocketControl();
    socket->SetRemoteHost(QStringLiteral("silent.test"));
    socket->Connect();
    while (!nameServerAsked) std::this_thread::yield();
    socket.reset();
    static_cast<Application*>(QCoreApplication::instance())->~Application();
    _exit(0);
  };
  EXPECT_EXIT(end(), testing::ExitedWithCode(0), "");
}

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

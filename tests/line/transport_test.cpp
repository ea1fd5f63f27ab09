#include "line/transport.h"

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
#include <ctime>
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

/// Where a connection fails, what is told; empty where it comes.
static QString TroubleAt(Transport& line, const QString& host, quint16 port) {
  try {
    line.Open({.Host = host, .TcpPort = port});
  } catch (const TransportFailure& failure) {
    EXPECT_FALSE(line.IsOpen());
    return QString::fromUtf8(failure.what());
  }
  EXPECT_TRUE(line.IsOpen());
  return {};
}

TEST(TransportTest, AHostIsFoundByNameAtAnyOfItsAddressesOrToldAtOnce) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const auto line = NewTcpTransport();
  const Stopwatch stopwatch;
  const auto troubleAt = [&](const char* host) {
    return TroubleAt(*line, QString::fromLatin1(host), server.serverPort());
  };
  EXPECT_EQ(troubleAt("two.test"), "");
  for (const char* nowhere : {"none.test", "192.168.1.300", "1.2.3.4.5"}) {
    EXPECT_TRUE(troubleAt(nowhere).startsWith(QStringLiteral("Nobody answers at %1, port %2.")
                                                  .arg(QLatin1String(nowhere))
                                                  .arg(server.serverPort())));
  }
  EXPECT_EQ(troubleAt(""), "Enter the panel's TCP/IP address.");
  EXPECT_LT(stopwatch.ElapsedMs(), 4000) << "none waits for the time to be up";
  EXPECT_FALSE(nameServerAsked);
}

TEST(TransportTest, TheProgramEndsWhileNoNameServerAnswers) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // the end in a process of its own
  const auto end = [] {
    constexpr int patience = 20;
    alarm(patience);
    auto line = NewTcpTransport();
    QTimer::singleShot(0, [&] {
      while (!nameServerAsked) std::this_thread::yield();
      line.reset();
      static_cast<Application*>(QCoreApplication::instance())->~Application();
      _exit(0);
    });
    TroubleAt(*line, QStringLiteral("silent.test"), PanelTcpPort);
  };
  EXPECT_EXIT(end(), testing::ExitedWithCode(0), "");
}

TEST(TransportTest, APeerThatFloodsIsClosed) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
    server.nextPendingConnection()->write(QByteArray(10 * ReceiveBufferSize, '['));
  });
  const auto line = NewTcpTransport();
  ASSERT_EQ(TroubleAt(*line, QStringLiteral("127.0.0.1"), server.serverPort()), "");
  const Stopwatch stopwatch;
  while (line->IsOpen() && stopwatch.ElapsedMs() < 5000) {
    QCoreApplication::processEvents();
    EXPECT_LE(line->Waiting(), ReceiveBufferSize);
  }
  EXPECT_FALSE(line->IsOpen());
  EXPECT_EQ(line->Take(), "");
  line->Send("[0005D7]");
}

TEST(TransportTest, WhatHasComeMeanwhileIsTakenWithoutEvents) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const auto line = NewTcpTransport();
  ASSERT_EQ(TroubleAt(*line, QStringLiteral("127.0.0.1"), server.serverPort()), "");
  ASSERT_TRUE(server.hasPendingConnections() || server.waitForNewConnection(5000));
  QTcpSocket* socket = server.nextPendingConnection();
  socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  const auto peer = static_cast<int>(socket->socketDescriptor());
  const std::function<void()> before[] = {[] {}, [&] { line->Send("[0005D7]"); },
                                          [&] { line->Wait(1, 1); }};
  for (const auto& act : before) {
    act();
    ASSERT_EQ(send(peer, "stale", 5, MSG_NOSIGNAL), 5);
    EXPECT_EQ(line->Take(), "stale");
    EXPECT_EQ(line->Take(), "");
  }
}

TEST(TransportTest, TheWindowLivesWhileAPeerLetsBytesDrip) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const auto line = NewTcpTransport();
  ASSERT_EQ(TroubleAt(*line, QStringLiteral("127.0.0.1"), server.serverPort()), "");
  ASSERT_TRUE(server.hasPendingConnections() || server.waitForNewConnection(5000));
  QTcpSocket* peer = server.nextPendingConnection();
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
  line->Wait(1 << 14, 500);
  drip.join();
  EXPECT_GT(events, 5);
}

/// A pseudo-terminal that the program knows as COM7, open.
class SerialTransportTest : public testing::Test {
 protected:
  void SetUp() override {
    qputenv("HOME", home_.path().toLocal8Bit());
    ASSERT_TRUE(device >= 0 && grantpt(device) == 0 && unlockpt(device) == 0);
    QDir().mkpath(DataPath(QStringLiteral("Ports")));
    ASSERT_TRUE(QFile::link(QString::fromLocal8Bit(ptsname(device)),
                            DataPath(QStringLiteral("Ports/COM7"))));
    port->Open({.Port = QStringLiteral("COM7"), .Baud = 115200});
  }
  void TearDown() override {
    close(device);
    qputenv("HOME", oldHome_);
  }

  int device = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  const std::unique_ptr<Transport> port = NewSerialTransport();

 private:
  const QTemporaryDir home_;
  const QByteArray oldHome_ = qgetenv("HOME");
};

TEST_F(SerialTransportTest, AFloodIsHeldBack) {
  const std::string much(4096, '[');
  int most = 0;
  for (int i = 0; i < 200; ++i) {
    [[maybe_unused]] const ssize_t taken = write(device, much.data(), much.size());
    port->Wait(1 << 20, 1);
    most = std::max(most, port->Waiting());
  }
  EXPECT_GT(most, 0);
  EXPECT_LE(most, ReceiveBufferSize);
}

TEST_F(SerialTransportTest, AWaitSpinsNoProcessorAndDeliversNoEvents) {
  int events = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++events; });
  timer.start(0);
  constexpr int waitMs = 300;
  const std::clock_t before = std::clock();
  port->Wait(1, waitMs);
  const auto busyMs = static_cast<int>((std::clock() - before) * 1000 / CLOCKS_PER_SEC);
  EXPECT_EQ(events, 0);
  EXPECT_LT(busyMs, waitMs / 2);
}

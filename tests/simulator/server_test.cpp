#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QFileInfo>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "simulator/frame.h"
#include "simulator/panel_thread.h"

namespace simulator {
namespace {

/// A host on TCP, blocking.
class TcpHost {
 public:
  explicit TcpHost(PanelThread& panel) {
    Socket.connectToHost("127.0.0.1", panel.TcpPort());
    EXPECT_TRUE(Socket.waitForConnected(5000));
  }
  std::string Ask(const std::string& bytes, std::size_t length, int timeoutMs = 5000) {
    Socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
    QByteArray reply;
    while (static_cast<std::size_t>(reply.size()) < length && Socket.waitForReadyRead(timeoutMs)) {
      reply += Socket.readAll();
    }
    return reply.toStdString();
  }
  QTcpSocket Socket;
};

/// A host on a serial port, blocking.
class SerialHost {
 public:
  explicit SerialHost(const QString& path)
      : Port(open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY)) {
    EXPECT_GE(Port, 0);
  }
  ~SerialHost() { close(Port); }
  std::string Ask(const std::string& bytes, std::size_t length, int timeoutMs = 5000) {
    EXPECT_EQ(write(Port, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    std::string reply;
    pollfd waiting{Port, POLLIN, 0};
    while (reply.size() < length && poll(&waiting, 1, timeoutMs) == 1) {
      char buffer[512];
      const ssize_t count = read(Port, buffer, sizeof buffer);
      if (count <= 0) break;
      reply.append(buffer, static_cast<std::size_t>(count));
    }
    return reply;
  }
  int Port;
};

TEST(SimulatorTcp, ServesSeveralHostsAndSurvivesAnyBytes) {
  PanelThread panel;
  panel.With([](Panel& p) { p.SetRelay(2, true); });
  TcpHost first(panel);
  TcpHost second(panel);
  const std::string relays = FrameReply("001" + std::string(45, '0'));
  EXPECT_EQ(first.Ask("\x01garbage[0005D8]" + FrameCommand("23FF"), 52), relays);
  EXPECT_EQ(second.Ask(FrameCommand("10020") + FrameCommand("10000"), 8), "[00][00]");
  EXPECT_FALSE(panel.With([](Panel& p) { return p.Relay(2); }));
  second.Socket.abort();
  EXPECT_EQ(first.Ask("[00", 1, 20), "");
  EXPECT_EQ(first.Ask("05D7]", 44).size(), 44U);
  EXPECT_EQ(panel.FramesFromHost().back(), "[0005D7]");
  EXPECT_THROW(panel.With([](Panel& p) { p.SetRelay(48, true); }), std::out_of_range);
}

TEST(SimulatorTcp, APortInUseIsReported) {
  PanelThread panel;
  Options options;
  options.TcpPort = panel.TcpPort();
  EXPECT_THROW(PanelThread other(options), std::runtime_error);
}

TEST(SimulatorPty, AnswersHostsOneAfterTheOther) {
  PanelThread panel(PanelThread::PtyOptions());
  for (int i = 0; i < 2; ++i) {
    SerialHost host(panel.PtyPath());
    EXPECT_EQ(host.Ask("[0005D7]", 44).size(), 44U);
    // A memory write with every byte value that a terminal might take for itself.
    EXPECT_EQ(host.Ask(std::string("\x03\x04\x11\x13\r\n\x1A") + FrameCommand("10FF1"), 4), "[00]");
  }
}

TEST(SimulatorPty, LinkFollowsThePortAndGoesAtTheEnd) {
  QTemporaryDir folder;
  const QString link = folder.path() + "/Ports/COM16";
  {
    PtyServer::Options options;
    options.Link = link;
    PanelThread panel(PanelThread::PtyOptions(options));
    EXPECT_EQ(QFileInfo(link).symLinkTarget(), panel.PtyPath());
    SerialHost host(link);
    EXPECT_EQ(host.Ask(FrameCommand("10FF1"), 4), "[00]");
  }
  EXPECT_FALSE(QFileInfo(link).isSymLink());

  ASSERT_TRUE(QFile::link("/dev/pts/99999", link));
  MakePortLink(link, "/dev/pts/0");
  EXPECT_EQ(QFileInfo(link).symLinkTarget(), "/dev/pts/0");
  RemovePortLink(link, "/dev/pts/1");
  EXPECT_TRUE(QFileInfo(link).isSymLink()) << "another program's by now";
  QFile::remove(link);
  QFile file(link);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_THROW(MakePortLink(link, "/dev/pts/0"), std::runtime_error);
  EXPECT_TRUE(file.exists());
}

TEST(SimulatorMemoryFile, KeepsEveryChangeAndRefusesADamagedOne) {
  QTemporaryDir folder;
  Options options;
  options.MemoryFile = folder.path() + "/memory.bin";
  options.Blank = true;
  options.Password = "123456";
  {
    PanelThread(options).With([](Panel& p) { p.Memory.SetByte(0x9FFF, 0xEE); });
  }
  QFile file(options.MemoryFile);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  const QByteArray content = file.readAll();
  ASSERT_EQ(content.size(), 40960);
  EXPECT_EQ(content.mid(0x1F7A, 6), QByteArray("\1\2\3\4\5\6"));
  options.Password.clear();
  {
    EXPECT_EQ(PanelThread(options).With([](Panel& p) { return p.Memory.Byte(0x9FFF); }), 0xEE);
  }
  ASSERT_TRUE(QFile::resize(options.MemoryFile, 40959));
  EXPECT_THROW(PanelThread other(options), std::runtime_error);
}

}  // namespace
}  // namespace simulator

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <deque>

#include "hosts.h"
#include "limited.h"
#include "simulator/line/frame.h"
#include "simulator/program/panel_thread.h"

namespace simulator {
namespace {

constexpr QFile::Permissions ForOthers =
    QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;

const std::string Status = FrameCommand("05");
constexpr std::size_t StatusLength = 44;

std::string Many(int count, const std::string& text) {
  std::string many;
  for (int i = 0; i < count; ++i) many += text;
  return many;
}

/// Past the socket's own buffer.
void SendAtOnce(const TcpHost& host, const std::string& bytes) {
  const auto socket = static_cast<int>(host.Socket.socketDescriptor());
  EXPECT_EQ(write(socket, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

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
  Options taken;
  taken.TcpPort = panel.TcpPort();
  EXPECT_THROW(PanelThread other(taken), std::runtime_error);
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
    EXPECT_THROW(MakePortLink(link, "/dev/pts/0"), std::runtime_error) << "a panel answers there";
    panel.AddFault("drop");
    EXPECT_EQ(SerialHost(link).Ask(FrameCommand("10FF1"), 4), "") << "the plug is pulled";
    EXPECT_EQ(SerialHost(link).Ask(FrameCommand("10FF1"), 4), "[00]");
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

TEST(SimulatorTcp, DropAndDelaysReachTheHost) {
  PanelThread panel;
  TcpHost host(panel);
  // However late a busy computer is: no sooner.
  for (const auto& [fault, ms] : {std::pair{"split:2:30", 30}, {"late:150", 150}}) {
    panel.AddFault(fault);
    QElapsedTimer asked;
    asked.start();
    EXPECT_EQ(host.Ask(FrameCommand("10FF1"), 4), "[00]");
    EXPECT_GE(asked.elapsed(), ms) << fault;
  }
  panel.AddFault("drop");
  EXPECT_EQ(host.Ask(FrameCommand("10FF1"), 4), "");
  EXPECT_NE(host.Socket.state(), QAbstractSocket::ConnectedState);
}

TEST(SimulatorTcp, AHostThatFloodsAndNeverReadsHoldsNobodyUp) {
  PanelThread panel;
  TcpHost flood(panel);
  const std::string much = Many(20'000, "~junk[0005D7]");
  for (int i = 0; i < 8; ++i) flood.Socket.write(much.data(), static_cast<qint64>(much.size()));
  TcpHost other(panel);
  for (int i = 0; i < 5; ++i) {
    flood.Socket.waitForBytesWritten(1);
    EXPECT_EQ(other.Ask(Status, StatusLength).size(), StatusLength);
  }
}

TEST(SimulatorTcp, ATurnEndsWithItsTimeAndGoesBackToTheSockets) {
  Options options = PanelThread::TcpOptions();
  options.Turn = std::chrono::milliseconds(0);
  PanelThread panel(options);
  std::deque<TcpHost> floods;
  for (int i = 0; i < 4; ++i) floods.emplace_back(panel);
  TcpHost other(panel);
  const std::string much = Many(500, FrameCommand("0700"));
  // Between two turns of the panel, so that all are there at once.
  panel.With([&](Panel&) {
    for (const TcpHost& flood : floods) SendAtOnce(flood, much);
  });
  const std::size_t before = panel.With([&](Simulator& s) {
    SendAtOnce(other, Status);
    return s.Log().Entries().size();
  });
  EXPECT_EQ(other.Ask("", StatusLength).size(), StatusLength);
  const std::size_t turns = panel.With([&](Simulator& s) {
    const auto& entries = s.Log().Entries();
    const auto asked = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.Text == Status; });
    return static_cast<std::size_t>(asked - entries.begin()) - before;
  });
  EXPECT_LT(turns, 40U);
  EXPECT_EQ(other.Ask("[0005D8][0005D8]" + Status, StatusLength).size(), StatusLength)
      << "a turn goes on";
  // All at once, with turns to come.
  panel.With([&](Panel&) {
    for (const TcpHost& flood : floods) {
      shutdown(static_cast<int>(flood.Socket.socketDescriptor()), SHUT_RDWR);
    }
  });
  EXPECT_EQ(other.Ask(Status, StatusLength).size(), StatusLength);
}

TEST(SimulatorTcp, ANewcomerIsRefusedWhenDescriptorsRunOut) {
  PanelThread panel;
  TcpHost first(panel);
  const int lowest = dup(0);
  close(lowest);
  const Limited few(RLIMIT_NOFILE, static_cast<rlim_t>(lowest) + 60);
  std::deque<TcpHost> hosts;
  bool refused = false;
  while (!refused && hosts.size() < 60) {
    refused = hosts.emplace_back(panel).Ask(Status, StatusLength).empty();
  }
  EXPECT_TRUE(refused);
  EXPECT_GT(hosts.size(), 5U);
  EXPECT_EQ(first.Ask(Status, StatusLength).size(), StatusLength);
  EXPECT_TRUE(panel.With([](Simulator& s) {
    const auto& entries = s.Log().Entries();
    return std::any_of(entries.begin(), entries.end(), [](const FrameLog::Entry& entry) {
      return entry.Text == "a host refused, too many are connected";
    });
  }));
}

TEST(SimulatorTcp, AHostThatLeavesWithCommandsUnreadIsNoNews) {
  static std::atomic<int> told;
  told = 0;
  PanelThread panel;
  const auto usual =
      qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++told; });
  const std::string much = Many(2000, FrameCommand("0700"));
  for (int i = 0; i < 5; ++i) {
    TcpHost host(panel);
    host.Socket.write(much.data(), static_cast<qint64>(much.size()));
    host.Socket.flush();
    host.Socket.abort();
  }
  TcpHost other(panel);
  for (int i = 0; i < 20; ++i) EXPECT_EQ(other.Ask(Status, StatusLength).size(), StatusLength);
  qInstallMessageHandler(usual);
  EXPECT_EQ(told, 0);
}

TEST(SimulatorTcp, AHostThatEndsItsHalfStillGetsItsReply) {
  PanelThread panel;
  TcpHost host(panel);
  SendAtOnce(host, Status);
  shutdown(static_cast<int>(host.Socket.socketDescriptor()), SHUT_WR);
  EXPECT_EQ(host.Ask("", StatusLength).size(), StatusLength);
}

TEST(SimulatorMemory, AFileThatFitsOnlyInPartIsToldWithItsReason) {
  QTemporaryDir folder;
  Simulator simulator({});
  const Limited small(RLIMIT_FSIZE, 10'000);
  const std::string told = FailureOf([&] { simulator.SaveMemory(folder.filePath("memory")); });
  EXPECT_NE(told.find("File too large"), std::string::npos) << told;
}

TEST(SimulatorPacing, AFloodedLineLosesBytesAndStaysUsable) {
  std::size_t arrived = 0;
  PacedLine line(ByteTimeOf(0),
                 [&arrived](std::string_view bytes, LineTime) { arrived += bytes.size(); });
  const LineTime later = std::chrono::steady_clock::now() + std::chrono::milliseconds(30);
  const std::string much(PacedLine::MaxWaiting / 2, 'x');
  for (int i = 0; i < 5; ++i) line.Send(much, later);
  const LineTime end = later + std::chrono::seconds(5);
  while (arrived < PacedLine::MaxWaiting && std::chrono::steady_clock::now() < end) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  EXPECT_EQ(arrived, PacedLine::MaxWaiting);
  line.Send("[00]", later);
  EXPECT_EQ(arrived, PacedLine::MaxWaiting + 4);
}

TEST(SimulatorModem, PutsTheCallThroughUntilTheHostEndsIt) {
  PtyServer::Options options;
  options.WithModem = Modem::Options{false, std::chrono::milliseconds(20)};
  PanelThread panel(PanelThread::PtyOptions(options));
  SerialHost host(panel.PtyPath());
  EXPECT_EQ(host.Ask("[0005D7]\r", 9), "[0005D7]\r") << "no call: an echo and no panel";
  EXPECT_EQ(host.Ask("ATZ\r", 10), "ATZ\r\r\nOK\r\n");
  const std::string answer = host.Ask("ATDT 5551234\r", 30);
  EXPECT_GE(answer.size(), 30U);
  EXPECT_NE(answer.find("CONNECT 9600"), std::string::npos);
  EXPECT_EQ(host.Ask("[0005D7]", 44).size(), 44U);
  EXPECT_EQ(host.Ask("[%%%%%", 14), "\r\nNO CARRIER\r\n");
  // The host's "ATZ" at the end has no carriage return; the next call's begins after it.
  EXPECT_EQ(host.Ask("ATZ", 3), "ATZ");
  EXPECT_EQ(host.Ask("ATZ\r", 10), "ATZ\r\r\nOK\r\n");
  // A host that went away in mid-call resets the modem when it comes back.
  host.Ask("ATDT 5551234\r", 42);
  EXPECT_EQ(host.Ask("ATZ\r", 6), "\r\nOK\r\n");
}

TEST(SimulatorModem, ABusyLineAnswersShort) {
  Modem modem({true, std::chrono::milliseconds(20)});
  std::string text;
  for (const char c : std::string("ATDT 5551234\r")) {
    for (const TimedBytes& piece : modem.Receive(c)) text += piece.Bytes;
  }
  EXPECT_EQ(text, "ATDT 5551234\r\r\nNO CARRIER\r\n");
  EXPECT_LT(text.size(), 30U);
  EXPECT_FALSE(modem.OnLine());
}

TEST(SimulatorLog, WritesALineAFrame) {
  QTemporaryDir folder;
  Options options = PanelThread::TcpOptions();
  options.LogFile = folder.path() + "/frames.log";
  options.Now = [] { return QDateTime(QDate(2026, 1, 15), QTime(12, 0)); };
  ASSERT_TRUE(QFile(options.LogFile).open(QIODevice::WriteOnly)) << "with everybody's permissions";
  options.Faults = {ParseFault("lost@2")};
  PanelThread panel(options);
  TcpHost host(panel);
  host.Ask(FrameCommand("0704"), 86);
  host.Ask(FrameCommand("10FF0") + "[0005D8]" + FrameCommand("10FF1"), 4);
  panel.With([](Simulator& s) { s.Log().SetEnabled(false); });
  host.Ask(FrameCommand("10FF0"), 4);
  QFile file(options.LogFile);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QStringList lines = QString(file.readAll()).split('\n');
  ASSERT_EQ(lines.size(), 9) << lines.join('\n').toStdString();
  EXPECT_EQ(lines[0], "2026-01-15 12:00:00.000 tcp > [000704FB]");
  EXPECT_TRUE(lines[1].contains(" tcp < [Relays   ")) << lines[1].toStdString();
  EXPECT_TRUE(lines[1].contains("\\x0101 LOBBY      \\x03")) << lines[1].toStdString();
  EXPECT_TRUE(lines[3].endsWith(" tcp - reply withheld"));
  EXPECT_TRUE(lines[5].endsWith(" tcp - no reply to this"));
  EXPECT_TRUE(lines[7].endsWith(" tcp < [00]"));
  EXPECT_EQ(QFile::permissions(options.LogFile) & ForOthers, 0) << "it tells the password";
}

TEST(SimulatorLog, AFullDiskIsToldOnce) {
  FrameLog log;
  log.Open("/dev/full");
  testing::internal::CaptureStderr();
  for (int i = 0; i < 3; ++i) log.Add("tcp", FrameLog::Direction::Note, "a note");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "The log /dev/full cannot be written: No space left on device\n");
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
  EXPECT_EQ(QFile::permissions(options.MemoryFile) & ForOthers, 0);
  file.setPermissions(file.permissions() | ForOthers);
  options.Password.clear();
  {
    EXPECT_EQ(PanelThread(options).With([](Panel& p) { return p.Memory.Byte(0x9FFF); }), 0xEE);
  }
  EXPECT_EQ(QFile::permissions(options.MemoryFile) & ForOthers, 0) << "an older one too";
  ASSERT_TRUE(QFile::resize(options.MemoryFile, 40959));
  EXPECT_THROW(PanelThread other(options), std::runtime_error);
}

}  // namespace
}  // namespace simulator

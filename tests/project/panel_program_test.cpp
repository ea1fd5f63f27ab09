#include <QDeadlineTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTcpServer>
#include <QThread>
#include <csignal>
#include <deque>

#include "panel/panel_image.h"
#include "project/project_program.h"
#include "simulator/program/panel_thread.h"

// The program for scripts beside a simulated panel.

namespace {

using simulator::Panel;

constexpr const char* Password = "TAMBERLOOM3_PASSWORD=000000";

class PanelProgramTest : public ProjectProgramTest {
 protected:
  PanelProgramTest() : address(AddressOf(panel)) {}

  static QString AddressOf(simulator::PanelThread& panel) {
    return QStringLiteral("tcp:127.0.0.1:%1").arg(panel.TcpPort());
  }
  /// The codes of the commands since the last call, "05 311F7A05".
  QString Commands() {
    QStringList codes;
    const auto frames = panel.FramesFromHost();
    for (; seen < frames.size(); ++seen) {
      const QString frame = QString::fromStdString(frames[seen]);
      codes << frame.mid(3, frame[3] == u'3' ? 8 : 2);
    }
    return codes.join(u' ');
  }
  /// One that runs until it is ended.
  void Start(QProcess& program, const QStringList& arguments, const char* setting = "") {
    program.setEnvironment(Environment() << QString::fromLatin1(setting));
    program.start(QStringLiteral(PROJECT_PROGRAM), arguments);
    ASSERT_TRUE(program.waitForStarted());
  }
  /// The cells of its next line behind the time.
  static QString NextRow(QProcess& program) {
    while (!program.canReadLine() && program.waitForReadyRead(20'000)) {
    }
    return QString::fromUtf8(program.readLine()).trimmed().section(u'\t', 1);
  }

  simulator::PanelThread panel;
  QString address;
  std::size_t seen = 0;
};

TEST_F(PanelProgramTest, APanelStandsWhereAProjectMay) {
  const QString file = folder.filePath("read.T3");
  EXPECT_EQ(Run({"read", address, file}), 0) << errors.toStdString();
  EXPECT_EQ(Run({"compare", address, file, "--names"}), 0) << output.toStdString();
  EXPECT_EQ(Run({"document", address, "--name", "N", "--date", "2026-11-25 10:00"}), 0);
  const QByteArray told = output;
  EXPECT_EQ(Run({"document", file, "--name", "N", "--date", "2026-11-25 10:00"}), 0);
  EXPECT_EQ(told, output);

  const QString memory = folder.filePath("memory");
  EXPECT_EQ(Run({"image", file, "-"}, memory), 0);
  EXPECT_EQ(Run({"compare", address, "image:" + memory}), 0) << output.toStdString();
  const QString made = folder.filePath("made.T3");
  for (const QString& place : {address, "image:" + memory}) {
    EXPECT_EQ(Run({"project", place, made, "--names"}), 0) << errors.toStdString();
    EXPECT_EQ(Run({"compare", file, made, "--names"}), 0) << output.toStdString();
  }
  EXPECT_EQ(Run({"read", address, file, "--no-names"}), 0);
  EXPECT_EQ(Run({"compare", address, file, "--names"}), 1);
  EXPECT_TRUE(Lines().contains("Names\tRELAY 01\tname\tLOBBY\tRELAY 01")) << output.toStdString();
  EXPECT_EQ(Run({"check", address, file}), 0);
  EXPECT_TRUE(output.contains(address.toUtf8() + "\twarning"));
}

TEST_F(PanelProgramTest, APanelIsASideOfAMerge) {
  const QString base = Save("base.T3");
  ASSERT_EQ(Run({"send", base, address}, {}, Password), 0) << errors.toStdString();
  PanelRecord.RelayName(0) = "LONGER THAN TEN";
  PanelRecord.ComPort = 7;
  const QString ours = Save("ours.T3");
  panel.With([](Panel& p) { p.Memory.SetByte(0x06F7, 2); });
  const QString out = folder.filePath("out.T3");
  EXPECT_EQ(Run({"merge", base, ours, address, "-o", out}), 0) << errors.toStdString();
  PanelRecord.RelayTimerType(7) = 2;
  EXPECT_TRUE(FileText(out) == Document()) << "what a panel does not keep stays";
}

TEST_F(PanelProgramTest, OnlyWhatHasChangedIsSentToAPanelThatHoldsWhatIsKnown) {
  PanelRecord.IOCount(0) = 3;
  PanelRecord.IOCount(1) = 1;
  const QString file = Save("hall.T3");
  EXPECT_EQ(Run({"send", file, address, "--changes"}, {}, Password), 2);
  EXPECT_TRUE(errors.contains("nothing is known")) << errors.toStdString();
  EXPECT_EQ(Run({"send", file, address}, {}, Password), 0) << errors.toStdString();
  EXPECT_TRUE(
      errors.contains("the panel has its relays and inputs as 8 at node 1, 8 at node 2, "
                      "the project as 12 at node 1, 4 at node 2"))
      << errors.toStdString();
  EXPECT_EQ(Run({"compare", file, address, "--names"}), 0) << output.toStdString();
  const QDir known(folder.filePath("Orv Tamberloom 3/Panels"));
  ASSERT_EQ(known.entryList(QDir::Files).size(), 1);
  EXPECT_EQ(QFile(known.filePath(known.entryList(QDir::Files)[0])).permissions() &
                (QFile::ReadGroup | QFile::ReadOther),
            QFile::Permissions());

  Commands();
  PanelRecord.TimerTime(3) = 7;
  Save("hall.T3");
  EXPECT_EQ(Run({"send", file, address, "--changes"}, {}, Password), 0) << errors.toStdString();
  EXPECT_EQ(Commands(), "05 311F7A05 01 3400009F 301E003F 3400009F");
  EXPECT_EQ(Run({"send", file, address, "--changes"}, {}, Password), 0);
  EXPECT_TRUE(errors.contains("nothing has changed"));
  EXPECT_EQ(Commands(), "05 311F7A05 01 3400009F");

  panel.With([](Panel& p) { p.Memory.SetByte(0x1FF0, 1); });
  PanelRecord.TimerTime(3) = 8;
  Save("hall.T3");
  EXPECT_EQ(Run({"send", file, address, "--changes"}, {}, Password), 1);
  EXPECT_TRUE(errors.contains("holds something else")) << errors.toStdString();
  EXPECT_TRUE(errors.contains("relays and inputs, the project")) << errors.toStdString();
  EXPECT_EQ(Commands(), "05 311F7A05 01 3400009F");

  ASSERT_TRUE(QDir(known).removeRecursively());
  Write("Orv Tamberloom 3/Panels", "in the way");
  EXPECT_EQ(Run({"send", file, address}, {}, Password), 0) << errors.toStdString();
  EXPECT_TRUE(errors.contains("what it holds is not remembered")) << errors.toStdString();
}

TEST_F(PanelProgramTest, AnInterruptedSendTellsWhatItLeaves) {
  const QString file = Save("hall.T3");
  ASSERT_EQ(Run({"send", file, address}, {}, Password), 0) << errors.toStdString();
  PanelRecord.TimerTime(3) = 7;
  Save("hall.T3");
  struct {
    const char* Unanswered;
    const char* Asked;
    const char* Told;
  } const cases[] = {{"lost@4", "3400009F", "interrupted; nothing was written"},
                     {"lost@5", "301E003F", "interrupted; the panel is half new"}};
  for (const auto& [unanswered, asked, told] : cases) {
    Commands();
    panel.AddFault(unanswered);
    QProcess send;
    Start(send, {"send", file, address, "--changes"}, Password);
    while (!Commands().contains(asked)) QThread::msleep(10);
    kill(static_cast<pid_t>(send.processId()), SIGINT);
    ASSERT_TRUE(send.waitForFinished());
    EXPECT_EQ(send.exitCode(), 2);
    const QByteArray last = send.readAllStandardError();
    EXPECT_TRUE(last.contains(told)) << last.toStdString();
  }
}

TEST_F(PanelProgramTest, EveryKindOfLineCarriesReadSendAndCompare) {
  constexpr int timerType = 0x06F7;
  const auto set = [](Panel& p) { p.Memory.SetByte(timerType, 2); };
  panel.With(set);
  const QString file = folder.filePath("panel.T3");
  ASSERT_EQ(Run({"read", address, file}), 0) << errors.toStdString();
  const QString copy = folder.filePath("copy.T3");
  // A modem takes its time, so that all go at once, each to a panel of its own.
  std::deque<simulator::PanelThread> panels;
  std::deque<QProcess> programs;
  for (const char* kind : {"serial:%1", "modem:%1,555-1234", "tcp:[::1]:%1"}) {
    const bool isTcp = kind[0] == 't';
    if (isTcp && !QTcpServer().listen(QHostAddress::LocalHostIPv6)) continue;
    simulator::Options options =
        isTcp ? simulator::PanelThread::TcpOptions() : simulator::PanelThread::PtyOptions();
    options.Host = "::1";
    if (kind[0] == 'm') options.Pty->WithModem = simulator::Modem::Options();
    for (const char* command : {"read", "send", "compare"}) {
      auto& own = panels.emplace_back(options);
      const QString at = QString(kind).arg(isTcp ? QString::number(own.TcpPort()) : own.PtyPath());
      if (command[0] != 's') own.With(set);
      Start(programs.emplace_back(),
            command[0] == 'r' ? QStringList{command, at, copy + kind[0]}
                              : QStringList{command, file, at},
            Password);
    }
  }
  // An interrupted call is hung up.
  simulator::Options withModem = simulator::PanelThread::PtyOptions();
  withModem.Pty->WithModem = simulator::Modem::Options();
  simulator::PanelThread called(withModem);
  QProcess watch;
  Start(watch, {"watch", "modem:" + called.PtyPath() + ",555"});
  while (called.FramesFromHost().size() < 20 && !watch.waitForFinished(20)) {
  }
  const QDeadlineTimer aSecond(1'500);
  watch.terminate();
  EXPECT_TRUE(watch.waitForFinished());
  EXPECT_FALSE(aSecond.hasExpired());
  EXPECT_EQ(watch.exitCode(), 0) << watch.readAllStandardError().data();
  EXPECT_EQ(called.With([](simulator::Simulator& s) { return s.Log().Entries().back().Text; }),
            "the modem's call has ended");
  for (QProcess& program : programs) {
    EXPECT_TRUE(program.waitForFinished(60'000));
    EXPECT_EQ(program.exitCode(), 0)
        << program.arguments().join(u' ').toStdString() << program.readAllStandardError().data();
    const QString read = program.arguments().last();
    const bool isCopy = read.startsWith(copy);
    EXPECT_TRUE(!isCopy || FileText(read) == FileText(file)) << read.toStdString();
  }
  for (auto& own : panels) {
    EXPECT_EQ(own.With([](Panel& p) { return p.Memory.Byte(timerType); }), 2);
  }
}

TEST_F(PanelProgramTest, StatesAreToldAndSwitched) {
  EXPECT_EQ(Run({"switch", address, "relay", "2", "ON"}), 0) << errors.toStdString();
  EXPECT_EQ(Run({"status", address}), 0);
  EXPECT_EQ(Lines()[0], "Item\tState\tName");
  EXPECT_TRUE(Lines().contains("RELAY 02\ton\tHALL NORTH")) << output.toStdString();
  EXPECT_TRUE(Lines().contains("RELAY 03\toff\tHALL SOUTH"));
  EXPECT_EQ(Lines().filter(QRegularExpression("^GROUP ")).size(), 48);
  PanelRecord.RelayName(1) = "OURS";
  FennlinkRecords(63).DeviceType = 4;
  EXPECT_EQ(Run({"status", address, "--names", Save("names.T3"), "--json"}), 0);
  EXPECT_TRUE(output.contains(R"({"Item":"RELAY 02","Name":"OURS","State":"on"})"));
  EXPECT_TRUE(output.contains(R"("Item":"FL 3F","Name":"","State":"no response")"));

  const QString lines = folder.filePath("lines");
  QFile file(lines);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("RELAY 02 off\nRELAY 49 on\n\nGROUP 0 on\nrelay 03 on");
  file.close();
  QProcess program;
  program.setStandardInputFile(lines);
  Start(program, {"switch", address, "-"});
  ASSERT_TRUE(program.waitForFinished());
  EXPECT_EQ(program.exitCode(), 2);
  const QByteArray wrong = program.readAllStandardError();
  EXPECT_TRUE(wrong.contains("line 2: ") && wrong.contains("line 4: ")) << wrong.toStdString();
  EXPECT_EQ(panel.With([](Panel& p) { return p.Relay(1) * 10 + p.Relay(2); }), 1);

  EXPECT_EQ(Run({"clock", address, "--set"}), 0);
  EXPECT_TRUE(QRegularExpression("^20\\S+(Z|[+-]\\d\\d:\\d\\d)\t20\\S+\t-?\\d+$")
                  .match(Lines()[1])
                  .hasMatch())
      << output.toStdString();
}

TEST_F(PanelProgramTest, AWatchTellsChangesAndComesBackAfterALostLine) {
  QProcess watch;
  Start(watch, {"watch", address, "--every", "0.05"});
  EXPECT_EQ(NextRow(watch), "Item\tWas\tIs\tName");
  while (!Commands().split(u' ').contains("48")) QThread::msleep(10);  // It has looked once.
  panel.With([](Panel& p) { p.SetRelay(6, true); });
  QString row = NextRow(watch);
  EXPECT_EQ(row, "RELAY 07\toff\ton\tOFFICE 3");
  panel.AddFault("drop");
  while (!row.startsWith("PANEL") && !row.isEmpty()) row = NextRow(watch);
  EXPECT_EQ(row, "PANEL\tconnected\tlost");
  EXPECT_EQ(NextRow(watch), "PANEL\tlost\tconnected");
  watch.terminate();
  ASSERT_TRUE(watch.waitForFinished());
  EXPECT_EQ(watch.exitCode(), 0);
}

TEST_F(PanelProgramTest, WhatFailsIsOneSentenceAndLeavesTheFile) {
  const QString file = Save("old.T3");
  const std::string old = FileText(file);
  struct {
    QStringList Call;
    const char* Told;
  } const calls[] = {
      {{"read", "tcp:127.0.0.1:1", file}, "Nobody answers"},
      {{"read", "tcp:no..host", file}, "No host has that name"},
      {{"read", "serial:/dev/none@9601", file}, "no port has 9601 baud"},
      {{"switch", address, "RELAY", "48", "on"}, "none with the number 48"},
      {{"read", "tcp:[::1]:1", file}, "Nobody answers at ::1, port 1"},
      {{"read", "tcp:::1:1", file}, "an IPv6 address in brackets"},
      {{"read", "tcp:127.0.0.1:x", file}, "given as ./tcp:127.0.0.1:x"},
      {{"read", "tcp:127.0.0.1:65536", file}, "is tcp:HOST[:PORT]"},
      {{"status", "serial:/dev/none"}, "is not there"},
      {{"clock", "modem:/dev/none"}, "modem:DEVICE,NUMBER"},
      {{"clock", file}, "not a panel's address"},
      {{"switch", address, "RELAY", "05"}, "RELAY 05 on"},
      {{"send", file, address}, "password is missing"},
      {{"send", file, address, "--password-file", file}, "six digits"},
  };
  for (const auto& [call, told] : calls) {
    EXPECT_EQ(Run(call), 2) << call.join(u' ').toStdString();
    EXPECT_TRUE(errors.contains(told)) << errors.toStdString();
    EXPECT_EQ(errors.count('\n'), 1) << errors.toStdString();
  }
  EXPECT_EQ(Run({"send", file, address}, {}, "TAMBERLOOM3_PASSWORD=111111"), 2);
  EXPECT_TRUE(errors.contains("Password Invalid.")) << errors.toStdString();
  for (const char* fault : {"drop@31", "checksum@34x3"}) {
    panel.AddFault(fault);
    EXPECT_EQ(Run({"read", address, file}), 2);
    EXPECT_TRUE(errors.contains(address.toUtf8())) << errors.toStdString();
  }
  EXPECT_TRUE(FileText(file) == old);
}

}  // namespace

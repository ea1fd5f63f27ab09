#include "simulator/program/console.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include "simulator/line/commands.h"
#include "simulator/program/command_line.h"

namespace simulator {
namespace {

TEST(SimulatorConsole, CommandsActOnThePanelAndBadOnesSayWhy) {
  Simulator simulator{Options{}};
  bool ended = false;
  Console console(simulator, [&ended] { ended = true; });
  Panel& panel = simulator.ThePanel();
  const auto run = [&console](const char* line) { return console.Execute(line); };

  EXPECT_EQ(run("relay 3 on"), "");
  EXPECT_TRUE(panel.Relay(2));
  EXPECT_NE(run("show relays").find("03  HALL SOUTH  on\n"), std::string::npos);
  run("relay all off");
  run("group 4 on");
  EXPECT_TRUE(panel.Relay(15));
  run("tap 2");  // a push button on group 1
  EXPECT_TRUE(panel.Group(0));
  run("press 1 off");
  EXPECT_EQ(panel.InputState(0), 2);
  run("button 1 2 tap");  // relay 6
  EXPECT_TRUE(panel.Relay(5));
  run("device 3 dropped");
  run("device 9 present");
  run("photocell 9 200");
  EXPECT_FALSE(panel.DevicePresent(3));
  EXPECT_NE(run("show devices").find("level 200"), std::string::npos);
  EXPECT_TRUE(Answer(panel, "[0005D7]"));
  run("power off");
  EXPECT_FALSE(Answer(panel, "[0005D7]"));
  EXPECT_EQ(panel.Front.Display().find_first_not_of(' '), std::string::npos);
  run("power on");
  EXPECT_TRUE(Answer(panel, "[0005D7]"));
  EXPECT_EQ(run("time 2031-02-03 04:05"), "Mon 2031-02-03 04:05:00\n");
  EXPECT_EQ(run("io 1 0 2"), "12 inputs and relays\n");
  run("card 7 3");
  EXPECT_EQ(panel.AddOnType * 16 + panel.AddOnRevision, 0x73);
  run("password 123456");
  EXPECT_EQ(panel.Memory.Byte(0x1F7F), 6);
  run("firmware ABC  DEF");
  EXPECT_EQ(panel.Firmware, "ABC DEF");
  EXPECT_EQ(run("fault late:20@3x2"), "late:20@3x2\n");
  EXPECT_EQ(run("fault clear"), "no faults\n");

  for (const char* bad : {"relay", "relay 49 on", "relay 0 on", "relay 1 up", "button 1 9 tap",
                          "photocell 1 256", "time 2031-13-01 00:00", "io", "io 1 x", "card 16 0",
                          "password 12345", "show", "fault", "key"}) {
    EXPECT_NE(run(bad).find("usage:"), std::string::npos) << bad;
  }
  EXPECT_NE(run("bogus").find("help"), std::string::npos);
  EXPECT_NE(run("fault slow").find("slow"), std::string::npos);
  EXPECT_NE(run("save").find("No memory file"), std::string::npos);
  EXPECT_NE(run("save /no/such/folder/m.bin").find("cannot be written"), std::string::npos);
  EXPECT_EQ(run("  "), "");
  run("quit");
  EXPECT_TRUE(ended);
}

TEST(SimulatorConsole, EveryCommandStandsInThePagesAboutIt) {
  QFile file(GUIDE_FOLDER "/../simulated_panel.md");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString page =
      QString(file.readAll()).section("## Typed commands", 1).section("\n## ", 0, 0);
  const QString help = QString::fromStdString(ParseCommandLine({"panel", "--help"}).Say.value());
  const QString commands = help.section("Typed commands:\n", 1).section("\n\n", 0, 0);
  EXPECT_GT(commands.count('\n'), 20);
  for (const QString& line : commands.split('\n')) {
    if (line.startsWith("   ")) continue;  // what the verb of the line before does
    const QString verb = line.trimmed().section(' ', 0, 0);
    EXPECT_TRUE(page.contains(QRegularExpression("\\b" + verb + "\\b"))) << verb.toStdString();
  }
  EXPECT_TRUE(
      help.contains("press, release, tap, button, photocell, relay, group, preset, timer, power"));
}

TEST(SimulatorCommandLine, ChoosesLinesAndRefusesNonsense) {
  const auto parse = [](const QString& line) {
    return ParseCommandLine(QStringList("panel") + line.split(' ', Qt::SkipEmptyParts)).Wanted;
  };
  EXPECT_EQ(parse("").TcpPort, 10001);
  EXPECT_FALSE(parse("").Pty);
  EXPECT_FALSE(parse("--pty --baud 9600").TcpPort);
  EXPECT_EQ(parse("--pty --baud 9600").Pty->Baud, 9600);
  EXPECT_EQ(parse("--modem --tcp 0").TcpPort, 0);
  EXPECT_TRUE(parse("--modem-busy").Pty->WithModem->Busy);
  EXPECT_TRUE(parse("--link COM16").Pty->Link.endsWith("/Orv Tamberloom 3/Ports/COM16"));
  EXPECT_EQ(parse("--fault lost@3 --fault late:5x*").Faults.size(), 2U);
  for (const char* bad : {"--tcp 70000", "--tcp x", "--baud 9600", "--tcp 0 --dial-ms 9",
                          "--pty --baud -1", "--nothing", "--daylight moon", "--plan-pilots",
                          "file", "--password 12345", "--fault odd"}) {
    EXPECT_THROW(parse(bad), std::invalid_argument) << bad;
  }
}

}  // namespace
}  // namespace simulator

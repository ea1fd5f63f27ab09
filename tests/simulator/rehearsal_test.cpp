#include "simulator/rehearsal/rehearsal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include "rehearsed.h"
#include "simulator/memory/write_file.h"
#include "simulator/program/simulator.h"

namespace simulator {
namespace {

std::string FailureOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    return failure.what();
  }
  return "none";
}

TEST(RehearsalTest, WrongDatesAndLinesAreTold) {
  const std::pair<const char*, const char*> ranges[]{
      {"2026-02-30", "\"2026-02-30\" is no date of 2000 to 2099"},
      {"2100-01-01", "\"2100-01-01\" is no date of 2000 to 2099"},
      {"2026-01-02..2026-01-01",
       "\"2026-01-02..2026-01-01\" is no range of dates as in 2026-01-01..2026-12-31"},
  };
  for (const auto& [range, message] : ranges) {
    RehearsalOptions options;
    EXPECT_EQ(FailureOf([&] { ParseRange(range, options); }), message);
  }
  const std::pair<const char*, const char*> lines[]{
      {"hello", "\"hello\" is no date of 2000 to 2099"},
      {"2026-03-02 25:00 tap 1", "\"25:00\" is no time"},
      {"2026-03-02 08:00 tap 49", "expected a number from 1 to 48, found \"49\""},
      {"2026-03-02 08:00 button 1 9 tap", "expected a number from 1 to 8, found \"9\""},
      {"2026-03-02 08:00 photocell 1 256", "expected a number from 0 to 255, found \"256\""},
      {"2026-03-02 08:00 relay 1 up", "expected on or off, found \"up\""},
      {"2026-03-02 08:00 timer 1 2", "\"2\" is too much"},
      {"2026-03-02 08:00 save",
       "expected press or release or tap or button or photocell or relay or group or preset or "
       "timer, found \"save\""},
  };
  for (const auto& [line, message] : lines) {
    const QString script = "# a day\n\n2026-03-02 07:00:30 tap 1 off\n" + QString(line);
    EXPECT_EQ(FailureOf([&] { ParseScript(script); }), std::string("line 4: ") + message);
  }
}

TEST(RehearsalTest, TheProgramEndsWithStatusTwoAndAMessage) {
  QTemporaryDir folder;
  const QString script = folder.filePath("day.txt");
  WriteFile(script, "2026-03-02 08:00 tap 0\n", "The file");
  const auto run = [](const QStringList& arguments) {
    QProcess panel;
    panel.start(PANEL_PROGRAM, arguments);
    EXPECT_TRUE(panel.waitForFinished());
    return std::to_string(panel.exitCode()) + " " + panel.readAllStandardError().toStdString();
  };
  EXPECT_EQ(run({"--rehearse", "2026-03-02", "--inputs", script}),
            "2 tamberloom3-panel: " + script.toStdString() +
                ", line 1: expected a number from 1 to 48, found \"0\"\n");
  EXPECT_EQ(run({"--rehearse", "2026-03"}),
            "2 tamberloom3-panel: \"2026-03\" is no date of 2000 to 2099\n");
  EXPECT_EQ(run({"--rehearse", "2026-03-02", "--plan", folder.path()}),
            "2 tamberloom3-panel: The file " + folder.path().toStdString() +
                " cannot be written: Is a directory\n");
  EXPECT_EQ(run({"--rehearse", "2026-03-02"}), "0 ");
  EXPECT_EQ(run({"--rehearse", "2026-03-02", "--rehearse", "2026-03-03"}),
            "2 tamberloom3-panel: --rehearse takes one range of dates\n");
  EXPECT_EQ(run({"--tcp", "x"}), "2 tamberloom3-panel: --tcp takes a number from 0 to 65535\n");
  WriteFile(script, "2026-03-03 00:00 tap 1\n2026-03-02 23:59 tap 1\n2026-03-01 23:59 tap 1\n",
            "The file");
  const std::string start = "tamberloom3-panel: " + script.toStdString();
  EXPECT_EQ(run({"--rehearse", "2026-03-02", "--inputs", script}),
            "0 " + start + ", line 1: left out, not in 2026-03-02\n" + start +
                ", line 3: left out, not in 2026-03-02\n");
}

// At 70 degrees the sun stays up in June: the lamp that waits for it stays off, and the picture
// says why.
TEST(RehearsalTest, ThePictureShowsTheDaysAndSaysWhereThereIsNoSunrise) {
  PanelMemory memory = EmptyInstallation();
  memory.SetByte(map::Latitude, 70);
  memory.SetByte(map::IOCount, 1);
  memory.SetText(map::RelayName, map::NameLength, "A<B>&\"C\"");
  constexpr int afterSunrise = 56;
  SetTimer(memory, 0, afterSunrise, 0);
  SetTimer(memory, 1, 6, 0);
  SetTimer(memory, 2, 18, 0);
  memory.SetCode(map::TimerRelayControl, 1, 0, 1);
  memory.SetCode(map::TimerRelayControl, 0, 1, 1);
  memory.SetCode(map::TimerRelayControl, 0, 2, 2);
  QTemporaryDir folder;
  RehearsalOptions options;
  ParseRange("2026-06-20..2026-06-21", options);
  options.PlanFile = folder.filePath("plan.svg");
  options.BurnHours = true;
  std::string hours;
  Rehearse(memory, options, [&hours](std::string_view text) { hours += text; });
  EXPECT_EQ(hours.substr(0, hours.find("RELAY 03")),
            "Item\tHours\tWords\nRELAY 01\t24.00\tA<B>&\"C\"\nRELAY 02\t0.00\t\n");

  QFile file(options.PlanFile);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QXmlStreamReader svg(&file);
  QStringList texts;
  QStringList bars;
  while (!svg.atEnd()) {
    if (svg.readNext() != QXmlStreamReader::StartElement) continue;
    const QXmlStreamAttributes attributes = svg.attributes();
    if (svg.name() == QLatin1String("rect") && attributes.value("class") == QLatin1String("on")) {
      bars += attributes.value("x").toString() + "+" + attributes.value("width").toString();
    }
    if (svg.name() == QLatin1String("text")) texts += svg.readElementText().simplified();
  }
  EXPECT_FALSE(svg.hasError()) << svg.errorString().toStdString();
  EXPECT_TRUE(texts.contains("Sat 2026-06-20 no sunrise no sunset open 08:00 close 21:00"));
  EXPECT_EQ(texts.count("A<B>&\"C\""), 2);
  // 06:00 to 18:00 of each day; an hour takes 30.
  EXPECT_EQ(bars, (QStringList{"290+360", "290+360"}));
}

TEST(RehearsalTest, AFileDoesNotTakeThePlaceOfAPipe) {
  QTemporaryDir folder;
  const QString path = folder.filePath("pipe");
  ASSERT_EQ(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
  // Nor does anybody wait at its other end.
  EXPECT_EQ(FailureOf([&] { WriteFile(path, "whole", "The file"); }),
            "The file " + path.toStdString() + " cannot be written: No such device or address");
  Options options;
  options.MemoryFile = path;
  EXPECT_EQ(FailureOf([&] { StartMemory(options); }),
            "The memory file " + path.toStdString() + " is no plain file");
  const int reader = open(path.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK);
  WriteFile(path, "whole", "The file");
  std::array<char, 8> bytes{};
  EXPECT_EQ(read(reader, bytes.data(), bytes.size()), 5);
  close(reader);
}

}  // namespace
}  // namespace simulator

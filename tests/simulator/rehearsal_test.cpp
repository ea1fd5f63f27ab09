#include "simulator/rehearsal/rehearsal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include "hosts.h"
#include "rehearsed.h"
#include "simulator/memory/write_file.h"
#include "simulator/program/simulator.h"

namespace simulator {
namespace {

TEST(RehearsalTest, WrongDatesAndLinesAreTold) {
  const std::string date = " is no date of 2000 to 2099";
  const std::string range = " is no range of dates as in 2026-01-01..2026-12-31";
  for (const auto& [text, message] :
       {std::pair{"2026-02-30", date}, {"2100-01-01", date}, {"2026-01-02..2026-01-01", range}}) {
    RehearsalOptions options;
    EXPECT_EQ(FailureOf([&, dates = text] { ParseRange(dates, options); }),
              "\"" + std::string(text) + "\"" + message);
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
       "timer or power, found \"save\""},
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
  const std::string file = script.toStdString();
  const std::pair<QStringList, std::string> failures[]{
      {{"--rehearse", "2026-03-02", "--inputs", script},
       file + ", line 1: expected a number from 1 to 48, found \"0\""},
      {{"--rehearse", "2026-03"}, "\"2026-03\" is no date of 2000 to 2099"},
      {{"--rehearse", "2026-03-02", "--plan", folder.path()},
       "The file " + folder.path().toStdString() + " cannot be written: Is a directory"},
      {{"--rehearse", "2026-03-02", "--rehearse", "2026-03-03"},
       "--rehearse takes one range of dates"},
      {{"--tcp", "x"}, "--tcp takes a number from 0 to 65535"}};
  for (const auto& [arguments, told] : failures)
    EXPECT_EQ(run(arguments), "2 tamberloom3-panel: " + told + "\n");
  EXPECT_EQ(run({"--rehearse", "2026-03-02"}), "0 ");
  WriteFile(script, "2026-03-03 00:00 tap 1\n2026-03-02 23:59 tap 1\n2026-03-01 23:59 tap 1\n",
            "The file");
  const std::string start = "tamberloom3-panel: " + file + ", line ";
  const std::string leftOut = ": left out, not in 2026-03-02\n";
  EXPECT_EQ(run({"--rehearse", "2026-03-02", "--inputs", script}),
            "0 " + start + "1" + leftOut + start + "3" + leftOut);
}

// At 70 degrees the sun stays up in June: the lamp that waits for it stays off, and the picture
// says why.
TEST(RehearsalTest, ThePictureShowsTheDaysAndSaysWhereThereIsNoSunrise) {
  constexpr int afterSunrise = 56;
  PanelMemory memory = EmptyInstallation(Byte(map::Latitude, 70), Byte(map::IOCount, 1),
                                         Timer(0, afterSunrise, 0, 1, 1), Timer(1, 6, 0, 0, 1),
                                         Timer(2, 18, 0, 0, 2), Name(map::RelayName, "A<B>&\"C\""));
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
  EXPECT_EQ(bars, (QStringList{"290+360", "290+360", "110+14"})) << "the legend, too";
}

// A lamp that warns from 18:00 on, the dimmer output that follows it at half its level, and the
// pilot of a switch.
TEST(RehearsalTest, ThePictureHasRowsForDimmersAndPilotsOnRequestAndALegend) {
  const PanelMemory memory = EmptyInstallation(
      Byte(map::IOCount, 1), Byte(map::RelayTimerType, 1), Timer(0, 12, 0, 0, 1),
      Timer(1, 18, 0, 0, 2), Byte(map::DimmerBlock(0) + map::RelayInclude, 1),
      Byte(map::DimmerBlock(0) + map::RelayOnLevel, 128), Byte(map::LocalPilot, 0));
  QTemporaryDir folder;
  RehearsalOptions options;
  ParseRange("2026-03-02", options);
  options.PlanFile = folder.filePath("plan.svg");
  const auto drawn = [&] {
    Rehearse(memory, options, [](std::string_view) {});
    QFile file(options.PlanFile);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader svg(&file);
    std::string all;
    while (!svg.atEnd()) {
      if (svg.readNext() != QXmlStreamReader::StartElement) continue;
      const QXmlStreamAttributes of = svg.attributes();
      const QString style = of.value("class").toString();
      if (svg.name() == QLatin1String("text") && of.value("text-anchor") == QLatin1String("end")) {
        all += svg.readElementText().toStdString() + ": ";
      }
      if (style == "on" || style == "blinks" || style == "level" || style == "pilot") {
        all += QStringLiteral("%1 %2+%3 high %4; ")
                   .arg(style, of.value("x"), of.value("width"), of.value("height"))
                   .toStdString();
      }
    }
    return all;
  };
  // Half an hour takes 15; the warning takes ten minutes.
  const std::string lamp = "01: on 470+180 high 10; blinks 650+5 high 10; ";
  const std::string dark = "02: 03: 04: ";
  EXPECT_EQ(drawn(), lamp + dark + "on 110+14 high 10; blinks 200+14 high 10; ");
  options.Rows = {true, true};
  EXPECT_EQ(drawn(), lamp + dark +
                         "DIMMER 1 OUTPUT 1: level 470+185 high 6; "
                         "PILOT 01: pilot 470+185 high 10; "
                         "on 110+14 high 10; blinks 200+14 high 10; level 290+14 high 10; "
                         "pilot 380+14 high 10; ");
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

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDateEdit>
#include <QHelpEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QToolTip>
#include <QTreeWidget>

#include "opened_window.h"
#include "simulator/memory/write_file.h"
#include "simulator/window/day_picture.h"

namespace simulator {
namespace {

class WatchWindowTest : public OpenedWindow {
 protected:
  std::string News() { return Window->statusBar()->currentMessage().toStdString(); }
};

TEST_F(WatchWindowTest, ALampTellsWhyAndRunsUntilItChanges) {
  auto& lobby = Of<LampButton>("relay1");
  lobby.setFocus();
  const std::string why =
      "RELAY 01 LOBBY: on since 08:00 by TIMER 01 OPENING (at 08:00), off 21:00 by TIMER 02 "
      "CLOSING "
      "(at 21:00)";
  ASSERT_TRUE(Comes([&] { return Caption("why") == why; })) << Caption("why");
  EXPECT_EQ(lobby.accessibleDescription().toStdString(), why);
  EXPECT_EQ(lobby.Note(), "off 21:00");
  Of<LampButton>("relay2").setFocus();
  EXPECT_EQ(lobby.accessibleDescription(), "on");

  QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
  QApplication::sendEvent(&lobby, &asked);
  Of<QMenu>("itemMenu").actions()[0]->trigger();
  EXPECT_EQ(Time(), "Thursday 2026-01-15 21:00:00");
  EXPECT_FALSE(Lit("relay1"));
  // In vain.
  Click("relay1");
  Click("input1");
  EXPECT_EQ(News(), "INPUT 01 ENTRANCE does nothing: all that it controls stands so already.");
  Click("input1off");
  EXPECT_EQ(News(), "");
  EXPECT_FALSE(Lit("relay1"));
}

TEST_F(WatchWindowTest, WhatIsToldOfThePointersPlaceFollowsTheClock) {
  const auto hover = [](QWidget& widget, const QPoint& at) {
    QHelpEvent asked(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QApplication::sendEvent(&widget, &asked);
  };
  const auto tells = [&](const char* words) {
    return Comes([&] { return Caption("why").find(words) != std::string::npos; });
  };
  Of<LampButton>("relay2").setFocus();
  ASSERT_TRUE(tells("HALL NORTH"));
  hover(Of<LampButton>("relay1"), {});
  EXPECT_TRUE(tells("LOBBY: on since 08:00 by TIMER 01 OPENING (at 08:00), off 21:00 by"));
  GoTo({2026, 1, 15}, {21, 0});
  EXPECT_TRUE(tells("LOBBY: off since 21:00 by TIMER 02 CLOSING")) << Caption("why");
  EXPECT_TRUE(QToolTip::text().contains("off since 21:00"));
  GoTo({2026, 1, 16}, {12, 0});
  Of<QTabWidget>("pages").setCurrentIndex(1);
  auto& picture = Of<DayPicture>("picture");
  ASSERT_TRUE(Comes([&] {
    hover(picture, {picture.width() - 8, 0});
    return Caption("why").find("LOBBY at 23:53: off since 21:00 by") != std::string::npos;
  }));
  Source->ThePanel().SetRelay(0, false);
  EXPECT_TRUE(tells("LOBBY at 23:53: off since 12:00 by HAND")) << Caption("why");
}

TEST_F(WatchWindowTest, StationsSignsAndGroupsAreTold) {
  Set(Source->ThePanel().Memory, Byte(map::InputEnableTime + 1, 60),
      Byte(map::InputDisableTime + 1, 64), Code(map::GroupRelayInclude, 0, 3, 1));
  const auto built = [&] { return Window->findChildren<LampButton*>("relay1").size() == 2; };
  ASSERT_TRUE(Comes(built));
  EXPECT_EQ(Of<LampButton>("input2").Sign(), "not now");
  EXPECT_EQ(Of<LampButton>("input2").Note(), "Momentary PB: GROUP 01 PUBLIC");
  EXPECT_EQ(Of<LampButton>("device1input2").accessibleName(), "FL 01 INPUT 2");
  Click("group4on");
  EXPECT_TRUE(Lit("relay16"));
  Click("group4off");
  EXPECT_FALSE(Lit("relay16"));
  EXPECT_FALSE(Of<LampButton>("relay48").isVisible());
  QCoreApplication::processEvents();
  Click("fold");
  EXPECT_TRUE(Of<LampButton>("relay48").isVisible());
}

TEST_F(WatchWindowTest, PowerFailsAndTheWatchListTellsOfIt) {
  const auto watched = [&](const char* words) {
    return Comes(
        [&] { return !Of<QTreeWidget>("watch").findItems(words, Qt::MatchContains, 1).isEmpty(); });
  };
  EXPECT_TRUE(watched("In force: PRESET 01 DAY"));
  Click("powerCut");
  EXPECT_FALSE(Lit("relay1"));
  EXPECT_TRUE(watched("No power"));
  EXPECT_EQ(Of<QLabel>("display1").accessibleName(), "Display row 1: empty");
  Click("relay1");
  EXPECT_EQ(News(), "RELAY 01 LOBBY does nothing: there is no power.");
  Click("powerOn");
  Window->Refresh();
  EXPECT_EQ(Of<QLabel>("display1").accessibleName(), "Display row 1: SIMULATED PANEL");
  EXPECT_FALSE(Lit("relay1"));
  Source->ThePanel().SetRelay(3, true);
  Click("input3");  // on already, but its time begins
  EXPECT_EQ(News(), "");
  const char* words = "Timed on: STAIRS (INPUT 03 STAIRS of 12:00)";
  EXPECT_TRUE(watched(words));
  // Whole, in as many lines as it takes.
  auto& list = Of<QTreeWidget>("watch");
  list.resize(list.columnWidth(0) + list.fontMetrics().horizontalAdvance(words) / 2, 400);
  const auto found = list.findItems(words, Qt::MatchExactly, 1);
  EXPECT_GE(list.visualItemRect(found.at(0)).height(), 2 * list.fontMetrics().height());
}

TEST_F(WatchWindowTest, DaysStandBesideEachOtherAndWhatDiffersIsTold) {
  Of<QTabWidget>("pages").setCurrentIndex(1);
  auto& picture = Of<DayPicture>("picture");
  const auto comes = [&](const char* words) {
    return Comes([&] {
      picture.setFocus();
      QTest::keyClick(&picture, Qt::Key_Up);
      return Caption("why").find(words) != std::string::npos;
    });
  };
  Source->ThePanel().SetRelay(0, false);
  Of<QComboBox>("compare").setCurrentIndex(1);
  Of<QDateEdit>("otherDate").setDate(QDate(2026, 1, 16));
  EXPECT_TRUE(comes("On 08:00 to 12:00. Fri 2026-01-16: on since 08:00 by TIMER 01 OPENING"));
  EXPECT_TRUE(comes("On 08:00 to 21:00. They differ.")) << Caption("why");
  Source->ThePanel().Memory.SetByte(map::TimerTimeType, 10);
  Of<QComboBox>("compare").setCurrentIndex(2);
  EXPECT_TRUE(
      comes("On 10:00 to 21:00. Settings before: on since 08:00 by TIMER 01 OPENING (at "
            "08:00), off 21:00 by TIMER 02 CLOSING (at 21:00). On 08:00 to 21:00. They "
            "differ."))
      << Caption("why");
  EXPECT_NE(Log().find("12:00:00  --- New settings hold from here ---"), std::string::npos)
      << Log();
  const DayPlan::Stretches a{{0, 10}, {10, 20, FullLevel, true}};
  const DayPlan::Stretches b{{0, 10}, {15, 25}};
  const std::vector<std::pair<std::int64_t, std::int64_t>> different{{10, 25}};
  EXPECT_EQ(DifferenceOf(a, b), different);
}

TEST_F(WatchWindowTest, FilesKeepWhatWasDoneAndBringItBack) {
  QTemporaryDir folder;
  const auto answer = [&](const char* name) {
    Window->TheFiles().AskPath = [path = folder.filePath(name)](auto&&...) { return path; };
  };
  const auto content = [&](const char* name) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll().toStdString();
  };
  Click("relay5");
  Click("input2");
  Present = Present.addSecs(90);
  Click("powerCut");
  answer("presses.txt");
  Trigger("Save My Presses...");
  EXPECT_EQ(content("presses.txt"),
            "# What was done in the simulated panel's window.\n"
            "2026-01-15 12:00:00 relay 5 off\n"
            "2026-01-15 12:00:00 press 2\n"
            "2026-01-15 12:00:00 release 2\n"
            "2026-01-15 12:01:30 power off\n");
  answer("log.tsv");
  Trigger("Save the Log As Rows...");
  // What was done is what a rehearsal of it does.
  RehearsalOptions options;
  ParseRange("2026-01-15", options);
  options.Script = ReadScript(folder.filePath("presses.txt"));
  std::string rehearsed;
  Rehearse(SmallInstallation(), options, [&](std::string_view text) { rehearsed += text; });
  EXPECT_EQ(content("log.tsv"), rehearsed);
  EXPECT_NE(rehearsed.find("\tPOWER\tRELAY 06\toff\t"), std::string::npos);

  GoTo({2026, 1, 15}, {11, 0});
  answer("presses.txt");
  Trigger("Load a Script of Presses...");
  EXPECT_EQ(News(), "4 presses are to come, 0 are past.");
  GoTo({2026, 1, 15}, {12, 1});
  EXPECT_FALSE(Lit("relay5"));
  GoTo({2026, 1, 15}, {12, 2});
  EXPECT_FALSE(Source->ThePanel().Powered());
  answer("plan.svg");
  Trigger("Save the Picture's Days...");
  EXPECT_NE(content("plan.svg").find(">warning</text>"), std::string::npos);
  answer("hours.tsv");
  Trigger("Save Their Burn Hours...");
  EXPECT_NE(content("hours.tsv").find("RELAY 05\t4.00\tOFFICE 1\n"), std::string::npos)
      << content("hours.tsv");

  WriteFile(folder.filePath("bad.txt"), "2026-03-02 08:00 tap 0\n", "The file");
  answer("bad.txt");
  Trigger("Load a Script of Presses...");
  EXPECT_TRUE(Of<QMessageBox>("failure").text().endsWith(
      "bad.txt, line 1: expected a number from 1 to 48, found \"0\""));
}

TEST_F(WatchWindowTest, TheLogFollowsItsEndWhereverItWraps) {
  auto& log = Of<QPlainTextEdit>("log");
  QScrollBar& bar = *log.verticalScrollBar();
  QCoreApplication::processEvents();
  const auto toggle = [&] {
    for (int i = 0; i < 60; ++i) Source->ThePanel().SetGroup(i % 4, i % 8 < 4);
    Window->Refresh();
  };
  toggle();
  EXPECT_GT(bar.maximum(), 0);
  EXPECT_EQ(bar.value(), bar.maximum());
  const int before = bar.maximum();
  log.resize(log.width() / 2, log.height());
  EXPECT_GT(bar.maximum(), before);
  EXPECT_EQ(bar.value(), bar.maximum());
  // Not from where somebody reads.
  bar.triggerAction(QAbstractSlider::SliderToMinimum);
  toggle();
  EXPECT_EQ(bar.value(), 0);
}

TEST_F(WatchWindowTest, HelpDaylightAndSizes) {
  Of<QCheckBox>("daylight").click();
  EXPECT_GT(Source->ThePanel().DeviceLevel(3), 200);
  EXPECT_FALSE(Lit("relay13"));
  EXPECT_FALSE(Of<QWidget>("photocell3").isEnabled());
  Trigger("Guide");
  EXPECT_TRUE(Of<QTextBrowser>("guide").toPlainText().startsWith("The simulated panel"));
  Trigger("About");
  EXPECT_TRUE(Of<QMessageBox>("about").text().contains(TAMBERLOOM_VERSION));
  const QSize least = Window->minimumSizeHint();
  EXPECT_LE(least.width(), 960);
  EXPECT_LE(least.height(), 540 - 32) << "frame and title take their part";
}

}  // namespace
}  // namespace simulator

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QDateEdit>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProgressBar>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include "opened_window.h"
#include "simulator/window/beside.h"
#include "simulator/window/day_picture.h"
#include "simulator/window/relay_view.h"

namespace simulator {
namespace {

constexpr int Photocell = 3;  // device of the small installation

class PanelWindowTest : public OpenedWindow {};

TEST_F(PanelWindowTest, BeginsWithTheDaySoFar) {
  // The timer of 08:00 has set the preset DAY.
  for (const char* lamp : {"relay1", "group2", "preset1"}) EXPECT_TRUE(Lit(lamp)) << lamp;
  EXPECT_FALSE(Lit("relay13"));
  EXPECT_EQ(Of<LampButton>("relay13").accessibleDescription(), "off");
  EXPECT_EQ(Time(), "Thursday 2026-01-15 12:00:00");
  EXPECT_EQ(Caption("hours"), "Sunrise 07:35, sunset 16:45, open 08:00, close 21:00");
  EXPECT_TRUE(
      Log().ends_with("Thursday 2026-01-15\n"
                      "00:00:00  POWER (power comes)\n"
                      "08:00:00  TIMER 01 OPENING (at 08:00) turned LOBBY, HALL NORTH, HALL SOUTH, "
                      "STAIRS, OFFICE 1, OFFICE 2, OFFICE 3, MEETING on"))
      << Log();
  EXPECT_EQ(Of<QListWidget>("coming").item(0)->text().toStdString(),
            "Thu 16:45:00  TIMER 03 DUSK (at sunset) turns PARKING, PATH, SIGN, FLAG POLE on");
  EXPECT_EQ(Of<QListWidget>("coming").count(), 10);
}

TEST_F(PanelWindowTest, EachButtonDoesWhatItsThingDoes) {
  Panel& panel = Source->ThePanel();
  Click("relay5");
  EXPECT_FALSE(panel.Relay(4));
  EXPECT_FALSE(Lit("relay5"));
  EXPECT_FALSE(Lit("group2"));
  EXPECT_TRUE(Log().ends_with("12:00:00  HAND turned OFFICE 1 off"));
  Click("group4");
  EXPECT_TRUE(Lit("relay16"));
  Click("preset2");
  EXPECT_FALSE(Lit("relay1"));

  // Held as long as it is pressed; the second contact of a switch with two is a button of its own.
  auto& entrance = Of<LampButton>("input1");
  QTest::mousePress(&entrance, Qt::LeftButton);
  EXPECT_EQ(panel.InputState(0), 1);
  Window->Refresh();
  EXPECT_EQ(entrance.Sign(), "");
  QTest::mouseRelease(&entrance, Qt::LeftButton);
  EXPECT_EQ(panel.InputState(0), 0);
  EXPECT_TRUE(Lit("relay1"));
  EXPECT_TRUE(entrance.Lit());             // its pilot follows relay 1
  panel.SetContact(0, Contact::On, true);  // as a script does
  Window->Refresh();
  EXPECT_EQ(entrance.Sign(), "closed");
  panel.SetContact(0, Contact::On, false);
  EXPECT_EQ(Of<LampButton>("input1off").accessibleName(), "Input 01 ENTRANCE Off");
  Click("input1off");
  EXPECT_FALSE(Lit("relay1"));
  QTest::keyClick(&Of<LampButton>("device1input2"), Qt::Key_Space);
  EXPECT_TRUE(Lit("relay6"));

  // A switch that stays closed stays down.
  Source->ThePanel().Memory.SetByte(map::InputType + 1, 2);
  ASSERT_TRUE(Comes([&] { return Of<LampButton>("input2").isCheckable(); }));
  Click("input2");
  EXPECT_EQ(panel.InputState(1), 1);
  EXPECT_TRUE(Of<LampButton>("input2").isChecked());
  panel.SetContact(1, Contact::On, false);  // as a typed command does
  Window->Refresh();
  EXPECT_FALSE(Of<LampButton>("input2").isChecked());

  Of<QSlider>("photocell3").setValue(120);
  EXPECT_EQ(panel.DeviceLevel(Photocell), 120);
  Click("keyEnter");
  EXPECT_TRUE(panel.Front.Display().starts_with("Relays"));
}

TEST_F(PanelWindowTest, TheClockRunsStandsStepsAndJumps) {
  const auto pass = [this](int seconds) {
    Present = Present.addSecs(seconds);
    Window->Refresh();
  };
  Click("speed600");
  pass(6);
  EXPECT_EQ(Time(), "Thursday 2026-01-15 13:00:00");
  Trigger("Stand Still");
  pass(60);
  EXPECT_EQ(Time(), "Thursday 2026-01-15 13:00:00");
  Click("nextEvent");
  Window->Refresh();
  EXPECT_EQ(Time(), "Thursday 2026-01-15 16:45:00");
  EXPECT_TRUE(Lit("relay13"));
  GoTo({2026, 1, 16}, {21, 5});
  EXPECT_EQ(Time(), "Friday 2026-01-16 21:05:00");
  EXPECT_FALSE(Lit("relay1"));
  auto& coming = Of<QListWidget>("coming");
  ASSERT_TRUE(Comes([&] { return coming.item(0)->text().startsWith("Sat 08:00:00"); }));
  coming.itemActivated(coming.item(0));
  EXPECT_EQ(Time(), "Saturday 2026-01-17 08:00:00");
  Trigger("The Computer's Time");
  EXPECT_EQ(Time(), "Thursday 2026-01-15 12:01:06");
  // The next full minute stands there.
  Trigger("Go To...");
  QTest::keyClick(&Of<QDateTimeEdit>("wanted"), Qt::Key_Return);
  EXPECT_EQ(Time(), "Thursday 2026-01-15 12:02:00");
}

TEST_F(PanelWindowTest, ThePictureShowsADayAndGoesToAMoment) {
  Of<QTabWidget>("pages").setCurrentIndex(1);
  auto& picture = Of<DayPicture>("picture");
  const auto expect = [&](int down, const char* words) {
    const auto told = [&] {
      for (int i = 0; i < Items; ++i) QTest::keyClick(&picture, Qt::Key_Up);
      for (int i = 0; i < down; ++i) QTest::keyClick(&picture, Qt::Key_Down);
      return Caption("why").find(words) != std::string::npos;
    };
    EXPECT_TRUE(Comes(told)) << Caption("why");
  };
  expect(0,
         "01 LOBBY at 12:00: on since 08:00 by TIMER 01 OPENING (at 08:00), off 21:00 by TIMER 02 "
         "CLOSING (at 21:00). On 08:00 to 21:00.");
  expect(12, "13 PARKING at 12:00: off, on 16:45 by TIMER 03 DUSK (at sunset). On 16:45 to 00:00.");
  EXPECT_EQ(picture.accessibleDescription().toStdString(), Caption("why"));
  Source->ThePanel().SetRelay(0, false);
  expect(0, "01 LOBBY at 12:00: off since 12:00 by HAND. On 08:00 to 12:00.");
  // The morning after, the lights of the night are on until 08:00.
  Of<QDateEdit>("pictureDate").setDate(QDate(2026, 1, 16));
  expect(
      12,
      "13 PARKING at 12:00: off since 08:00 by TIMER 01 OPENING (at 08:00), on 16:46 by TIMER 03 "
      "DUSK (at sunset). On 00:00 to 08:00, 16:46 to 00:00.");
  // A day of the past is rehearsed afresh.
  Of<QDateEdit>("pictureDate").setDate(QDate(2025, 6, 1));
  EXPECT_TRUE(Caption("pictureNote").ends_with("as if power came at the first midnight"));
  expect(12, "On 20:40 to 00:00.");
  Of<QAbstractButton>("week").click();
  expect(0, "Mon 08:00 to Mon 21:00");

  Of<QDateEdit>("pictureDate").setDate(QDate(2026, 1, 15));
  QTest::keyClick(&picture, Qt::Key_Right, Qt::ControlModifier);
  QTest::keyClick(&picture, Qt::Key_Return);
  EXPECT_EQ(Time(), "Thursday 2026-01-15 13:00:00");
  QTest::mouseClick(&picture, Qt::LeftButton, {}, {picture.width() - 8, picture.height() / 2});
  EXPECT_TRUE(Time().starts_with("Wednesday 2026-01-21 23:")) << Time();
}

TEST_F(PanelWindowTest, TheLineIsSpoiltFromTheMenu) {
  Trigger("Lose Every Reply");
  Trigger("Give a Wrong Memory Sum");
  EXPECT_EQ(Caption("line"), "No line   Faults: lost, sum");
  Trigger("No Faults");
  EXPECT_EQ(Caption("line"), "No line");
}

TEST_F(PanelWindowTest, EverythingThatTakesTheFocusHasAName) {
  for (QWidget* widget : Window->findChildren<QWidget*>()) {
    if ((widget->focusPolicy() & Qt::TabFocus) == 0 || !widget->isVisibleTo(Window.get()) ||
        qobject_cast<QAbstractSpinBox*>(widget->parent())) {
      continue;
    }
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(widget);
    ASSERT_TRUE(heard);
    EXPECT_FALSE(heard->text(QAccessible::Name).isEmpty() && !qobject_cast<QTabBar*>(widget))
        << widget->metaObject()->className() << " " << widget->objectName().toStdString();
  }
}

TEST_F(PanelWindowTest, AFollowedFileIsTakenOverAndTheClockKept) {
  QTemporaryDir folder;
  Followed = folder.filePath("memory");
  const auto write = [this](PanelMemory memory, const char* name) {
    memory.SetText(map::RelayName, map::NameLength, name);
    QFile file(Followed);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(memory.Content().c_str(), PanelMemory::Size);
  };
  write(SmallInstallation(), "FIRST");
  Window.reset();
  Open();
  EXPECT_EQ(Window->windowTitle(), "Rehearsal");
  QFile title(Followed + ".title");
  ASSERT_TRUE(title.open(QIODevice::WriteOnly));
  title.write("School\n");
  title.close();
  EXPECT_EQ(Of<LampButton>("relay1").text(), "01 FIRST");
  GoTo({2026, 3, 1}, {9, 30});
  PanelMemory changed = SmallInstallation();
  changed.SetByte(map::TimerTimeType, 10);
  write(changed, "SECOND");
  EXPECT_TRUE(Comes([&] { return Of<LampButton>("relay1").text() == "01 SECOND"; }));
  EXPECT_EQ(Window->windowTitle(), "School - Rehearsal");
  EXPECT_EQ(Time(), "Sunday 2026-03-01 09:30:00");
  Click("nextEvent");
  Window->Refresh();
  EXPECT_EQ(Time(), "Sunday 2026-03-01 10:00:00");
}

TEST_F(PanelWindowTest, FoldsToClockEventsAndLampsAndTellsIt) {
  bool told = false;
  Window->Folded = [&](bool folded) { told = folded; };
  const auto seen = [this](const char* name) {
    return Of<QWidget>(QString::fromLatin1(name)).isVisible();
  };
  Trigger("Folded");
  EXPECT_TRUE(told);
  EXPECT_TRUE(seen("time") && seen("nextEvent") && seen("relay1"));
  EXPECT_FALSE(seen("input1"));
  EXPECT_TRUE(Comes([&] { return Window->width() == PanelWindow::FoldedWidth; }));
  Trigger("Folded");
  EXPECT_TRUE(seen("input1"));
}

TEST_F(PanelWindowTest, LeavesRoomForItsTitleBesideTheProgram) {
  StandBeside(*Window, {0, 0, 200, 500}, PanelWindow::FoldedWidth);
  constexpr int titleBar = 20;
  EXPECT_GE(Window->geometry().top(), titleBar);
  EXPECT_GT(Window->geometry().left(), 200);
}

TEST_F(PanelWindowTest, EndsWithItsProgramAfterAQuestion) {
  QProcess program;
  program.start("cat", QStringList());
  ASSERT_TRUE(program.waitForStarted());
  Window->EndWith(static_cast<pid_t>(program.processId()));
  program.closeWriteChannel();
  ASSERT_TRUE(program.waitForFinished());
  ASSERT_TRUE(Comes([&] { return Window->findChild<QMessageBox*>() != nullptr; }));
  EXPECT_TRUE(Window->isVisible());
  Of<QMessageBox>({}).button(QMessageBox::Yes)->click();
  EXPECT_FALSE(Window->isVisible());
}

TEST(PanelWindowParts, EachGroupHasAllItsRelaysAndWhatNothingUsesIsFoldedAway) {
  PanelMemory memory;
  // The row of an input that disables inputs names no relays. Relay 11 stands beyond the points.
  Set(memory, Code(map::GroupRelayInclude, 2, 1, 1), Code(map::GroupRelayInclude, 2, 3, 1),
      Code(map::GroupRelayInclude, 4, 3, 1), Code(map::TimerRelayControl, 1, 7, 2),
      Code(map::TimerRelayControl, 10, 7, 1), Name(map::GroupName + 5 * map::NameLength, "EMPTY"),
      Byte(map::InputType + 5, 9), Code(map::InputRelayControl, 3, 5, 1));
  const auto uses = RelaysByUse(Configuration(memory), 5);
  ASSERT_EQ(uses.size(), 6U);
  const std::pair<int, std::vector<int>> expected[]{
      {1, {2}}, {3, {2, 4}}, {5, {}}, {-1, {1, 10}}, {-1, {0, 3}}};
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(uses[i].Group, expected[i].first);
    EXPECT_EQ(uses[i].Relays, expected[i].second);
    EXPECT_FALSE(uses[i].Folded);
  }
  EXPECT_TRUE(uses[5].Folded);
  EXPECT_EQ(uses[5].Relays.size(), 48U - 5U - 1U);
}

}  // namespace
}  // namespace simulator

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest/QTest>
#include <cmath>

#include "opened_window.h"
#include "simulator/memory/write_file.h"
#include "simulator/window/beside.h"
#include "simulator/window/day_picture.h"
#include "simulator/window/frame_style.h"
#include "simulator/window/menu_keys.h"
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
  QTest::keyClick(&Of<QLineEdit>("wholeTime"), Qt::Key_Return);
  EXPECT_EQ(Time(), "Thursday 2026-01-15 12:02:00");
}

TEST_F(PanelWindowTest, ATimeIsTypedAsAWholeOrGoesNowhere) {
  const auto news = [this] { return Window->statusBar()->currentMessage().toStdString(); };
  auto& whole = Of<QLineEdit>("wholeTime");
  auto& parts = Of<QDateTimeEdit>("wanted");
  const auto type = [&](const char* text) {
    Trigger("Go To...");
    QTest::keyClicks(&whole, text);
    QTest::keyClick(&whole, Qt::Key_Return);
  };
  type("2026-01-16 14:05");
  EXPECT_EQ(Time(), "Friday 2026-01-16 14:05:00");
  EXPECT_EQ(news(), "");
  for (const char* text : {"14:05", "2026-13-01 10:00", "2026-01-17 14:65", "2100-01-01 00:00"}) {
    type(text);
    EXPECT_EQ(Time(), "Friday 2026-01-16 14:05:00") << text;
    EXPECT_TRUE(news().starts_with("\"" + std::string(text) + "\" is no time as in")) << news();
    Click("go");
    EXPECT_EQ(Time(), "Friday 2026-01-16 14:05:00") << text;
  }
  // The arrows step the parts, and these can be typed one after the other, with their signs.
  type("2026-01-17 7:00");
  Trigger("Go To...");
  QTest::keyClick(&whole, Qt::Key_Up);
  EXPECT_TRUE(parts.isVisible());
  parts.setSelectedSection(QDateTimeEdit::YearSection);
  QTest::keyClicks(&parts, "2026-01-20 08:30");
  QTest::keyClick(&parts, Qt::Key_Return);
  EXPECT_EQ(Time(), "Tuesday 2026-01-20 08:30:00");
  type("2026-01-19 10:00");
  EXPECT_EQ(news(), "That is past, or far away: power has come anew at its midnight.");
}

/// Takes every key for itself.
template <typename Field>
class Greedy : public Field {
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ShortcutOverride) event->accept();
    return Field::event(event);
  }
};

TEST(PanelWindowParts, KeysOfTheMenusAreTheirsWhateverAFieldTakes) {
  QWidget window;
  const std::initializer_list<QWidget*> fields = {new Greedy<QLineEdit>, new Greedy<QDateTimeEdit>};
  for (QWidget* field : fields) field->setParent(&window);
  auto* action = new QAction(&window);
  action->setShortcut(QKeySequence("Ctrl+U"));
  LetMenuKeysThrough(window);
  for (QWidget* field : fields) {
    const auto taken = [field](Qt::Key code) {
      QKeyEvent key(QEvent::ShortcutOverride, code, Qt::ControlModifier);
      QApplication::sendEvent(field, &key);
      return key.isAccepted();
    };
    EXPECT_FALSE(taken(Qt::Key_U));
    EXPECT_TRUE(taken(Qt::Key_K));
  }
}

TEST(PanelWindowParts, BoxesThatAreNotCheckedAreSeenInDarkColorsToo) {
  const auto luminance = [](QRgb color) {
    const auto part = [](int level) { return std::pow(level / 255.0, 2.2); };
    return 0.2126 * part(qRed(color)) + 0.7152 * part(qGreen(color)) + 0.0722 * part(qBlue(color));
  };
  FrameStyle style;
  QPalette dark(QColor(49, 54, 59), QColor(35, 38, 41));
  dark.setColor(QPalette::Base, QColor(27, 30, 32));
  QCheckBox box;
  QRadioButton button;
  QPushButton press;
  for (QAbstractButton* each : std::initializer_list<QAbstractButton*>{&box, &button, &press}) {
    each->setStyle(&style);
    each->setPalette(dark);
    each->adjustSize();
    const QImage picture = each->grab().toImage();
    double lightest = 0;
    for (int x = 0; x < picture.width(); ++x) {
      lightest = std::max(lightest, luminance(picture.pixel(x, picture.height() / 2)));
    }
    EXPECT_GE((lightest + 0.05) / (luminance(dark.color(QPalette::Window).rgb()) + 0.05), 3);
  }
}

TEST_F(PanelWindowTest, TheSpeedInForceIsMarkedInDarkColorsToo) {
  const QPalette usual = QApplication::palette();
  QPalette dark = usual;
  dark.setColor(QPalette::Button, QColor(64, 68, 73));
  dark.setColor(QPalette::Highlight, QColor(20, 120, 220));
  QApplication::setPalette(dark);
  Window.reset();
  Open();
  const auto mark = [this](const char* name) {
    auto& button = Of<QAbstractButton>(name);
    return button.grab().toImage().pixelColor(button.width() / 2, 1);
  };
  EXPECT_EQ(mark("speed1"), dark.color(QPalette::Highlight));
  EXPECT_NE(mark("speed60"), dark.color(QPalette::Highlight));
  QApplication::setPalette(usual);
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
  // What is told of a moment is told while it is near.
  EXPECT_TRUE(Caption("why").find(" at Thu 13:00: ") != std::string::npos) << Caption("why");
  Source->ThePanel().Pace().JumpTo(QDateTime(QDate(2026, 1, 15), QTime(14, 30), Qt::UTC));
  Window->Refresh();
  EXPECT_TRUE(Caption("why").starts_with("Hover over a lamp")) << Caption("why");
  QTest::keyClick(&picture, Qt::Key_Right);
  EXPECT_FALSE(Caption("why").starts_with("Hover over a lamp"));
  Of<QTabWidget>("pages").setCurrentIndex(0);
  EXPECT_TRUE(Caption("why").starts_with("Hover over a lamp"));
  Of<QTabWidget>("pages").setCurrentIndex(1);
  // The hours stay above the rows that are on show.
  constexpr int scrolled = 40;
  const QRect scale(0, 0, picture.width(), picture.fontMetrics().height());
  const QImage above = picture.grab(scale).toImage();
  picture.move(0, -scrolled);
  EXPECT_EQ(picture.grab(scale.translated(0, scrolled)).toImage(), above);
  QTest::mouseClick(&picture, Qt::LeftButton, {}, {picture.width() - 8, picture.height() / 2});
  EXPECT_TRUE(Time().starts_with("Wednesday 2026-01-21 23:")) << Time();
}

TEST_F(PanelWindowTest, ThePictureBeginsWithPowerAtMidnight) {
  QTemporaryDir folder;
  Followed = folder.filePath("memory");
  const PanelMemory memory = EmptyInstallation(
      Byte(map::RelayPowerOnType, 1), Byte(map::RelayPowerOnType + 1, 1), Timer(0, 2, 0, 0, 2));
  WriteFile(Followed, memory.Content(), "The file");
  Present.setTime({4, 0});
  Window.reset();
  Open();
  Of<QTabWidget>("pages").setCurrentIndex(1);
  auto& picture = Of<DayPicture>("picture");
  const auto told = [&](int key, const char* words) {
    return Comes([&] {
      QTest::keyClick(&picture, static_cast<Qt::Key>(key));
      return Caption("why").find(words) != std::string::npos;
    });
  };
  EXPECT_TRUE(told(Qt::Key_Down, "on since 00:00 by POWER (power comes)")) << Caption("why");
  EXPECT_TRUE(told(Qt::Key_Up, "On 00:00 to 02:00.")) << Caption("why");
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
  Window->move(40, 400);
  Trigger("Folded");
  EXPECT_TRUE(seen("input1"));
  Trigger("Folded");
  // With the frame that a desktop draws.
  const QRect all = Window->geometry().marginsAdded({2, 30, 2, 2});
  const QRect screen = Window->screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(all))
      << all.top() << " to " << all.bottom() << " of " << screen.height();
}

TEST_F(PanelWindowTest, LeavesRoomForItsTitleBesideTheProgram) {
  Trigger("Folded");
  EXPECT_TRUE(Comes([&] { return Window->width() == PanelWindow::FoldedWidth; }));
  StandBeside(*Window, {0, 0, 200, 500}, PanelWindow::FoldedWidth);
  constexpr int titleBar = 20;
  EXPECT_GE(Window->geometry().top(), titleBar);
  EXPECT_GT(Window->geometry().left(), 200);
  // Letters may be so large that it needs more than is left there.
  Window->setMinimumWidth(700);
  StandBeside(*Window, {0, 0, 600, 500}, PanelWindow::FoldedWidth);
  EXPECT_LE(Window->geometry().right(), Window->screen()->availableGeometry().right());
  EXPECT_FALSE(FitScreen(*Window, {5000, 5000}));
  const QRect screen = Window->screen()->availableGeometry();
  EXPECT_GE(Window->geometry().top(), titleBar);
  EXPECT_LE(Window->geometry().bottom(), screen.bottom());
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

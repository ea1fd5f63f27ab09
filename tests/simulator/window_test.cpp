#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QDateEdit>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include "rehearsed.h"
#include "simulator/window/day_picture.h"
#include "simulator/window/lamp_button.h"
#include "simulator/window/log_lines.h"
#include "simulator/window/panel_window.h"
#include "simulator/window/relay_view.h"

namespace simulator {
namespace {

constexpr int Photocell = 3;  // device of the small installation

/// The window of the small installation at 12:00 on a Thursday of January, at a clock that stands
/// until it is moved.
class PanelWindowTest : public testing::Test {
 protected:
  Options Started() {
    Options options;
    options.Now = [this] { return Present; };
    options.FollowedFile = Followed;
    return options;
  }

  void Open() {
    Source = std::make_unique<Simulator>(Started());
    Window = std::make_unique<PanelWindow>(*Source);
    Window->show();
  }
  void SetUp() override { Open(); }

  template <typename Widget>
  Widget& Of(const QString& name) {
    auto* widget = Window->findChild<Widget*>(name);
    if (!widget) throw std::invalid_argument(name.toStdString());
    return *widget;
  }
  void Click(const QString& name) { Of<QAbstractButton>(name).click(); }
  void GoTo(const QDate& date, const QTime& time) {
    Of<QDateTimeEdit>("wanted").setDateTime(QDateTime(date, time, Qt::UTC));
    Click("go");
  }
  bool Lit(const QString& name) {
    Window->Refresh();
    return Of<LampButton>(name).Lit();
  }
  std::string Log() {
    Window->Refresh();
    return Of<QPlainTextEdit>("log").toPlainText().toStdString();
  }
  /// Whether it comes to this: views look ahead, and settings are taken over, now and then only.
  bool Comes(const std::function<bool()>& wanted) {
    return QTest::qWaitFor([&] {
      Window->Refresh();
      return wanted();
    });
  }
  std::string Caption(const char* name) { return Of<QLabel>(name).text().toStdString(); }
  std::string Time() { return Caption("time"); }
  void Trigger(const QString& caption) {
    for (QAction* menu : Window->menuBar()->actions()) {
      for (QAction* action : menu->menu()->actions()) {
        if (action->text().remove('&') == caption) return action->trigger();
      }
    }
    ADD_FAILURE() << caption.toStdString();
  }

  QDateTime Present{QDate(2026, 1, 15), QTime(12, 0)};
  QString Followed;
  std::unique_ptr<Simulator> Source;
  std::unique_ptr<PanelWindow> Window;
};

TEST_F(PanelWindowTest, BeginsWithTheDaySoFar) {
  // The timer of 08:00 has set the preset DAY.
  for (const char* lamp : {"relay1", "group2", "preset1"}) EXPECT_TRUE(Lit(lamp)) << lamp;
  EXPECT_FALSE(Lit("relay13"));
  EXPECT_EQ(Of<LampButton>("relay13").accessibleDescription(), "off");
  EXPECT_EQ(Time(), "Thursday 2026-01-15 12:00:00");
  EXPECT_EQ(Caption("hours"), "sunrise 07:35, sunset 16:45, open 08:00, close 21:00");
  EXPECT_TRUE(
      Log().ends_with("Thursday 2026-01-15\n"
                      "00:00:00  POWER (power comes)\n"
                      "08:00:00  TIMER 01 (at 08:00) turned LOBBY, HALL NORTH, HALL SOUTH, "
                      "STAIRS, OFFICE 1, OFFICE 2, OFFICE 3, MEETING on"))
      << Log();
  EXPECT_EQ(Of<QListWidget>("coming").item(0)->text().toStdString(),
            "Thu 16:45:00  TIMER 03 (at sunset) turns PARKING, PATH, SIGN, FLAG POLE on");
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
  QTest::mouseRelease(&entrance, Qt::LeftButton);
  EXPECT_EQ(panel.InputState(0), 0);
  EXPECT_TRUE(Lit("relay1"));
  EXPECT_TRUE(entrance.Lit());  // its pilot follows relay 1
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
}

TEST_F(PanelWindowTest, ThePictureShowsADayAndGoesToAMoment) {
  Of<QTabWidget>("pages").setCurrentIndex(1);
  auto& picture = Of<DayPicture>("picture");
  const auto expect = [&](int down, const char* words) {
    const auto told = [&] {
      for (int i = 0; i < Items; ++i) QTest::keyClick(&picture, Qt::Key_Up);
      for (int i = 0; i < down; ++i) QTest::keyClick(&picture, Qt::Key_Down);
      return Caption("atMark").find(words) != std::string::npos;
    };
    EXPECT_TRUE(Comes(told)) << Caption("atMark");
  };
  expect(0, "01 LOBBY at 12:00: on. On 08:00 to 21:00");
  expect(12, "13 PARKING at 12:00: off. On 16:45 to 00:00");
  EXPECT_EQ(picture.accessibleDescription().toStdString(), Caption("atMark"));
  Source->ThePanel().SetRelay(0, false);
  expect(0, "01 LOBBY at 12:00: off. On 08:00 to 12:00");
  // The morning after, the lights of the night are on until 08:00.
  Of<QDateEdit>("pictureDate").setDate(QDate(2026, 1, 16));
  expect(12, "13 PARKING at 12:00: off. On 00:00 to 08:00, 16:46 to 00:00");
  // A day of the past is rehearsed afresh.
  Of<QDateEdit>("pictureDate").setDate(QDate(2025, 6, 1));
  EXPECT_TRUE(Caption("pictureNote").ends_with("as if power came at the first midnight"));
  expect(12, "13 PARKING at 12:00: off. On 20:40 to 00:00");
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
  EXPECT_EQ(Of<LampButton>("relay1").text(), "01 FIRST");
  GoTo({2026, 3, 1}, {9, 30});
  PanelMemory changed = SmallInstallation();
  changed.SetByte(map::TimerTimeType, 10);
  write(changed, "SECOND");
  EXPECT_TRUE(Comes([&] { return Of<LampButton>("relay1").text() == "01 SECOND"; }));
  EXPECT_EQ(Time(), "Sunday 2026-03-01 09:30:00");
  Click("nextEvent");
  Window->Refresh();
  EXPECT_EQ(Time(), "Sunday 2026-03-01 10:00:00");
}

TEST(PanelWindowParts, RelaysStandOnceUnderTheirFirstGroup) {
  PanelMemory memory;
  // The row of an input that disables inputs names no relays.
  Set(memory, Code(map::GroupRelayInclude, 2, 1, 1), Code(map::GroupRelayInclude, 2, 3, 1),
      Code(map::GroupRelayInclude, 4, 3, 1), Code(map::TimerRelayControl, 1, 7, 2),
      Byte(map::InputType + 5, 9), Code(map::InputRelayControl, 3, 5, 1));
  const auto uses = RelaysByUse(Configuration(memory), 5);
  ASSERT_EQ(uses.size(), 4U);
  EXPECT_EQ(uses[0].Group, 1);
  EXPECT_EQ(uses[0].Relays, std::vector<int>{2});
  EXPECT_EQ(uses[1].Relays, std::vector<int>{4});
  EXPECT_EQ(uses[2].Relays, std::vector<int>{1});
  EXPECT_EQ(uses[3].Relays, (std::vector<int>{0, 3}));
}

TEST(PanelWindowParts, TheLogTellsWhatHappenedAndWhy) {
  using Kind = Subject::Kind;
  const PanelMemory memory;
  const Calendar days(memory);
  const Subject timer{Kind::Timer, 2, 0};
  const Subject input{Kind::Input, 11, 0};
  const Row rows[]{
      {0, timer, {}, Change::Fires, 0, "at sunset"},
      {0, timer, {Kind::Relay, 4, 0}, Change::On, 0, "FOYER"},
      {0, timer, {Kind::Group, 1, 0}, Change::On, 0, "ALL"},
      {0, timer, {Kind::Relay, 5, 0}, Change::On, 0, ""},
      {0, timer, {Kind::Relay, 6, 0}, Change::Blinks, 0, "HALL"},
      {0, timer, {Kind::Dimmer, 2, 0}, Change::Level, 40, ""},
      {5, {Kind::Timer, 3, 0}, {}, Change::Fires, 0, "at open"},
      {5, input, input, Change::On, 0, "DOOR"},
      {5, input, {Kind::Timer, 47, 0}, Change::Disabled, 0, "NIGHT"},
      {5, input, {Kind::Preset, 1, 0}, Change::Fires, 0, "EVENING"},
      {5, input, input, Change::Off, 0, "DOOR"},
  };
  LogLines lines(LogLines::When::Past);
  for (const Row& row : rows) lines.Take(row, days);
  std::string told;
  for (const auto& line : lines.Fetch()) told += line.Sentence + "\n";
  EXPECT_EQ(told,
            "TIMER 03 (at sunset) turned FOYER, RELAY 06 on\n"
            "TIMER 03 (at sunset) made HALL blink\n"
            "TIMER 03 (at sunset) moved DIMMER 3 OUTPUT 1 to level 40\n"
            "TIMER 04 (at open) fires\n"
            "INPUT 12 closed\n"
            "INPUT 12 disabled TIMER 48\n"
            "INPUT 12, PRESET 02 (EVENING) fires\n"
            "INPUT 12 opened\n");
}

}  // namespace
}  // namespace simulator

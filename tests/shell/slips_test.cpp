#include <QAccessible>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMessageBox>
#include <QStyleHints>
#include <QTimer>

#include "screen_test.h"

// What a hand slips into.

namespace {

class SlipsTest : public ScreenTest {
 protected:
  /// A click with the window system's clock, at a point of the screen.
  void ClickAt(QWidget& widget, QPoint screen, int ms) {
    const QPoint at = widget.mapFromGlobal(screen);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      const bool press = type == QEvent::MouseButtonPress;
      QMouseEvent event(type, at, screen, Qt::LeftButton, press ? Qt::LeftButton : Qt::NoButton,
                        Qt::NoModifier);
      event.setTimestamp(static_cast<quint64>(ms));
      QApplication::sendEvent(&widget, &event);
    }
  }

  static void Do(QWidget& widget, const QString& action) {
    QAccessible::queryAccessibleInterface(&widget)->actionInterface()->doAction(action);
  }
};

TEST_F(SlipsTest, TheSecondClickOfAPairNeverChooses) {
  Menu("mnuRelayOutputOptions");
  PanelRecord.RelayTimerType(0) = 5;
  auto& list = Find<InPlaceList>("cboNewTimerType");
  Label& cell = Cell("lblTimerType", 0);
  const QPoint at = cell.mapToGlobal(cell.rect().center());
  const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
  DataChanged = 0;

  ClickAt(cell, at, 1000);
  ASSERT_TRUE(list.isVisible());
  ClickAt(*list.viewport(), at, 1000 + interval - 1);
  EXPECT_TRUE(list.isVisible());
  EXPECT_EQ(PanelRecord.RelayTimerType(0), 5);
  EXPECT_EQ(DataChanged, 0);
  ClickAt(*list.viewport(), at, 1000 + interval + 1);
  EXPECT_FALSE(list.isVisible()) << "a third click chooses";
  EXPECT_EQ(DataChanged, -1);

  ClickAt(cell, at, 9000);
  ClickAt(*list.viewport(), at, 9000 + interval);
  EXPECT_FALSE(list.isVisible()) << "a later click chooses";
  ClickAt(cell, at, 20000);
  ClickAt(*list.viewport(), at + QPoint(0, 2 * list.sizeHintForRow(0)), 20001);
  EXPECT_FALSE(list.isVisible()) << "a click elsewhere is no pair";
}

TEST_F(SlipsTest, ABlankBelongsToASearchByLetters) {
  PanelRecord.IOCount(0) = 8;
  Menu("mnuInputToRelayControl");
  Click(Cell("lblControl", 0));
  auto& list = Find<InPlaceList>("cboControl");
  QTest::keyClicks(&list, "On A");
  EXPECT_TRUE(list.isVisible());
  EXPECT_EQ(list.List(list.ListIndex()), "On And Off");
  QTest::qWait(QApplication::keyboardInputInterval() + 20);
  QTest::keyClick(&list, Qt::Key_Space);
  EXPECT_FALSE(list.isVisible());
  EXPECT_EQ(PanelRecord.InputRelayControl(0, 0), 3);

  Menu("mnuBlinkAlertAndAlarmSettings");
  ComboBox box;
  box.SetItems({"Alpha", "Off One", "Off Two"});
  int chosen = -1;
  box.Click = [&] { chosen = box.ListIndex(); };
  box.show();
  QTest::keyClicks(&box, "Off T");
  EXPECT_EQ(chosen, 2);
  EXPECT_FALSE(box.view()->isVisible());
  QTest::qWait(QApplication::keyboardInputInterval() + 20);
  QTest::keyClick(&box, Qt::Key_Space);
  ASSERT_TRUE(box.view()->isVisible());
  QTest::keyClicks(box.view(), "Off O");
  EXPECT_TRUE(box.view()->isVisible());
  QTest::qWait(QApplication::keyboardInputInterval() + 20);
  QTest::keyClick(box.view(), Qt::Key_Space);
  EXPECT_FALSE(box.view()->isVisible());
  EXPECT_EQ(chosen, 1);
}

TEST_F(SlipsTest, WhateverIsTypedGoesThroughTheKeyFilter) {
  Menu("mnuEditGroupNames");
  auto& box = Find<TextBox>("txtGroupName(0)");
  box.SetText("A");
  box.end(false);
  const auto type = [&](int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&box, &press);
  };
  type(Qt::Key_X, Qt::AltModifier, "x");
  type(Qt::Key_Comma, Qt::AltModifier, ",");
  type(Qt::Key_Semicolon, Qt::ControlModifier | Qt::AltModifier, ";");
  type(Qt::Key_unknown, Qt::GroupSwitchModifier, QString(QChar(0x00B5)));
  type(Qt::Key_unknown, Qt::NoModifier, QString(QChar(0x200D)));
  type(Qt::Key_unknown, Qt::NoModifier, QString(QChar(0x00AD)));
  QInputMethodEvent commit;
  commit.setCommitString(QStringLiteral("b_;c\u00E9"));
  QApplication::sendEvent(&box, &commit);
  EXPECT_EQ(box.Text(), "AXBC");
  EXPECT_EQ(PanelRecord.GroupName(0), "AXBC");
  QTest::keyClick(&box, Qt::Key_Backspace);
  EXPECT_EQ(PanelRecord.GroupName(0), "AXB");
  type(Qt::Key_A, Qt::ControlModifier, "\x01");
  EXPECT_EQ(box.selectedText(), "AXB") << "commands stay commands";
}

TEST_F(SlipsTest, AQuestionHasTheFocusOnNo) {
  for (const MsgButtons buttons : {MsgButtons::YesNo, MsgButtons::YesNoCancel}) {
    QTimer::singleShot(0, qApp,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    EXPECT_EQ(shownMsgBox({"Discard?", MsgIcon::Question, "T", buttons}), MsgAnswer::No);
  }
}

TEST_F(SlipsTest, AChoiceThroughAScreenReaderIsStoredOnce) {
  Menu("mnuConnect");
  Do(Find<CheckBox>("chkConnectionType(2)"), QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(ConnectionType(), 2);
  EXPECT_FALSE(Find<CheckBox>("chkConnectionType(0)").isChecked());

  CheckBox box("Box");
  OptionButton first("1");
  QWidget group;
  auto* second = new OptionButton("2", &group);
  auto* third = new OptionButton("3", &group);
  int runs = 0;
  for (OptionButton* option : {second, third}) option->Click = [&] { ++runs; };
  box.Click = [&] { ++runs; };
  Do(box, QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(runs, 1);
  box.click();
  EXPECT_EQ(runs, 2);
  Do(*second, QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(runs, 3);
  third->click();
  EXPECT_EQ(runs, 4) << "the option that gives up its mark runs nothing";
  third->click();
  EXPECT_EQ(runs, 5) << "a choice of the value shown counts too";
  third->Select();
  box.SetValue(0);
  EXPECT_EQ(runs, 5);
  second->Select();
  box.SetValue(1);
  EXPECT_EQ(runs, 7);
}

}  // namespace

#include "screen_test.h"

class RelayOptionsTest : public ScreenTest {
 protected:
  void Open(Int16 firstNodeBlocks, Int16 otherBlocks = 0) {
    PanelRecord.IOCount(0) = firstNodeBlocks;
    PanelRecord.IOCount(1) = otherBlocks;
    Menu("mnuRelayOutputOptions");
  }
};

TEST_F(RelayOptionsTest, RowsAndHeadersFollowTheInstalledPoints) {
  Open(4);
  EXPECT_TRUE(Shows("lblRelayName", 15));
  EXPECT_FALSE(Shows("lblTimerType", 16));
  Open(5);
  EXPECT_FALSE(Shows("lblTimerTypeHeater", 2));
  Open(8, 1);
  EXPECT_TRUE(Shows("lblTimerTypeHeater", 2));
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(RelayOptionsTest, OnlyShiftAndTheRightButtonOnTheFirstNameCopies) {
  PanelRecord.RelayTimerType(0) = 3;
  PanelRecord.RelayPowerOnType(0) = 2;
  Open(1);
  const auto click = [this](int row, Qt::MouseButton button, Qt::KeyboardModifiers held) {
    QTest::mouseClick(&Cell("lblRelayName", row), button, held);
  };
  click(0, Qt::MiddleButton, Qt::ShiftModifier);
  EXPECT_EQ(DataChanged, -1);
  click(0, Qt::RightButton, {});
  click(2, Qt::RightButton, Qt::ShiftModifier);
  click(0, Qt::RightButton, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(1), 0);
  click(0, Qt::RightButton, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(3), 3);
  EXPECT_EQ(PanelRecord.RelayPowerOnType(3), 2);
  EXPECT_EQ(PanelRecord.RelayTimerType(4), 0);
}

TEST_F(RelayOptionsTest, TheKeyboardDoesAllThatTheMouseDoes) {
  PanelRecord.RelayTimerType(0) = 1;
  PanelRecord.RelayTimerType(1) = 99;
  Open(5);
  EXPECT_EQ(Caption("lblTimerType", 1), " ");
  QWidget* first = &Cell("lblRelayName", 0);
  ASSERT_EQ(&Cell("lblTimerType", 0), QApplication::focusWidget());
  Key(Qt::Key_Left);
  ASSERT_EQ(first, QApplication::focusWidget());
  Key(Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(19), 1);

  Key(Qt::Key_Right);
  for (int i = 0; i < 16; ++i) Key(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), &Cell("lblTimerType", 16));
  Key(Qt::Key_Return);
  auto& list = Find<InPlaceList>("cboNewTimerType");
  ASSERT_TRUE(list.hasFocus());
  Key(Qt::Key_Escape);
  EXPECT_EQ(QApplication::focusWidget(), &Cell("lblTimerType", 16));
  Key(Qt::Key_Space);
  Key(Qt::Key_Down);
  Key(Qt::Key_Return);
  EXPECT_EQ(PanelRecord.RelayTimerType(16), 2);
  EXPECT_EQ(Caption("lblTimerType", 16), list.List(2) + u' ');
}

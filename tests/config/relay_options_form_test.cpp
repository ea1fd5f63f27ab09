#include "panel/live_project.h"
#include "screen_test.h"

class RelayOptionsTest : public ScreenTest {
 protected:
  void Open(Int16 firstNodeBlocks, Int16 otherBlocks = 0) {
    PanelRecord.IOCount(0) = firstNodeBlocks;
    PanelRecord.IOCount(1) = otherBlocks;
    DataChanged = 0;
    Menu("mnuRelayOutputOptions");
  }
};

TEST_F(RelayOptionsTest, RowsAndHeadersFollowTheInstalledPoints) {
  Open(4);
  EXPECT_TRUE(Shown(Cell("lblRelayName", 15)));
  EXPECT_FALSE(Shown(Cell("lblTimerType", 16)));

  Open(5);
  EXPECT_FALSE(Shown(Cell("lblTimerTypeHeater", 2)));
  Open(8, 1);
  EXPECT_TRUE(Shown(Cell("lblTimerTypeHeater", 2)));
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(RelayOptionsTest, OnlyShiftAndTheRightButtonOnTheFirstNameCopies) {
  PanelRecord.RelayTimerType(0) = 3;
  PanelRecord.RelayPowerOnType(0) = 2;
  Open(1);
  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::MiddleButton, Qt::ShiftModifier);
  EXPECT_EQ(DataChanged, -1);
  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::RightButton);
  QTest::mouseClick(&Cell("lblRelayName", 2), Qt::RightButton, Qt::ShiftModifier);
  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::RightButton,
                    Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(1), 0);

  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::RightButton, Qt::ShiftModifier);
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
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
  ASSERT_EQ(first, QApplication::focusWidget());
  QTest::keyClick(first, Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(19), 1);

  QTest::keyClick(first, Qt::Key_Right);
  for (int i = 0; i < 16; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), &Cell("lblTimerType", 16));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  auto& list = Find<InPlaceList>("cboNewTimerType");
  ASSERT_TRUE(list.hasFocus());
  QTest::keyClick(&list, Qt::Key_Escape);
  EXPECT_EQ(QApplication::focusWidget(), &Cell("lblTimerType", 16));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  QTest::keyClick(&list, Qt::Key_Down);
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_EQ(PanelRecord.RelayTimerType(16), 2);
  EXPECT_EQ(Caption("lblTimerType", 16), Find<InPlaceList>("cboNewTimerType").List(2) + u' ');
}

#include "screen_test.h"

class RelayGroupingTest : public ScreenTest {};

TEST_F(RelayGroupingTest, CellsShowAndInvertMembershipOfTheGroupChosen) {
  PanelRecord.GroupRelayInclude(4, 1) = 7;
  PanelRecord.GroupName(4) = "HALL & STAIRS";
  Menu("mnuRelayGrouping");
  EXPECT_EQ(Find<ComboBox>("cboGroup").count(), 48);
  EXPECT_EQ(Find<ComboBox>("cboGroup").List(4), "HALL & STAIRS");
  EXPECT_EQ(Caption("lblInclude", 1), "No");
  EXPECT_EQ(Cell("lblInclude", 1).BackColor(), Colors::Grey);
  Choose("cboGroup", 4);
  EXPECT_EQ(Caption("lblInclude", 1), "Yes");
  EXPECT_EQ(Cell("lblInclude", 1).BackColor(), Colors::White);
  EXPECT_EQ(DataChanged, 0);

  Click(Cell("lblInclude", 1));
  EXPECT_EQ(PanelRecord.GroupRelayInclude(4, 1), -8);
  Click(Cell("lblInclude", 0));
  EXPECT_EQ(PanelRecord.GroupRelayInclude(4, 0), -1);
  EXPECT_EQ(PanelRecord.GroupRelayInclude.elements[4], -1);
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(RelayGroupingTest, CopyToAllTouchesTheGroupChosenAndInstalledRelaysOnly) {
  PanelRecord.GroupRelayInclude(2, 0) = -1;
  PanelRecord.GroupRelayInclude(3, 0) = -1;
  Menu("mnuRelayGrouping");
  Choose("cboGroup", 2);
  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::RightButton);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(2, 1), 0);
  EXPECT_EQ(DataChanged, -1);
  QTest::keyClick(&Cell("lblRelayName", 0), Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(2, 3), -1);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(2, 4), 0);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(3, 1), 0);
}

#include "panel/live_project.h"
#include "screen_test.h"

class CellGridTest : public ScreenTest {};

TEST_F(CellGridTest, CellsShowAndInvertMembershipOfTheGroupChosen) {
  PanelRecord.GroupRelayInclude(4, 1) = 7;
  PanelRecord.GroupName(4) = "HALL & STAIRS";
  Menu("mnuRelayGrouping");
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
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(CellGridTest, CopyToAllTouchesTheGroupChosenAndInstalledRelaysOnly) {
  PanelRecord.GroupRelayInclude(2, 0) = -1;
  PanelRecord.GroupRelayInclude(3, 0) = -1;
  Menu("mnuRelayGrouping");
  Choose("cboGroup", 2);
  QTest::keyClick(&Cell("lblRelayName", 0), Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(2, 3), -1);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(2, 4), 0);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(3, 1), 0);
}

TEST_F(CellGridTest, AClickWalksThroughTheThreeStatesOfThePresetChosen) {
  PanelRecord.PresetRelayControl(5, 3) = 77;
  Menu("mnuEditPresets");
  Choose("cboPresetNumber", 5);
  EXPECT_EQ(Caption("lblRelayControl", 3), "-");
  Label& cell = Cell("lblRelayControl", 2);
  EXPECT_EQ(cell.Caption(), "-");
  EXPECT_EQ(DataChanged, 0);
  Click(cell);
  EXPECT_EQ(cell.Caption(), "On");
  Click(cell);
  EXPECT_EQ(cell.Caption(), "Off");
  Click(cell);
  EXPECT_EQ(PanelRecord.PresetRelayControl(5, 2), 0);
  EXPECT_EQ(PanelRecord.PresetRelayControl(5, 3), 77);
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(CellGridTest, CellsInvertAndOnlyRelaysFollowTheInstalledPoints) {
  PanelRecord.OffHoursSweepRelay(1) = 7;
  PanelRecord.OffHoursSweepRelay(10) = -1;
  Menu("mnuOffHoursSweepRelays");
  EXPECT_FALSE(Shown(Cell("lblRelayInclude", 4)));
  EXPECT_EQ(Caption("lblRelayInclude", 0), "-");
  EXPECT_EQ(Caption("lblRelayInclude", 1), "Off");
  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::RightButton, Qt::ShiftModifier);
  EXPECT_EQ(DataChanged, 0);
  Click(Cell("lblRelayInclude", 0));
  EXPECT_EQ(PanelRecord.OffHoursSweepRelay(0), -1);
  EXPECT_EQ(PanelRecord.OffHoursSweepRelay(10), -1);
  EXPECT_EQ(DataChanged, -1);

  Menu("mnuOffHoursSweepGroups");
  EXPECT_TRUE(Shown(Cell("lblGroupInclude", 47)));
  Click(Cell("lblGroupInclude", 47));
  EXPECT_EQ(PanelRecord.OffHoursSweepGroup(47), -1);
}

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
  Click(Cell("lblInclude", 1));
  EXPECT_EQ(PanelRecord.GroupRelayInclude(4, 1), -8);

  QTest::keyClick(&Cell("lblRelayName", 1), Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(4, 2), 0) << "only the first row is copied";
  PanelRecord.GroupRelayInclude(4, 0) = -1;
  QTest::keyClick(&Cell("lblRelayName", 0), Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(4, 3), -1);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(4, 4), 0) << "of the relays that are installed";
  EXPECT_EQ(PanelRecord.GroupRelayInclude(3, 1), 0);
}

TEST_F(CellGridTest, AClickWalksThroughTheThreeStatesOfThePresetChosen) {
  PanelRecord.PresetRelayControl(5, 3) = 77;
  Menu("mnuEditPresets");
  Choose("cboPresetNumber", 5);
  EXPECT_EQ(Captions("lblRelayControl", {2, 3}), "-|-");
  for (const char* state : {"On", "Off", "-"}) {
    Click(Cell("lblRelayControl", 2));
    EXPECT_EQ(Caption("lblRelayControl", 2), state);
  }
  EXPECT_EQ(PanelRecord.PresetRelayControl(5, 2), 0);
  EXPECT_EQ(PanelRecord.PresetRelayControl(5, 3), 77);
}

TEST_F(CellGridTest, SweepsAreOfInstalledRelaysAndOfAllGroupsAndAreNotCopied) {
  PanelRecord.OffHoursSweepRelay(1) = 7;
  Menu("mnuOffHoursSweepRelays");
  EXPECT_FALSE(Shows("lblRelayInclude", 4));
  EXPECT_EQ(Captions("lblRelayInclude", {0, 1}), "-|Off");
  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::RightButton, Qt::ShiftModifier);
  EXPECT_EQ(DataChanged, 0);
  Menu("mnuOffHoursSweepGroups");
  EXPECT_TRUE(Shows("lblGroupInclude", 47));
}

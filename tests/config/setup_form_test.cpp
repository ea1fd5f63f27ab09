#include "panel/live_project.h"
#include "screen_test.h"

class SetupTest : public ScreenTest {
 protected:
  void ChooseBlocks(int node, int item) {
    Click(Cell("lblIOCount", node));
    ChooseInPlace("cboIOCount", item);
  }
};

TEST_F(SetupTest, NodesShowTheirPointsAndRanges) {
  Menu("mnuSetup");
  EXPECT_EQ(Caption("lblIOCount", 0), "4 I/O");
  EXPECT_EQ(Caption("lblIOAdd", 0), "01 - 04");
  ChooseBlocks(0, 1);
  ChooseBlocks(2, 4);
  EXPECT_EQ(PanelRecord.IOCount(2), 4);
  EXPECT_EQ(Caption("lblIOAdd", 0), "01 - 08");
  EXPECT_EQ(Caption("lblIOAdd", 2), "09 - 24");
  ChooseBlocks(1, 1);
  EXPECT_EQ(Caption("lblIOAdd", 2), "13 - 28");
  ChooseBlocks(1, 0);
  EXPECT_EQ(Caption("lblIOAdd", 2), "09 - 24");
  EXPECT_FALSE(Shown(Cell("lblIOAdd", 1)));
}

TEST_F(SetupTest, MoreThanThePanelHoldsIsMarkedAndNotRefused) {
  for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = node == 0 ? 2 : 1;
  PanelRecord.IOCount(12) = 5;
  Menu("mnuSetup");
  EXPECT_EQ(Caption("lblIOAdd", 10), "45 - 48");
  EXPECT_EQ(Caption("lblIOAdd", 11), "Invalid");
  EXPECT_EQ(Cell("lblIOAdd", 11).BackColor(), Colors::LightRed);
}

TEST_F(SetupTest, TheFirstNodeIsNeverEmpty) {
  Menu("mnuSetup");
  DataChanged = 0;
  Click(Cell("lblIOCount", 0));
  EXPECT_EQ(DataChanged, -1);
  EXPECT_EQ(Find<InPlaceList>("cboIOCount").List(0), "4 I/O");
  Click(Cell("lblIOCount", 5));
  EXPECT_EQ(Find<InPlaceList>("cboIOCount").List(0), "None");
  EXPECT_EQ(Find<InPlaceList>("cboIOCount").ListCount(), 5);
}

TEST_F(SetupTest, NonsenseIsShownAndKept) {
  PanelRecord.IOCount(0) = 0;
  PanelRecord.IOCount(1) = -7;
  PanelRecord.IOCount(2) = 8191;
  PanelRecord.AddOnModuleType = 12;
  Menu("mnuSetup");
  EXPECT_EQ(Caption("lblIOCount", 2), "32764 I/O");
  Click(Cell("lblIOCount", 2));
  EXPECT_EQ(Find<InPlaceList>("cboIOCount").ListIndex(), -1);
  EXPECT_EQ(PanelRecord.IOCount(2), 8191);
  EXPECT_EQ(PanelRecord.AddOnModuleType, 12);
  EXPECT_TRUE(messages.empty());
  DataChanged = 0;
  Find<OptionButton>("optAddOnModuleType(6)").click();
  EXPECT_EQ(PanelRecord.AddOnModuleType, 6);
  EXPECT_EQ(DataChanged, -1);
}

#include "screen_test.h"

class SetupTest : public ScreenTest {};

TEST_F(SetupTest, NodesShowTheirPointsAndRanges) {
  Menu("mnuSetup");
  EXPECT_EQ(Caption("lblIOCount", 0) + ", " + Caption("lblIOAdd", 0), "4 I/O, 01 - 04");
  // The blocks chosen at a node, and the ranges of the first and the third.
  const std::tuple<int, int, const char*> choices[] = {{0, 1, "01 - 08"},
                                                       {2, 4, "01 - 08|09 - 24"},
                                                       {1, 1, "01 - 08|13 - 28"},
                                                       {1, 0, "01 - 08|09 - 24"}};
  for (const auto& [node, item, ranges] : choices) {
    Pick("lblIOCount", node, "cboIOCount", item);
    EXPECT_EQ(Caption("lblIOAdd", 0) + (Shows("lblIOAdd", 2) ? "|" + Caption("lblIOAdd", 2) : ""),
              ranges);
  }
  EXPECT_FALSE(Shows("lblIOAdd", 1));
  EXPECT_EQ(Find<InPlaceList>("cboIOCount").List(0), "None");
  EXPECT_EQ(Find<InPlaceList>("cboIOCount").ListCount(), 5);
  Click(Cell("lblIOCount", 0));
  EXPECT_EQ(Find<InPlaceList>("cboIOCount").List(0), "4 I/O") << "the first node is never empty";
}

TEST_F(SetupTest, MoreThanThePanelHoldsIsMarkedAndNotRefused) {
  for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = node == 0 ? 2 : 1;
  PanelRecord.IOCount(12) = 5;
  Menu("mnuSetup");
  EXPECT_EQ(Captions("lblIOAdd", {10, 11}), "45 - 48|Invalid");
  EXPECT_EQ(Cell("lblIOAdd", 11).BackColor(), Colors::LightRed);
}

TEST_F(SetupTest, BlocksBeyondTheListAreTold) {
  PanelRecord.IOCount(2) = 8191;
  Menu("mnuSetup");
  EXPECT_EQ(Caption("lblIOCount", 2), "32764 I/O");
  Click(Cell("lblIOCount", 2));
  EXPECT_EQ(Offered("cboIOCount"), -1);
}

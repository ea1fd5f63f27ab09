#include "panel/live_project.h"
#include "screen_test.h"

class InputOptionsTest : public ScreenTest {};

TEST_F(InputOptionsTest, OnlyATimedOnInputShowsItsTimeAndKeepsItThroughOtherTypes) {
  PanelRecord.InputType(1) = 5;
  PanelRecord.InputType(2) = 13;
  PanelRecord.InputTimedOnTime(3) = 1000;
  Menu("mnuInputOptions");
  EXPECT_FALSE(Shown(Cell("lblInputTimedOn", 0)));
  EXPECT_TRUE(Shown(Cell("lblInputTimedOn", 1)));
  EXPECT_EQ(Caption("lblInputTimedOn", 1), " 10 Min");
  EXPECT_EQ(Caption("lblInputType", 2), " ");

  Click(Cell("lblInputTimedOn", 1));
  auto& times = Find<InPlaceList>("cboNewTime");
  EXPECT_EQ(times.List(times.ListIndex()), "10Min");
  EXPECT_EQ(DataChanged, 0);
  ChooseInPlace("cboNewTime", 994);
  EXPECT_EQ(PanelRecord.InputTimedOnTime(1), 999);
  EXPECT_EQ(DataChanged, -1);

  Click(Cell("lblInputType", 1));
  ChooseInPlace("cboNewType", 12);
  EXPECT_EQ(PanelRecord.InputType(1), 12);
  EXPECT_FALSE(Shown(Cell("lblInputTimedOn", 1)));
  for (int input : {1, 3}) {
    Click(Cell("lblInputType", input));
    ChooseInPlace("cboNewType", 5);
    Click(Cell("lblInputTimedOn", input));
  }
  EXPECT_EQ(Caption("lblInputTimedOn", 1), " 999 Min");
  EXPECT_EQ(Caption("lblInputTimedOn", 3), " 1000 Min");
  EXPECT_EQ(times.ListIndex(), -1);
}

TEST_F(InputOptionsTest, APilotPacksSourceAndNumber) {
  PanelRecord.LocalPilot(1) = 3 * 64 + 50;
  PanelRecord.LocalPilot(2) = 70;
  Menu("mnuLocalInputPilots");
  EXPECT_EQ(Caption("lblPilotSource", 1) + Caption("lblPilotNumber", 1), "  51");
  EXPECT_EQ(Caption("lblPilotSource", 2) + Caption("lblPilotNumber", 2), "On If Group  7");

  Click(Cell("lblPilotSource", 0));
  EXPECT_EQ(DataChanged, 0);
  ChooseInPlace("cboNewSource", 1);
  EXPECT_EQ(PanelRecord.LocalPilot(0), 64);
  EXPECT_EQ(Caption("lblPilotSource", 0) + Caption("lblPilotNumber", 0), "On If Group  1");
  Click(Cell("lblPilotNumber", 0));
  ChooseInPlace("cboNewNumber", 47);
  EXPECT_EQ(PanelRecord.LocalPilot(0), 64 + 47);
  Click(Cell("lblPilotSource", 1));
  ChooseInPlace("cboNewSource", 2);
  EXPECT_EQ(PanelRecord.LocalPilot(1), 128 + 50);
  Click(Cell("lblPilotNumber", 1));
  EXPECT_EQ(Find<InPlaceList>("cboNewNumber").ListIndex(), -1);
  EXPECT_EQ(DataChanged, -1);
}

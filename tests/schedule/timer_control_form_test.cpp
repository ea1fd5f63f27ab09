#include "panel/live_project.h"
#include "screen_test.h"

class TimerControlTest : public ScreenTest {};

TEST_F(TimerControlTest, ACellIsMarkedWhenItsListOpensAndStoredWhenAnItemIsChosen) {
  PanelRecord.IOCount(0) = 1;
  PanelRecord.TimerRelayControl(0, 1) = 7;
  PanelRecord.TimerRelayControl(3, 0) = 1;
  PanelRecord.TimerRelayControl(3, 40) = 2;
  Menu("mnuTimerToRelayControl");
  EXPECT_EQ(Caption("lblControl", 0), "None ");
  EXPECT_EQ(Caption("lblControl", 1), " ");
  EXPECT_FALSE(Shown(Cell("lblControl", 4)));

  Choose("cboTimer", 3);
  EXPECT_EQ(Caption("lblControl", 0), "Turn On ");
  EXPECT_EQ(Caption("lblControl", 40), "Turn Off ");
  EXPECT_EQ(DataChanged, 0);
  Click(Cell("lblControl", 2));
  EXPECT_EQ(DataChanged, -1);
  QTest::mouseClick(window->LoadedForm(Screen::TimerToRelayControl), Qt::LeftButton, {},
                    QPoint(690, 390));
  EXPECT_FALSE(Find<InPlaceList>("cboControl").isVisible());
  EXPECT_EQ(PanelRecord.TimerRelayControl(3, 2), 0);

  Click(Cell("lblControl", 2));
  ChooseInPlace("cboControl", 2);
  EXPECT_EQ(PanelRecord.TimerRelayControl(3, 2), 2);
  Click(Cell("lblControl", 2));
  Choose("cboTimer", 0);
  EXPECT_FALSE(Find<InPlaceList>("cboControl").isVisible());
  EXPECT_EQ(PanelRecord.TimerRelayControl(0, 1), 7);
}

TEST_F(TimerControlTest, EachKindHasItsNamesCodesAndCells) {
  Menu("mnuTimerToGroupControl");
  Click(Cell("lblControl", 47));
  ChooseInPlace("cboControl", 1);
  EXPECT_EQ(PanelRecord.TimerGroupControl(0, 47), 1);
  EXPECT_EQ(Caption("lblGroupName", 47), "GROUP 48");

  Menu("mnuTimerToPresetControl");
  Choose("cboTimer", 47);
  Click(Cell("lblControl", 5));
  EXPECT_EQ(Find<InPlaceList>("cboControl").ListCount(), 2);
  ChooseInPlace("cboControl", 1);
  EXPECT_EQ(PanelRecord.TimerPresetControl(47, 5), 1);
  EXPECT_EQ(Caption("lblControl", 5), "Activate ");
  EXPECT_EQ(Cell("lblPresetName", 5).toolTip(), "Preset 06");
}

#include "screen_test.h"

class TimerControlTest : public ScreenTest {};

TEST_F(TimerControlTest, AChoiceIsStoredForTheTimerThatIsChosen) {
  PanelRecord.IOCount(0) = 1;
  PanelRecord.TimerRelayControl(0, 1) = 7;
  PanelRecord.TimerRelayControl(3, 0) = 1;
  PanelRecord.TimerRelayControl(3, 40) = 2;
  Menu("mnuTimerToRelayControl");
  EXPECT_EQ(Captions("lblControl", {0, 1}), "None | ");
  EXPECT_FALSE(Shows("lblControl", 4));

  Choose("cboTimer", 3);
  EXPECT_EQ(Captions("lblControl", {0, 40}), "Turn On |Turn Off ");
  Pick("lblControl", 2, "cboControl", 2);
  EXPECT_EQ(PanelRecord.TimerRelayControl(3, 2), 2);
  Click(Cell("lblControl", 2));
  Choose("cboTimer", 0);
  EXPECT_FALSE(Shows("cboControl"));
  EXPECT_EQ(PanelRecord.TimerRelayControl(0, 1), 7);
}

TEST_F(TimerControlTest, EachKindHasItsNamesAndWords) {
  Menu("mnuTimerToGroupControl");
  EXPECT_EQ(Caption("lblGroupName", 47), "GROUP 48");
  Menu("mnuTimerToPresetControl");
  Pick("lblControl", 5, "cboControl", 1);
  EXPECT_EQ(Find<InPlaceList>("cboControl").ListCount(), 2);
  EXPECT_EQ(Caption("lblControl", 5), "Activate ");
  EXPECT_EQ(Cell("lblPresetName", 5).toolTip(), "Preset 06");
}

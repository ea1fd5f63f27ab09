#include "panel/live_project.h"
#include "screen_test.h"

class InputControlTest : public ScreenTest {
 protected:
  void OpenRelays() {
    Menu("mnuInputToRelayControl");
    DataChanged = 0;
  }
  int RowsShown(const QString& name) {
    int shown = 0;
    for (int row = 0; row < ItemCount; ++row) shown += Shown(Cell(name, row)) ? 1 : 0;
    return shown;
  }
};

TEST_F(InputControlTest, LookingAtAnInputCutsItsCellsSilently) {
  PanelRecord.InputType(1) = 5;
  for (int i = 0; i <= ItemCount; ++i) PanelRecord.InputRelayControl(1, i) = 4;
  PanelRecord.InputRelayControl(1, 1) = -3;
  OpenRelays();
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 0), 4);
  Choose("cboInput", 1);
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 47), 1);
  EXPECT_EQ(Caption("lblControl", 0), "Timed On ");
  EXPECT_EQ(Caption("lblControl", 1), " ");
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 1), -3);
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(InputControlTest, TheKindDecidesWhatTheRowsAre) {
  PanelRecord.InputType(0) = 4;
  PanelRecord.InputType(1) = 9;
  PanelRecord.InputType(2) = 10;
  PanelRecord.InputPreset(0) = 3;
  OpenRelays();
  EXPECT_EQ(RowsShown("lblControl"), 0);
  EXPECT_TRUE(Shown(Find<ComboBox>("cboPreset")));
  EXPECT_EQ(Find<ComboBox>("cboPreset").ListIndex(), 3);
  Choose("cboPreset", 47);
  EXPECT_EQ(PanelRecord.InputPreset(0), 47);
  Choose("cboInput", 1);
  EXPECT_EQ(RowsShown("lblRelayName"), 4);
  EXPECT_EQ(Caption("lblRelayName", 3), "INPUT 04");
  EXPECT_FALSE(Shown(Find<ComboBox>("cboPreset")));
  Choose("cboInput", 2);
  EXPECT_EQ(RowsShown("lblControl"), 48);
  EXPECT_EQ(Caption("lblRelayName", 47), "TIMER 48");

  PanelRecord.InputGroupControl(1, 7) = 2;
  Menu("mnuInputToGroupControl");
  Choose("cboInput", 1);
  EXPECT_EQ(RowsShown("lblControl"), 0);
  EXPECT_EQ(PanelRecord.InputGroupControl(1, 7), 0);
  Choose("cboInput", 3);
  EXPECT_EQ(RowsShown("lblControl"), 48);
}

TEST_F(InputControlTest, ACodeOfNoKindOffersNothingAndLeavesTheRows) {
  PanelRecord.InputType(1) = 13;
  PanelRecord.InputRelayControl(1, 0) = 2;
  OpenRelays();
  Choose("cboInput", 1);
  EXPECT_EQ(RowsShown("lblControl"), 4);
  EXPECT_EQ(Caption("lblControl", 0), " ");
  Click(Cell("lblControl", 0));
  EXPECT_EQ(Find<InPlaceList>("cboControl").ListCount(), 0);
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 0), 2);
}

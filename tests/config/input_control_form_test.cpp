#include "nonsense_panel.h"
#include "screen_test.h"

class InputControlTest : public ScreenTest {
 protected:
  int RowsShown(const QString& name) {
    int shown = 0;
    for (int row = 0; row < ItemCount; ++row) shown += Shows(name, row) ? 1 : 0;
    return shown;
  }
};

TEST_F(InputControlTest, LookingAtAnInputCutsItsCellsSilently) {
  PanelRecord.InputType(1) = 5;
  for (int i = 0; i <= ItemCount; ++i) PanelRecord.InputRelayControl(1, i) = 4;
  PanelRecord.InputRelayControl(1, 1) = -3;
  Menu("mnuInputToRelayControl");
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 0), 4);
  DataChanged = 0;
  Choose("cboInput", 1);
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 47), 1);
  EXPECT_EQ(Captions("lblControl", {0, 1}), "Timed On | ");
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 1), -3);
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(InputControlTest, TheKindDecidesWhatTheRowsAre) {
  PanelRecord.InputType(0) = 4;
  PanelRecord.InputType(1) = 9;
  PanelRecord.InputType(2) = 10;
  PanelRecord.InputPreset(0) = 3;
  Menu("mnuInputToRelayControl");
  EXPECT_EQ(RowsShown("lblControl"), 0);
  EXPECT_TRUE(Shows("cboPreset"));
  EXPECT_EQ(Chosen("cboPreset"), 3);
  EXPECT_TRUE(Find<ComboBox>("cboPreset").hasFocus());
  Choose("cboInput", 1);
  EXPECT_EQ(RowsShown("lblRelayName"), 4);
  EXPECT_EQ(Caption("lblRelayName", 3), "INPUT 04");
  EXPECT_FALSE(Shows("cboPreset"));
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
  Menu("mnuInputToRelayControl");
  Choose("cboInput", 1);
  EXPECT_EQ(RowsShown("lblControl"), 4);
  EXPECT_EQ(Caption("lblControl", 0), " ");
  Click(Cell("lblControl", 0));
  EXPECT_EQ(Find<InPlaceList>("cboControl").ListCount(), 0);
  EXPECT_EQ(PanelRecord.InputRelayControl(1, 0), 2);
}

TEST_F(InputControlTest, CodesOfInstalledInputsAloneAreCut) {
  for (const Int16 blocks : {Int16{0}, Int16{13}}) {
    FillWithNonsense(999, blocks);
    Menu("mnuInputToRelayControl");
    for (int i = 0; i < Find<ComboBox>("cboInput").count(); ++i) Choose("cboInput", i);
    EXPECT_EQ(PanelRecord.InputRelayControl(0, 47), blocks > 0 ? 0 : 999);
    EXPECT_EQ(PanelRecord.InputRelayControl(48, 0), 999);
    EXPECT_EQ(PanelRecord.InputRelayControl(0, 48), 999);
    Menu("mnuInputToGroupControl");
    EXPECT_EQ(PanelRecord.InputGroupControl(0, 47), blocks > 0 ? 0 : 999);
  }
}

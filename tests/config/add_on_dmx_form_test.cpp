#include "panel/live_project.h"
#include "screen_test.h"

class DmxTest : public ScreenTest {
 protected:
  void Open() {
    PanelRecord.AddOnModuleType = 1;
    Menu("mnuAddOnModules");
    DataChanged = 0;
  }
};

TEST_F(DmxTest, AChannelIsChosenAndAutoMapFollowsTheFirst) {
  PanelRecord.DMXChannel(2) = 513;
  Open();
  EXPECT_EQ(Caption("lblDMXChan", 0), "None ");
  EXPECT_EQ(Caption("lblDMXChan", 2), " ");
  EXPECT_FALSE(Shown(Find<Button>("cmdAutoMap")));
  Click(Cell("lblDMXChan", 0));
  EXPECT_EQ(DataChanged, 0);
  ChooseInPlace("cboNewDMX", 500);
  EXPECT_EQ(PanelRecord.DMXChannel(0), 500);
  EXPECT_EQ(DataChanged, -1);
  Click(Find<Button>("cmdAutoMap"));
  EXPECT_EQ(PanelRecord.DMXChannel(12), 512);
  EXPECT_EQ(PanelRecord.DMXChannel(13), 0);
}

TEST_F(DmxTest, TheOffLevelStaysBelowTheOnLevel) {
  Open();
  Choose("cboOffLevel", 89);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0].Text, "Off Level Must Be Less Than On Level");
  EXPECT_EQ(Find<ComboBox>("cboOffLevel").currentText(), "10%");
  EXPECT_EQ(PanelRecord.DMXOffLevel, 10);
  EXPECT_EQ(DataChanged, -1);
  Choose("cboOnLevel", 9);
  EXPECT_EQ(messages[1].Text, "On Level Must Be Greater Than Off Level");
  EXPECT_EQ(PanelRecord.DMXOnLevel, 90);
  Choose("cboOffLevel", 88);
  EXPECT_EQ(PanelRecord.DMXOffLevel, 89);
  EXPECT_EQ(messages.size(), 2u);
}

TEST_F(DmxTest, LevelsOutsideTheListsAreKeptUntilOneIsChosen) {
  PanelRecord.DMXOnLevel = 200;
  PanelRecord.DMXOffLevel = 150;
  Open();
  EXPECT_TRUE(messages.empty());
  Choose("cboOnLevel", 50);
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(PanelRecord.DMXOnLevel, 200);
  EXPECT_EQ(Find<ComboBox>("cboOnLevel").ListIndex(), -1);
  Choose("cboOffLevel", 9);
  EXPECT_EQ(PanelRecord.DMXOffLevel, 10);
  Choose("cboOnLevel", 50);
  EXPECT_EQ(PanelRecord.DMXOnLevel, 51);
}

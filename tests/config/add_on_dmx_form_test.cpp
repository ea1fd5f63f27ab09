#include "screen_test.h"

class DmxTest : public ScreenTest {
 protected:
  void Open() {
    PanelRecord.AddOnModuleType = 1;
    Menu("mnuAddOnModules");
  }
};

TEST_F(DmxTest, AutoMapFollowsTheFirstChannelUpToTheLast) {
  PanelRecord.DMXChannel(2) = 513;
  Open();
  EXPECT_EQ(Captions("lblDMXChan", {0, 2}), "None | ");
  EXPECT_FALSE(Shows("cmdAutoMap"));
  Pick("lblDMXChan", 0, "cboNewDMX", 500);
  Press("cmdAutoMap");
  EXPECT_EQ(PanelRecord.DMXChannel(12), 512);
  EXPECT_EQ(PanelRecord.DMXChannel(13), 0);
}

TEST_F(DmxTest, TheOffLevelStaysBelowTheOnLevel) {
  Open();
  Choose("cboOffLevel", 89);
  EXPECT_EQ(messages.at(0).Text, "Off Level Must Be Less Than On Level");
  EXPECT_EQ(ChosenText("cboOffLevel"), "10%");
  EXPECT_EQ(PanelRecord.DMXOffLevel, 10);
  Choose("cboOnLevel", 9);
  EXPECT_EQ(messages.at(1).Text, "On Level Must Be Greater Than Off Level");
  EXPECT_EQ(PanelRecord.DMXOnLevel, 90);
  Choose("cboOffLevel", 88);
  EXPECT_EQ(PanelRecord.DMXOffLevel, 89);
}

TEST_F(DmxTest, LevelsOutsideTheListsAreKeptUntilOneIsChosen) {
  PanelRecord.DMXOnLevel = 200;
  PanelRecord.DMXOffLevel = 150;
  Open();
  EXPECT_TRUE(messages.empty());
  Choose("cboOnLevel", 50);
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(PanelRecord.DMXOnLevel, 200);
  EXPECT_EQ(Chosen("cboOnLevel"), -1);
  Choose("cboOffLevel", 9);
  EXPECT_EQ(PanelRecord.DMXOffLevel, 10);
  Choose("cboOnLevel", 50);
  EXPECT_EQ(PanelRecord.DMXOnLevel, 51);
}

#include "panel/live_project.h"
#include "screen_test.h"

class OptionTest : public ScreenTest {};

TEST_F(OptionTest, AFlagIsStoredAsMinusOneAndAnyOtherValueMeansItToo) {
  PanelRecord.PhotocellFilter = 7;
  Menu("mnuPhotocellFilter");
  EXPECT_TRUE(Find<OptionButton>("optPhotocellFilter", 1).Value());
  EXPECT_EQ(PanelRecord.PhotocellFilter, 7);
  Click(Find<OptionButton>("optPhotocellFilter", 0));
  EXPECT_EQ(PanelRecord.PhotocellFilter, 0);
  Click(Find<OptionButton>("optPhotocellFilter", 1));
  EXPECT_EQ(PanelRecord.PhotocellFilter, -1);

  Menu("mnuConfigureTimedOn");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(PanelRecord.TimedOnOperation, -1);
}

TEST_F(OptionTest, AnIndexIsStoredAndOneBeyondTheOptionsMarksNone) {
  PanelRecord.RTCSource = 2;
  Menu("mnuRTCSource");
  EXPECT_FALSE(Find<OptionButton>("optRTCSource", 0).Value() ||
               Find<OptionButton>("optRTCSource", 1).Value());
  EXPECT_EQ(DataChanged, 0);
  Click(Find<OptionButton>("optRTCSource", 1));
  EXPECT_EQ(PanelRecord.RTCSource, 1);
  Menu("mnuOffHoursSweepInterval");
  Click(Find<OptionButton>("optOffHoursSweepInterval", 2));
  EXPECT_EQ(PanelRecord.OffHoursSweepInterval, 2);
}

TEST_F(OptionTest, EachAddOnModuleHasItsScreen) {
  const QStringList screens = {"None", "DMX", "ModBus", "N2", "VoiceDTMF", "BACnet"};
  for (Int16 type = 0; type < screens.size(); ++type) {
    PanelRecord.AddOnModuleType = type;
    Menu("mnuAddOnModules");
    ASSERT_NE(window->LoadedForm(ScreenNamed("frmT3AddOnModule" + screens[type].toStdString())),
              nullptr);
  }
}

#include "screen_test.h"

class OptionTest : public ScreenTest {};

TEST_F(OptionTest, AnyFlagMeansYesAndAnIndexBeyondTheOptionsMarksNone) {
  PanelRecord.PhotocellFilter = 7;
  Menu("mnuPhotocellFilter");
  EXPECT_TRUE(Find<OptionButton>("optPhotocellFilter", 1).Value());
  EXPECT_EQ(PanelRecord.PhotocellFilter, 7);
  for (const int chosen : {0, 1}) {
    Click(Find<OptionButton>("optPhotocellFilter", chosen));
    EXPECT_EQ(PanelRecord.PhotocellFilter, -chosen);
  }
  Menu("mnuConfigureTimedOn");
  Key(Qt::Key_Down);
  EXPECT_EQ(PanelRecord.TimedOnOperation, -1);

  PanelRecord.RTCSource = 2;
  DataChanged = 0;
  Menu("mnuRTCSource");
  for (const int option : {0, 1}) EXPECT_FALSE(Find<OptionButton>("optRTCSource", option).Value());
  EXPECT_EQ(DataChanged, 0);
  Click(Find<OptionButton>("optRTCSource", 1));
  EXPECT_EQ(PanelRecord.RTCSource, 1);
}

TEST_F(OptionTest, EachAddOnModuleHasItsScreen) {
  const std::pair<Int16, Screen> screens[] = {{0, Screen::AddOnModuleNone},
                                              {1, Screen::AddOnModuleDMX},
                                              {2, Screen::AddOnModuleModBus},
                                              {3, Screen::AddOnModuleN2},
                                              {4, Screen::AddOnModuleVoiceDTMF},
                                              {5, Screen::AddOnModuleBACnet},
                                              {6, Screen::About},
                                              {99, Screen::About},
                                              {-1, Screen::About}};
  for (const auto& [type, screen] : screens) {
    window->UnloadAllForms();
    PanelRecord.AddOnModuleType = type;
    Menu("mnuAddOnModules");
    EXPECT_NE(window->LoadedForm(screen), nullptr) << type;
  }
}

#include "panel/project_codec.h"
#include "screen_test.h"

class OptionTest : public ScreenTest {
 protected:
  OptionButton& Option(const QString& name, int index) {
    return Find<OptionButton>(QStringLiteral("%1(%2)").arg(name).arg(index));
  }
};

TEST_F(OptionTest, AFlagIsStoredAsMinusOneAndAnyOtherValueMeansItToo) {
  PanelRecord.PhotocellFilter = 7;
  Menu("mnuPhotocellFilter");
  EXPECT_TRUE(Option("optPhotocellFilter", 1).Value());
  EXPECT_EQ(PanelRecord.PhotocellFilter, 7);
  Click(Option("optPhotocellFilter", 0));
  EXPECT_EQ(PanelRecord.PhotocellFilter, 0);
  Click(Option("optPhotocellFilter", 1));
  EXPECT_EQ(PanelRecord.PhotocellFilter, -1);

  Menu("mnuConfigureTimedOn");
  EXPECT_EQ(Option("optTimedOnOperation", 1).text(), "Timed-On Timers Begin When Input Closes");
  DataChanged = 0;
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(PanelRecord.TimedOnOperation, -1);
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(OptionTest, AnIndexIsStoredAndOneBeyondTheOptionsMarksNone) {
  PanelRecord.RTCSource = 2;
  PanelRecord.OffHoursSweepInterval = 1;
  Menu("mnuRTCSource");
  EXPECT_FALSE(Option("optRTCSource", 0).Value() || Option("optRTCSource", 1).Value());
  EXPECT_EQ(PanelRecord.RTCSource, 2);
  EXPECT_EQ(DataChanged, 0);
  Click(Option("optRTCSource", 1));
  EXPECT_EQ(PanelRecord.RTCSource, 1);
  Menu("mnuOffHoursSweepInterval");
  EXPECT_TRUE(Option("optOffHoursSweepInterval", 1).Value());
  Click(Option("optOffHoursSweepInterval", 2));
  EXPECT_EQ(PanelRecord.OffHoursSweepInterval, 2);
}

TEST_F(OptionTest, TheRelayDriveIsNotStored) {
  for (int time = 0; time < 2; ++time) {
    window->UnloadAllForms();
    window->ShowForm("frmT3RelayDrive");
    const std::string before = EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock);
    DataChanged = 0;
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(Option("optRelayDrive", i).Value());
    Click(Option("optRelayDrive", 3));
    EXPECT_EQ(DataChanged, -1);
    EXPECT_TRUE(EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock) == before);
  }
}

TEST_F(OptionTest, TimesOfAlertsKeepWhatTheirListsDoNotHold) {
  PanelRecord.OverrideMinutes = 1000;
  PanelRecord.AlarmSeconds = 0;
  Menu("mnuBlinkAlertAndAlarmSettings");
  EXPECT_EQ(Find<ComboBox>("cboBlinkAlert").currentText(), "10 Minutes");
  EXPECT_EQ(Find<ComboBox>("cboOverRide").ListIndex(), -1);
  EXPECT_EQ(PanelRecord.OverrideMinutes, 1000);
  EXPECT_EQ(PanelRecord.AlarmSeconds, 0);
  Choose("cboBlinkAlert", 97);
  Choose("cboOverRide", 994);
  Choose("cboAlarm", 0);
  EXPECT_EQ(PanelRecord.BlinkAlertMinutes, 99);
  EXPECT_EQ(Find<ComboBox>("cboOverRide").currentText(), "999 Minutes");
  EXPECT_EQ(PanelRecord.OverrideMinutes, 999);
  EXPECT_EQ(Find<ComboBox>("cboAlarm").currentText(), "1 Seconds");
  EXPECT_EQ(PanelRecord.AlarmSeconds, 1);
}

TEST_F(OptionTest, EachAddOnModuleHasItsScreen) {
  const std::vector<std::pair<QString, QString>> screens = {
      {"frmT3AddOnModuleNone", "No Add On Module Installed"},
      {"frmT3AddOnModuleDMX", ""},
      {"frmT3AddOnModuleModBus", ""},
      {"frmT3AddOnModuleN2", "No Configuration Required"},
      {"frmT3AddOnModuleVoiceDTMF", "No Configuration Required"},
      {"frmT3AddOnModuleBACnet", "No Configuration Required"}};
  for (std::size_t type = 0; type < screens.size(); ++type) {
    PanelRecord.AddOnModuleType = static_cast<Int16>(type);
    Menu("mnuAddOnModules");
    ASSERT_NE(window->LoadedForm(screens[type].first.toStdString()), nullptr);
    if (screens[type].second.isEmpty()) continue;
    EXPECT_EQ(Find<Label>("lblNoAddOnModule").Caption(), screens[type].second);
  }
}

TEST_F(OptionTest, ModbusSettingsAreStoredByIndex) {
  PanelRecord.AddOnModuleType = 2;
  PanelRecord.ModBusParity = 3;
  Menu("mnuAddOnModules");
  Choose("cboMode", 1);
  Choose("cboBaud", 3);
  EXPECT_EQ(PanelRecord.ModBusMode, 1);
  EXPECT_EQ(PanelRecord.ModBusBaud, 3);
  EXPECT_EQ(PanelRecord.ModBusParity, 3);
  Choose("cboParity", 2);
  EXPECT_EQ(PanelRecord.ModBusParity, 2);
}

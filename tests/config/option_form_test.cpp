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
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(PanelRecord.TimedOnOperation, -1);
}

TEST_F(OptionTest, AnIndexIsStoredAndOneBeyondTheOptionsMarksNone) {
  PanelRecord.RTCSource = 2;
  Menu("mnuRTCSource");
  EXPECT_FALSE(Option("optRTCSource", 0).Value() || Option("optRTCSource", 1).Value());
  EXPECT_EQ(DataChanged, 0);
  Click(Option("optRTCSource", 1));
  EXPECT_EQ(PanelRecord.RTCSource, 1);
  PanelRecord.OffHoursSweepInterval = 1;
  Menu("mnuOffHoursSweepInterval");
  EXPECT_TRUE(Option("optOffHoursSweepInterval", 1).Value());
  Click(Option("optOffHoursSweepInterval", 2));
  EXPECT_EQ(PanelRecord.OffHoursSweepInterval, 2);
}

TEST_F(OptionTest, TheRelayDriveForgetsTheChoice) {
  for (int time = 0; time < 2; ++time) {
    window->UnloadAllForms();
    window->ShowForm("frmT3RelayDrive");
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(Option("optRelayDrive", i).Value());
    DataChanged = 0;
    Click(Option("optRelayDrive", 3));
    EXPECT_EQ(DataChanged, -1);
  }
}

TEST_F(OptionTest, ListsOfTimesStartAtTheLeastAndEndAtTheMost) {
  Menu("mnuBlinkAlertAndAlarmSettings");
  EXPECT_EQ(Find<ComboBox>("cboOverRide").currentText(), "120 Minutes");
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
  const QStringList screens = {"None", "DMX", "ModBus", "N2", "VoiceDTMF", "BACnet"};
  for (Int16 type = 0; type < screens.size(); ++type) {
    PanelRecord.AddOnModuleType = type;
    Menu("mnuAddOnModules");
    ASSERT_NE(window->LoadedForm("frmT3AddOnModule" + screens[type].toStdString()), nullptr);
    if (type == 1 || type == 2) continue;
    EXPECT_EQ(Find<Label>("lblNoAddOnModule").Caption(),
              type == 0 ? "No Add On Module Installed" : "No Configuration Required");
  }
}

TEST_F(OptionTest, ModbusSettingsAreStoredByIndex) {
  PanelRecord.AddOnModuleType = 2;
  Menu("mnuAddOnModules");
  Choose("cboMode", 1);
  Choose("cboBaud", 3);
  Choose("cboParity", 2);
  EXPECT_EQ(PanelRecord.ModBusMode, 1);
  EXPECT_EQ(PanelRecord.ModBusBaud, 3);
  EXPECT_EQ(PanelRecord.ModBusParity, 2);
}

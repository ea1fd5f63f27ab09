#include "panel/project_codec.h"
#include "screen_test.h"

/// Codes beyond every list, spare elements set, names of bytes that no keyboard gives.
class NonsensePanelTest : public ScreenTest {
 protected:
  static void Fill(Int16 code, Int16 blocks) {
    auto& panel = PanelRecord;
    for (auto* array : {&panel.InputPreset, &panel.RelayTimerType, &panel.RelayPowerOnType,
                        &panel.InputType, &panel.LocalPilot, &panel.OffHoursSweepRelay,
                        &panel.OffHoursSweepGroup, &panel.DMXChannel}) {
      array->elements.fill(code);
    }
    for (auto* table : {&panel.InputRelayControl, &panel.InputGroupControl,
                        &panel.GroupRelayInclude, &panel.PresetRelayControl}) {
      table->elements.fill(code);
    }
    for (auto* setting :
         {&panel.BlinkAlertMinutes, &panel.OverrideMinutes, &panel.AlarmSeconds,
          &panel.TimedOnOperation, &panel.OffHoursSweepInterval, &panel.RTCSource,
          &panel.PhotocellFilter, &panel.DMXOnLevel, &panel.DMXOffLevel, &panel.DMXFilter,
          &panel.ModBusMode, &panel.ModBusBaud, &panel.ModBusParity}) {
      *setting = code;
    }
    for (auto* names : {&panel.RelayName, &panel.GroupName, &panel.InputName, &panel.PresetName}) {
      names->elements.fill(std::string("\0\x81\xFF<b>&amp;", 10));
    }
    panel.PanelName = std::string(30'000, '\x9D');
    panel.InputTimedOnTime.elements.fill(code < 0 ? std::numeric_limits<Int32>::min()
                                                  : std::numeric_limits<Int32>::max());
    panel.IOCount(0) = blocks;
    panel.IOCount(12) = code;
  }

  void Open(const std::string& screen) {
    window->UnloadAllForms();
    ASSERT_NE(window->ShowForm(screen), nullptr) << screen;
    QApplication::processEvents();
    EXPECT_TRUE(messages.empty()) << screen;
  }
};

TEST_F(NonsensePanelTest, EditorsOpenAndKeepWhatTheyCannotShow) {
  const QStringList screens =
      QStringLiteral(
          "RelayOutputOptions RelayGrouping InputOptions LocalInputPilots ConfigureTimedOn "
          "BlinkAlertAndAlarmSettings OffHoursSweepInterval OffHoursSweepRelays "
          "OffHoursSweepGroups EditPresets AddOnModuleDMX AddOnModuleModBus EditPanelName "
          "EditRelayNames EditGroupNames EditInputNames EditTimerNames EditPresetNames "
          "EditFennlinkNames PhotocellFilter RelayDrive RTCSource")
          .split(u' ');
  for (const int code : {999, -999, 32767, -32768}) {
    for (const Int16 blocks : {Int16{0}, Int16{13}}) {
      Fill(static_cast<Int16>(code), blocks);
      const std::string before = EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock);
      for (const QString& screen : screens) {
        Open("frmT3" + screen.toStdString());
        EXPECT_TRUE(EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock) == before)
            << screen.toStdString() << " with " << code;
      }
    }
  }
}

TEST_F(NonsensePanelTest, ControlEditorsCutCodesOfInstalledInputsOnly) {
  for (const Int16 blocks : {Int16{0}, Int16{13}}) {
    Fill(999, blocks);
    Open("frmT3InputToRelayControl");
    for (int i = 0; i < Find<ComboBox>("cboInput").count(); ++i) Choose("cboInput", i);
    EXPECT_EQ(PanelRecord.InputRelayControl(0, 47), blocks > 0 ? 0 : 999);
    EXPECT_EQ(PanelRecord.InputRelayControl(48, 0), 999);
    EXPECT_EQ(PanelRecord.InputRelayControl(0, 48), 999);
    EXPECT_EQ(PanelRecord.InputPreset(0), 999);
    Open("frmT3InputToGroupControl");
    EXPECT_EQ(PanelRecord.InputGroupControl(0, 47), blocks > 0 ? 0 : 999);
  }
}

#include "nonsense_panel.h"

#include "panel/live_project.h"
#include "panel/project_codec.h"
#include "screen_test.h"

/// Codes beyond every list, spare elements set, names of bytes that no keyboard gives.
class NonsensePanelTest : public ScreenTest {
 protected:
  void Open(Screen screen) {
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
      FillWithNonsense(static_cast<Int16>(code), blocks);
      const std::string before = EncodeProject(LiveProject);
      for (const QString& screen : screens) {
        Open(ScreenNamed("frmT3" + screen.toStdString()));
        EXPECT_TRUE(EncodeProject(LiveProject) == before)
            << screen.toStdString() << " with " << code;
      }
    }
  }
}

TEST_F(NonsensePanelTest, ControlEditorsCutCodesOfInstalledInputsOnly) {
  for (const Int16 blocks : {Int16{0}, Int16{13}}) {
    FillWithNonsense(999, blocks);
    Open(Screen::InputToRelayControl);
    for (int i = 0; i < Find<ComboBox>("cboInput").count(); ++i) Choose("cboInput", i);
    EXPECT_EQ(PanelRecord.InputRelayControl(0, 47), blocks > 0 ? 0 : 999);
    EXPECT_EQ(PanelRecord.InputRelayControl(48, 0), 999);
    EXPECT_EQ(PanelRecord.InputRelayControl(0, 48), 999);
    EXPECT_EQ(PanelRecord.InputPreset(0), 999);
    Open(Screen::InputToGroupControl);
    EXPECT_EQ(PanelRecord.InputGroupControl(0, 47), blocks > 0 ? 0 : 999);
  }
}

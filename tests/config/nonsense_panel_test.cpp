#include "panel/project_codec.h"
#include "screen_test.h"
#include "shell/menu_table.h"

/// A panel of codes beyond every list, with the spare elements set.
class NonsensePanelTest : public ScreenTest {
 protected:
  static void Fill(Int16 code, Int16 blocks) {
    auto& panel = PanelRecord;
    for (ItemArray* array :
         {&panel.InputPreset, &panel.RelayTimerType, &panel.RelayPowerOnType, &panel.InputType,
          &panel.InputEnableTime, &panel.InputDisableTime, &panel.LocalPilot, &panel.TimerTimeType,
          &panel.TimerTime, &panel.TimerDays, &panel.TimerHolidayMonth, &panel.TimerHolidayDate,
          &panel.OffHoursSweepRelay, &panel.OffHoursSweepGroup, &panel.DMXChannel}) {
      array->elements.fill(code);
    }
    for (ItemTable* table :
         {&panel.InputRelayControl, &panel.InputGroupControl, &panel.GroupRelayInclude,
          &panel.TimerRelayControl, &panel.TimerGroupControl, &panel.TimerPresetControl,
          &panel.PresetRelayControl}) {
      table->elements.fill(code);
    }
    for (NameArray* names : {&panel.RelayName, &panel.GroupName, &panel.InputName, &panel.TimerName,
                             &panel.PresetName}) {
      names->elements.fill(std::string("\0\x81\xFF<b>&amp;", 10));
    }
    panel.PanelName = std::string(30'000, '\x9D');
    panel.InputTimedOnTime.elements.fill(code < 0 ? std::numeric_limits<Int32>::min()
                                                  : std::numeric_limits<Int32>::max());
    for (Int16* setting :
         {&panel.BlinkAlertMinutes, &panel.OverrideMinutes, &panel.AlarmSeconds,
          &panel.TimedOnOperation, &panel.OffHoursSweepInterval, &panel.RTCSource,
          &panel.PhotocellFilter, &panel.DMXOnLevel, &panel.DMXOffLevel, &panel.DMXFilter,
          &panel.ModBusMode, &panel.ModBusBaud, &panel.ModBusParity}) {
      *setting = code;
    }
    panel.IOCount.elements.fill(0);
    panel.IOCount(0) = blocks;
    panel.IOCount(12) = code;
    for (FennlinkRecord& device : FennlinkRecords.elements) device.DeviceName = panel.RelayName(0);
  }

  std::string Document() { return EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock); }
};

TEST_F(NonsensePanelTest, EditorsOpenAndKeepWhatTheyCannotShow) {
  constexpr std::array screens = {"frmT3RelayOutputOptions",
                                  "frmT3RelayGrouping",
                                  "frmT3InputOptions",
                                  "frmT3LocalInputPilots",
                                  "frmT3BlinkAlertAndAlarmSettings",
                                  "frmT3ConfigureTimedOn",
                                  "frmT3OffHoursSweepInterval",
                                  "frmT3OffHoursSweepRelays",
                                  "frmT3OffHoursSweepGroups",
                                  "frmT3EditPresets",
                                  "frmT3AddOnModuleDMX",
                                  "frmT3AddOnModuleModBus",
                                  "frmT3EditPanelName",
                                  "frmT3EditRelayNames",
                                  "frmT3EditGroupNames",
                                  "frmT3EditInputNames",
                                  "frmT3EditTimerNames",
                                  "frmT3EditPresetNames",
                                  "frmT3EditFennlinkNames",
                                  "frmT3PhotocellFilter",
                                  "frmT3RelayDrive",
                                  "frmT3RTCSource"};
  for (const Int16 code : {Int16{999}, Int16{-999}, std::numeric_limits<Int16>::max(),
                           std::numeric_limits<Int16>::min()}) {
    for (const Int16 blocks : {Int16{0}, Int16{13}}) {
      for (const char* screen : screens) {
        Fill(code, blocks);
        const std::string before = Document();
        window->UnloadAllForms();
        ASSERT_NE(window->ShowForm(screen), nullptr) << screen;
        QApplication::processEvents();
        EXPECT_TRUE(Document() == before) << screen << " with " << code;
        EXPECT_TRUE(messages.empty()) << screen << " with " << code;
      }
    }
  }
}

TEST_F(NonsensePanelTest, ControlEditorsCutCodesToTheLastListAndKeepTheSpareElements) {
  for (const Int16 blocks : {Int16{0}, Int16{13}}) {
    for (const char* screen : {"frmT3InputToRelayControl", "frmT3InputToGroupControl"}) {
      Fill(999, blocks);
      window->UnloadAllForms();
      window->ShowForm(screen);
      QApplication::processEvents();
      for (int input = 0; input < Find<ComboBox>("cboInput").count(); ++input) {
        Choose("cboInput", input);
      }
      EXPECT_EQ(PanelRecord.InputRelayControl(48, 0), 999);
      EXPECT_EQ(PanelRecord.InputGroupControl(0, 48), 999);
      EXPECT_EQ(PanelRecord.InputPreset(0), 999);
      EXPECT_EQ(PanelRecord.InputRelayControl(0, 0),
                blocks > 0 && std::string(screen) == "frmT3InputToRelayControl" ? 0 : 999);
      EXPECT_TRUE(messages.empty());
    }
  }
}

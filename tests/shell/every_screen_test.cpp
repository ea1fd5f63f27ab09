#include "link/panel_host.h"
#include "nonsense_panel.h"
#include "shell/menu_table.h"

namespace {

/// What a screen reads at once in 16-bit arithmetic, which overflows on some damaged records.
enum class Reads { Nothing, Points, PointsOfPanel, Levels };

/// Some controls that a screen has.
struct ScreenContent {
  const char* Screen;
  const char* Controls;
  Reads What = Reads::Nothing;
};

const ScreenContent Contents[] = {
    {"frmT3Connect", "cmdConnect chkConnectionType(2) optComPort(15) txtPhoneNumber txtTCPIP"},
    {"frmT3Setup", "lblIOCount(11)"},
    {"frmT3RelayStatus", "cmdUpdateStatus lblRelayStatus(47) cmdTurnOff(47) cmdAllRelaysOn",
     Reads::PointsOfPanel},
    {"frmT3RelayGroupStatus", "cmdAutoUpdate lblGroupStatus(47) cmdTurnOn(47)"},
    {"frmT3RelayOutputOptions", "lblTimerType(47) lblPowerOnType(47)", Reads::Points},
    {"frmT3RelayGrouping", "cboGroup lblInclude(47)", Reads::Points},
    {"frmT3InputStatus", "lblInputOnStatus(47) lblInputOffStatus(47) lblNoConnection",
     Reads::PointsOfPanel},
    {"frmT3InputOptions", "lblInputType(47) lblInputTimedOn(47)", Reads::Points},
    {"frmT3InputToRelayControl", "cboInput lblControl(47) cboPreset", Reads::Points},
    {"frmT3InputToGroupControl", "cboInput lblControl(47)", Reads::Points},
    {"frmT3FennlinkStatus", "cboFLinkDevice fraStatus16 lblInput8Status(7) lblLightLevel"},
    {"frmT3ConfigureFennlinkDevices", "cboFLinkType cboInput16Type(7) hsInputFOnLevel(7)"},
    {"frmT3FennlinkInputToRelayControl", "cboFennlinkDevice cboInput cboPreset lblControl(47)"},
    {"frmT3FennlinkInputToGroupControl", "cboFennlinkDevice lblInputType lblControl(47)"},
    {"frmT3LocalInputPilots", "lblPilotSource(47) lblPilotNumber(47)", Reads::Points},
    {"frmT3FennlinkPilots", "cmdAutoMapAllFL lblPilotNumber(7)"},
    {"frmT3TimersConfigure", "cboTimerNumber optTimeType(0) chkDays(6) cboHolidayDate"},
    {"frmT3TimerToRelayControl", "cboTimer lblControl(47)", Reads::Points},
    {"frmT3TimerToGroupControl", "cboTimer lblControl(47)"},
    {"frmT3TimerToPresetControl", "cboTimer lblControl(47)"},
    {"frmT3BlinkAlertAndAlarmSettings", "cboAlarm cboBlinkAlert cboOverRide"},
    {"frmT3ConfigureTimedOn", ""},
    {"frmT3ForceTimers", "lblTimerName(47) cmdForce(47) lblPleaseWait"},
    {"frmT3DaylightSavingTime", "chkEnableDaylightSavingTime cboDSTEndWeek"},
    {"frmT3AstroClockSettings", "cboLatitude cmdFindLatLon cboTimeZone"},
    {"frmT3OpenAndCloseTimeNormalDays", "lblOpenTime(6) lblCloseTime(6)"},
    {"frmT3OpenAndCloseTimeSingleDates", "optMonth(11) lblDate(30) lblOpenTime(30)"},
    {"frmT3OffHoursSweepInterval", ""},
    {"frmT3OffHoursSweepRelays", "lblRelayName(47)", Reads::Points},
    {"frmT3OffHoursSweepGroups", "lblGroupName(47)"},
    {"frmT3InputActiveTimes", "lblInputEnableTime(47) lblInputDisableTime(47)", Reads::Points},
    {"frmT3EditPresets", "cboPresetNumber lblRelayControl(47)", Reads::Points},
    {"frmT3CapturePresets", "lblPresetStatus(47) cmdSet(47) cmdCapture(47)"},
    {"frmT3DimmerOutput", "cboDDev cboPCTrack cboCOTyp lblSummary(15)", Reads::Levels},
    {"frmT3DimmerRelayControl", "cboDOut cboOnLevel lblRelayName(47)", Reads::Levels},
    {"frmT3EditPanelName", "txtPanelName chkDefaultPanelName"},
    {"frmT3EditRelayNames", "txtRelayName(47)", Reads::Points},
    {"frmT3EditGroupNames", "txtGroupName(47)"},
    {"frmT3EditInputNames", "txtInputName(47)", Reads::Points},
    {"frmT3EditTimerNames", "txtTimerName(47)"},
    {"frmT3EditPresetNames", "txtPresetName(47)"},
    {"frmT3EditFennlinkNames", "txtFennlinkName(63)"},
    {"frmT3PhotocellFilter", ""},
    {"frmT3RTCSource", ""},
    {"frmT3Document", "chkPrintOptions(11) cmdDocument lblDocFileName"},
    {"frmT3About", "lblRevInfo lblWebPageInfo lblPhone"},
};

}  // namespace

class EveryScreenTest : public PanelHostTest {
 protected:
  static constexpr Int16 overflowing = 32767;

  static void FillFull() {
    const Int16 type = ConnectionType();
    LoadDefaults();
    ConnectionType() = type;
    PanelRecord.IOCount.elements.fill(1);
  }

  /// Opens every leaf of the menu but those that act on the file.
  void OpenAll(const std::string& panel, bool pointsOverflow = false, bool levelsOverflow = false) {
    for (const MenuEntry& entry : MenuTable()) {
      if (!entry.Form) continue;
      const QString name = QString::fromLatin1(entry.Name);
      const auto* action = window->findChild<QAction*>(name);
      EXPECT_EQ(action->isEnabled(), name != "mnuRelayDrive") << entry.Name;
      if (!action->isEnabled()) continue;
      messages.clear();
      Menu(entry.Name);
      ChildForm* form = window->LoadedForm(entry.Form);
      ASSERT_TRUE(form && form->isVisible()) << entry.Form << " on " << panel;
      const auto* content =
          std::find_if(std::begin(Contents), std::end(Contents),
                       [&](const auto& row) { return row.Screen == std::string(entry.Form); });
      ASSERT_NE(content, std::end(Contents)) << entry.Form;
      for (const QString& control : QString(content->Controls).split(u' ', Qt::SkipEmptyParts)) {
        EXPECT_TRUE(form->findChild<QWidget*>(control)) << entry.Form << control.toStdString();
      }
      const bool points = content->What == Reads::Points ||
                          (content->What == Reads::PointsOfPanel && Connected != 0);
      const bool fails =
          (pointsOverflow && points) || (levelsOverflow && content->What == Reads::Levels);
      EXPECT_EQ(messages.size(), fails ? 1U : 0U)
          << entry.Form << " on " << panel << ": "
          << (messages.empty() ? "" : messages.front().Text.toStdString());
    }
    for (Int16 type = 0; type < 7; ++type) {
      PanelRecord.AddOnModuleType = type;
      messages.clear();
      Menu("mnuAddOnModules");
      EXPECT_EQ(messages.size(), pointsOverflow && type == 1 ? 1U : 0U) << type << " on " << panel;
    }
  }

  /// On panels new, full and of nonsense. The connection's type stays what it is.
  void OpenAllOnEveryPanel() {
    OpenAll("a new panel");
    FillFull();
    OpenAll("a full panel");
    for (const auto& [code, blocks] :
         {std::pair<Int16, Int16>{999, 13}, {-1, 0}, {-32768, 13}, {32767, overflowing}}) {
      const Int16 type = ConnectionType();
      FillWithNonsense(code, blocks);
      ConnectionType() = type;
      OpenAll("codes of " + std::to_string(code), blocks == overflowing, code != -1);
      ConnectionType() = type;
    }
  }
};

TEST_F(EveryScreenTest, OpensWithoutAPanel) {
  OpenAllOnEveryPanel();
}

TEST_F(EveryScreenTest, OpensConnectedToAPanel) {
  const QString address = OwnAddress();
  simulator::PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  OpenAllOnEveryPanel();
  EXPECT_EQ(Connected, -1);
}

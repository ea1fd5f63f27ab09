#include "screen_table.h"

#include <algorithm>

#include "config/add_on_dmx_form.h"
#include "config/add_on_modbus_form.h"
#include "config/add_on_module_form.h"
#include "config/blink_alert_form.h"
#include "config/cell_grid_form.h"
#include "config/fennlink_control_form.h"
#include "config/fennlink_devices_form.h"
#include "config/fennlink_pilots_form.h"
#include "config/input_control_form.h"
#include "config/input_options_form.h"
#include "config/local_pilots_form.h"
#include "config/names_form.h"
#include "config/option_form.h"
#include "config/panel_name_form.h"
#include "config/relay_options_form.h"
#include "config/setup_form.h"
#include "dimmer/dimmer_output_form.h"
#include "dimmer/dimmer_relay_control_form.h"
#include "document/document_form.h"
#include "document/find_dialog.h"
#include "document/rules/check.h"
#include "link/connect_form.h"
#include "schedule/astro_clock_form.h"
#include "schedule/daylight_saving_form.h"
#include "schedule/time_pair_form.h"
#include "schedule/timer_control_form.h"
#include "schedule/timers_configure_form.h"
#include "shell/about_form.h"
#include "shell/shell.h"
#include "status/capture_presets_form.h"
#include "status/fennlink_status_form.h"
#include "status/force_timers_form.h"
#include "status/input_status_form.h"
#include "status/output_status_form.h"
#include "status/system_diagnostic_form.h"
#include "status/virtual_keypad_form.h"

namespace {

template <typename Form>
ChildForm* New(const char*) {
  return new Form;
}

/// A screen that is one row of its implementation's table.
template <typename Form>
ChildForm* NewRow(const char* name) {
  return new Form(name);
}

}  // namespace

const std::vector<MenuEntry>& MenuTable() {
  static const std::vector<MenuEntry> table = {
      {1, "&File", "mnuFile"},
      {2, "New", "mnuNew"},
      {2, "Open", "mnuOpen"},
      {2, "Save", "mnuSave"},
      {2, "Save As", "mnuSaveAs"},
      {2, "-", "mnuSpace"},
      {2, "Exit", "mnuExit"},
      {1, "&Connect", "mnuConnect", "frmT3Connect"},
      {1, "&Setup", "mnuSetup", "frmT3Setup"},
      {1, "&Edit", "mnuEdit"},
      {2, "Relay Outputs", "mnuRelayOutputs"},
      {3, "Relay Status", "mnuRelayStatus", "frmT3RelayStatus"},
      {3, "Group Status", "mnuGroupStatus", "frmT3RelayGroupStatus"},
      {3, "Relay Output Options", "mnuRelayOutputOptions", "frmT3RelayOutputOptions"},
      {3, "Relay Grouping", "mnuRelayGrouping", "frmT3RelayGrouping"},
      {2, "Switch Inputs", "mnuSwitchInputs"},
      {3, "Local Inputs", "mnuLocalInputs"},
      {4, "Input Status", "mnuInputStatus", "frmT3InputStatus"},
      {4, "Input Options", "mnuInputOptions", "frmT3InputOptions"},
      {4, "Input To Relay Control", "mnuInputToRelayControl", "frmT3InputToRelayControl"},
      {4, "Input To Group Control", "mnuInputToGroupControl", "frmT3InputToGroupControl"},
      {3, "Fennlink Inputs", "mnuFennlinkInputs"},
      {4, "Fennlink Status", "mnuFennlinkStatus", "frmT3FennlinkStatus"},
      {4, "Configure Fennlink Devices", "mnuConfigureFennlinkDevices",
       "frmT3ConfigureFennlinkDevices"},
      {4, "Fennlink Input To Relay Control", "mnuFennlinkInputToRelayControl",
       "frmT3FennlinkInputToRelayControl"},
      {4, "Fennlink Input To Group Control", "mnuFennlinkInputToGroupControl",
       "frmT3FennlinkInputToGroupControl"},
      {2, "Switch Pilots", "mnuSwitchPilots"},
      {3, "Local Input Pilots", "mnuLocalInputPilots", "frmT3LocalInputPilots"},
      {3, "Fennlink Pilots", "mnuFennlinkPilots", "frmT3FennlinkPilots"},
      {2, "Timers", "mnuTimers"},
      {3, "Configure Timers", "mnuConfigureTimers", "frmT3TimersConfigure"},
      {3, "Timer To Relay Control", "mnuTimerToRelayControl", "frmT3TimerToRelayControl"},
      {3, "Timer To Group Control", "mnuTimerToGroupControl", "frmT3TimerToGroupControl"},
      {3, "Timer To Preset Control", "mnuTimerToPresetControl", "frmT3TimerToPresetControl"},
      {3, "Blink Alert And Alarm Settings", "mnuBlinkAlertAndAlarmSettings",
       "frmT3BlinkAlertAndAlarmSettings"},
      {3, "Configure Timed-On", "mnuConfigureTimedOn", "frmT3ConfigureTimedOn"},
      {3, "Force Timers", "mnuForceTimers", "frmT3ForceTimers"},
      {2, "Set Times", "mnuSetTimes"},
      {3, "Daylight Saving Time", "mnuDaylightSavingTime", "frmT3DaylightSavingTime"},
      {3, "Astro Clock Settings", "mnuAstroClockSettings", "frmT3AstroClockSettings"},
      {3, "Open And Close Times", "mnuOpenAndCloseTimes"},
      {4, "Normal Days", "mnuOpenCloseTimeNormalDays", "frmT3OpenAndCloseTimeNormalDays"},
      {4, "Single Dates", "mnuOpenCloseTimeSingleDates", "frmT3OpenAndCloseTimeSingleDates"},
      {3, "Off Hours Sweeps", "mnuOffHoursSweeps"},
      {4, "Interval", "mnuOffHoursSweepInterval", "frmT3OffHoursSweepInterval"},
      {4, "Relays", "mnuOffHoursSweepRelays", "frmT3OffHoursSweepRelays"},
      {4, "Groups", "mnuOffHoursSweepGroups", "frmT3OffHoursSweepGroups"},
      {3, "Input Active Times", "mnuInputActiveTimes", "frmT3InputActiveTimes"},
      {2, "Presets", "mnuPresets"},
      {3, "Edit Presets", "mnuEditPresets", "frmT3EditPresets"},
      {3, "Capture Presets", "mnuCapturePresets", "frmT3CapturePresets"},
      {2, "Add-On Modules", "mnuAddOnModules"},
      {2, "Dimmers", "mnuDimmers"},
      {3, "Configure Dimmers Outputs", "mnuConfigureDimmers", "frmT3DimmerOutput"},
      {3, "Dimmer Output / Relay Control", "mnuDimmerToRelayControl", "frmT3DimmerRelayControl"},
      {2, "Special Functions", "mnuSpecialFunctions"},
      {3, "Edit Names", "mnuEditNames"},
      {4, "Edit Panel Name", "mnuEditPanelName", "frmT3EditPanelName"},
      {4, "Edit Relay Names", "mnuEditRelayNames", "frmT3EditRelayNames"},
      {4, "Edit Group Names", "mnuEditGroupNames", "frmT3EditGroupNames"},
      {4, "Edit Input Names", "mnuEditInputNames", "frmT3EditInputNames"},
      {4, "Edit Timer Names", "mnuEditTimerNames", "frmT3EditTimerNames"},
      {4, "Edit Preset Names", "mnuEditPresetNames", "frmT3EditPresetNames"},
      {4, "Edit Fennlink Names", "mnuEditFennlinkNames", "frmT3EditFennlinkNames"},
      {3, "Photocell Filter", "mnuPhotocellFilter", "frmT3PhotocellFilter"},
      {3, "Relay Drive", "mnuRelayDrive", "frmT3RelayDrive"},
      {3, "RTC Source", "mnuRTCSource", "frmT3RTCSource"},
      {1, "&Document", "mnuDocument", "frmT3Document"},
      {1, "&About", "mnuAbout", "frmT3About"},
  };
  return table;
}

const std::vector<ScreenEntry>& ScreenTable() {
  static const std::vector<ScreenEntry> table = {
      {"frmT3Setup", New<frmT3Setup>},
      {"frmT3Connect", New<frmT3Connect>},
      {"frmT3RelayStatus", NewRow<OutputStatusForm>},
      {"frmT3RelayGroupStatus", NewRow<OutputStatusForm>},
      {"frmT3RelayOutputOptions", New<frmT3RelayOutputOptions>},
      {"frmT3RelayGrouping", NewRow<CellGridForm>},
      {"frmT3InputStatus", New<frmT3InputStatus>},
      {"frmT3InputOptions", New<frmT3InputOptions>},
      {"frmT3InputToRelayControl", NewRow<InputControlForm>},
      {"frmT3InputToGroupControl", NewRow<InputControlForm>},
      {"frmT3FennlinkStatus", New<frmT3FennlinkStatus>},
      {"frmT3ConfigureFennlinkDevices", New<frmT3ConfigureFennlinkDevices>},
      {"frmT3FennlinkInputToRelayControl", NewRow<FennlinkControlForm>},
      {"frmT3FennlinkInputToGroupControl", NewRow<FennlinkControlForm>},
      {"frmT3LocalInputPilots", New<frmT3LocalInputPilots>},
      {"frmT3FennlinkPilots", New<frmT3FennlinkPilots>},
      {"frmT3TimersConfigure", New<frmT3TimersConfigure>},
      {"frmT3TimerToRelayControl", NewRow<TimerControlForm>},
      {"frmT3TimerToGroupControl", NewRow<TimerControlForm>},
      {"frmT3TimerToPresetControl", NewRow<TimerControlForm>},
      {"frmT3BlinkAlertAndAlarmSettings", New<frmT3BlinkAlertAndAlarmSettings>},
      {"frmT3ConfigureTimedOn", NewRow<OptionForm>},
      {"frmT3ForceTimers", New<frmT3ForceTimers>},
      {"frmT3DaylightSavingTime", New<frmT3DaylightSavingTime>},
      {"frmT3AstroClockSettings", New<frmT3AstroClockSettings>},
      {"frmT3OpenAndCloseTimeNormalDays", NewRow<TimePairForm>},
      {"frmT3OpenAndCloseTimeSingleDates", NewRow<TimePairForm>},
      {"frmT3OffHoursSweepInterval", NewRow<OptionForm>},
      {"frmT3OffHoursSweepRelays", NewRow<CellGridForm>},
      {"frmT3OffHoursSweepGroups", NewRow<CellGridForm>},
      {"frmT3InputActiveTimes", NewRow<TimePairForm>},
      {"frmT3EditPresets", NewRow<CellGridForm>},
      {"frmT3CapturePresets", New<frmT3CapturePresets>},
      {"frmT3AddOnModuleNone", NewRow<AddOnModuleForm>},
      {"frmT3AddOnModuleDMX", New<frmT3AddOnModuleDMX>},
      {"frmT3AddOnModuleModBus", New<frmT3AddOnModuleModBus>},
      {"frmT3AddOnModuleN2", NewRow<AddOnModuleForm>},
      {"frmT3AddOnModuleVoiceDTMF", NewRow<AddOnModuleForm>},
      {"frmT3AddOnModuleBACnet", NewRow<AddOnModuleForm>},
      {"frmT3EditPanelName", New<frmT3EditPanelName>},
      {"frmT3EditRelayNames", NewRow<NamesForm>},
      {"frmT3EditGroupNames", NewRow<NamesForm>},
      {"frmT3EditInputNames", NewRow<NamesForm>},
      {"frmT3EditTimerNames", NewRow<NamesForm>},
      {"frmT3EditPresetNames", NewRow<NamesForm>},
      {"frmT3EditFennlinkNames", NewRow<NamesForm>},
      {"frmT3PhotocellFilter", NewRow<OptionForm>},
      {"frmT3RelayDrive", NewRow<OptionForm>},
      {"frmT3RTCSource", NewRow<OptionForm>},
      {"frmT3Document", New<frmT3Document>},
      {"frmT3About", New<frmT3About>},
      {"frmT3VirtualKeypad", New<frmT3VirtualKeypad>},
      {"frmT3SystemDiagnostic", New<frmT3SystemDiagnostic>},
      {"frmT3DimmerOutput", New<frmT3DimmerOutput>},
      {"frmT3DimmerRelayControl", New<frmT3DimmerRelayControl>},
      {"frmT3DimCopyCnf"},
      {"frmT3DimCopyCnt"},
  };
  return table;
}

ProgramScreens AllScreens() {
  ErrorsOfProject = [] {
    const std::vector<Finding> findings = CheckProject();
    return static_cast<int>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return finding.Level == Severity::Error; }));
  };
  return {MenuTable(), ScreenTable(), [] { FindDialog(MainWindow()).exec(); }};
}

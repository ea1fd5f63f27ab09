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
#include "document/findings_list.h"
#include "document/rules/check/check.h"
#include "document/work_steps.h"
#include "link/connect_form.h"
#include "link/panel_link.h"
#include "panel/live_project.h"
#include "panel/project_file.h"
#include "schedule/all_dates_form.h"
#include "schedule/all_timers_form.h"
#include "schedule/astro_clock_form.h"
#include "schedule/daylight_saving_form.h"
#include "schedule/time_pair_form.h"
#include "schedule/timer_control_form.h"
#include "schedule/timers_configure_form.h"
#include "shell/shell.h"
#include "shell/window/about_form.h"
#include "status/capture_presets_form.h"
#include "status/fennlink_status_form.h"
#include "status/force_timers_form.h"
#include "status/input_status_form.h"
#include "status/output_status_form.h"
#include "status/system_diagnostic_form.h"
#include "status/virtual_keypad_form.h"
#include "status/walk_test_form.h"

namespace {

template <typename Form>
ChildForm* New(Screen) {
  return new Form;
}

/// A screen that is one row of its implementation's table.
template <typename Form>
ChildForm* NewRow(Screen name) {
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
      {1, "&Connect", "mnuConnect", Screen::Connect},
      {1, "&Setup", "mnuSetup", Screen::Setup},
      {1, "&Edit", "mnuEdit"},
      {2, "Relay Outputs", "mnuRelayOutputs"},
      {3, "Relay Status", "mnuRelayStatus", Screen::RelayStatus},
      {3, "Group Status", "mnuGroupStatus", Screen::RelayGroupStatus},
      {3, "Relay Output Options", "mnuRelayOutputOptions", Screen::RelayOutputOptions},
      {3, "Relay Grouping", "mnuRelayGrouping", Screen::RelayGrouping},
      {2, "Switch Inputs", "mnuSwitchInputs"},
      {3, "Local Inputs", "mnuLocalInputs"},
      {4, "Input Status", "mnuInputStatus", Screen::InputStatus},
      {4, "Input Options", "mnuInputOptions", Screen::InputOptions},
      {4, "Input To Relay Control", "mnuInputToRelayControl", Screen::InputToRelayControl},
      {4, "Input To Group Control", "mnuInputToGroupControl", Screen::InputToGroupControl},
      {3, "Fennlink Inputs", "mnuFennlinkInputs"},
      {4, "Fennlink Status", "mnuFennlinkStatus", Screen::FennlinkStatus},
      {4, "Configure Fennlink Devices", "mnuConfigureFennlinkDevices",
       Screen::ConfigureFennlinkDevices},
      {4, "Fennlink Input To Relay Control", "mnuFennlinkInputToRelayControl",
       Screen::FennlinkInputToRelayControl},
      {4, "Fennlink Input To Group Control", "mnuFennlinkInputToGroupControl",
       Screen::FennlinkInputToGroupControl},
      {2, "Switch Pilots", "mnuSwitchPilots"},
      {3, "Local Input Pilots", "mnuLocalInputPilots", Screen::LocalInputPilots},
      {3, "Fennlink Pilots", "mnuFennlinkPilots", Screen::FennlinkPilots},
      {2, "Timers", "mnuTimers"},
      {3, "Configure Timers", "mnuConfigureTimers", Screen::TimersConfigure},
      {3, "Timer To Relay Control", "mnuTimerToRelayControl", Screen::TimerToRelayControl},
      {3, "Timer To Group Control", "mnuTimerToGroupControl", Screen::TimerToGroupControl},
      {3, "Timer To Preset Control", "mnuTimerToPresetControl", Screen::TimerToPresetControl},
      {3, "Blink Alert And Alarm Settings", "mnuBlinkAlertAndAlarmSettings",
       Screen::BlinkAlertAndAlarmSettings},
      {3, "Configure Timed-On", "mnuConfigureTimedOn", Screen::ConfigureTimedOn},
      {3, "Force Timers", "mnuForceTimers", Screen::ForceTimers},
      {2, "Set Times", "mnuSetTimes"},
      {3, "Daylight Saving Time", "mnuDaylightSavingTime", Screen::DaylightSavingTime},
      {3, "Astro Clock Settings", "mnuAstroClockSettings", Screen::AstroClockSettings},
      {3, "Open And Close Times", "mnuOpenAndCloseTimes"},
      {4, "Normal Days", "mnuOpenCloseTimeNormalDays", Screen::OpenAndCloseTimeNormalDays},
      {4, "Single Dates", "mnuOpenCloseTimeSingleDates", Screen::OpenAndCloseTimeSingleDates},
      {3, "Off Hours Sweeps", "mnuOffHoursSweeps"},
      {4, "Interval", "mnuOffHoursSweepInterval", Screen::OffHoursSweepInterval},
      {4, "Relays", "mnuOffHoursSweepRelays", Screen::OffHoursSweepRelays},
      {4, "Groups", "mnuOffHoursSweepGroups", Screen::OffHoursSweepGroups},
      {3, "Input Active Times", "mnuInputActiveTimes", Screen::InputActiveTimes},
      {2, "Presets", "mnuPresets"},
      {3, "Edit Presets", "mnuEditPresets", Screen::EditPresets},
      {3, "Capture Presets", "mnuCapturePresets", Screen::CapturePresets},
      {2, "Add-On Modules", "mnuAddOnModules"},
      {2, "Dimmers", "mnuDimmers"},
      {3, "Configure Dimmers Outputs", "mnuConfigureDimmers", Screen::DimmerOutput},
      {3, "Dimmer Output / Relay Control", "mnuDimmerToRelayControl", Screen::DimmerRelayControl},
      {2, "Special Functions", "mnuSpecialFunctions"},
      {3, "Edit Names", "mnuEditNames"},
      {4, "Edit Panel Name", "mnuEditPanelName", Screen::EditPanelName},
      {4, "Edit Relay Names", "mnuEditRelayNames", Screen::EditRelayNames},
      {4, "Edit Group Names", "mnuEditGroupNames", Screen::EditGroupNames},
      {4, "Edit Input Names", "mnuEditInputNames", Screen::EditInputNames},
      {4, "Edit Timer Names", "mnuEditTimerNames", Screen::EditTimerNames},
      {4, "Edit Preset Names", "mnuEditPresetNames", Screen::EditPresetNames},
      {4, "Edit Fennlink Names", "mnuEditFennlinkNames", Screen::EditFennlinkNames},
      {3, "Photocell Filter", "mnuPhotocellFilter", Screen::PhotocellFilter},
      {3, "Relay Drive", "mnuRelayDrive", Screen::RelayDrive},
      {3, "RTC Source", "mnuRTCSource", Screen::RTCSource},
      {1, "&Document", "mnuDocument", Screen::Document},
      {1, "&About", "mnuAbout", Screen::About},
  };
  return table;
}

const std::vector<ScreenEntry>& ScreenTable() {
  static const std::vector<ScreenEntry> table = {
      {Screen::None},
      {Screen::WalkTest, New<frmT3WalkTest>},
      {Screen::Setup, New<frmT3Setup>},
      {Screen::Connect, New<frmT3Connect>},
      {Screen::RelayStatus, NewRow<OutputStatusForm>},
      {Screen::RelayGroupStatus, NewRow<OutputStatusForm>},
      {Screen::RelayOutputOptions, New<frmT3RelayOutputOptions>},
      {Screen::RelayGrouping, NewRow<CellGridForm>},
      {Screen::InputStatus, New<frmT3InputStatus>},
      {Screen::InputOptions, New<frmT3InputOptions>},
      {Screen::InputToRelayControl, NewRow<InputControlForm>},
      {Screen::InputToGroupControl, NewRow<InputControlForm>},
      {Screen::FennlinkStatus, New<frmT3FennlinkStatus>},
      {Screen::ConfigureFennlinkDevices, New<frmT3ConfigureFennlinkDevices>},
      {Screen::FennlinkInputToRelayControl, NewRow<FennlinkControlForm>},
      {Screen::FennlinkInputToGroupControl, NewRow<FennlinkControlForm>},
      {Screen::LocalInputPilots, New<frmT3LocalInputPilots>},
      {Screen::FennlinkPilots, New<frmT3FennlinkPilots>},
      {Screen::TimersConfigure, New<frmT3TimersConfigure>},
      {Screen::TimerToRelayControl, NewRow<TimerControlForm>},
      {Screen::TimerToGroupControl, NewRow<TimerControlForm>},
      {Screen::TimerToPresetControl, NewRow<TimerControlForm>},
      {Screen::BlinkAlertAndAlarmSettings, New<frmT3BlinkAlertAndAlarmSettings>},
      {Screen::ConfigureTimedOn, NewRow<OptionForm>},
      {Screen::ForceTimers, New<frmT3ForceTimers>},
      {Screen::DaylightSavingTime, New<frmT3DaylightSavingTime>},
      {Screen::AstroClockSettings, New<frmT3AstroClockSettings>},
      {Screen::OpenAndCloseTimeNormalDays, NewRow<TimePairForm>},
      {Screen::OpenAndCloseTimeSingleDates, NewRow<TimePairForm>},
      {Screen::OffHoursSweepInterval, NewRow<OptionForm>},
      {Screen::OffHoursSweepRelays, NewRow<CellGridForm>},
      {Screen::OffHoursSweepGroups, NewRow<CellGridForm>},
      {Screen::InputActiveTimes, NewRow<TimePairForm>},
      {Screen::EditPresets, NewRow<CellGridForm>},
      {Screen::CapturePresets, New<frmT3CapturePresets>},
      {Screen::AddOnModuleNone, NewRow<AddOnModuleForm>},
      {Screen::AddOnModuleDMX, New<frmT3AddOnModuleDMX>},
      {Screen::AddOnModuleModBus, New<frmT3AddOnModuleModBus>},
      {Screen::AddOnModuleN2, NewRow<AddOnModuleForm>},
      {Screen::AddOnModuleVoiceDTMF, NewRow<AddOnModuleForm>},
      {Screen::AddOnModuleBACnet, NewRow<AddOnModuleForm>},
      {Screen::EditPanelName, New<frmT3EditPanelName>},
      {Screen::EditRelayNames, NewRow<NamesForm>},
      {Screen::EditGroupNames, NewRow<NamesForm>},
      {Screen::EditInputNames, NewRow<NamesForm>},
      {Screen::EditTimerNames, NewRow<NamesForm>},
      {Screen::EditPresetNames, NewRow<NamesForm>},
      {Screen::EditFennlinkNames, NewRow<NamesForm>},
      {Screen::PhotocellFilter, NewRow<OptionForm>},
      {Screen::RelayDrive, NewRow<OptionForm>},
      {Screen::RTCSource, NewRow<OptionForm>},
      {Screen::Document, New<frmT3Document>},
      {Screen::About, New<frmT3About>},
      {Screen::VirtualKeypad, New<frmT3VirtualKeypad>},
      {Screen::SystemDiagnostic, New<frmT3SystemDiagnostic>},
      {Screen::DimmerOutput, New<frmT3DimmerOutput>},
      {Screen::DimmerRelayControl, New<frmT3DimmerRelayControl>},
      {Screen::AllTimers, New<frmT3AllTimers>},
      {Screen::AllDates, New<frmT3AllDates>},
      {Screen::DimCopyCnf},
      {Screen::DimCopyCnt},
  };
  return table;
}

ProgramScreens AllScreens() {
  AttachLine();
  ErrorsOfProject = [] { return FindingsList::OfProgram().Counts().Errors; };
  ListWorkSteps = WorkStepsOfProgram;
  const auto countFindings = [] {
    const auto& counts = FindingsList::OfProgram().Counts();
    return CountOf(counts.Errors, Severity::Error) + QStringLiteral(", ") +
           CountOf(counts.Warnings, Severity::Warning);
  };
  const auto compareWithFile = [](const QString& name) {
    FindingsList::OfProgram().SetNames(true);
    FindingsList::OfProgram().CompareWithFile(name);
    UnloadAllForms();
    ShowForm(Screen::Document);
  };
  const auto listTimers = [] {
    UnloadAllForms();
    ShowForm(Screen::AllTimers);
  };
  return {.Menu = MenuTable(),
          .Screens = ScreenTable(),
          .CompareWithFile = compareWithFile,
          .CountFindings = countFindings,
          .ListFindings = ListFindings,
          .Find = [] { FindDialog(MainWindow()).exec(); },
          .ListTimers = listTimers,
          .StepFinding = [](int step) { FindingsList::OfProgram().Step(step); }};
}

#pragma once

#include <array>
#include <string_view>

/// The screens of the program, in the order in which they are unloaded.
enum class Screen {
  None,      ///< No screen: what nobody edits, a menu entry that acts.
  WalkTest,  ///< Before Connect: it puts a relay back while the panel can be reached.
  Setup,
  Connect,
  RelayStatus,
  RelayGroupStatus,
  RelayOutputOptions,
  RelayGrouping,
  InputStatus,
  InputOptions,
  InputToRelayControl,
  InputToGroupControl,
  FennlinkStatus,
  ConfigureFennlinkDevices,
  FennlinkInputToRelayControl,
  FennlinkInputToGroupControl,
  LocalInputPilots,
  FennlinkPilots,
  TimersConfigure,
  TimerToRelayControl,
  TimerToGroupControl,
  TimerToPresetControl,
  BlinkAlertAndAlarmSettings,
  ConfigureTimedOn,
  ForceTimers,
  DaylightSavingTime,
  AstroClockSettings,
  OpenAndCloseTimeNormalDays,
  OpenAndCloseTimeSingleDates,
  OffHoursSweepInterval,
  OffHoursSweepRelays,
  OffHoursSweepGroups,
  InputActiveTimes,
  EditPresets,
  CapturePresets,
  AddOnModuleNone,
  AddOnModuleDMX,
  AddOnModuleModBus,
  AddOnModuleN2,
  AddOnModuleVoiceDTMF,
  AddOnModuleBACnet,
  EditPanelName,
  EditRelayNames,
  EditGroupNames,
  EditInputNames,
  EditTimerNames,
  EditPresetNames,
  EditFennlinkNames,
  PhotocellFilter,
  RelayDrive,
  RTCSource,
  Document,
  About,
  VirtualKeypad,
  SystemDiagnostic,
  DimmerOutput,
  DimmerRelayControl,
  AllTimers,
  AllDates,
  DimCopyCnf,
  DimCopyCnt,
};

constexpr int ScreenCount = static_cast<int>(Screen::DimCopyCnt) + 1;

struct NamedScreen {
  Screen Which;
  const char* Name;
};

/// The names of the screens, by which controls, tests and the guide know them.
inline constexpr auto ScreenNames = std::to_array<NamedScreen>({
    {Screen::None, ""},
    {Screen::WalkTest, "frmT3WalkTest"},
    {Screen::Setup, "frmT3Setup"},
    {Screen::Connect, "frmT3Connect"},
    {Screen::RelayStatus, "frmT3RelayStatus"},
    {Screen::RelayGroupStatus, "frmT3RelayGroupStatus"},
    {Screen::RelayOutputOptions, "frmT3RelayOutputOptions"},
    {Screen::RelayGrouping, "frmT3RelayGrouping"},
    {Screen::InputStatus, "frmT3InputStatus"},
    {Screen::InputOptions, "frmT3InputOptions"},
    {Screen::InputToRelayControl, "frmT3InputToRelayControl"},
    {Screen::InputToGroupControl, "frmT3InputToGroupControl"},
    {Screen::FennlinkStatus, "frmT3FennlinkStatus"},
    {Screen::ConfigureFennlinkDevices, "frmT3ConfigureFennlinkDevices"},
    {Screen::FennlinkInputToRelayControl, "frmT3FennlinkInputToRelayControl"},
    {Screen::FennlinkInputToGroupControl, "frmT3FennlinkInputToGroupControl"},
    {Screen::LocalInputPilots, "frmT3LocalInputPilots"},
    {Screen::FennlinkPilots, "frmT3FennlinkPilots"},
    {Screen::TimersConfigure, "frmT3TimersConfigure"},
    {Screen::TimerToRelayControl, "frmT3TimerToRelayControl"},
    {Screen::TimerToGroupControl, "frmT3TimerToGroupControl"},
    {Screen::TimerToPresetControl, "frmT3TimerToPresetControl"},
    {Screen::BlinkAlertAndAlarmSettings, "frmT3BlinkAlertAndAlarmSettings"},
    {Screen::ConfigureTimedOn, "frmT3ConfigureTimedOn"},
    {Screen::ForceTimers, "frmT3ForceTimers"},
    {Screen::DaylightSavingTime, "frmT3DaylightSavingTime"},
    {Screen::AstroClockSettings, "frmT3AstroClockSettings"},
    {Screen::OpenAndCloseTimeNormalDays, "frmT3OpenAndCloseTimeNormalDays"},
    {Screen::OpenAndCloseTimeSingleDates, "frmT3OpenAndCloseTimeSingleDates"},
    {Screen::OffHoursSweepInterval, "frmT3OffHoursSweepInterval"},
    {Screen::OffHoursSweepRelays, "frmT3OffHoursSweepRelays"},
    {Screen::OffHoursSweepGroups, "frmT3OffHoursSweepGroups"},
    {Screen::InputActiveTimes, "frmT3InputActiveTimes"},
    {Screen::EditPresets, "frmT3EditPresets"},
    {Screen::CapturePresets, "frmT3CapturePresets"},
    {Screen::AddOnModuleNone, "frmT3AddOnModuleNone"},
    {Screen::AddOnModuleDMX, "frmT3AddOnModuleDMX"},
    {Screen::AddOnModuleModBus, "frmT3AddOnModuleModBus"},
    {Screen::AddOnModuleN2, "frmT3AddOnModuleN2"},
    {Screen::AddOnModuleVoiceDTMF, "frmT3AddOnModuleVoiceDTMF"},
    {Screen::AddOnModuleBACnet, "frmT3AddOnModuleBACnet"},
    {Screen::EditPanelName, "frmT3EditPanelName"},
    {Screen::EditRelayNames, "frmT3EditRelayNames"},
    {Screen::EditGroupNames, "frmT3EditGroupNames"},
    {Screen::EditInputNames, "frmT3EditInputNames"},
    {Screen::EditTimerNames, "frmT3EditTimerNames"},
    {Screen::EditPresetNames, "frmT3EditPresetNames"},
    {Screen::EditFennlinkNames, "frmT3EditFennlinkNames"},
    {Screen::PhotocellFilter, "frmT3PhotocellFilter"},
    {Screen::RelayDrive, "frmT3RelayDrive"},
    {Screen::RTCSource, "frmT3RTCSource"},
    {Screen::Document, "frmT3Document"},
    {Screen::About, "frmT3About"},
    {Screen::VirtualKeypad, "frmT3VirtualKeypad"},
    {Screen::SystemDiagnostic, "frmT3SystemDiagnostic"},
    {Screen::DimmerOutput, "frmT3DimmerOutput"},
    {Screen::DimmerRelayControl, "frmT3DimmerRelayControl"},
    {Screen::AllTimers, "frmT3AllTimers"},
    {Screen::AllDates, "frmT3AllDates"},
    {Screen::DimCopyCnf, "frmT3DimCopyCnf"},
    {Screen::DimCopyCnt, "frmT3DimCopyCnt"},
});
static_assert(ScreenNames.size() == ScreenCount && [] {
  for (std::size_t i = 0; i < ScreenNames.size(); ++i) {
    if (ScreenNames[i].Which != static_cast<Screen>(i)) return false;
  }
  return true;
}());

constexpr const char* ScreenName(Screen screen) {
  return ScreenNames[static_cast<std::size_t>(screen)].Name;
}

/// The screen of that name; None for another name.
constexpr Screen ScreenNamed(std::string_view name) {
  for (int i = 1; i < ScreenCount; ++i) {
    if (name == ScreenName(static_cast<Screen>(i))) return static_cast<Screen>(i);
  }
  return Screen::None;
}

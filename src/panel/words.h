#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "panel/screens.h"

// The words of stored codes, once for the editors and the text document. The index in a table is
// the stored code where the table does not say otherwise.

using WordTable = std::span<const std::string_view>;

/// The word of a code; empty for a code without one.
constexpr std::string_view Word(WordTable table, int code) {
  return code >= 0 && static_cast<std::size_t>(code) < table.size()
             ? table[static_cast<std::size_t>(code)]
             : std::string_view();
}

inline constexpr auto RelayTimerTypes = std::to_array<std::string_view>(
    {"No Blink", "Blink", "HID Delay", "Alarm Off", "Alarm On", "Pulsed Off", "Pulsed On"});

/// Whether a relay of such a type goes back by itself after an off: Alarm Off and Pulsed Off.
constexpr bool OffIsForAWhile(int type) {
  return type == 3 || type == 5;
}
/// The same after an on: Alarm On and Pulsed On.
constexpr bool OnIsForAWhile(int type) {
  return type == 4 || type == 6;
}

inline constexpr auto RelayPowerOnTypes =
    std::to_array<std::string_view>({"Off", "On", "On/In:1", "Last State"});

inline constexpr auto InputTypes = std::to_array<std::string_view>(
    {"Momentary On/Off", "Momentary PB", "Maint. On/Off", "Maint. Multi-Way", "Set Preset",
     "Timed On", "HID Bi-Level", "2 Step", "4 Step", "Input Disable", "Timer Disable",
     "Output Override", "Force Timer"});

/// What a preset does to a relay.
inline constexpr auto PresetRelayCodes = std::to_array<std::string_view>({"-", "On", "Off"});

inline constexpr auto FennlinkPilotSources =
    std::to_array<std::string_view>({"Static", "On If Relay", "On If Group", "On If Preset"});

/// Local pilots have no static source and count from "On If Relay".
inline constexpr WordTable LocalPilotSources = WordTable(FennlinkPilotSources).subspan(1);

/// What a pilot source follows: "Relay" of "On If Relay"; "Static" stays.
constexpr std::string_view PilotTarget(std::string_view source) {
  constexpr std::string_view condition = "On If ";
  return source.starts_with(condition) ? source.substr(condition.size()) : source;
}

inline constexpr auto TimeZones =
    std::to_array<std::string_view>({"Eastern", "Central", "Mountain", "Pacific", "Alaska"});

/// Sundays of a month; the stored code is index + 1. The last one is the month's last Sunday, be it
/// the fourth or the fifth.
inline constexpr auto DSTWeeks =
    std::to_array<std::string_view>({"1st", "2nd", "3rd", "4th", "Last"});

/// The text of the editor's list, such as "1st Sunday".
inline std::string DSTWeekListText(std::string_view week) {
  return std::string(week) + " Sunday";
}

inline constexpr auto MonthNames =
    std::to_array<std::string_view>({"January", "February", "March", "April", "May", "June", "July",
                                     "August", "September", "October", "November", "December"});

inline constexpr auto WeekdayNames = std::to_array<std::string_view>(
    {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});

/// "Jan" of "January", "Sun" of "Sunday".
constexpr std::string_view ShortName(std::string_view monthOrDay) {
  return monthOrDay.substr(0, 3);
}

struct AddOnModule {
  std::string_view OptionText;
  std::string_view DocumentWord;   ///< Empty: the document leaves the module out.
  std::string_view EditorCaption;  ///< Empty: the module has no editor.
  std::string_view EditorText;     ///< All that the editor of a module without settings says.
  Screen On = Screen::None;        ///< The editor.
};

inline constexpr std::string_view NoConfiguration = "No Configuration Required";

/// By AddOnModuleType.
inline constexpr auto AddOnModules = std::to_array<AddOnModule>({
    {"None", "None", "Add On Module", "No Add On Module Installed", Screen::AddOnModuleNone},
    {"DMX Interface Module", "DMX", "Add On Module DMX", "", Screen::AddOnModuleDMX},
    {"MODBUS Interface Module", "MODBus", "Add On Module ModBus", "", Screen::AddOnModuleModBus},
    {"N2 Interface Module", "N2", "Add On Module N2", NoConfiguration, Screen::AddOnModuleN2},
    {"Voice / DTMF Module", "Voice DTMF", "Add On Module Voice DTMF", NoConfiguration,
     Screen::AddOnModuleVoiceDTMF},
    {"BACnet Interface Module", "BACnet", "Add On Module BACnet", NoConfiguration,
     Screen::AddOnModuleBACnet},
    {"Modem / Tamberloom", "", "", "", Screen::None},
});

/// The row of a type; one of empty texts for a code outside the table.
constexpr AddOnModule AddOnModuleOf(int type) {
  const bool known = type >= 0 && static_cast<std::size_t>(type) < AddOnModules.size();
  return known ? AddOnModules[static_cast<std::size_t>(type)] : AddOnModule();
}

constexpr int AddOnModuleDMX = 1;
constexpr int AddOnModuleModBus = 2;

inline constexpr auto ConnectionTypes = std::to_array<std::string_view>({"USB", "Modem", "TCP-IP"});

inline constexpr auto ModBusModes = std::to_array<std::string_view>({"ASCII", "RTU"});
inline constexpr auto ModBusBauds =
    std::to_array<std::string_view>({"38400", "19200", "9600", "4800"});
inline constexpr auto ModBusParities = std::to_array<std::string_view>({"None", "Odd", "Even"});

inline constexpr auto OffHoursSweepIntervals =
    std::to_array<std::string_view>({"1 Hour Interval", "2 Hour Interval", "3 Hour Interval"});

/// Index 0 for a stored 0, index 1 for any other value.
inline constexpr auto PhotocellFilters =
    std::to_array<std::string_view>({"30 Second Average", "2 Second Average"});

/// "30" of "30 Second Average".
constexpr std::string_view FirstWord(std::string_view text) {
  return text.substr(0, text.find(' '));
}

inline constexpr auto RTCSources =
    std::to_array<std::string_view>({"60 Hz AC Line", "Internal Crystal"});

inline constexpr auto RelayDrives = std::to_array<std::string_view>(
    {"17 mS Sweep", "50 mS Sweep", "17 mS Instant", "50 mS Instant"});

inline constexpr std::string_view TimedOnOperationLead = "Timed-On Timers Begin When Input";

/// Index 0 for a stored 0, index 1 for any other value.
inline constexpr auto TimedOnOperations = std::to_array<std::string_view>({"Opens", "Closes"});

#pragma once

#include <tuple>

#include "panel/field_facts.h"

// The table of fields: all that is known of each field of a project, a row a field, in the order of
// the file. File, panel image, defaults, comparison, check and editors walk it; nothing of a field
// is told a second time.

template <typename Owner, typename Type>
struct Field {
  Type Owner::*Member;
  FieldFacts Facts;
};
template <typename Owner, typename Type>
Field(Type Owner::*, FieldFacts) -> Field<Owner, Type>;

namespace fields {

inline constexpr Axis One{Axis::Of::Nothing, 1};
inline constexpr Axis Relays{Axis::Of::Relay, ItemCount};
inline constexpr Axis Groups{Axis::Of::Group, ItemCount};
inline constexpr Axis Inputs{Axis::Of::Input, ItemCount};
inline constexpr Axis Timers{Axis::Of::Timer, ItemCount};
inline constexpr Axis Presets{Axis::Of::Preset, ItemCount};
inline constexpr Axis Months{Axis::Of::Month, 12};
inline constexpr Axis Dates{Axis::Of::Date, 31};
inline constexpr Axis Weekdays{Axis::Of::Weekday, 7};
inline constexpr Axis Nodes{Axis::Of::Node, NodeCount};
inline constexpr Axis DeviceInputs{Axis::Of::DeviceInput, DeviceInputCount};
inline constexpr Axis ReservedBytes{Axis::Of::Byte, 24};

inline constexpr SpareUse PhoneNumber{"phone number", "Connection", AsText(),
                                      EditedBy(Screen::Connect, "txtPhoneNumber")};
inline constexpr SpareUse TcpAddress{"TCP/IP address", "Connection", AsText(),
                                     EditedBy(Screen::Connect, "txtTCPIP")};
inline constexpr SpareUse ConnectionType{"connection type", "Connection",
                                         FromList<ConnectionTypes>(),
                                         EditedBy(Screen::Connect, "chkConnectionType")};

using P = PanelRecordType;
using D = FennlinkRecord;
using enum Screen;

// clang-format off
inline constexpr auto OfPanel = std::tuple(
    Field{&P::PanelName, {"PanelName", "Names", "name", One, One, AsPanelName(0x1F65), AsText(), StartsAs(0), EditedBy(EditPanelName, "txtPanelName")}},
    Field{&P::InputRelayControl, {"InputRelayControl", "Inputs", "%1", Inputs, Relays, AsPlanes(0x0000, 3), FromActions(told::RelayAction, told::LocalRows), StartsAs(0), EditedBy(InputToRelayControl, "lblControl")}},
    Field{&P::InputGroupControl, {"InputGroupControl", "Inputs", "%1", Inputs, Groups, AsPlanes(0x0360, 3), FromActions(told::GroupAction), StartsAs(0), EditedBy(InputToGroupControl, "lblControl")}},
    Field{&P::InputPreset, {"InputPreset", "Inputs", "preset", Inputs, One, AsByte(0x06C0), FromSome(told::PresetCode, told::IsPresetOfInput), StartsAs(0), EditedBy(InputToRelayControl, "cboPreset")}},
    Field{&P::RelayTimerType, {"RelayTimerType", "Relays", "timer type", Relays, One, AsByte(0x06F0), FromList<RelayTimerTypes>(), StartsAs(0), EditedBy(RelayOutputOptions, "lblTimerType")}},
    Field{&P::RelayPowerOnType, {"RelayPowerOnType", "Relays", "power-on type", Relays, One, AsByte(0x0720), FromList<RelayPowerOnTypes>(), StartsAs(0), EditedBy(RelayOutputOptions, "lblPowerOnType")}},
    Field{&P::InputType, {"InputType", "Inputs", "type", Inputs, One, AsByte(0x0750), FromList<InputTypes>(), StartsAs(0), EditedBy(InputOptions, "lblInputType")}},
    Field{&P::InputEnableTime, {"InputEnableTime", "Inputs", "enable time", Inputs, One, AsByte(0x1EF0), FromSome(told::Quarters, told::IsQuarter), StartsAs(0), EditedBy(InputActiveTimes, "lblInputEnableTime")}},
    Field{&P::InputDisableTime, {"InputDisableTime", "Inputs", "disable time", Inputs, One, AsByte(0x1F20), FromSome(told::Quarters, told::IsQuarter), StartsAs(0), EditedBy(InputActiveTimes, "lblInputDisableTime")}},
    Field{&P::InputTimedOnTime, {"InputTimedOnTime", "Inputs", "timed-on time", Inputs, One, AsWord(0x0780), FromSome(told::Minutes, told::IsTimedOn), StartsAs(10), EditedBy(InputOptions, "lblInputTimedOn")}},
    Field{&P::GroupRelayInclude, {"GroupRelayInclude", "Groups", "%1", Groups, Relays, AsBits(0x07E0), Words{told::YesOrNo}, StartsAs(0), EditedBy(RelayGrouping, "lblInclude")}},
    Field{&P::LocalPilot, {"LocalPilot", "Pilots", "pilot", Inputs, One, AsByte(0x0900), Words{told::LocalPilot}, StartsAsItsIndex(), EditedBy(LocalInputPilots, "lblPilotSource")}},
    Field{&P::TimerRelayControl, {"TimerRelayControl", "Timers", "%1", Timers, Relays, AsPlanes(0x0930, 2), FromList<PresetRelayCodes>(), StartsAs(0), EditedBy(TimerToRelayControl, "lblControl")}},
    Field{&P::TimerGroupControl, {"TimerGroupControl", "Timers", "%1", Timers, Groups, AsPlanes(0x0B70, 2), FromList<PresetRelayCodes>(), StartsAs(0), EditedBy(TimerToGroupControl, "lblControl")}},
    Field{&P::TimerPresetControl, {"TimerPresetControl", "Timers", "%1", Timers, Presets, AsPlanes(0x0DB0, 1), Words{told::YesOrNo}, StartsAs(0), EditedBy(TimerToPresetControl, "lblControl")}},
    Field{&P::PresetRelayControl, {"PresetRelayControl", "Presets", "%1", Presets, Relays, AsPlanes(0x0ED0, 2), FromList<PresetRelayCodes>(), StartsAs(0), EditedBy(EditPresets, "lblRelayControl")}},
    Field{&P::NormalOpenTime, {"NormalOpenTime", "Panel", "open time of %1", Weekdays, One, AsByte(0x1110), FromSome(told::Quarters, told::IsQuarter), StartsAs(32), EditedBy(OpenAndCloseTimeNormalDays, "lblOpenTime")}},
    Field{&P::NormalCloseTime, {"NormalCloseTime", "Panel", "close time of %1", Weekdays, One, AsByte(0x1117), FromSome(told::Quarters, told::IsQuarter), StartsAs(84), EditedBy(OpenAndCloseTimeNormalDays, "lblCloseTime")}},
    Field{&P::DateOpenTime, {"DateOpenTime", "Panel", "open time of %1", Months, Dates, AsByte(0x111E), FromSome(told::Quarters, told::IsQuarterOrNone), StartsEverywhereAs(NoEntry), EditedBy(OpenAndCloseTimeSingleDates, "lblOpenTime")}},
    Field{&P::DateCloseTime, {"DateCloseTime", "Panel", "close time of %1", Months, Dates, AsByte(0x1292), FromSome(told::Quarters, told::IsQuarterOrNone), StartsEverywhereAs(NoEntry), EditedBy(OpenAndCloseTimeSingleDates, "lblCloseTime")}},
    Field{&P::RelayName, {"RelayName", "Names", "name", Relays, One, AsName(0x1420), AsText(), StartsAsItemName(), EditedBy(EditRelayNames, "txtRelayName")}},
    Field{&P::GroupName, {"GroupName", "Names", "name", Groups, One, AsName(0x1600), AsText(), StartsAsItemName(), EditedBy(EditGroupNames, "txtGroupName")}},
    Field{&P::InputName, {"InputName", "Names", "name", Inputs, One, AsName(0x17E0), AsText(), StartsAsItemName(), EditedBy(EditInputNames, "txtInputName")}},
    Field{&P::TimerName, {"TimerName", "Names", "name", Timers, One, AsName(0x19C0), AsText(), StartsAsItemName(), EditedBy(EditTimerNames, "txtTimerName"), &PhoneNumber}},
    Field{&P::PresetName, {"PresetName", "Names", "name", Presets, One, AsName(0x1BA0), AsText(), StartsAsItemName(), EditedBy(EditPresetNames, "txtPresetName"), &TcpAddress}},
    Field{&P::TimerTimeType, {"TimerTimeType", "Timers", "kind of time", Timers, One, AsByte(0x1E00), FromSome(told::TimerRuns, told::IsKindOfTime), StartsAs(0), EditedBy(TimersConfigure, "cboNormalTimeHour|cboAstroType|cboOpenCloseType"), &ConnectionType}},
    Field{&P::TimerTime, {"TimerTime", "Timers", "time", Timers, One, AsByte(0x1E30), FromSome(told::TimerRuns, told::IsTimeOfTimer), StartsAs(0), EditedBy(TimersConfigure, "cboNormalTimeMinute|cboMinuteFromAstro|cboMinuteFromOpenClose")}},
    Field{&P::TimerDays, {"TimerDays", "Timers", "days", Timers, One, AsByte(0x1E60), FromSome(told::TimerRuns, told::IsWithin<ByteRange>), StartsAs(0), EditedBy(TimersConfigure, "chkDays")}},
    Field{&P::TimerHolidayMonth, {"TimerHolidayMonth", "Timers", "month", Timers, One, AsByte(0x1E90), FromSome(told::TimerRuns, told::IsTimerMonth), StartsAs(0), EditedBy(TimersConfigure, "cboHolidayMonth")}},
    Field{&P::TimerHolidayDate, {"TimerHolidayDate", "Timers", "date", Timers, One, AsByte(0x1EC0), FromSome(told::TimerRuns, told::IsTimerDate), StartsAs(1), EditedBy(TimersConfigure, "cboHolidayDate")}},
    Field{&P::BlinkAlertMinutes, {"BlinkAlertMinutes", "Panel", "blink alert time", One, One, AsByte(0x1F50), FromSome(told::Minutes, told::IsWithin<BlinkAlertRange>), StartsAs(10), EditedBy(BlinkAlertAndAlarmSettings, "cboBlinkAlert")}},
    Field{&P::OverrideMinutes, {"OverrideMinutes", "Panel", "override time", One, One, AsWord(0x1F51), FromSome(told::Minutes, told::IsWithin<OverrideRange>), StartsAs(120), EditedBy(BlinkAlertAndAlarmSettings, "cboOverRide")}},
    Field{&P::AlarmSeconds, {"AlarmSeconds", "Panel", "alarm time", One, One, AsByte(0x1F53), FromSome(told::Seconds, told::IsWithin<AlarmRange>), StartsAs(5), EditedBy(BlinkAlertAndAlarmSettings, "cboAlarm")}},
    Field{&P::TimedOnOperation, {"TimedOnOperation", "Panel", "timed-on operation", One, One, AsFlag(0x1F79), FromFlags<TimedOnOperations>(), StartsAs(0), EditedBy(ConfigureTimedOn, "optTimedOnOperation")}},
    Field{&P::OffHoursSweepInterval, {"OffHoursSweepInterval", "Sweeps", "interval", One, One, AsByte(0x1F54), FromList<OffHoursSweepIntervals>(), StartsAs(0), EditedBy(Screen::OffHoursSweepInterval, "optOffHoursSweepInterval")}},
    Field{&P::OffHoursSweepRelay, {"OffHoursSweepRelay", "Sweeps", "swept", Relays, One, AsBits(0x1F55), Words{told::YesOrNo}, StartsAs(0), EditedBy(OffHoursSweepRelays, "lblRelayInclude")}},
    Field{&P::OffHoursSweepGroup, {"OffHoursSweepGroup", "Sweeps", "swept", Groups, One, AsBits(0x1F5B), Words{told::YesOrNo}, StartsAs(0), EditedBy(OffHoursSweepGroups, "lblGroupInclude")}},
    Field{&P::DSTEnabled, {"DSTEnabled", "Panel", "daylight saving", One, One, AsFlag(0x1F61), Words{told::YesOrNo}, StartsAs(-1), EditedBy(DaylightSavingTime, "chkEnableDaylightSavingTime")}},
    Field{&P::DSTStartWeek, {"DSTStartWeek", "Panel", "first Sunday of daylight saving", One, One, AsByte(0x1FFC), FromSome(told::Week, told::IsWeek), StartsAs(2), EditedBy(DaylightSavingTime, "cboDSTStartWeek")}},
    Field{&P::DSTStartMonth, {"DSTStartMonth", "Panel", "first month of daylight saving", One, One, AsByte(0x1FFD), FromSome(told::Month, told::IsMonth), StartsAs(3), EditedBy(DaylightSavingTime, "cboDSTStartMonth")}},
    Field{&P::DSTEndWeek, {"DSTEndWeek", "Panel", "last Sunday of daylight saving", One, One, AsByte(0x1FFE), FromSome(told::Week, told::IsWeek), StartsAs(1), EditedBy(DaylightSavingTime, "cboDSTEndWeek")}},
    Field{&P::DSTEndMonth, {"DSTEndMonth", "Panel", "last month of daylight saving", One, One, AsByte(0x1FFF), FromSome(told::Month, told::IsMonth), StartsAs(11), EditedBy(DaylightSavingTime, "cboDSTEndMonth")}},
    Field{&P::Latitude, {"Latitude", "Panel", "latitude", One, One, AsByte(0x1F62), FromSome(told::DegreesNorth, told::IsLatitude), StartsAs(45), EditedBy(AstroClockSettings, "cboLatitude")}},
    Field{&P::Longitude, {"Longitude", "Panel", "longitude", One, One, AsByte(0x1F63), FromSome(told::DegreesWest, told::IsLongitude), StartsAs(90), EditedBy(AstroClockSettings, "cboLongitude")}},
    Field{&P::TimeZone, {"TimeZone", "Panel", "time zone", One, One, AsByte(0x1F64), FromList<TimeZones>(), StartsAs(1), EditedBy(AstroClockSettings, "cboTimeZone")}},
    Field{&P::RTCSource, {"RTCSource", "Panel", "clock source", One, One, AsByte(0x1F77), FromList<RTCSources>(), StartsAs(0), EditedBy(Screen::RTCSource, "optRTCSource")}},
    Field{&P::PhotocellFilter, {"PhotocellFilter", "Panel", "photocell filter", One, One, AsFlag(0x1F78), FromFlags<PhotocellFilters>(), StartsAs(0), EditedBy(Screen::PhotocellFilter, "optPhotocellFilter")}},
    Field{&P::AddOnModuleType, {"AddOnModuleType", "Panel", "add-on module", One, One, NotSent("the panel finds its module itself"), FromSome(told::AddOnModule, told::IsAddOnModule), StartsAs(0), EditedBy(Setup, "optAddOnModuleType")}},
    Field{&P::IOCount, {"IOCount", "Panel", "I/O of node %1", Nodes, One, AsByte(0x1FF0), Words{told::Blocks}, FirstStartsAs(1), EditedBy(Setup, "lblIOCount")}},
    Field{&P::ComPort, {"ComPort", "Connection", "serial port", One, One, NotSent("of this computer"), FromSome(told::Port, told::IsWithin<ComPortRange>), StartsAs(1), EditedBy(Connect, "optComPort")}},
    Field{&P::DMXChannel, {"DMXChannel", "Add-on module", "DMX channel", Relays, One, AsWord(0x1F80), FromSome(told::DMXChannel, told::IsWithin<DMXChannelRange>), StartsAs(0), EditedBy(AddOnModuleDMX, "lblDMXChan")}},
    Field{&P::DMXOnLevel, {"DMXOnLevel", "Add-on module", "DMX on level", One, One, AsPercent(0x1FE0), FromSome(told::Percent, told::IsWithin<DMXLevelRange>), StartsAs(90), EditedBy(AddOnModuleDMX, "cboOnLevel")}},
    Field{&P::DMXOffLevel, {"DMXOffLevel", "Add-on module", "DMX off level", One, One, AsPercent(0x1FE1), FromSome(told::Percent, told::IsWithin<DMXLevelRange>), StartsAs(10), EditedBy(AddOnModuleDMX, "cboOffLevel")}},
    Field{&P::DMXFilter, {"DMXFilter", "Add-on module", "DMX filter", One, One, AsByte(0x1FE2), ByNumberFrom1(told::IsWithin<DMXFilterRange>), StartsAs(0), EditedBy(AddOnModuleDMX, "cboFilter")}},
    Field{&P::ModBusMode, {"ModBusMode", "Add-on module", "ModBus mode", One, One, AsPartOfByte(0x1FE3, 0, 1), FromList<ModBusModes>(), StartsAs(0), EditedBy(AddOnModuleModBus, "cboMode")}},
    Field{&P::ModBusBaud, {"ModBusBaud", "Add-on module", "ModBus baud rate", One, One, AsPartOfByte(0x1FE3, 1, 2), FromList<ModBusBauds>(), StartsAs(0), EditedBy(AddOnModuleModBus, "cboBaud")}},
    Field{&P::ModBusParity, {"ModBusParity", "Add-on module", "ModBus parity", One, One, AsPartOfByte(0x1FE3, 3, 2), FromList<ModBusParities>(), StartsAs(0), EditedBy(AddOnModuleModBus, "cboParity")}});

inline constexpr auto OfDevice = std::tuple(
    Field{&D::DeviceType, {"DeviceType", "Bus devices", "type", One, One, AsByte(DeviceBlock), FromSome(told::DeviceType, told::IsDeviceType), StartsAs(0), EditedBy(ConfigureFennlinkDevices, "cboFLinkType")}},
    Field{&D::DeviceName, {"DeviceName", "Names", "name", One, One, AsName(DeviceBlock + 0x01), AsText(), StartsAsDeviceName(), EditedBy(EditFennlinkNames, "txtFennlinkName")}},
    Field{&D::DeviceInputType, {"DeviceInputType", "Bus devices", "type", DeviceInputs, One, AsByte(DeviceBlock + 0x0B), FromSome(told::DeviceInputType, told::IsDeviceInputType), StartsAs(0), EditedBy(ConfigureFennlinkDevices, "cboInput16Type")}},
    Field{&D::DeviceTimedOnTime, {"DeviceTimedOnTime", "Bus devices", "timed-on time", DeviceInputs, One, AsWord(DeviceBlock + 0x13), FromSome(told::Minutes, told::IsDeviceTimedOn), StartsAs(10), EditedBy(ConfigureFennlinkDevices, "lblInput16TimedOn")}},
    Field{&D::DevicePilot, {"DevicePilot", "Pilots", "pilot", DeviceInputs, One, AsByte(DeviceBlock + 0x23), Words{told::DevicePilot}, StartsAs(0), EditedBy(FennlinkPilots, "lblPilotSource")}},
    Field{&D::DeviceOffLevel, {"DeviceOffLevel", "Bus devices", "off level", DeviceInputs, One, AsByte(DeviceBlock + 0x2B), FromSome(told::LevelOf255, told::IsWithin<ByteRange>), StartsAs(0), EditedBy(ConfigureFennlinkDevices, "hsInputFOffLevel")}},
    Field{&D::DeviceOnLevel, {"DeviceOnLevel", "Bus devices", "on level", DeviceInputs, One, AsByte(DeviceBlock + 0x33), FromSome(told::LevelOf255, told::IsWithin<ByteRange>), StartsAs(0), EditedBy(ConfigureFennlinkDevices, "hsInputFOnLevel")}},
    Field{&D::DeviceReserved, {"DeviceReserved", "Bus devices", "reserved byte %1", ReservedBytes, One, NotSent("it means nothing"), ByNumber(), Stays("it means nothing"), NotEdited("it means nothing")}},
    Field{&D::DeviceRelayControl, {"DeviceRelayControl", "Bus devices", "%1", DeviceInputs, Relays, AsPlanes(DeviceControlBlock, 3), FromActions(told::DeviceRelayAction, told::DeviceRows), StartsAs(0), EditedBy(FennlinkInputToRelayControl, "lblControl")}},
    Field{&D::DeviceGroupControl, {"DeviceGroupControl", "Bus devices", "%1", DeviceInputs, Groups, AsPlanes(DeviceControlBlock + 0x90, 3), FromActions(told::DeviceGroupAction), StartsAs(0), EditedBy(FennlinkInputToGroupControl, "lblControl")}},
    Field{&D::DevicePreset, {"DevicePreset", "Bus devices", "preset", DeviceInputs, One, AsByte(DeviceControlBlock + 0x120), FromSome(told::PresetCode, told::IsPresetOfDeviceInput), StartsAs(0), EditedBy(FennlinkInputToRelayControl, "cboPreset")}});
// clang-format on

}  // namespace fields

/// Calls `visit(field, owner.*member)` for each field of a panel record, in the order of the file.
template <typename Panel, typename Visit>
void ForEachPanelField(Panel& panel, Visit&& visit) {
  std::apply([&](const auto&... field) { (visit(field.Facts, panel.*field.Member), ...); },
             fields::OfPanel);
}

/// The same for the fields of a bus device.
template <typename Device, typename Visit>
void ForEachDeviceField(Device& device, Visit&& visit) {
  std::apply([&](const auto&... field) { (visit(field.Facts, device.*field.Member), ...); },
             fields::OfDevice);
}

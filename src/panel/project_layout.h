#pragma once

#include "panel/project_document.h"

// The fields of a project by name, in stored order. An archive is called with a name and a field;
// whatever walks the project walks it by this one table.

template <typename Archive, typename Panel>
void PanelLayout(Archive& archive, Panel& panel) {
  archive("PanelName", panel.PanelName);
  archive("InputRelayControl", panel.InputRelayControl);
  archive("InputGroupControl", panel.InputGroupControl);
  archive("InputPreset", panel.InputPreset);
  archive("RelayTimerType", panel.RelayTimerType);
  archive("RelayPowerOnType", panel.RelayPowerOnType);
  archive("InputType", panel.InputType);
  archive("InputEnableTime", panel.InputEnableTime);
  archive("InputDisableTime", panel.InputDisableTime);
  archive("InputTimedOnTime", panel.InputTimedOnTime);
  archive("GroupRelayInclude", panel.GroupRelayInclude);
  archive("LocalPilot", panel.LocalPilot);
  archive("TimerRelayControl", panel.TimerRelayControl);
  archive("TimerGroupControl", panel.TimerGroupControl);
  archive("TimerPresetControl", panel.TimerPresetControl);
  archive("PresetRelayControl", panel.PresetRelayControl);
  archive("NormalOpenTime", panel.NormalOpenTime);
  archive("NormalCloseTime", panel.NormalCloseTime);
  archive("DateOpenTime", panel.DateOpenTime);
  archive("DateCloseTime", panel.DateCloseTime);
  archive("RelayName", panel.RelayName);
  archive("GroupName", panel.GroupName);
  archive("InputName", panel.InputName);
  archive("TimerName", panel.TimerName);
  archive("PresetName", panel.PresetName);
  archive("TimerTimeType", panel.TimerTimeType);
  archive("TimerTime", panel.TimerTime);
  archive("TimerDays", panel.TimerDays);
  archive("TimerHolidayMonth", panel.TimerHolidayMonth);
  archive("TimerHolidayDate", panel.TimerHolidayDate);
  archive("BlinkAlertMinutes", panel.BlinkAlertMinutes);
  archive("OverrideMinutes", panel.OverrideMinutes);
  archive("AlarmSeconds", panel.AlarmSeconds);
  archive("TimedOnOperation", panel.TimedOnOperation);
  archive("OffHoursSweepInterval", panel.OffHoursSweepInterval);
  archive("OffHoursSweepRelay", panel.OffHoursSweepRelay);
  archive("OffHoursSweepGroup", panel.OffHoursSweepGroup);
  archive("DSTEnabled", panel.DSTEnabled);
  archive("DSTStartWeek", panel.DSTStartWeek);
  archive("DSTStartMonth", panel.DSTStartMonth);
  archive("DSTEndWeek", panel.DSTEndWeek);
  archive("DSTEndMonth", panel.DSTEndMonth);
  archive("Latitude", panel.Latitude);
  archive("Longitude", panel.Longitude);
  archive("TimeZone", panel.TimeZone);
  archive("RTCSource", panel.RTCSource);
  archive("PhotocellFilter", panel.PhotocellFilter);
  archive("AddOnModuleType", panel.AddOnModuleType);
  archive("IOCount", panel.IOCount);
  archive("ComPort", panel.ComPort);
  archive("DMXChannel", panel.DMXChannel);
  archive("DMXOnLevel", panel.DMXOnLevel);
  archive("DMXOffLevel", panel.DMXOffLevel);
  archive("DMXFilter", panel.DMXFilter);
  archive("ModBusMode", panel.ModBusMode);
  archive("ModBusBaud", panel.ModBusBaud);
  archive("ModBusParity", panel.ModBusParity);
}

template <typename Archive, typename Device>
void DeviceLayout(Archive& archive, Device& device) {
  archive("DeviceType", device.DeviceType);
  archive("DeviceName", device.DeviceName);
  archive("DeviceInputType", device.DeviceInputType);
  archive("DeviceTimedOnTime", device.DeviceTimedOnTime);
  archive("DevicePilot", device.DevicePilot);
  archive("DeviceOffLevel", device.DeviceOffLevel);
  archive("DeviceOnLevel", device.DeviceOnLevel);
  archive("DeviceReserved", device.DeviceReserved);
  archive("DeviceRelayControl", device.DeviceRelayControl);
  archive("DeviceGroupControl", device.DeviceGroupControl);
  archive("DevicePreset", device.DevicePreset);
}

template <typename Archive, typename Panel, typename Devices, typename Dimmers>
void ProjectLayout(Archive& archive, Panel& panel, Devices& devices, Dimmers& dimmers) {
  PanelLayout(archive, panel);
  for (auto& device : devices.elements) DeviceLayout(archive, device);
  archive("DimmerBlock", dimmers);
}

#pragma once

#include <limits>

#include "panel/live_project.h"

template <typename Value, typename... Arrays>
void FillEach(Value value, Arrays&... arrays) {
  (arrays.elements.fill(value), ...);
}

/// Fills the live document, spare elements and all, with one code, and with names of bytes that are
/// no text. `blocks`: the four-point I/O blocks of the first node.
inline void FillWithNonsense(Int16 code, Int16 blocks) {
  using Int32Limits = std::numeric_limits<Int32>;
  const Int32 minutes = code < 0 ? Int32Limits::min() : Int32Limits::max();
  const std::string name("\0\x81\xFF<b>&amp;", 10);
  auto& p = PanelRecord;
  FillEach(code, p.InputPreset, p.RelayTimerType, p.RelayPowerOnType, p.InputType,
           p.InputEnableTime, p.InputDisableTime, p.LocalPilot, p.TimerTimeType, p.TimerTime,
           p.TimerDays, p.TimerHolidayMonth, p.TimerHolidayDate, p.OffHoursSweepRelay,
           p.OffHoursSweepGroup, p.DMXChannel, p.InputRelayControl, p.InputGroupControl,
           p.GroupRelayInclude, p.TimerRelayControl, p.TimerGroupControl, p.TimerPresetControl,
           p.PresetRelayControl, p.NormalOpenTime, p.NormalCloseTime, p.DateOpenTime,
           p.DateCloseTime, p.IOCount, DimmerBlock);
  FillEach(name, p.RelayName, p.GroupName, p.InputName, p.TimerName, p.PresetName);
  FillEach(minutes, p.InputTimedOnTime);
  const auto set = [code](auto&... settings) { ((settings = code), ...); };
  set(p.BlinkAlertMinutes, p.OverrideMinutes, p.AlarmSeconds, p.TimedOnOperation,
      p.OffHoursSweepInterval, p.RTCSource, p.PhotocellFilter, p.DMXOnLevel, p.DMXOffLevel,
      p.DMXFilter, p.ModBusMode, p.ModBusBaud, p.ModBusParity, p.DSTEnabled, p.DSTStartWeek,
      p.DSTStartMonth, p.DSTEndWeek, p.DSTEndMonth, p.Latitude, p.Longitude, p.TimeZone,
      p.AddOnModuleType, p.ComPort);
  p.PanelName = std::string(30'000, '\x9D');
  for (int node = 0; node < NodeCount; ++node) p.IOCount(node) = node == 0 ? blocks : Int16{0};
  for (FennlinkRecord& d : FennlinkRecords.elements) {
    d.DeviceType = code;
    d.DeviceName = name;
    FillEach(minutes, d.DeviceTimedOnTime);
    FillEach(code, d.DeviceInputType, d.DevicePilot, d.DeviceOffLevel, d.DeviceOnLevel,
             d.DevicePreset, d.DeviceRelayControl, d.DeviceGroupControl);
  }
}

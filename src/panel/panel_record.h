#pragma once

#include <string>

#include "panel/fixed_array.h"

constexpr int ItemCount = 48;  ///< Relays, groups, inputs, timers and presets: 48 of each at most.
constexpr int SpareItem = 48;  ///< The last element of each item array; no item.
constexpr int NodeCount = 12;  ///< Nodes that carry four-point I/O blocks.
constexpr int ShortestTimedOn = 5;   ///< Minutes.
constexpr int LongestTimedOn = 999;  ///< Minutes.
constexpr Int16 NoEntry = 100;       ///< A date cell of this value has no open or close time.

/// The numbers that an editor's list has.
struct ListRange {
  int First;
  int Last;
};
inline constexpr ListRange BlinkAlertRange{2, 99};  ///< Minutes.
inline constexpr ListRange OverrideRange{5, 999};   ///< Minutes.
inline constexpr ListRange AlarmRange{1, 99};       ///< Seconds.
inline constexpr ListRange LatitudeRange{20, 65};
inline constexpr ListRange LongitudeRange{50, 150};
inline constexpr ListRange DMXChannelRange{0, 512};  ///< 0 is none.
inline constexpr ListRange DMXLevelRange{1, 99};     ///< Percent.
inline constexpr ListRange DMXFilterRange{0, 15};
inline constexpr ListRange ComPortRange{1, 16};
inline constexpr ListRange ByteRange{0, 255};

using ItemArray = FixedArray<Int16, 49>;
using ItemTable = FixedArray<Int16, 49, 49>;
using NameArray = FixedArray<std::string, 49>;
using DateTable = FixedArray<Int16, 13, 32>;  ///< (month, date), both counted from 0.

/// The configuration of one panel apart from its bus devices and dimmers, in stored order.
/// Items are elements 0 to 47. Flags are -1 when set. Names are Windows-1252 bytes.
struct PanelRecordType {
  std::string PanelName;
  ItemTable InputRelayControl;  ///< (input, relay): action code.
  ItemTable InputGroupControl;  ///< (input, group): action code.
  ItemArray InputPreset;        ///< Preset index of a Set Preset input.
  ItemArray RelayTimerType;
  ItemArray RelayPowerOnType;
  ItemArray InputType;
  ItemArray InputEnableTime;               ///< Quarter hours since midnight.
  ItemArray InputDisableTime;              ///< Quarter hours since midnight.
  FixedArray<Int32, 49> InputTimedOnTime;  ///< Minutes, 5 to 999.
  ItemTable GroupRelayInclude;             ///< (group, relay): non-zero when a member.
  ItemArray LocalPilot;                    ///< Kind * 64 + index.
  ItemTable TimerRelayControl;             ///< (timer, relay): 1 on, 2 off.
  ItemTable TimerGroupControl;             ///< (timer, group): 1 on, 2 off.
  ItemTable TimerPresetControl;            ///< (timer, preset): non-zero runs it.
  ItemTable PresetRelayControl;            ///< (preset, relay): 1 on, 2 off.
  FixedArray<Int16, 8> NormalOpenTime;     ///< Quarter hours, by weekday from Sunday.
  FixedArray<Int16, 8> NormalCloseTime;
  DateTable DateOpenTime;  ///< Quarter hours, or NoEntry.
  DateTable DateCloseTime;
  NameArray RelayName;
  NameArray GroupName;
  NameArray InputName;
  NameArray TimerName;      ///< Element 48 is the modem's phone number.
  NameArray PresetName;     ///< Element 48 is the panel's TCP/IP address.
  ItemArray TimerTimeType;  ///< Element 48 is the connection type.
  ItemArray TimerTime;
  ItemArray TimerDays;  ///< A set bit leaves the day out.
  ItemArray TimerHolidayMonth;
  ItemArray TimerHolidayDate;
  Int16 BlinkAlertMinutes = 0;
  Int16 OverrideMinutes = 0;
  Int16 AlarmSeconds = 0;
  Int16 TimedOnOperation = 0;
  Int16 OffHoursSweepInterval = 0;  ///< Hours less one.
  ItemArray OffHoursSweepRelay;
  ItemArray OffHoursSweepGroup;
  Int16 DSTEnabled = 0;
  Int16 DSTStartWeek = 0;
  Int16 DSTStartMonth = 0;
  Int16 DSTEndWeek = 0;
  Int16 DSTEndMonth = 0;
  Int16 Latitude = 0;   ///< Degrees north.
  Int16 Longitude = 0;  ///< Degrees west.
  Int16 TimeZone = 0;
  Int16 RTCSource = 0;
  Int16 PhotocellFilter = 0;
  Int16 AddOnModuleType = 0;
  FixedArray<Int16, 13> IOCount;  ///< Four-point blocks of each node; element 12 is spare.
  Int16 ComPort = 0;              ///< 1 to 16.
  ItemArray DMXChannel;           ///< 1 to 512, 0 is none.
  Int16 DMXOnLevel = 0;           ///< Percent.
  Int16 DMXOffLevel = 0;          ///< Percent.
  Int16 DMXFilter = 0;
  Int16 ModBusMode = 0;
  Int16 ModBusBaud = 0;
  Int16 ModBusParity = 0;

  bool operator==(const PanelRecordType&) const = default;
};

constexpr int PointsOfBlock = 4;  ///< Relays and inputs of an I/O block.

/// Installed I/O points, the bound of all lists of relays and inputs: at most 48, negative for some
/// damaged records.
/// Throws RunTimeFailure when a damaged record overflows the sum.
Int16 PanelIOCount(const PanelRecordType& panel);

/// The item of a timed-on time in a list of all times; -1 for a time shorter than the first.
constexpr int TimedOnIndex(Int32 minutes) {
  return minutes < ShortestTimedOn ? -1 : minutes - ShortestTimedOn;
}

/// The three spare elements that hold the communications settings.
/// What ConnectionType holds; a damaged code beyond these means TCP.
constexpr Int16 ConnectionUSB = 0;
constexpr Int16 ConnectionModem = 1;
constexpr Int16 ConnectionTCP = 2;

template <typename Panel>
auto& ConnectionType(Panel& panel) {
  return panel.TimerTimeType(SpareItem);
}
template <typename Panel>
auto& PhoneNumber(Panel& panel) {
  return panel.TimerName(SpareItem);
}
template <typename Panel>
auto& TcpAddress(Panel& panel) {
  return panel.PresetName(SpareItem);
}

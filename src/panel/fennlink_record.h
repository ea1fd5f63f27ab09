#pragma once

#include <string>

#include "panel/fixed_array.h"

constexpr int DeviceCount = 64;      ///< Bus addresses 1 to 64; record 0 is the null device.
constexpr int DeviceInputCount = 8;  ///< Inputs 0 to 7 of a device; element 8 is spare.

using DeviceInputArray = FixedArray<Int16, 9>;
using DeviceControlTable = FixedArray<Int16, 9, 49>;  ///< (input, row)

/// One device on the Fennlink bus, in stored order.
struct FennlinkRecord {
  Int16 DeviceType = 0;    ///< 0 to 9.
  std::string DeviceName;  ///< Windows-1252 bytes.
  DeviceInputArray DeviceInputType;
  FixedArray<Int32, 9> DeviceTimedOnTime;  ///< Minutes, 5 to 999.
  DeviceInputArray DevicePilot;            ///< Source * 64 + number.
  DeviceInputArray DeviceOffLevel;         ///< Photocell level, 0 to 255.
  DeviceInputArray DeviceOnLevel;          ///< Photocell level, 0 to 255.
  FixedArray<std::uint8_t, 24> DeviceReserved;
  DeviceControlTable DeviceRelayControl;
  DeviceControlTable DeviceGroupControl;
  DeviceInputArray DevicePreset;  ///< Preset index of a Set Preset input.

  bool operator==(const FennlinkRecord&) const = default;
};

using FennlinkRecordsType = FixedArray<FennlinkRecord, DeviceCount + 1>;

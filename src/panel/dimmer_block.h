#pragma once

#include <functional>

#include "panel/fixed_array.h"

constexpr int DimmerDeviceCount = 12;
constexpr int DimmerOutputCount = 4;  ///< Outputs of one device.
constexpr int ControlSlotCount = 16;  ///< Control slots of one output.
constexpr int ElementsOfOutput = 128;
constexpr int DeviceEnabledElement = 6144;  ///< One a device, behind all outputs.

/// All dimmer settings: 128 elements an output at device * 512 + output * 128, and one element a
/// device from 6144. What they hold is told by the table of dimmer fields.
using DimmerBlockType = FixedArray<Int16, 6156>;

/// Level byte of a percentage and back. The arithmetic is 16-bit up to the division: a value that
/// overflows it throws RunTimeFailure.
Int16 PercentToLevel(Int16 percent);
Int16 LevelToPercent(Int16 level);

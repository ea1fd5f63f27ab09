#pragma once

#include <QDateTime>
#include <array>
#include <string>

#include "panel/dimmer_block.h"
#include "panel/fennlink_record.h"
#include "panel/panel_image.h"
#include "panel/panel_record.h"

// What the panel tells of itself. Each is read out of the last reply, ReplyText, of which nothing
// is believed: it may be longer or shorter than it should, and hold anything.

/// Clock, points and add-on card. What no digits stand for is 0.
struct PanelStatus {
  Int32 Hour, Minute, Second;
  Int32 Month, Day, Year;  ///< The year of the century.
  Int32 Weekday;           ///< 0 is Sunday; above 6 none.
  Int32 Points;            ///< Inputs and relays installed.
  Int32 CardType, CardRevision;

  /// The panel's clock; not valid where it tells no time.
  QDateTime Clock() const;
};
PanelStatus ReplyStatus();

/// Blocks of I/O points that are set up, a number for each node.
using PointCounts = std::array<Int16, NodeCount>;
PointCounts ReplyPointCounts();

PasswordDigits ReplyPassWord();

/// Which relays or groups are on.
using OutputStates = FixedArray<bool, ItemCount>;
OutputStates ReplyOutputs();

/// The two contacts of an input. An input of which the reply tells nothing sensible is not Known.
struct InputState {
  bool Known, On, Off;
};
using InputStates = FixedArray<InputState, ItemCount>;
InputStates ReplyInputs();

/// A preset without relays is Empty.
enum class PresetState : unsigned char { Off, Set, Empty };
using PresetStates = FixedArray<PresetState, ItemCount>;
PresetStates ReplyPresets();

/// A byte for each Fennlink device by its address; that of device 0, which does not exist, as told.
using DeviceBytes = FixedArray<Int16, DeviceCount + 1>;
DeviceBytes ReplyDevices();

/// A level, 0 to 255, for each output of each dimmer device.
using DimmerLevels = FixedArray<Int16, DimmerOutputCount, DimmerDeviceCount>;
DimmerLevels ReplyDimmers();

/// The panel's front: the codes of the display's cells, -1 for those that the reply lacks, and the
/// lit LEDs, LED 1 in bit 0.
struct PanelFront {
  static constexpr int CellCount = 80;
  FixedArray<Int16, CellCount> Cells;
  Int16 Leds;
};
PanelFront ReplyFront();

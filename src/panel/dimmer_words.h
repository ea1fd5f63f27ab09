#pragma once

#include <string>

#include "panel/dimmer_block.h"
#include "panel/words.h"

class DimmerOutput;

constexpr int FadeRateCount = 43;        ///< Indices of the fade list.
constexpr int ControlActionCount = 106;  ///< Action codes of a control slot.
constexpr int ControlRevertCount = 122;  ///< Revert codes of a control slot.

/// The action codes of a control slot; those between go to a percentage.
constexpr int RevertToPhotocellCode = 0;
constexpr int LowerCode = 1;
constexpr int RaiseCode = 2;
constexpr int FirstGotoCode = 3;
constexpr int RampDownCode = 104;
constexpr int RampUpCode = 105;

constexpr int NeverRevertCode = 1;
/// Of a revert code from 2 on.
constexpr int RevertMinutes(int code) {
  return (code - 1) * 5;
}

/// How an output follows its photocell.
enum TrackMode : Int16 { TrackDisabled, Track2Point, TrackSetpoint, Track3Point };

/// By track mode, as the document tells them.
inline constexpr auto TrackModes =
    std::to_array<std::string_view>({"Disabled", "2 Point", "Setpoint", "3 Point"});

/// The tracking list has its last two modes the other way round, so this is the list index of a
/// mode, 0 to 3, and the mode of a list index.
constexpr Int16 TrackModeAtIndex(int modeOrIndex) {
  return static_cast<Int16>(modeOrIndex >= TrackSetpoint ? 5 - modeOrIndex : modeOrIndex);
}

/// What operates a control slot.
enum ControlType : Int16 {
  ControlUnused,
  ControlInput,
  ControlTimer,
  ControlPreset,
  ControlInvertInput
};

/// By control type, as the document tells them.
inline constexpr auto ControlTypes =
    std::to_array<std::string_view>({"Unused", "Input", "Timer", "Preset", "Inv In"});

/// Index 0 for a clear instant flag, index 1 for a set one.
inline constexpr auto ControlFades = std::to_array<std::string_view>({"Fade", "Instant"});

/// Seconds of a fade rate index, 0 to 42.
constexpr int FadeSeconds(int index) {
  return index < 16 ? 2 * index : 40 + 10 * (index - 16);
}

/// The text of an action code such as "Goto 50%"; empty outside 0 to 105.
std::string ControlActionText(int code);

/// When a slot reverts, as the document tells it, such as "After 5 Min"; empty outside 0 to 121.
std::string RevertWhenText(int code);

/// The same as the editor's list tells it: "Revert After 5 Min", "Never Revert".
std::string ControlRevertText(int code);

/// The text of a control type in the editor's list, such as "Control - Invert In".
std::string ControlTypeListText(int type);

/// A whole slot in one line, such as " 03-HW:-I:01-Goto 50%-Fade-Never Revert". A code without a
/// text leaves its part out.
std::string ControlSlotSummary(const DimmerOutput& output, int ctl);

/// Foot-candles of a photocell input, 0 to 240; 1800 for any other code.
Int16 CodeToFootCandles(Int16 code);

/// Inputs that a control slot can name: 48 hardwired (device 0) or 8 of a Fennlink device.
constexpr int ControlInputCount(int controlDevice) {
  return controlDevice > 0 ? 8 : 48;
}

#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "panel/fixed_array.h"
#include "panel/words.h"

// What the cells of the four input control tables (local and Fennlink, relay and group) mean. A
// cell holds an index into the list of actions that the input's kind offers.

/// What kind of input it is. The values are the codes of PanelRecord.InputType.
enum class InputKind : Int16 {
  MomentaryOnOff,
  MomentaryPB,
  MaintOnOff,
  MaintMultiWay,
  SetPreset,
  TimedOn,
  HIDBiLevel,
  TwoStep,
  FourStep,
  InputDisable,
  TimerDisable,
  OutputOverride,
  ForceTimer,
};

enum class ControlTable { Relay, Group };

/// What the 48 rows of a control table stand for; None: there is nothing to choose.
enum class ControlRows { None, Relays, Groups, Inputs, Timers };

/// What an action, or any other use of an item by another, does; bits.
enum ActionEffect : unsigned {
  EffectOn = 1,   ///< Turns it on.
  EffectOff = 2,  ///< Turns it off.
  EffectOnOff = EffectOn | EffectOff,
  EffectRuns = 4,      ///< Activates a preset, forces a timer.
  EffectDisables = 8,  ///< Disables an input or a timer, or holds a relay.
  EffectHolds = 16,    ///< A group has it as its relay, a preset sets it.
  EffectFollows = 32,  ///< A pilot or a dimmer shows its state.
};

struct ControlAction {
  std::string_view Word;
  unsigned Effect;        ///< Bits of ActionEffect.
  std::string_view Does;  ///< In a sentence: "turns on and off".
};

struct ControlOptions {
  WordTable Actions;  ///< By action code, never empty.
  std::span<const ControlAction> Meanings;
  ControlRows Rows = ControlRows::None;

  /// The highest action code.
  Int16 MaxControlCode() const { return static_cast<Int16>(Actions.size() - 1); }
};

/// The actions that an input of this kind offers in one of the two tables.
ControlOptions KindControlOptions(InputKind kind, ControlTable table);

/// The kind of a local input; none for a code outside 0 to 12.
std::optional<InputKind> LocalInputKind(int inputType);

/// The kinds that a Fennlink device type offers, by DeviceInputType; empty for a device type
/// without a choice (none, photocell, unknown).
std::span<const InputKind> FennlinkInputKinds(int deviceType);

/// The kind of a Fennlink input; none for a device type without a choice or an index beyond its
/// list.
std::optional<InputKind> FennlinkInputKind(int deviceType, int deviceInputType);

/// The DeviceInputType that means Timed On for this device type; -1 where there is none.
int FennlinkTimedOnIndex(int deviceType);

/// The text of a kind in the lists of the device editor: the word of the kind, with "Maintained"
/// spelled out.
std::string_view FennlinkListText(InputKind kind);

/// The caption of a Fennlink input without its leading blank. An index that another device type
/// left behind is taken modulo the list in the families of five kinds. Empty for a code without a
/// caption.
std::string_view FennlinkInputCaption(int deviceType, int deviceInputType);

/// The actions of a local input; none for a code outside 0 to 12.
std::optional<ControlOptions> LocalControlOptions(int inputType, ControlTable table);

/// The actions of a Fennlink input; none for type "None", an unknown device type or an index beyond
/// the device type's list. A maintained input of an 8 Input device has no blink alert, and each
/// input of a photocell has the full list.
std::optional<ControlOptions> FennlinkControlOptions(int deviceType, int deviceInputType,
                                                     ControlTable table);

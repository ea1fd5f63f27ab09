#pragma once

#include <string_view>
#include <vector>

#include "document/rules/item_names.h"

/// What a use does to what it uses; bits.
enum UseEffect : unsigned {
  EffectOn = 1,        ///< Turns it on.
  EffectOff = 2,       ///< Turns it off.
  EffectRuns = 4,      ///< Activates a preset, forces a timer.
  EffectDisables = 8,  ///< Disables an input or a timer, or holds a relay.
  EffectHolds = 16,    ///< A group has it as its relay, a preset sets it.
  EffectFollows = 32,  ///< A pilot or a dimmer shows its state.
};

/// One item acts on another, or follows it.
struct Use {
  Item User;
  Item Used;
  unsigned Effect;          ///< Bits of UseEffect.
  QLatin1StringView Words;  ///< Between the names of both: "turns on and off".
};

/// Installed relays and inputs, 0 to 48 for a damaged project too.
int InstalledPoints();

/// Every use in the project. A sweep's user is the panel. Inputs beyond the installed
/// points and devices without a type use nothing; what is used may lie beyond the installed points.
std::vector<Use> UsesOfProject();

/// "TIMER 03 turns on RELAY 08 FOYER"
QString SentenceOf(const Use& use);

/// The screen where the use is set.
std::string_view ScreenOf(const Use& use);

/// The screen where an input's actions on relays, or those on groups, are set.
std::string_view ActionScreen(const Item& input, bool groups);

/// What a local input or the input of a bus device is: "Momentary PB"; empty for a damaged code.
QString InputTypeWord(const Item& input);

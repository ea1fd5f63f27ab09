#pragma once

#include <string_view>
#include <vector>

#include "panel/input_actions.h"
#include "panel/items.h"
#include "panel/screens.h"

/// One item acts on another, or follows it.
struct Use {
  Item User;
  Item Used;
  unsigned Effect;          ///< Bits of ActionEffect.
  QLatin1StringView Words;  ///< Between the names of both: "turns on and off".
};

/// Every use in the project. A sweep's user is the panel. Inputs beyond the installed
/// points and devices without a type use nothing; what is used may lie beyond the installed points.
std::vector<Use> UsesOfProject(const Project& project);

/// "TIMER 03 turns on RELAY 08 FOYER"
QString SentenceOf(const Project& project, const Use& use);

/// The screen where the use is set.
Screen ScreenOf(const Use& use);

/// The screen where an input's actions on relays, or those on groups, are set.
Screen ActionScreen(const Item& input, bool groups);

/// What a local input or the input of a bus device is: "Momentary PB"; empty for a damaged code.
QString InputTypeWord(const Project& project, const Item& input);

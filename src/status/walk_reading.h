#pragma once

#include <QString>
#include <map>
#include <optional>

#include "panel/items.h"

/// What a walk tries, one after the other.
enum class Walk { Inputs, Relays, Stations };

struct WalkState {
  QString Word;  ///< "closed", "on", "no response".
  bool Active;   ///< A contact is closed, a relay or a station's input is on.

  bool operator==(const WalkState&) const = default;
};

using WalkStates = std::map<Item, WalkState>;

/// The states of all that the walk is about: what is installed, the inputs of stations that are
/// configured, and those that are on where none is. Nothing where the panel has not answered.
[[nodiscard]] std::optional<WalkStates> ReadWalk(Walk walk);

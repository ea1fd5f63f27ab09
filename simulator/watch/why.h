#pragma once

#include <string>

#include "simulator/watch/outlook.h"

namespace simulator {

/// Why an item stands as it does, since when and until when, as in "RELAY 02 HALL: on since 16:45
/// by TIMER 01 DUSK (at sunset), off 23:00 by SWEEP". Of an input also its type, what it controls
/// and why it is not heard. A device is told of as Subject::Kind::Photocell.
std::string Why(const Subject& item, const Engine& engine, const LastChanges& past,
                const Outlook& ahead);

/// What a switch is and does, as in "Timed On, 10 min: HALL, STAIRS".
std::string WhatItDoes(int number, const Configuration& settings);
/// The same without what it does to each of them, as in "Momentary PB: HALL, STAIRS".
std::string WhatItControls(int number, const Configuration& settings);

/// A word for what keeps an item from acting or changing, as in "disabled", "not now", "held on",
/// "warning"; empty if nothing does.
std::string SignOf(const Subject& item, const Engine& engine);

/// Why nothing comes of a press on the item, as in "INPUT 03 KEY does nothing: it is disabled by
/// INPUT 01".
std::string WhyNothing(const Subject& item, const Engine& engine);

/// Relays that a timer, a preset, an input or the sweep switches.
Mask SwitchedRelays(const Configuration& settings);
/// These, and those that belong to a group or a dimmer output.
Mask UsedRelays(const Configuration& settings);

}  // namespace simulator

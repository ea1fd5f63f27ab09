#pragma once

#include <optional>

#include "panel/fennlink_record.h"
#include "panel/items.h"

/// The sources of a Fennlink pilot. A local pilot has no static source and counts from relays.
enum FennlinkPilotSource { PilotStatic, PilotRelay, PilotGroup, PilotPreset };

/// What a pilot of this source follows by its number; null where it follows nothing.
std::optional<Item> PilotItem(int source, int number);

/// The user's name of what it follows; empty where there is none.
QString PilotName(const Project& project, int source, int number);

/// The pilot that follows what the input controls: the preset of a Set Preset input, else the first
/// relay with any action, else the first group, else static and off. The rows of a Timer Disable
/// input are taken for relays all the same. Throws RunTimeFailure when a damaged preset index does
/// not fit in a code.
Int16 AutoMappedPilot(const FennlinkRecord& device, int input);

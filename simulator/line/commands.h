#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/engine/panel.h"

namespace simulator {

/// The panel's reply to one frame, both with their brackets. Nothing for a frame that it keeps
/// silent about: another address, a bad checksum, an unknown command, a number out of range.
std::optional<std::string> Answer(Panel& panel, std::string_view frame);

}  // namespace simulator

#pragma once

#include <optional>

#include "line/transport.h"
#include "panel/panel_image.h"

// What a panel held when all of its memory was last sent or read here, without its password: by
// which only what has changed need be sent. It stands in the folder Panels of the data folder,
// readable by its owner alone.

/// By what a panel is remembered: its address, its port or its telephone number.
QString PanelKey(Int16 connectionType, const LineSettings& settings);

/// After a transfer whose sum has agreed. Does nothing where it cannot be written: the panel is
/// forgotten then.
void RememberMemory(const QString& key, const PanelImageType& image);

/// The panel may hold something else by now.
void ForgetMemory(const QString& key);

/// What is remembered, with the password's bytes 0; nothing for a panel that is not, or is damaged.
std::optional<PanelImageType> KnownMemory(const QString& key);

#pragma once

#include <optional>

#include "panel/panel_image.h"

// Reading the panel's memory, from a request of AskPanel.

/// Reads a block into the image and adds it to the sum; false when the panel does not answer.
bool ReadPanelBlock(int block, PanelImageType& image, ImageSum& sum);

/// The panel's own sum of its whole memory; nothing when it does not answer.
std::optional<Int32> PanelMemorySum();

#pragma once

#include <bitset>

#include "panel/dimmer_block.h"

/// Outputs by device * 4 + output.
using DimmerOutputSet = std::bitset<std::size_t{DimmerDeviceCount} * DimmerOutputCount>;
using ControlSlotSet = std::bitset<ControlSlotCount>;

// Both enable the devices of their destinations. Levels pass through percent, which may change a
// stored byte by rounding. When a source value does not fit the 16-bit percent rules they throw
// RunTimeFailure before anything is changed.

/// Copies levels, fade, tracking and the DMX channel of an output; neither control slots nor the
/// relay map.
void CopyDimmerConfiguration(DimmerBlockType& dimmers, Int16 dev, Int16 out,
                             const DimmerOutputSet& destinations);

/// Copies the given control slots of an output.
void CopyDimmerControls(DimmerBlockType& dimmers, Int16 dev, Int16 out,
                        const DimmerOutputSet& destinations, const ControlSlotSet& slots);

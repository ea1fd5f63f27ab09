#pragma once

#include "shell/controls/accessible_controls.h"
#include "shell/controls/controls.h"

constexpr int DisplayColumns = 20;

/// The colours of the panel's display.
constexpr QRgb DisplayColor = 0xC4D8A0;
constexpr QRgb DisplayEdge = 0x3A4A30;

/// Fills `display` with a grid of one-character cells that looks like the panel's display; its
/// letters are `scale` times the usual size.
ControlArray<Label> AddDisplayCells(DescribedWidget* display, int rows, const char* name,
                                    double scale);

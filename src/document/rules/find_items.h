#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "panel/items.h"
#include "panel/screens.h"

/// An item that fits a search, or a place where such an item is used.
struct FoundItem {
  QString Words;
  Item Where;  ///< The item that its screen is opened at.
  Screen On;
};

constexpr std::size_t MostFound = 1000;

/// The items whose name holds the text, or whose kind and number it is ("relay 8", "R08", "12",
/// "dimmer 3", "FL 1A INPUT 2"). Behind each stands what it does, what acts on it, and what reaches
/// it through groups, presets and timers. At most MostFound lines; nothing for a text without a
/// letter or digit.
std::vector<FoundItem> FindItems(const Project& project, const QString& text);

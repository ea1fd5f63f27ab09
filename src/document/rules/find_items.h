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

/// The items whose name holds the text, or whose kind and number it is ("relay 8", "FL 1A"), each
/// with its uses behind it. Nothing for a text without a letter or digit.
std::vector<FoundItem> FindItems(const Project& project, const QString& text);

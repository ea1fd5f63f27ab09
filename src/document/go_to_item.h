#pragma once

#include <string_view>

#include "document/rules/item_names.h"

/// Opens a screen of the screen table with the item chosen in its selector, or with the focus in
/// the item's row.
void GoToItem(std::string_view screen, const Item& item);

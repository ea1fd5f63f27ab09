#pragma once

#include "panel/items.h"
#include "panel/screens.h"

/// Opens a screen of the screen table with the item chosen in its selector, or with the focus in
/// the item's row.
void GoToItem(Screen screen, const Item& item);

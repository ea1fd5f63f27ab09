#pragma once

#include "panel/setting.h"

class ChildForm;

/// Opens a screen of the screen table with the item chosen in its selector, or with the focus in
/// the item's row.
void GoToItem(Screen screen, const Item& item);

/// The screen that edits a setting comes to the front with its item chosen and the focus on its
/// control; if it is there already, it is drawn anew. `front` is the screen on show.
void GoToSetting(ChildForm* front, const Setting& setting);

/// Whether a screen shows an item without another being chosen in its selectors.
bool ShowsItem(const ChildForm& form, const Item& item);

#pragma once

#include "panel/panel_record.h"
#include "shell/controls/row_grid.h"

// What screens with rows of items share.

/// Shows the first `count` rows with the items' names and hides the others.
void ShowNamedRows(RowGrid& grid, const ControlArray<Label>& names, const NameArray& items,
                   int count);

/// Shows the rows below PanelIOCount with the items' names and hides the others.
void ShowInstalledRows(RowGrid& grid, const ControlArray<Label>& names, const NameArray& items);

/// The 48 names of a kind of item, without the spare element.
QStringList ItemNames(const NameArray& items);

/// The right button with Shift alone on the first row's name: its settings go to all rows.
inline bool IsCopyToAll(int button, int shift, int index) {
  return button == 2 && shift == 1 && index == 0;
}

/// What a screen reader offers in its place.
extern const QString CopyToAllAction;

/// The quiet line that tells of the gesture.
QString CopyToAllHint(const QString& item);

#include "shell/controls/editor_rows.h"

#include "panel/code_page.h"
#include "panel/live_project.h"

void ShowNamedRows(RowGrid& grid, const ControlArray<Label>& names, const NameArray& items,
                   int count) {
  for (int i = 0; i < count; ++i) names(i).SetCaption(ToUnicode(items(i)));
  grid.ShowRows(count);
}

void ShowInstalledRows(RowGrid& grid, const ControlArray<Label>& names, const NameArray& items) {
  ShowNamedRows(grid, names, items, PanelIOCount());
}

QStringList ItemNames(const NameArray& items) {
  return Items(std::span(items.elements).first(ItemCount));
}

const QString CopyToAllAction = QStringLiteral("Copy to all");

QString CopyToAllHint(const QString& item) {
  return QStringLiteral(
             "To give every %1 the settings of the first, right-click the first name with Shift "
             "held, or press Shift+Space on it.")
      .arg(item);
}

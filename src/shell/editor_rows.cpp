#include "shell/editor_rows.h"

#include "panel/code_page.h"

void ShowInstalledRows(RowGrid& grid, const ControlArray<Label>& names, const NameArray& items) {
  const int installed = PanelIOCount();
  for (int i = 0; i < installed; ++i) names(i).SetCaption(ToUnicode(items(i)));
  grid.ShowRows(installed);
}

QStringList ItemNames(const NameArray& items) {
  return Items(std::span(items.elements).first(ItemCount));
}

QString CopyToAllHint(const QString& item) {
  return QStringLiteral(
             "To give every %1 the settings of the first, right-click the first name with Shift "
             "held, or press Shift+Space on it.")
      .arg(item);
}

#include "shell/cell_value.h"

#include <algorithm>

#include "shell/in_place_list.h"

namespace {

bool IsSame(const QString& one, const QString& other) {
  return one.simplified().compare(other.simplified(), Qt::CaseInsensitive) == 0;
}

/// The item that is the value, or that stands for nothing as the value does.
int ItemOf(const QStringList& items, const QString& value) {
  const auto find = [&](auto matches) {
    const auto found = std::find_if(items.begin(), items.end(), matches);
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
  };
  const int same = find([&](const QString& item) { return IsSame(item, value); });
  return same >= 0 || value.isEmpty() || !MeansNothing(value) ? same : find(MeansNothing);
}

/// The place of a value in the list that a click on the cell opens, and the list, still open; null
/// where it has opened none.
std::pair<InPlaceList*, int> OpenListAt(Label& cell, const QString& value) {
  cell.Press();
  for (InPlaceList* list : cell.window()->findChildren<InPlaceList*>()) {
    if (!list->IsOver(cell)) continue;
    return {list, ItemOf(list->Items(), value)};
  }
  return {nullptr, -1};
}

QStringList ItemsOf(const ComboBox& list) {
  QStringList items;
  for (int item = 0; item < list.count(); ++item) items << list.List(item);
  return items;
}

bool IsValueCell(const Label& label) {
  return label.Click && label.Act() != CellAct::Press;
}

}  // namespace

std::optional<QString> CellValue(const QWidget& cell) {
  if (const auto* label = qobject_cast<const Label*>(&cell)) {
    return IsValueCell(*label) ? std::optional(label->Value()) : std::nullopt;
  }
  if (const auto* box = qobject_cast<const TextBox*>(&cell)) return box->Text();
  if (const auto* list = qobject_cast<const ComboBox*>(&cell)) return list->currentText();
  return std::nullopt;
}

bool CellTakes(QWidget& cell, const QString& value, const QStringList& words) {
  if (auto* list = qobject_cast<ComboBox*>(&cell)) return ItemOf(ItemsOf(*list), value) >= 0;
  auto* label = qobject_cast<Label*>(&cell);
  if (!label) return true;
  if (label->Act() != CellAct::OpensList) {
    return std::any_of(words.begin(), words.end(),
                       [&](const QString& word) { return IsSame(word, value); });
  }
  const auto [list, item] = OpenListAt(*label, value);
  if (list) list->Close();
  return item >= 0;
}

void PutCellValue(QWidget& cell, const QString& value, const QStringList& words) {
  if (auto* box = qobject_cast<TextBox*>(&cell)) {
    box->TypeOver(value);
  } else if (auto* list = qobject_cast<ComboBox*>(&cell)) {
    const int item = ItemOf(ItemsOf(*list), value);
    list->setCurrentIndex(item);
    Q_EMIT list->activated(item);
  } else if (auto* label = qobject_cast<Label*>(&cell); label->Act() == CellAct::OpensList) {
    const auto [open, item] = OpenListAt(*label, value);
    if (open) open->Choose(item);
  } else {
    // A code that no word stands for becomes one with the first click.
    for (int click = 0; click <= words.size() && !IsSame(label->Value(), value); ++click) {
      label->Press();
    }
  }
}

#pragma once

#include "panel/fields.h"
#include "panel/live_project.h"
#include "shell/controls/list_column.h"

/// The control that edits a field, by the table of fields.
template <auto Member>
const char* ControlOf() {
  return FactsOf(Member).Where.Value.Control;
}

/// The cells that edit a field of the panel.
struct FieldCells {
  const char* Control;
  /// `selected` is the item that the screen shows; a field of one index passes over it.
  Int16& (*At)(int selected, int row);
};
template <auto Member>
FieldCells CellsOf() {
  return {ControlOf<Member>(), [](int selected, int row) -> Int16& {
            constexpr bool isTable = FactsOf(Member).Second.Value.Counts != Axis::Of::Nothing;
            return isTable ? (PanelRecord.*Member)(selected, row) : (PanelRecord.*Member)(row);
          }};
}

/// The column that edits a field of the panel which has an element for each row: its cells and
/// words are those of the table of fields. A value's item is the value less `first`.
template <auto Member>
ListColumn::Row FieldColumn(const char* list, RowGrid::Options look, const QStringList& items = {},
                            int first = 0) {
  const FieldFacts& facts = FactsOf(Member);
  const QStringList words = ::Items(facts.Told.Value.Choices);
  look.Words = words;
  return {.Cells = facts.Where.Value.Control,
          .List = list,
          .Look = look,
          .Items = words.isEmpty() ? items : words,
          .Item =
              [first](int row) {
                const auto value = (PanelRecord.*Member)(row);
                return value < first ? -1 : value - first;
              },
          .Store =
              [first](int row, int item) {
                auto& value = (PanelRecord.*Member)(row);
                value = static_cast<std::remove_reference_t<decltype(value)>>(item + first);
              }};
}

#pragma once

#include "panel/field_facts.h"
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
            auto& field = PanelRecord.*Member;
            return field.IsTable ? field(selected, row) : field(row);
          }};
}

/// A field of the panel that has an element for each row.
struct FieldOfRows {
  const FieldFacts& Facts;
  Int32 (*Get)(int row);
  void (*Set)(int row, Int32 value);
};

/// The column that edits the field: its cells and words are those of the table of fields. A value's
/// item is the value less `first`.
ListColumn::Row FieldColumn(const FieldOfRows& field, const char* list,
                            const RowGrid::Options& look, const QStringList& items, int first);
template <auto Member>
ListColumn::Row FieldColumn(const char* list, const RowGrid::Options& look,
                            const QStringList& items = {}, int first = 0) {
  using Value = std::remove_reference_t<decltype((PanelRecord.*Member)(0))>;
  return FieldColumn(
      {FactsOf(Member), [](int row) -> Int32 { return (PanelRecord.*Member)(row); },
       [](int row, Int32 value) { (PanelRecord.*Member)(row) = static_cast<Value>(value); }},
      list, look, items, first);
}

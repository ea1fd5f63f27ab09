#pragma once

#include "panel/fields.h"
#include "panel/live_project.h"
#include "shell/controls/list_column.h"

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

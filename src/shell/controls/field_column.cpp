#include "shell/controls/field_column.h"

ListColumn::Row FieldColumn(const FieldOfRows& field, const char* list,
                            const RowGrid::Options& look, const QStringList& items, int first) {
  const QStringList words = Items(field.Facts.Told.Value.Choices);
  ListColumn::Row row{.Cells = field.Facts.Where.Value.Control,
                      .List = list,
                      .Look = look,
                      .Items = words.isEmpty() ? items : words};
  row.Look.Words = words;
  row.Item = [get = field.Get, first](int at) {
    const Int32 value = get(at);
    return value < first ? -1 : value - first;
  };
  row.Store = [set = field.Set, first](int at, int item) { set(at, item + first); };
  return row;
}

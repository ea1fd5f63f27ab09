#include "shell/controls/list_column.h"

#include "panel/program_state.h"

ListColumn::ListColumn() : choice_([this] { Take(); }) {}

void ListColumn::AddTo(ChildForm* form, RowGrid* grid, Row row) {
  row_ = std::move(row);
  list_ = form->findChild<InPlaceList*>(QString::fromLatin1(row_.List));
  if (!list_) list_ = new InPlaceList(form, row_.List.constData(), row_.Items);
  row_.Look.Act = CellAct::OpensList;
  row_.Look.Choices = [this](int cell) {
    return row_.ItemsOf ? row_.ItemsOf(cell) : list_->Items();
  };
  row_.Look.Put = [this](int cell, int item) { Put(cell, item); };
  cells_ = grid->Add<Label>(row_.Cells.constData(), row_.Look);
  cells_.OnEach(&Label::Click, this, &ListColumn::Open);
}

void ListColumn::Show(int rows) const {
  for (int row = 0; row < rows; ++row) {
    if (row_.Note) cells_(row).SetNote(row_.Note(row, row_.Item(row)));
    cells_(row).SetCaption(row_.Text ? row_.Text(row) : list_->ValueText(row_.Item(row)));
  }
}

void ListColumn::Open(int row) {
  SelectedRow = row;
  if (row_.ItemsOf) list_->SetItems(row_.ItemsOf(row));
  QStringList notes;
  for (int item = 0; row_.Note && item < list_->ListCount(); ++item) notes << row_.Note(row, item);
  list_->SetNotes(notes);
  list_->Click = choice_;
  list_->Open(cells_(row), row_.Item(row));
  if (row_.OpeningMarks) DataChanged = -1;
}

void ListColumn::Put(int row, int item) {
  row_.Store(row, item);
  list_->Close();
  show_();
  DataChanged = -1;
}

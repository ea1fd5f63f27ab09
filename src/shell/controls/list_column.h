#pragma once

#include "shell/controls/in_place_list.h"
#include "shell/controls/row_grid.h"

/// A column of value cells over which one list opens. An editor tells of each of its columns what
/// the cells hold and may take; storing, redrawing and marking the project are here.
class ListColumn {
 public:
  struct Row {
    QByteArray Cells;  ///< Object name of the cells.
    QByteArray List;   ///< Object name of the list; columns that name the same share it.
    RowGrid::Options Look = {};
    QStringList Items = {};  ///< Of the list.
    /// What the list holds for a cell, where that is not the same for all.
    std::function<QStringList(int row)> ItemsOf = {};
    /// The item of the stored value; one outside the list selects none.
    std::function<int(int row)> Item = {};
    std::function<void(int row, int item)> Store = {};
    /// What a cell shows, where that is not its item and a blank.
    std::function<QString(int row)> Text = {};
    /// What an item stands for, quietly behind it in cell and list.
    std::function<QString(int row, int item)> Note = {};
    bool OpeningMarks = false;  ///< The project, as a choice always does.
  };

  ListColumn();
  ListColumn(const ListColumn&) = delete;
  ListColumn& operator=(const ListColumn&) = delete;

  /// Adds the cells to the grid. `show` is the form's show procedure; `click` and `choice` are its
  /// handlers, by default Open and Take.
  template <typename Form>
  void Add(Form* form, RowGrid* grid, const Row& row, void (Form::*show)(),
           void (Form::*click)(int) = nullptr, void (Form::*choice)() = nullptr) {
    show_ = [form, show] { (form->*show)(); };
    if (choice) choice_ = [form, choice] { (form->*choice)(); };
    AddTo(form, grid, row);
    if (click) cells_.OnEach(&Label::Click, form, click);
  }

  Label& operator()(int row) const { return cells_(row); }
  InPlaceList& List() const { return *list_; }

  /// Writes the first `rows` cells.
  void Show(int rows) const;
  /// Opens the list over a cell.
  void Open(int row);
  /// Stores what is chosen in the list that is open.
  void Take() { Put(SelectedRow, list_->ListIndex()); }

 private:
  void AddTo(ChildForm* form, RowGrid* grid, Row row);
  void Put(int row, int item);

  Row row_;
  std::function<void()> show_;
  std::function<void()> choice_;
  ControlArray<Label> cells_;
  InPlaceList* list_ = nullptr;
  int SelectedRow = 0;
};

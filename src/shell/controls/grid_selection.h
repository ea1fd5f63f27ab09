#pragma once

#include <QString>
#include <optional>
#include <utility>
#include <vector>

class QKeyEvent;
class QMouseEvent;
class QPoint;
class QWidget;
class RowGrid;

/// A control of a grid by its row and its place in the row.
struct GridCell {
  int Row;
  int Column;

  bool operator==(const GridCell&) const = default;
};

/// The cells of one column of a grid that are selected by Shift or a drag, and what is done with
/// their values: copied, pasted and filled down by what a user's own clicks and keys would run.
class GridSelection {
 public:
  explicit GridSelection(RowGrid& grid);

  /// The keys that select, copy and fill. A text box with a single name in hand keeps those that
  /// edit its text.
  bool TakesKey(const QWidget& control, const QKeyEvent& key);
  /// A drag over cells of one column selects them; its release is no click.
  bool TakesMouse(const QMouseEvent& mouse, GridCell cell);
  void ShowMenu(GridCell cell, const QPoint& at);
  /// Nothing for a control that holds no value, such as a button or a caption.
  std::optional<QString> ValueOf(GridCell cell) const;
  void Forget();
  /// Lies over the whole grid.
  void Cover();

 private:
  using Cell = GridCell;
  class Veil;

  /// Puts the values of the selected cells on the clipboard, one a line.
  void CopyCells();
  /// One row of values goes to all selected rows, several go down from the first; further columns
  /// go to the right. A value that a cell does not take, or too many rows or columns, change
  /// nothing, and the line beside the screen's caption says why. What is left out is told there
  /// too.
  void PasteCells();
  /// Gives the first selected cell's value to the others.
  void FillDown();
  void SelectColumn();

  void ExtendTo(Cell cell);
  /// The cell in hand; on a name the first value of its row.
  std::optional<Cell> InHand() const;
  /// The selected cells from the top, at least the one in hand.
  std::vector<Cell> Selected() const;
  using Puts = std::vector<std::pair<Cell, QString>>;
  void PutValues(const Puts& puts);
  /// All that the cell may take; nothing for a text, which takes what is typed.
  std::optional<QStringList> ChoicesOf(Cell cell) const;
  /// What keeps a value from its cell, if anything does.
  [[nodiscard]] std::optional<QString> Refusal(Cell cell, const QString& value) const;
  /// Returns what is left out.
  QString Put(Cell cell, const QString& value);

  RowGrid& grid_;
  std::optional<std::pair<Cell, Cell>> selection_;  ///< From where to where.
  std::optional<Cell> pressed_;                     ///< Where a drag may begin.
  bool dragging_ = false;
  Veil* veil_;  ///< Tints the selected cells.
};

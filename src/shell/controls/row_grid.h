#pragma once

#include <QGridLayout>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "shell/controls/child_form.h"
#include "shell/controls/grid_selection.h"

/// Rows of a name label and value cells, laid out in columns of sixteen unless told otherwise: row
/// i stands at row i mod 16 of grid column i / 16. The grid is one stop of Tab; the arrow keys,
/// Home, End and Page walk its cells. With Shift held they select cells of one column, as a drag
/// does, whose values are copied, pasted and filled down by what a user's own clicks and keys would
/// run.
class RowGrid : public QWidget {
  Q_OBJECT
 public:
  static constexpr int RowsInColumn = 16;

  struct Options {
    int Chars = 8;           ///< Least width, in average characters.
    QByteArray Header = {};  ///< Object name of the header labels, one for each grid column.
    QString HeaderText = {};
    bool SharesCell = false;       ///< Stands behind the control before it, in the same grid cell.
    CellAct Act = CellAct::Press;  ///< What a click does on labels that take clicks.
    QStringList Words = {};        ///< All that the cells can show, which is how wide they grow.
    /// What a cell of labels may take; `Words` where there is none.
    std::function<QStringList(int row)> Choices = {};
    /// Gives a cell of labels the choice at a place of `Choices`. Labels without are no values.
    std::function<void(int row, int choice)> Put = {};
    /// What keeps a value from a cell, for a column that is not done with its choices or the text:
    /// what it makes of the value need not look like it. Left and Right at the ends of such a text
    /// walk on, and so does Enter.
    std::function<QString(int row, const QString& value)> Refuses = {};
  };

  /// `word` starts each row's tooltip and its name for screen readers: "Relay " gives "Relay 01".
  explicit RowGrid(int rows, const QString& word = {}, int rowsInColumn = RowsInColumn);

  /// The name labels, with their tooltips.
  ControlArray<Label> AddNames(const char* name, int chars = 10);

  /// One control for each row, right of those added before.
  template <typename Control>
  ControlArray<Control> Add(const char* name, const Options& options) {
    ControlArray<Control> controls;
    BeginColumn(options);
    for (int row = 0; row < rows_; ++row) {
      auto* control = new Control;
      Place(control, row, options);
      controls.Add(control, QString::fromLatin1(name));
    }
    return controls;
  }

  /// Lets Tab walk row by row, for rows whose controls keep the arrow keys for themselves. Called
  /// when all columns are there.
  void TabByRows();

  using Cell = GridCell;
  int RowCount() const { return rows_; }
  /// Controls of a row.
  int ColumnCount() const { return static_cast<int>(options_.size()); }
  const Options& ColumnOf(Cell cell) const {
    return options_[static_cast<std::size_t>(cell.Column)];
  }
  /// Whether there is a cell, and it takes the focus.
  bool Walkable(Cell cell) const;
  QWidget* At(Cell cell) const;
  std::optional<Cell> CellOf(const QObject* control) const;
  /// The cell that had the focus last.
  std::optional<Cell> Current() const { return current_; }

  /// Where Tab stops: the cell that had the focus last, or the first that is no name, or the first;
  /// null where there is none.
  QWidget* Stop() const;
  /// Gives the focus to where Tab stops; false where there is none.
  bool FocusCell();

  /// Gives the focus to the first cell of a row that takes it; false where there is none.
  bool FocusRow(int row);

  /// Shows or hides all controls of a row.
  void SetRowVisible(int row, bool visible);

  /// Row i is shown while i is below `count`; the headers of a grid column while it has a row.
  void ShowRows(int count);

  /// What a row stands for, in its tooltip and for screen readers: "Timer 01".
  void SetRowTitle(int row, const QString& title);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Walk(Cell from, int rowStep, int columnStep);
  void WalkTo(Cell from, int to);
  bool EndsText(Cell cell, const QKeyEvent& key);
  void WalkToNextText(Cell from);
  void KeepFocusCell(Cell cell, Qt::FocusReason reason);

  void BeginColumn(const Options& options);
  void StretchBlock(int block, bool shown);
  int MostWidth(const QWidget& control, const Options& options) const;
  void Place(QWidget* control, int row, const Options& options);
  void Describe(int row);
  int GridColumn(int row) const { return row / rowsInColumn_ * columnsPerBlock; }

  static constexpr int columnsPerBlock = 8;

  int rows_;
  int rowsInColumn_;
  int columns_ = 0;
  std::vector<int> stretches_;  ///< By column of a block.
  int nameColumn_ = -1;
  bool tabsByRows_ = false;
  std::optional<Cell> current_;  ///< The cell that had the focus last.
  GridSelection selection_{*this};
  QGridLayout* grid_;
  std::vector<QString> titles_;
  std::vector<std::vector<QWidget*>> controls_;  ///< By row.
  std::vector<Options> options_;                 ///< By control of a row.
  std::vector<std::vector<QWidget*>> headers_;   ///< By grid column.
};

/// Texts and Windows-1252 names as the items of a list.
QStringList Items(std::span<const std::string_view> words);
QStringList Items(std::span<const std::string> names);

/// The numbers `first` to `last` in plain form as the items of a list, each with `before` and
/// `behind` around it.
QStringList NumberItems(int first, int last, const QString& before = {},
                        const QString& behind = {});

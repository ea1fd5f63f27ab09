#include "shell/controls/grid_selection.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

#include "shell/controls/cell_value.h"
#include "shell/controls/row_grid.h"
#include "shell/shell.h"

/// Lies over the grid and tints the cells that are selected.
class GridSelection::Veil : public QWidget {
 public:
  Veil(RowGrid* grid, const GridSelection* selection)
      : QWidget(grid), grid_(grid), selection_(selection) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    if (!selection_->selection_) return;
    QPainter painter(this);
    QColor tint = palette().color(QPalette::Highlight);
    painter.setPen(QPen(tint, 2));
    tint.setAlpha(70);
    painter.setBrush(tint);
    for (const Cell cell : selection_->Selected()) {
      const QWidget& control = *grid_->At(cell);
      const QRect place(control.mapTo(grid_, QPoint(0, 0)), control.size());
      painter.drawRect(place.adjusted(1, 1, -1, -1));
    }
  }

 private:
  RowGrid* grid_;
  const GridSelection* selection_;
};

GridSelection::GridSelection(RowGrid& grid) : grid_(grid), veil_(new Veil(&grid, this)) {}

void GridSelection::Cover() {
  veil_->setGeometry(grid_.rect());
}

std::optional<GridCell> GridSelection::InHand() const {
  const std::optional<Cell> current = grid_.Current();
  if (!current || ValueOf(*current)) return current;
  for (Cell cell = *current; cell.Column < grid_.ColumnCount(); ++cell.Column) {
    if (grid_.Walkable(cell) && ValueOf(cell)) return cell;
  }
  return std::nullopt;
}

std::vector<GridCell> GridSelection::Selected() const {
  std::vector<Cell> cells;
  const auto inHand = InHand();
  if (!inHand) return cells;
  const auto& [from, to] = selection_.value_or(std::pair(*inHand, *inHand));
  const auto [first, last] = std::minmax(from.Row, to.Row);
  for (Cell cell{first, from.Column}; cell.Row <= last; ++cell.Row) {
    if (grid_.Walkable(cell)) cells.push_back(cell);
  }
  return cells;
}

void GridSelection::Forget() {
  selection_.reset();
  veil_->update();
}

void GridSelection::ExtendTo(Cell cell) {
  if (!grid_.Walkable(cell)) return;
  selection_ = {selection_ ? selection_->first : *InHand(), cell};
  grid_.At(cell)->setFocus(Qt::OtherFocusReason);
  veil_->raise();
  veil_->update();
  TellNews(QStringLiteral("%1 cells selected").arg(Selected().size()));
}

void GridSelection::SelectColumn() {
  const auto inHand = InHand();
  if (!inHand) return;
  const int column = inHand->Column;
  std::optional<Cell> first;
  std::optional<Cell> last;
  for (Cell cell{0, column}; cell.Row < grid_.RowCount(); ++cell.Row) {
    if (!grid_.Walkable(cell)) continue;
    if (!first) first = cell;
    last = cell;
  }
  if (!first) return;
  selection_ = {*first, *first};
  ExtendTo(*last);
}

void GridSelection::CopyCells() {
  QStringList values;
  for (const Cell cell : Selected()) values << ValueOf(cell).value_or(QString());
  QApplication::clipboard()->setText(values.join(u'\n'));
  TellNews(values.size() == 1 ? QStringLiteral("Copied")
                              : QStringLiteral("%1 values copied").arg(values.size()));
}

namespace {

/// Ends a value in the clipboard's text.
bool EndsValue(QChar c) {
  return c == u'\t' || c == u'\n';
}

/// A value of a spreadsheet from its place on, which moves behind it. Spreadsheets put one that
/// holds a line end, a tab or a quote into quotes.
QString TakeValue(const QString& text, qsizetype& at) {
  const qsizetype start = at;
  if (at < text.size() && text[at] == u'"') {
    qsizetype quote = text.indexOf(u'"', at + 1);
    while (quote >= 0 && quote + 1 < text.size() && text[quote + 1] == u'"') {
      quote = text.indexOf(u'"', quote + 2);
    }
    if (quote >= 0 && (quote + 1 == text.size() || EndsValue(text[quote + 1]))) {
      QString inside = text.sliced(start + 1, quote - start - 1);
      if (std::any_of(inside.begin(), inside.end(),
                      [](QChar c) { return EndsValue(c) || c == u'"'; })) {
        at = quote + 1;
        return inside.replace(QStringLiteral("\"\""), QStringLiteral("\"")).trimmed();
      }
    }
  }
  while (at < text.size() && !EndsValue(text[at])) ++at;
  return text.sliced(start, at - start).trimmed();
}

/// The rows of the clipboard, each by its columns, without the end that spreadsheets add.
std::vector<QStringList> ClipboardRows() {
  QString text = QApplication::clipboard()->text();
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(u'\r', u'\n');
  if (text.endsWith(u'\n')) text.chop(1);
  std::vector<QStringList> rows(1);
  for (qsizetype at = 0; at <= text.size(); ++at) {
    rows.back() << TakeValue(text, at);
    if (at < text.size() && text[at] == u'\n') rows.emplace_back();
  }
  return rows;
}

bool IsOneValue(const std::vector<QStringList>& rows) {
  return rows.size() == 1 && rows[0].size() == 1;
}

QString InCell(const QString& value, const QWidget& cell) {
  return QStringLiteral("\"%1\" in %2").arg(value, cell.accessibleName());
}

QString Refused(const QString& why) {
  return QStringLiteral("Nothing was pasted: ") + why;
}

}  // namespace

/// One row goes to all selected rows, several go down from the first; their columns go to the
/// right.
void GridSelection::PasteCells() {
  std::vector<QStringList> rows = ClipboardRows();
  const std::vector<Cell> selected = Selected();
  // A clipboard that nobody has filled may have no data at all.
  const QMimeData* held = QApplication::clipboard()->mimeData();
  if (selected.empty() || !held || !held->hasText()) return;
  Cell cell = selected[0];
  std::vector<int> columns;
  for (Cell to = cell; to.Column < grid_.ColumnCount(); ++to.Column) {
    if (ValueOf(to)) columns.push_back(to.Column);
  }
  std::vector<int> targets;
  if (rows.size() == 1) {
    rows.resize(selected.size(), rows[0]);
    for (const Cell target : selected) targets.push_back(target.Row);
  } else {
    for (; cell.Row < grid_.RowCount(); ++cell.Row) {
      if (grid_.Walkable(cell)) targets.push_back(cell.Row);
    }
  }
  if (targets.size() < rows.size()) {
    TellRefusal(Refused(QStringLiteral("%1 values are more than the %2 rows from here on.")
                            .arg(rows.size())
                            .arg(targets.size())));
    return;
  }
  Puts puts;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (static_cast<std::size_t>(rows[row].size()) > columns.size()) {
      TellRefusal(Refused(QStringLiteral("%1 columns are more than the %2 from here on.")
                              .arg(rows[row].size())
                              .arg(columns.size())));
      return;
    }
    for (qsizetype i = 0; i < rows[row].size(); ++i) {
      puts.emplace_back(Cell{targets[row], columns[static_cast<std::size_t>(i)]}, rows[row][i]);
    }
  }
  PutValues(puts);
}

void GridSelection::FillDown() {
  const std::vector<Cell> cells = Selected();
  if (cells.size() < 2) return;
  Puts puts;
  for (const Cell cell : cells) puts.emplace_back(cell, ValueOf(cells[0]).value_or(QString()));
  PutValues(puts);
}

std::optional<QString> GridSelection::ValueOf(Cell cell) const {
  const auto* label = qobject_cast<const Label*>(grid_.At(cell));
  if (!label) return CellValue(*grid_.At(cell));
  return grid_.ColumnOf(cell).Put ? std::optional(label->Value()) : std::nullopt;
}

std::optional<QStringList> GridSelection::ChoicesOf(Cell cell) const {
  if (!qobject_cast<const Label*>(grid_.At(cell))) return CellChoices(*grid_.At(cell));
  const RowGrid::Options& column = grid_.ColumnOf(cell);
  return column.Choices ? column.Choices(cell.Row) : column.Words;
}

std::optional<QString> GridSelection::Refusal(Cell cell, const QString& value) const {
  const QString name = grid_.At(cell)->accessibleName();
  if (!grid_.Walkable(cell)) return QStringLiteral("%1 has no value at present.").arg(name);
  const std::optional<QStringList> choices = ChoicesOf(cell);
  if (!choices || ChoiceOf(*choices, value) >= 0) {
    const auto& refuses = grid_.ColumnOf(cell).Refuses;
    const QString refusal = refuses ? refuses(cell.Row, value) : QString();
    return refusal.isEmpty() ? std::nullopt : std::optional(refusal);
  }
  return QStringLiteral("\"%1\" is not a choice of %2 (%3).").arg(value, name, InShort(*choices));
}

/// A label that shows the value already keeps what it holds.
QString GridSelection::Put(Cell cell, const QString& value) {
  if (!qobject_cast<const Label*>(grid_.At(cell))) {
    const QString left = PutCellValue(*grid_.At(cell), value);
    auto* judged = grid_.ColumnOf(cell).Refuses ? qobject_cast<TextBox*>(grid_.At(cell)) : nullptr;
    if (judged) Q_EMIT judged->editingFinished();
    return left;
  }
  if (ChoiceOf({*ValueOf(cell)}, value) >= 0) return {};
  const int choice = ChoiceOf(*ChoicesOf(cell), value);
  if (choice >= 0) RunHandler([&] { grid_.ColumnOf(cell).Put(cell.Row, choice); });
  return {};
}

/// All or nothing.
void GridSelection::PutValues(const Puts& puts) {
  for (const auto& [cell, value] : puts) {
    if (const auto refusal = Refusal(cell, value)) {
      TellRefusal(Refused(*refusal));
      return;
    }
  }
  qsizetype left = 0;
  QString first;
  for (const auto& [cell, value] : puts) {
    const QString out = Put(cell, value);
    if (left == 0 && !out.isEmpty()) first = InCell(out.first(1), *grid_.At(cell));
    left += out.size();
  }
  // A cell may have set another of its row.
  const auto isAstray = [this](const auto& put) {
    return !qobject_cast<TextBox*>(grid_.At(put.first)) && !grid_.ColumnOf(put.first).Refuses &&
           ChoiceOf({ValueOf(put.first).value_or(QString())}, put.second) < 0;
  };
  const auto astray = std::find_if(puts.begin(), puts.end(), isAstray);
  const QString done = puts.size() == 1 ? QStringLiteral("Pasted")
                                        : QStringLiteral("%1 cells filled").arg(puts.size());
  if (left > 0) {
    TellRefusal(
        QStringLiteral("%1. Characters left out: %2, first %3.").arg(done).arg(left).arg(first));
  } else if (astray != puts.end()) {
    TellRefusal(QStringLiteral("%1. Values that did not stay: %2, first %3.")
                    .arg(done)
                    .arg(std::count_if(puts.begin(), puts.end(), isAstray))
                    .arg(InCell(astray->second, *grid_.At(astray->first))));
  } else {
    TellNews(done);
  }
}

/// The keys that select, copy and fill. A text box with a single name in hand keeps those that edit
/// its text.
bool GridSelection::TakesKey(const QWidget& control, const QKeyEvent& key) {
  const auto inHand = InHand();
  if (!inHand) return false;
  const auto held = key.modifiers() & ~Qt::KeypadModifier;
  const bool editsText = qobject_cast<const TextBox*>(&control) && !selection_;
  if (held == Qt::ShiftModifier && (key.key() == Qt::Key_Up || key.key() == Qt::Key_Down)) {
    const int step = key.key() == Qt::Key_Up ? -1 : 1;
    Cell next = selection_ ? selection_->second : *inHand;
    next.Row += step;
    while (next.Row >= 0 && next.Row < grid_.RowCount() && !grid_.Walkable(next)) next.Row += step;
    ExtendTo(next);
    return true;
  }
  if (held != Qt::ControlModifier) return false;
  switch (key.key()) {
    case Qt::Key_A:
      if (editsText) return false;
      SelectColumn();
      return true;
    case Qt::Key_C:
      if (editsText) return false;
      CopyCells();
      return true;
    case Qt::Key_V:
      if (editsText && IsOneValue(ClipboardRows())) return false;
      PasteCells();
      return true;
    case Qt::Key_D:
      FillDown();
      return true;
    default:
      return false;
  }
}

/// A drag over cells of one column selects them; its release is no click.
bool GridSelection::TakesMouse(const QMouseEvent& mouse, Cell cell) {
  switch (mouse.type()) {
    case QEvent::MouseButtonPress:
      if (mouse.button() == Qt::LeftButton) Forget();
      dragging_ = false;
      pressed_ =
          mouse.button() == Qt::LeftButton && qobject_cast<Label*>(grid_.At(cell)) && ValueOf(cell)
              ? std::optional(cell)
              : std::nullopt;
      return false;
    case QEvent::MouseMove: {
      if (!pressed_ || !(mouse.buttons() & Qt::LeftButton)) return false;
      const auto under =
          grid_.CellOf(grid_.childAt(grid_.mapFromGlobal(mouse.globalPosition().toPoint())));
      if (!under || under->Column != pressed_->Column) return dragging_;
      if (!dragging_ && under->Row == pressed_->Row) return false;
      dragging_ = true;
      if (!selection_) selection_ = {*pressed_, *pressed_};
      if (under->Row != selection_->second.Row) ExtendTo(*under);
      return true;
    }
    case QEvent::MouseButtonRelease:
      pressed_.reset();
      return std::exchange(dragging_, false);
    default:
      return false;
  }
}

void GridSelection::ShowMenu(Cell cell, const QPoint& at) {
  const std::vector<Cell> selected = Selected();
  if (std::find(selected.begin(), selected.end(), cell) == selected.end()) {
    Forget();
    grid_.At(cell)->setFocus(Qt::OtherFocusReason);
  }
  auto* menu = new QMenu(&grid_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& caption, const QKeySequence& key,
                       void (GridSelection::*act)()) {
    menu->addAction(caption, &grid_, [this, act] { (this->*act)(); })->setShortcut(key);
  };
  add(QStringLiteral("&Copy"), Qt::CTRL | Qt::Key_C, &GridSelection::CopyCells);
  add(QStringLiteral("&Paste"), Qt::CTRL | Qt::Key_V, &GridSelection::PasteCells);
  add(QStringLiteral("Fill &Down"), Qt::CTRL | Qt::Key_D, &GridSelection::FillDown);
  add(QStringLiteral("&Select Column"), Qt::CTRL | Qt::Key_A, &GridSelection::SelectColumn);
  menu->popup(at);
}

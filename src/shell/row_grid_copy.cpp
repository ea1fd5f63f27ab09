#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPainter>

#include "panel/program_state.h"
#include "shell/cell_value.h"
#include "shell/row_grid.h"
#include "shell/shell.h"

/// Lies over the grid and tints the cells that are selected.
class RowGrid::Veil : public QWidget {
 public:
  explicit Veil(RowGrid* grid) : QWidget(grid), grid_(grid) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    if (!grid_->selection_) return;
    QPainter painter(this);
    QColor tint = palette().color(QPalette::Highlight);
    painter.setPen(QPen(tint, 2));
    tint.setAlpha(70);
    painter.setBrush(tint);
    for (const QWidget* cell : grid_->Selected()) {
      const QRect place(cell->mapTo(grid_, QPoint(0, 0)), cell->size());
      painter.drawRect(place.adjusted(1, 1, -1, -1));
    }
  }

 private:
  RowGrid* grid_;
};

void RowGrid::MakeVeil() {
  veil_ = new Veil(this);
}

void RowGrid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  veil_->setGeometry(rect());
}

std::vector<QWidget*> RowGrid::Selected() const {
  std::vector<QWidget*> cells;
  if (!current_) return cells;
  const auto& [from, to] = selection_.value_or(std::pair(*current_, *current_));
  const auto [first, last] = std::minmax(from.Row, to.Row);
  for (Cell cell{first, from.Column}; cell.Row <= last; ++cell.Row) {
    if (Walkable(cell)) cells.push_back(At(cell));
  }
  return cells;
}

void RowGrid::ForgetSelection() {
  selection_.reset();
  veil_->update();
}

void RowGrid::ExtendTo(Cell cell) {
  if (!Walkable(cell)) return;
  selection_ = {selection_ ? selection_->first : *current_, cell};
  At(cell)->setFocus(Qt::OtherFocusReason);
  veil_->raise();
  veil_->update();
  TellNews(QStringLiteral("%1 cells selected").arg(Selected().size()));
}

void RowGrid::SelectColumn() {
  if (!current_) return;
  const int column = current_->Column;
  std::optional<Cell> first;
  std::optional<Cell> last;
  for (Cell cell{0, column}; cell.Row < rows_; ++cell.Row) {
    if (!Walkable(cell)) continue;
    if (!first) first = cell;
    last = cell;
  }
  if (!first) return;
  selection_ = {*first, *first};
  ExtendTo(*last);
}

void RowGrid::CopyCells() {
  QStringList values;
  for (const QWidget* cell : Selected()) values << CellValue(*cell).value_or(QString());
  QApplication::clipboard()->setText(values.join(u'\n'));
  TellNews(values.size() == 1 ? QStringLiteral("Copied")
                              : QStringLiteral("%1 values copied").arg(values.size()));
}

namespace {

/// The lines of the clipboard without the end that spreadsheets add; of several columns the first.
QStringList ClipboardValues() {
  QString text = QApplication::clipboard()->text();
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  if (text.endsWith(u'\n')) text.chop(1);
  QStringList values = text.split(u'\n');
  for (QString& value : values) value = value.section(u'\t', 0, 0).trimmed();
  return values;
}

}  // namespace

void RowGrid::PasteCells() {
  const QStringList values = ClipboardValues();
  std::vector<QWidget*> cells = Selected();
  if (cells.empty()) return;
  if (values.size() == 1) {
    PutValues(cells, QStringList(static_cast<qsizetype>(cells.size()), values[0]));
    return;
  }
  Cell cell = *CellOf(cells[0]);
  cells.clear();
  for (; cell.Row < rows_; ++cell.Row) {
    if (Walkable(cell) && static_cast<qsizetype>(cells.size()) < values.size())
      cells.push_back(At(cell));
  }
  if (static_cast<qsizetype>(cells.size()) < values.size()) {
    TellNews(QStringLiteral("%1 values are more than the %2 rows from here on. Nothing was pasted.")
                 .arg(values.size())
                 .arg(cells.size()));
    return;
  }
  PutValues(cells, values);
}

void RowGrid::FillDown() {
  const std::vector<QWidget*> cells = Selected();
  if (cells.size() < 2) return;
  PutValues(cells, QStringList(static_cast<qsizetype>(cells.size()),
                               CellValue(*cells[0]).value_or(QString())));
}

/// All or nothing.
void RowGrid::PutValues(const std::vector<QWidget*>& cells, const QStringList& values) {
  const QStringList words = words_[static_cast<std::size_t>(CellOf(cells[0])->Column)];
  const QPointer<QWidget> focus = QApplication::focusWidget();
  const auto before = DataChanged;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const QString& value = values[static_cast<qsizetype>(i)];
    if (CellTakes(*cells[i], value, words)) continue;
    // Some lists mark the project by being opened.
    DataChanged = before;
    TellNews(QStringLiteral("\"%1\" is no choice of %2. Nothing was pasted.")
                 .arg(value, cells[i]->accessibleName()));
    return;
  }
  for (std::size_t i = 0; i < cells.size(); ++i) {
    PutCellValue(*cells[i], values[static_cast<qsizetype>(i)], words);
  }
  if (focus) focus->setFocus(Qt::OtherFocusReason);
  TellNews(cells.size() == 1 ? QStringLiteral("Pasted")
                             : QStringLiteral("%1 cells filled").arg(cells.size()));
}

void RowGrid::StepSelector(int step) {
  const int item = selector_->ListIndex() + step;
  if (item < 0 || item >= selector_->count()) return;
  selector_->setCurrentIndex(item);
  Q_EMIT selector_->activated(item);
}

/// The keys that select, copy and fill. A text box with a single name in hand keeps those that edit
/// its text.
bool RowGrid::TakesKey(const QWidget& control, const QKeyEvent& key) {
  if (!CellValue(control) || !current_) return false;
  const auto held = key.modifiers() & ~Qt::KeypadModifier;
  const bool editsText = qobject_cast<const TextBox*>(&control) && !selection_;
  if (held == Qt::ShiftModifier && (key.key() == Qt::Key_Up || key.key() == Qt::Key_Down)) {
    const int step = key.key() == Qt::Key_Up ? -1 : 1;
    Cell next = selection_ ? selection_->second : *current_;
    next.Row += step;
    while (next.Row >= 0 && next.Row < rows_ && !Walkable(next)) next.Row += step;
    ExtendTo(next);
    return true;
  }
  if (held != Qt::ControlModifier) return false;
  switch (key.key()) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      if (!selector_) return false;
      StepSelector(key.key() == Qt::Key_PageUp ? -1 : 1);
      return true;
    case Qt::Key_A:
      if (editsText) return false;
      SelectColumn();
      return true;
    case Qt::Key_C:
      if (editsText) return false;
      CopyCells();
      return true;
    case Qt::Key_V:
      if (editsText && ClipboardValues().size() == 1) return false;
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
bool RowGrid::TakesMouse(const QMouseEvent& mouse, Cell cell) {
  switch (mouse.type()) {
    case QEvent::MouseButtonPress:
      if (mouse.button() == Qt::LeftButton) ForgetSelection();
      dragging_ = false;
      pressed_ =
          mouse.button() == Qt::LeftButton && qobject_cast<Label*>(At(cell)) && CellValue(*At(cell))
              ? std::optional(cell)
              : std::nullopt;
      return false;
    case QEvent::MouseMove: {
      if (!pressed_ || !(mouse.buttons() & Qt::LeftButton)) return false;
      const auto under = CellOf(childAt(mapFromGlobal(mouse.globalPosition().toPoint())));
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

void RowGrid::ShowCellMenu(Cell cell, const QPoint& at) {
  const std::vector<QWidget*> selected = Selected();
  if (std::find(selected.begin(), selected.end(), At(cell)) == selected.end()) {
    ForgetSelection();
    At(cell)->setFocus(Qt::OtherFocusReason);
  }
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& caption, const QKeySequence& key, void (RowGrid::*act)()) {
    menu->addAction(caption, this, act)->setShortcut(key);
  };
  add(QStringLiteral("&Copy"), Qt::CTRL | Qt::Key_C, &RowGrid::CopyCells);
  add(QStringLiteral("&Paste"), Qt::CTRL | Qt::Key_V, &RowGrid::PasteCells);
  add(QStringLiteral("Fill &Down"), Qt::CTRL | Qt::Key_D, &RowGrid::FillDown);
  add(QStringLiteral("&Select Column"), Qt::CTRL | Qt::Key_A, &RowGrid::SelectColumn);
  menu->popup(at);
}

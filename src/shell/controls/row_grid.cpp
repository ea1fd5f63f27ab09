#include "shell/controls/row_grid.h"

#include <QApplication>
#include <QContextMenuEvent>

#include "panel/code_page.h"
#include "panel/format.h"

QStringList Items(std::span<const std::string_view> words) {
  QStringList items;
  for (const std::string_view word : words) items << ToUnicode(word);
  return items;
}

QStringList Items(std::span<const std::string> names) {
  QStringList items;
  for (const std::string& name : names) items << ToUnicode(name);
  return items;
}

QStringList NumberItems(int first, int last, const QString& before, const QString& behind) {
  QStringList items;
  items.reserve(last - first + 1);
  for (int number = first; number <= last; ++number) {
    items << before + QString::number(number) + behind;
  }
  return items;
}

RowGrid::RowGrid(int rows, const QString& word, int rowsInColumn)
    : rows_(rows),
      rowsInColumn_(rowsInColumn),
      titles_(static_cast<std::size_t>(rows)),
      controls_(static_cast<std::size_t>(rows)),
      headers_(static_cast<std::size_t>((rows + rowsInColumn - 1) / rowsInColumn)) {
  for (int row = 0; row < rows; ++row)
    titles_[static_cast<std::size_t>(row)] = word + TwoDigits(row + 1);
  grid_ = new QGridLayout(this);
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setHorizontalSpacing(3);
  grid_->setVerticalSpacing(2);
  for (int block = 1; block < static_cast<int>(headers_.size()); ++block) {
    grid_->setColumnMinimumWidth(block * columnsPerBlock - 1, 8);
  }
  // What the cells do not need stays free at the right.
  grid_->setColumnStretch(static_cast<int>(headers_.size()) * columnsPerBlock, 1);
  // Where the window is low the rows give way a little before the screen scrolls.
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
}

ControlArray<Label> RowGrid::AddNames(const char* name, int chars) {
  nameColumn_ = columns_;
  auto names = Add<Label>(name, {.Chars = chars});
  for (int row = 0; row < rows_; ++row) {
    names(row).SetGrowsWithCaption();
    connect(&names(row), &Label::CaptionChanged, this, [this, row] { Describe(row); });
    Describe(row);
  }
  return names;
}

void RowGrid::BeginColumn(const Options& options) {
  options_.push_back(options);
  if (!options.SharesCell) ++columns_;
  // Names take the room that they need, values the rest up to their greatest width.
  constexpr int valueStretch = 1000;
  const bool names = nameColumn_ == static_cast<int>(options_.size()) - 1;
  stretches_.resize(static_cast<std::size_t>(columns_));
  stretches_.back() = names ? 0 : valueStretch;
  for (int block = 0; block < static_cast<int>(headers_.size()); ++block) StretchBlock(block, true);
  if (options.Header.isEmpty()) return;
  for (std::size_t block = 0; block < headers_.size(); ++block) {
    auto* header = new Label;
    header->setObjectName(
        QStringLiteral("%1(%2)").arg(QString::fromLatin1(options.Header)).arg(block));
    header->SetCaption(options.HeaderText);
    grid_->addWidget(header, 0, static_cast<int>(block) * columnsPerBlock + columns_ - 1);
    headers_[block].push_back(header);
  }
}

/// One without rows leaves its room to the others.
void RowGrid::StretchBlock(int block, bool shown) {
  for (int column = 0; column < columns_; ++column) {
    grid_->setColumnStretch(block * columnsPerBlock + column,
                            shown ? stretches_[static_cast<std::size_t>(column)] : 0);
  }
}

/// However wide the screen is, a value cell is no wider than the longest of its words.
int RowGrid::MostWidth(const QWidget& control, const Options& options) const {
  constexpr int charsOfAnyWord = 24;
  const QFontMetrics metrics = control.fontMetrics();
  int width = options.Words.isEmpty() ? metrics.averageCharWidth() * charsOfAnyWord : 0;
  for (const QString& word : options.Words) {
    width = std::max(width, metrics.horizontalAdvance(word + u' '));
  }
  const int frame = control.sizeHint().width() - metrics.averageCharWidth() * options.Chars;
  const int glyph = metrics.height();
  return std::max(width + frame, control.sizeHint().width()) + glyph;
}

void RowGrid::Place(QWidget* control, int row, const Options& options) {
  auto& controls = controls_[static_cast<std::size_t>(row)];
  if (auto* label = qobject_cast<Label*>(control)) {
    label->SetWidthInChars(options.Chars);
    label->SetAct(options.Act);
    if (options.Act != CellAct::Press) label->KeepWhole(options.Words);
    if (nameColumn_ != static_cast<int>(controls.size())) {
      label->setMaximumWidth(MostWidth(*label, options));
      if (!options.Header.isEmpty()) {
        headers_[static_cast<std::size_t>(row / rowsInColumn_)].back()->setMaximumWidth(
            label->maximumWidth());
      }
    }
  } else {
    control->setMinimumWidth(control->fontMetrics().averageCharWidth() * options.Chars + 8);
    if (qobject_cast<Button*>(control))
      control->setMinimumHeight(control->fontMetrics().height() + 4);
    if (!qobject_cast<ScrollBar*>(control)) control->setMaximumWidth(MostWidth(*control, options));
  }
  const int gridRow = row % rowsInColumn_ + 1;
  const int gridColumn = GridColumn(row) + columns_ - 1;
  if (options.SharesCell) {
    QLayoutItem* before = grid_->itemAtPosition(gridRow, gridColumn);
    auto* pair = qobject_cast<QHBoxLayout*>(before->layout());
    if (!pair) {
      pair = new QHBoxLayout;
      pair->setSpacing(3);
      QWidget* first = before->widget();
      grid_->removeWidget(first);
      pair->addWidget(first, 1);
      grid_->addLayout(pair, gridRow, gridColumn);
      // Alone it is as wide as both.
      first->setMaximumWidth(first->maximumWidth() + pair->spacing() + control->maximumWidth());
    }
    pair->addWidget(control, 1);
  } else {
    grid_->addWidget(control, gridRow, gridColumn);
  }
  controls.push_back(control);
  control->installEventFilter(this);
  Describe(row);
}

/// "FOYER, Relay 03, Timers": the user's own name first, as that is what tells rows apart.
void RowGrid::Describe(int row) {
  const auto index = static_cast<std::size_t>(row);
  const QString& title = titles_[index];
  const auto& controls = controls_[index];
  QString item = title;
  if (nameColumn_ >= 0 && nameColumn_ < static_cast<int>(controls.size())) {
    const QString name =
        static_cast<Label*>(controls[static_cast<std::size_t>(nameColumn_)])->Caption().trimmed();
    if (!name.isEmpty() && name.compare(title, Qt::CaseInsensitive) != 0)
      item = name + QStringLiteral(", ") + title;
  }
  for (std::size_t i = 0; i < controls.size(); ++i) {
    QWidget* control = controls[i];
    const QString& header = options_[i].HeaderText;
    const bool isName = static_cast<int>(i) == nameColumn_;
    if (isName) control->setToolTip(title);
    const QString told = isName             ? title
                         : header.isEmpty() ? item
                                            : item + QStringLiteral(", ") + header;
    // The toolkit tells screen readers an equal name anew.
    if (told != control->accessibleName()) control->setAccessibleName(told);
  }
}

void RowGrid::SetRowTitle(int row, const QString& title) {
  titles_[static_cast<std::size_t>(row)] = title;
  Describe(row);
}

void RowGrid::TabByRows() {
  tabsByRows_ = true;
  QWidget* before = nullptr;
  for (const auto& row : controls_) {
    for (QWidget* control : row) {
      // A label learns whether it takes the focus when it is polished.
      control->ensurePolished();
      if (!(control->focusPolicy() & Qt::TabFocus)) continue;
      if (before) setTabOrder(before, control);
      before = control;
    }
  }
}

void RowGrid::SetRowVisible(int row, bool visible) {
  for (QWidget* control : controls_[static_cast<std::size_t>(row)]) control->setVisible(visible);
}

void RowGrid::ShowRows(int count) {
  for (int row = 0; row < rows_; ++row) SetRowVisible(row, row < count);
  for (std::size_t block = 0; block < headers_.size(); ++block) {
    const bool shown = count > static_cast<int>(block) * rowsInColumn_;
    for (QWidget* header : headers_[block]) header->setVisible(shown);
    StretchBlock(static_cast<int>(block), shown);
  }
  // Rows that are hidden while the grid is hidden would keep their room.
  grid_->invalidate();
  updateGeometry();
}

bool RowGrid::Walkable(Cell cell) const {
  const auto row = static_cast<std::size_t>(cell.Row);
  if (cell.Row < 0 || cell.Row >= rows_ || cell.Column < 0 ||
      cell.Column >= static_cast<int>(controls_[row].size())) {
    return false;
  }
  const QWidget* control = At(cell);
  return control->isVisibleTo(this) && control->isEnabled() &&
         control->focusPolicy() & Qt::TabFocus;
}

QWidget* RowGrid::At(Cell cell) const {
  return controls_[static_cast<std::size_t>(cell.Row)][static_cast<std::size_t>(cell.Column)];
}

std::optional<RowGrid::Cell> RowGrid::CellOf(const QObject* control) const {
  for (int row = 0; row < rows_; ++row) {
    const auto& controls = controls_[static_cast<std::size_t>(row)];
    const auto found = std::find(controls.begin(), controls.end(), control);
    if (found != controls.end()) return Cell{row, static_cast<int>(found - controls.begin())};
  }
  return std::nullopt;
}

/// Goes on by a step until a cell takes the focus; past the last control of a row the walk goes on
/// in the same row of the next grid column.
void RowGrid::Walk(Cell from, int rowStep, int columnStep) {
  selection_.Forget();
  const int columns = static_cast<int>(controls_[static_cast<std::size_t>(from.Row)].size());
  for (int step = 0; step < rows_ * columns; ++step) {
    from.Row += rowStep;
    from.Column += columnStep;
    if (from.Column < 0 || from.Column >= columns) {
      from.Row += columnStep * rowsInColumn_;
      from.Column = from.Column < 0 ? columns - 1 : 0;
    }
    if (from.Row < 0 || from.Row >= rows_) return;
    if (Walkable(from)) {
      At(from)->setFocus(Qt::OtherFocusReason);
      return;
    }
  }
}

/// The cell nearest to `from` towards `to` in its column of controls.
void RowGrid::WalkTo(Cell from, int to) {
  selection_.Forget();
  const int step = to < from.Row ? 1 : -1;
  for (Cell cell{to, from.Column}; cell.Row != from.Row; cell.Row += step) {
    if (Walkable(cell)) {
      At(cell)->setFocus(Qt::OtherFocusReason);
      return;
    }
  }
}

/// A text that the column judges: Left at its start, Right at its end and both while all of it is
/// selected walk on; Enter ends the edit, and goes on to the next such text if this one will do.
bool RowGrid::EndsText(Cell cell, const QKeyEvent& key) {
  auto* box = qobject_cast<TextBox*>(At(cell));
  const bool left = key.key() == Qt::Key_Left;
  if (!box || !ColumnOf(cell).Refuses ||
      (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
    return false;
  }
  if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
    const bool does = ColumnOf(cell).Refuses(cell.Row, box->text()).isEmpty();
    Q_EMIT box->editingFinished();
    if (does) WalkToNextText(cell);
    return true;
  }
  if (!left && key.key() != Qt::Key_Right) return false;
  const auto length = static_cast<int>(box->text().size());
  const bool whole = box->selectedText().size() == length;
  if (!whole && box->cursorPosition() != (left ? 0 : length)) return false;
  Walk(cell, 0, left ? -1 : 1);
  return true;
}

/// The next that its column judges, in this row or in those below.
void RowGrid::WalkToNextText(Cell from) {
  selection_.Forget();
  const int columns = ColumnCount();
  for (int at = from.Row * columns + from.Column + 1; at < rows_ * columns; ++at) {
    const Cell cell{at / columns, at % columns};
    if (!ColumnOf(cell).Refuses || !qobject_cast<TextBox*>(At(cell)) || !Walkable(cell)) continue;
    At(cell)->setFocus(Qt::OtherFocusReason);
    return;
  }
}

QWidget* RowGrid::Stop() const {
  if (current_ && Walkable(*current_)) return At(*current_);
  QWidget* name = nullptr;
  for (Cell cell{0, 0}; cell.Row < rows_; ++cell.Row) {
    const int columns = static_cast<int>(controls_[static_cast<std::size_t>(cell.Row)].size());
    for (cell.Column = 0; cell.Column < columns; ++cell.Column) {
      if (!Walkable(cell)) continue;
      if (cell.Column != nameColumn_) return At(cell);
      if (!name) name = At(cell);
    }
  }
  return name;
}

bool RowGrid::FocusCell() {
  QWidget* stop = Stop();
  if (stop) stop->setFocus(Qt::OtherFocusReason);
  return stop != nullptr;
}

bool RowGrid::FocusRow(int row) {
  if (row < 0 || row >= rows_) return false;
  const int columns = static_cast<int>(controls_[static_cast<std::size_t>(row)].size());
  for (Cell cell{row, 0}; cell.Column < columns; ++cell.Column) {
    // A name is no setting of its row, except where names are edited.
    if (!Walkable(cell) || cell.Column == nameColumn_) continue;
    At(cell)->setFocus(Qt::OtherFocusReason);
    return true;
  }
  return false;
}

void RowGrid::keyPressEvent(QKeyEvent* event) {
  const auto cell = CellOf(QApplication::focusWidget());
  if (!cell) {
    QWidget::keyPressEvent(event);
    return;
  }
  const bool whole = event->modifiers() & Qt::ControlModifier;
  const int blockStart = cell->Row / rowsInColumn_ * rowsInColumn_;
  const int blockEnd = std::min(blockStart + rowsInColumn_, rows_) - 1;
  switch (event->key()) {
    case Qt::Key_Up:
      Walk(*cell, -1, 0);
      break;
    case Qt::Key_Down:
      Walk(*cell, 1, 0);
      break;
    case Qt::Key_Left:
      Walk(*cell, 0, -1);
      break;
    case Qt::Key_Right:
      Walk(*cell, 0, 1);
      break;
    case Qt::Key_Home:
      WalkTo(*cell, whole ? 0 : blockStart);
      break;
    case Qt::Key_End:
      WalkTo(*cell, whole ? rows_ - 1 : blockEnd);
      break;
    case Qt::Key_PageUp:
      WalkTo(*cell, std::max(cell->Row - RowsInColumn, 0));
      break;
    case Qt::Key_PageDown:
      WalkTo(*cell, std::min(cell->Row + RowsInColumn, rows_ - 1));
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

/// Tab leaves the grid from any of its cells.
bool RowGrid::focusNextPrevChild(bool next) {
  QWidget* focus = QApplication::focusWidget();
  if (tabsByRows_ || !focus || !CellOf(focus)) return QWidget::focusNextPrevChild(next);
  const auto step = [next](QWidget* widget) {
    return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
  };
  for (QWidget* widget = step(focus); widget != focus; widget = step(widget)) {
    if (isAncestorOf(widget)) continue;
    if (widget->focusPolicy() & Qt::TabFocus && widget->isVisible() && widget->isEnabled() &&
        widget->window() == window()) {
      widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
      return true;
    }
  }
  return QWidget::focusNextPrevChild(next);
}

bool RowGrid::eventFilter(QObject* watched, QEvent* event) {
  const auto cell = CellOf(watched);
  if (!cell) return QWidget::eventFilter(watched, event);
  const auto& control = *static_cast<QWidget*>(watched);
  switch (event->type()) {
    case QEvent::FocusIn:
      KeepFocusCell(*cell, static_cast<QFocusEvent*>(event)->reason());
      break;
    case QEvent::KeyPress:
      if (selection_.TakesKey(control, *static_cast<QKeyEvent*>(event)) ||
          EndsText(*cell, *static_cast<QKeyEvent*>(event))) {
        return true;
      }
      break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
      if (selection_.TakesMouse(*static_cast<QMouseEvent*>(event), *cell)) return true;
      break;
    case QEvent::ContextMenu: {
      const auto* label = qobject_cast<const Label*>(&control);
      if (!label || label->MouseDown || !selection_.ValueOf(*cell)) break;
      selection_.ShowMenu(*cell, static_cast<QContextMenuEvent*>(event)->globalPos());
      return true;
    }
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

/// Tab comes back to the cell that it left.
void RowGrid::KeepFocusCell(Cell cell, Qt::FocusReason reason) {
  const bool tabbed = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
  QWidget* wanted = Stop();
  if (tabbed && !tabsByRows_ && wanted != At(cell)) {
    QMetaObject::invokeMethod(
        wanted, [wanted] { wanted->setFocus(Qt::OtherFocusReason); }, Qt::QueuedConnection);
  } else {
    current_ = cell;
  }
}

void RowGrid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  selection_.Cover();
}

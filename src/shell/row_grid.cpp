#include "shell/row_grid.h"

#include <QApplication>

#include "panel/code_page.h"

QString TwoDigits(int number) {
  return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

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

RowGrid::RowGrid(int rows, const QString& word)
    : rows_(rows),
      titles_(static_cast<std::size_t>(rows)),
      visible_(static_cast<std::size_t>(rows), true),
      controls_(static_cast<std::size_t>(rows)),
      headers_(static_cast<std::size_t>((rows + RowsInColumn - 1) / RowsInColumn)) {
  for (int row = 0; row < rows; ++row)
    titles_[static_cast<std::size_t>(row)] = word + TwoDigits(row + 1);
  grid_ = new QGridLayout(this);
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setHorizontalSpacing(3);
  grid_->setVerticalSpacing(2);
  for (int block = 1; block < static_cast<int>(headers_.size()); ++block) {
    grid_->setColumnMinimumWidth(block * columnsPerBlock - 1, 8);
  }
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

ControlArray<Label> RowGrid::AddNames(const char* name, int chars) {
  nameColumn_ = columns_;
  auto names = Add<Label>(name, {.Chars = chars});
  for (int row = 0; row < rows_; ++row) {
    names(row).SetGrowsWithCaption();
    Describe(row);
  }
  return names;
}

void RowGrid::BeginColumn(const Options& options) {
  headerTexts_.push_back(options.HeaderText);
  if (!options.SharesCell) ++columns_;
  // Names take the room that they need, values the rest.
  const bool names = nameColumn_ == static_cast<int>(headerTexts_.size()) - 1;
  for (int block = 0; block < static_cast<int>(headers_.size()); ++block) {
    grid_->setColumnStretch(block * columnsPerBlock + columns_ - 1, names ? 0 : 1);
  }
  if (!options.Header) return;
  for (std::size_t block = 0; block < headers_.size(); ++block) {
    auto* header = new Label;
    header->setObjectName(
        QStringLiteral("%1(%2)").arg(QString::fromLatin1(options.Header)).arg(block));
    header->SetCaption(options.HeaderText);
    grid_->addWidget(header, 0, static_cast<int>(block) * columnsPerBlock + columns_ - 1);
    headers_[block].push_back(header);
  }
}

void RowGrid::Place(QWidget* control, int row, const Options& options) {
  auto& controls = controls_[static_cast<std::size_t>(row)];
  if (auto* label = qobject_cast<Label*>(control)) {
    label->SetWidthInChars(options.Chars);
  } else {
    control->setMinimumWidth(control->fontMetrics().averageCharWidth() * options.Chars + 8);
  }
  const int gridRow = row % RowsInColumn + 1;
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
    }
    pair->addWidget(control, 1);
  } else {
    grid_->addWidget(control, gridRow, gridColumn);
  }
  controls.push_back(control);
  Describe(row);
}

void RowGrid::Describe(int row) {
  const auto index = static_cast<std::size_t>(row);
  const QString& title = titles_[index];
  for (std::size_t i = 0; i < controls_[index].size(); ++i) {
    QWidget* control = controls_[index][i];
    const QString& header = headerTexts_[i];
    control->setAccessibleName(header.isEmpty() ? title : title + QStringLiteral(", ") + header);
    if (static_cast<int>(i) == nameColumn_) control->setToolTip(title);
  }
}

void RowGrid::SetRowTitle(int row, const QString& title) {
  titles_[static_cast<std::size_t>(row)] = title;
  Describe(row);
}

void RowGrid::TabByRows() {
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
  visible_[static_cast<std::size_t>(row)] = visible;
  for (QWidget* control : controls_[static_cast<std::size_t>(row)]) control->setVisible(visible);
}

void RowGrid::ShowRows(int count) {
  for (int row = 0; row < rows_; ++row) SetRowVisible(row, row < count);
  for (std::size_t block = 0; block < headers_.size(); ++block) {
    for (QWidget* header : headers_[block]) {
      header->setVisible(count > static_cast<int>(block) * RowsInColumn);
    }
  }
}

void RowGrid::keyPressEvent(QKeyEvent* event) {
  int rowStep = 0;
  int controlStep = 0;
  switch (event->key()) {
    case Qt::Key_Up:
      rowStep = -1;
      break;
    case Qt::Key_Down:
      rowStep = 1;
      break;
    case Qt::Key_Left:
      controlStep = -1;
      break;
    case Qt::Key_Right:
      controlStep = 1;
      break;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  const QWidget* focus = QApplication::focusWidget();
  for (int row = 0; row < rows_; ++row) {
    const auto& controls = controls_[static_cast<std::size_t>(row)];
    const auto found = std::find(controls.begin(), controls.end(), focus);
    if (found == controls.end()) continue;
    int at = static_cast<int>(found - controls.begin());
    // Past the last control of a row the walk goes on in the same row of the next grid column.
    for (int step = 0; step < rows_ * static_cast<int>(controls.size()); ++step) {
      row += rowStep;
      at += controlStep;
      if (at < 0 || at >= static_cast<int>(controls.size())) {
        row += controlStep * RowsInColumn;
        at = at < 0 ? static_cast<int>(controls.size()) - 1 : 0;
      }
      if (row < 0 || row >= rows_) return;
      QWidget* next = controls_[static_cast<std::size_t>(row)][static_cast<std::size_t>(at)];
      if (next->isVisible() && next->isEnabled() && next->focusPolicy() & Qt::TabFocus) {
        next->setFocus(Qt::OtherFocusReason);
        return;
      }
    }
    return;
  }
}

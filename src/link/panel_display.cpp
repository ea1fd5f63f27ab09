#include "link/panel_display.h"

#include <QFontDatabase>
#include <QGridLayout>

ControlArray<Label> AddDisplayCells(QWidget* display, int rows, const char* name, double scale) {
  auto* grid = new QGridLayout(display);
  grid->setContentsMargins(6, 6, 6, 6);
  grid->setSpacing(1);
  QPalette edge;
  edge.setColor(QPalette::Window, QColor(DisplayEdge));
  display->setPalette(edge);
  display->setAutoFillBackground(true);
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(display->font().pointSizeF() * scale);
  ControlArray<Label> cells;
  for (int i = 0; i < rows * DisplayColumns; ++i) {
    auto* cell = new Label;
    cell->setFont(fixed);
    cell->SetAlignment(Qt::AlignCenter);
    cell->SetBackColor(DisplayColor);
    cell->SetCaption(QStringLiteral(" "));
    grid->addWidget(cell, i / DisplayColumns, i % DisplayColumns);
    cells.Add(cell, QString::fromLatin1(name));
  }
  return cells;
}

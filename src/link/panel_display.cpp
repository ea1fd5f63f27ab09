#include "link/panel_display.h"

#include <QFontDatabase>
#include <QGridLayout>

ControlArray<Label> AddDisplayCells(DescribedWidget* display, int rows, const char* name,
                                    double scale) {
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
  display->Description = [cells] {
    QString text;
    for (int i = 0; i < cells.Count(); ++i) {
      if (i > 0 && i % DisplayColumns == 0) text += u'\n';
      // A symbol of the panel's own stands in its place.
      text += cells(i).isHidden() ? QStringLiteral("*") : cells(i).Caption().leftJustified(1);
    }
    return text;
  };
  return cells;
}

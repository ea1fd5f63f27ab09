#include "config/name_display.h"

#include <QHBoxLayout>

#include "panel/code_page.h"

namespace {

constexpr int CellChars = 2;

}  // namespace

NameDisplay::NameDisplay(int cells) : QGroupBox(QStringLiteral("As Displayed On Tamberloom 3")) {
  setObjectName(QStringLiteral("frmAsDisplayed"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(6, 3, 6, 4);
  row->setSpacing(1);
  row->setAlignment(Qt::AlignLeft);
  for (int i = 0; i < cells; ++i) {
    auto* cell = new Label;
    cell->SetWidthInChars(CellChars);
    cell->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    cell->SetAlignment(Qt::AlignCenter);
    cell->SetBackColor(Colors::PaleGrey);
    row->addWidget(cell);
    lblPanelChar.Add(cell, QStringLiteral("lblPanelChar"));
  }
}

void NameDisplay::ShowName(const std::string& name) {
  const QString text = ToUnicode(name);
  for (int i = 0; i < lblPanelChar.Count(); ++i) lblPanelChar(i).SetCaption(text.mid(i, 1));
  setAccessibleDescription(text.left(lblPanelChar.Count()));
}

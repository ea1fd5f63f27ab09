#include "simulator/window/fold_box.h"

#include <QToolButton>
#include <QVBoxLayout>

namespace simulator {

FoldBox::FoldBox(const QString& caption, QWidget* content, bool open)
    : Caption(new QToolButton), Content(content) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  Caption->setText(caption);
  Caption->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  Caption->setAutoRaise(true);
  Caption->setCheckable(true);
  Caption->setObjectName(QStringLiteral("fold"));
  column->addWidget(Caption, 0, Qt::AlignLeft);
  column->addWidget(Content);
  connect(Caption, &QToolButton::toggled, this, [this](bool on) { SetOpen(on); });
  SetOpen(open);
}

bool FoldBox::IsOpen() const {
  return Caption->isChecked();
}

void FoldBox::SetOpen(bool open) {
  Caption->setChecked(open);
  Caption->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
  Caption->setAccessibleDescription(open ? QStringLiteral("open") : QStringLiteral("folded"));
  Content->setVisible(open);
}

}  // namespace simulator

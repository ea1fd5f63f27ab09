#include "link/recent_list.h"

#include <QVBoxLayout>

RecentList::RecentList(TextBox* box, Typed kind, const char* name) : box_(box), kind_(kind) {
  constexpr int most = 4;
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  for (int i = 0; i < most; ++i) {
    auto* row = new Label;
    row->SetLook(Label::Look::WebLink);
    row->setToolTip(QStringLiteral("Used before. A press puts it into the box."));
    column->addWidget(row, 0, Qt::AlignLeft);
    rows_.Add(row, QString::fromLatin1(name));
    row->Click = [this, i] {
      box_->TypeOver(rows_(i).Caption());
      box_->setFocus();
    };
  }
  // The screen is laid out before it is filled.
  setVisible(false);
}

void RecentList::ShowFor(bool wanted) {
  const QStringList texts = wanted ? RecentlyTyped(kind_) : QStringList();
  for (int i = 0; i < rows_.Count(); ++i) {
    rows_(i).SetCaption(texts.value(i));
    rows_(i).setVisible(i < texts.size());
  }
  setVisible(!texts.isEmpty());
}

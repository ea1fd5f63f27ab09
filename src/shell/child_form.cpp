#include "shell/child_form.h"

#include <QLabel>
#include <QMouseEvent>

#include "shell/in_place_list.h"

ChildForm::ChildForm(const QString& name, const QString& caption) : caption_(caption) {
  setObjectName(name);
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(12, 8, 12, 8);
  body_ = new QVBoxLayout;
  body_->setSpacing(8);
  outer->addLayout(body_);
  outer->addStretch(1);
}

void ChildForm::CloseLists() {
  for (auto* list : findChildren<InPlaceList*>()) list->Close();
}

QHBoxLayout* ChildForm::AddRow() {
  auto* row = new QHBoxLayout;
  row->setAlignment(Qt::AlignLeft);
  body_->addLayout(row);
  return row;
}

QGroupBox* ChildForm::AddFrame(const char* name, const QString& title) {
  auto* frame = new QGroupBox(title);
  frame->setObjectName(QString::fromLatin1(name));
  body_->addWidget(frame);
  return frame;
}

void ChildForm::AddWidget(QWidget* widget) {
  body_->addWidget(widget);
}

void ChildForm::UseSpareHeight() {
  constexpr int muchMore = 100;
  static_cast<QBoxLayout*>(layout())->setStretchFactor(body_, muchMore);
}

void ChildForm::AddHint(const QString& text) {
  auto* hint = new QLabel(text);
  hint->setObjectName(QStringLiteral("lblHint"));
  hint->setTextFormat(Qt::PlainText);
  hint->setWordWrap(true);
  hint->setForegroundRole(QPalette::PlaceholderText);
  layout()->addWidget(hint);
}

Label* ChildForm::AddLabel(QBoxLayout* layout, const char* name, const QString& caption) {
  auto* label = Add<Label>(layout, name);
  label->SetCaption(caption);
  label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  return label;
}

ComboBox* ChildForm::AddList(QBoxLayout* layout, const char* name, const QString& caption,
                             int captionChars) {
  auto* label = AddLabel(layout, name, caption);
  label->setObjectName(
      QString::fromLatin1(name).replace(QLatin1String("cbo"), QLatin1String("lbl")));
  label->SetWidthInChars(captionChars);
  auto* list = Add<ComboBox>(layout, name);
  list->setAccessibleName(caption);
  if (captionChars > 0) list->setMinimumWidth(fontMetrics().averageCharWidth() * 20);
  return list;
}

void ChildForm::mousePressEvent(QMouseEvent*) {
  RunHandler([this] { Form_Click(); });
}

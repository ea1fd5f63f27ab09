#include "shell/controls/child_form.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>

#include "shell/controls/in_place_list.h"
#include "shell/controls/row_grid.h"

ChildForm::ChildForm(Screen name, const QString& caption) : name_(name), caption_(caption) {
  setObjectName(QString::fromLatin1(ScreenName(name)));
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(12, 8, 12, 8);
  body_ = new QVBoxLayout;
  body_->setSpacing(8);
  outer->addLayout(body_);
  outer->addStretch(1);
}

void ChildForm::CloseLists() {
  for (auto* list : findChildren<InPlaceList*>()) list->Close();
  if (QWidget* popup = QApplication::activePopupWidget()) {
    if (auto* list = qobject_cast<ComboBox*>(popup->parentWidget())) list->hidePopup();
  }
}

int ChildForm::heightForWidth(int width) const {
  return layout()->totalMinimumHeightForWidth(width);
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

void ChildForm::AddHint(const QString& text, QBoxLayout* to) {
  auto* hint = new QLabel(text);
  hint->setObjectName(QStringLiteral("lblHint"));
  hint->setTextFormat(Qt::PlainText);
  hint->setWordWrap(true);
  hint->setMinimumHeight(fontMetrics().height());  // not that of the narrowest screen
  hint->setForegroundRole(QPalette::PlaceholderText);
  (to ? to : layout())->addWidget(hint);
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

QWidget* StopAt(QWidget* control) {
  if (auto* option = qobject_cast<OptionButton*>(control)) return option->Chosen();
  if (auto* grid = qobject_cast<RowGrid*>(control->parentWidget())) return grid->Stop();
  return control;
}

QWidget* ChildForm::FirstFocus() {
  for (QWidget* child = nextInFocusChain(); child && child != this;
       child = child->nextInFocusChain()) {
    if (isAncestorOf(child) && child->focusPolicy() & Qt::TabFocus && child->isEnabled() &&
        child->isVisibleTo(this)) {
      return StopAt(child);
    }
  }
  return nullptr;
}

void ChildForm::AddSelector(ComboBox* list) {
  list->ChoosesItem = true;
  selectors_.push_back(list);
}

void ChildForm::ShowAnew() {
  std::vector<std::pair<ComboBox*, int>> chosen;
  for (auto* list : findChildren<ComboBox*>()) {
    if (list->ChoosesItem) chosen.emplace_back(list, list->ListIndex());
  }
  CloseLists();
  RunHandler([this] { Form_Activate(); });
  for (const auto& [list, item] : chosen) {
    if (item >= 0 && item < list->count()) list->SetListIndex(item);
  }
}

void ChildForm::StepItem(int step) {
  if (!Selector()) return;
  CloseLists();
  const QPointer<QWidget> focus = window()->focusWidget();
  ChooseBeside(step);
  if (focus && focus->isVisible()) return;
  for (auto* grid : findChildren<RowGrid*>()) {
    if (grid->isVisible() && grid->FocusCell()) return;
  }
  if (QWidget* selector = Selector()) FocusWithoutGrid(selector)->setFocus(Qt::OtherFocusReason);
}

QWidget* ChildForm::Selector() const {
  const auto found = std::find_if(selectors_.rbegin(), selectors_.rend(), [](ComboBox* list) {
    return list->isVisible() && list->isEnabled();
  });
  return found == selectors_.rend() ? nullptr : *found;
}

void ChildForm::ChooseBeside(int step) {
  auto* selector = static_cast<ComboBox*>(ChildForm::Selector());
  const int item = selector->ListIndex() + step;
  if (item >= 0 && item < selector->count()) selector->Choose(item);
}

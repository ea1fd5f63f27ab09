#include "shell/window/screen_stack.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <algorithm>

#include "shell/controls/row_grid.h"
#include "shell/shell.h"
#include "shell/window/step_buttons.h"

ScreenStack::ScreenStack(const std::vector<ScreenEntry>& screens, MarkLine* marks, History& history)
    : screens_(screens), lblMark_(marks) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);

  captionLine_ = new QWidget;
  captionLine_->setAutoFillBackground(true);
  captionLine_->setBackgroundRole(QPalette::Midlight);
  captionLine_->hide();
  auto* line = new QHBoxLayout(captionLine_);
  line->setContentsMargins(12, 2, 4, 2);
  lblTitle_ = new QLabel;
  lblTitle_->setObjectName(QStringLiteral("lblTitle"));
  QFont bold = font();
  bold.setBold(true);
  lblTitle_->setFont(bold);
  line->addWidget(lblTitle_);
  line->addWidget(lblMark_, 1);
  AddStepButtons(*line, history);
  cmdClose_ = new QToolButton;
  cmdClose_->setObjectName(QStringLiteral("cmdClose"));
  cmdClose_->setText(QStringLiteral("\u00d7"));
  cmdClose_->setAutoRaise(true);
  cmdClose_->setToolTip(QStringLiteral("Close this screen (Ctrl+W)"));
  cmdClose_->setAccessibleName(QStringLiteral("Close this screen"));
  cmdClose_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
  connect(cmdClose_, &QToolButton::clicked, this, [this] { RunHandler([this] { ShowAbout(); }); });
  line->addWidget(cmdClose_);
  column->addWidget(captionLine_);

  pages_ = new QStackedWidget;
  column->addWidget(pages_, 1);
  auto* picBlockFlashing = new QWidget;
  picBlockFlashing->setObjectName(QStringLiteral("picBlockFlashing"));
  auto* centre = new QVBoxLayout(picBlockFlashing);
  auto* lblLoading = new QLabel(QStringLiteral("Loading Orv Tamberloom 3..."));
  lblLoading->setObjectName(QStringLiteral("lblLoading"));
  centre->addWidget(lblLoading, 0, Qt::AlignCenter);
  pages_->addWidget(picBlockFlashing);
}

ChildForm* ScreenStack::Show(Screen screen) {
  auto found = loaded_.find(screen);
  if (found == loaded_.end()) {
    const ScreenEntry& entry = screens_[static_cast<std::size_t>(screen)];
    if (!entry.Create) return nullptr;
    ChildForm* form = entry.Create(screen);
    auto* page = new QScrollArea;
    page->setWidgetResizable(true);
    page->setFrameShape(QFrame::NoFrame);
    page->setFocusPolicy(Qt::NoFocus);
    ScrollToFocus(*page);
    found = loaded_.emplace(screen, LoadedScreen{form, page}).first;
    form->Form_Load();
    page->setWidget(form);
    pages_->addWidget(page);
  }
  front_ = screen;
  const LoadedScreen shown = found->second;
  lblTitle_->setText(shown.Form->Caption());
  captionLine_->setVisible(screen != Screen::About);
  const Showing showing;
  // A failure while the screen fills itself is told, and the screen shows what it has.
  RunHandler([&] { shown.Form->Form_Activate(); });
  if (front_ == screen) BringToFront(shown);
  return shown.Form;
}

void ScreenStack::BringToFront(const LoadedScreen& screen) {
  lblMark_->ForgetNews();
  pages_->setCurrentWidget(screen.Page);
  if (QWidget* first = screen.Form->FirstFocus()) first->setFocus(Qt::OtherFocusReason);
}

ChildForm* ScreenStack::Loaded(Screen screen) const {
  const auto found = loaded_.find(screen);
  return found == loaded_.end() ? nullptr : found->second.Form;
}

void ScreenStack::Unload(Screen screen) {
  const auto found = loaded_.find(screen);
  if (found == loaded_.end()) return;
  const LoadedScreen unloaded = found->second;
  loaded_.erase(found);
  if (front_ == screen) front_ = Screen::None;
  try {
    unloaded.Form->Form_Unload();
  } catch (const std::exception&) {
    // Closing a screen goes on whatever its own tidying meets.
  }
  pages_->removeWidget(unloaded.Page);
  unloaded.Page->hide();
  unloaded.Page->setParent(nullptr);
  if (HandlerDepth() > 0) {
    retired_.push_back(unloaded.Page);
  } else {
    unloaded.Page->deleteLater();
  }
}

void ScreenStack::UnloadAll() {
  for (const ScreenEntry& entry : screens_) {
    ChildForm* form = Loaded(entry.Name);
    if (form && form->StaysLoaded()) {
      form->Form_Hide();
    } else {
      Unload(entry.Name);
    }
  }
  front_ = Screen::None;
}

void ScreenStack::UnloadForGood() {
  for (const ScreenEntry& entry : screens_) Unload(entry.Name);
}

void ScreenStack::PutPanelBack() {
  ChildForm* form = FrontForm();
  if (!form) return;
  try {
    form->PutPanelBack();
  } catch (const std::exception&) {
    // The program ends whatever the line says.
  }
}

void ScreenStack::ShowAbout() {
  UnloadAll();
  Show(Screen::About);
}

void ScreenStack::DeleteRetired() {
  for (QWidget* page : retired_) page->deleteLater();
  retired_.clear();
}

void ScreenStack::GoToOtherPart() {
  const ChildForm* form = FrontForm();
  if (!form) return;
  const QWidget* focus = window()->focusWidget();
  for (auto* grid : form->findChildren<RowGrid*>()) {
    if (grid->isVisible() && !grid->isAncestorOf(focus) && grid->FocusCell()) return;
  }
  const auto inGrid = [form](const QWidget* control) {
    const auto grids = form->findChildren<RowGrid*>();
    return std::any_of(grids.begin(), grids.end(),
                       [control](const RowGrid* grid) { return grid->isAncestorOf(control); });
  };
  for (auto* control : form->findChildren<QWidget*>()) {
    if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisible() ||
        !control->isEnabled() || inGrid(control)) {
      continue;
    }
    StopAt(control)->setFocus(Qt::OtherFocusReason);
    return;
  }
}

#include <QApplication>
#include <QKeyEvent>

#include "shell/controls/row_grid.h"
#include "shell/window/guide_window.h"
#include "shell/window/history.h"
#include "shell/window/main_window.h"

// The keys that are the main window's.

/// The keys that mean the same wherever the focus is. F1 is the guide's, in dialogs and open lists
/// too; Ctrl+Page Up and Down are the screen's.
bool frmT3MasterMDI::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = event->type() == QEvent::KeyPress;
  if ((pressed || event->type() == QEvent::MouseButtonPress) && newsStays_) TellNews({});
  if (watched == lblMark_ && event->type() == QEvent::ToolTip) ShowMarkTip();
  if (pressed || event->type() == QEvent::MouseButtonPress) history_->SetTyping(pressed);
  if (!pressed || ending_) return QMainWindow::eventFilter(watched, event);
  const auto& key = *static_cast<QKeyEvent*>(event);
  const bool pageUp = key.key() == Qt::Key_PageUp;
  if ((pageUp || key.key() == Qt::Key_PageDown) &&
      (key.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier) {
    return StepItem(watched, pageUp ? -1 : 1);
  }
  const auto held = key.modifiers();
  const bool back = key.key() == Qt::Key_Z && held == Qt::ControlModifier;
  if (back || (key.key() == Qt::Key_Y && held == Qt::ControlModifier) ||
      (key.key() == Qt::Key_Z && held == (Qt::ControlModifier | Qt::ShiftModifier))) {
    return StepHistory(watched, back);
  }
  if (!key.matches(QKeySequence::HelpContents)) return QMainWindow::eventFilter(watched, event);
  const QWidget* dialog = QApplication::activeModalWidget();
  const Screen ofDialog = dialog ? ScreenNamed(dialog->objectName().toStdString()) : Screen::None;
  ShowGuide(GuidePage(ofDialog != Screen::None ? ofDialog : front_));
  return true;
}

/// The window of a control; of an open list that over which it stands.
QWidget* frmT3MasterMDI::WindowOf(const QWidget& control) {
  auto* list = qobject_cast<ComboBox*>(control.window()->parentWidget());
  return list ? list->window() : control.window();
}

/// Whether the key was a screen's, which has no other use for it.
bool frmT3MasterMDI::StepItem(const QObject* pressedOn, int step) {
  const auto* widget = qobject_cast<const QWidget*>(pressedOn);
  if (!widget) return false;
  const QWidget* over = WindowOf(*widget);
  if (over != this) return ScreenNamed(over->objectName().toStdString()) != Screen::None;
  if (ChildForm* form = LoadedForm(front_)) RunHandler([&] { form->StepItem(step); });
  return true;
}

/// Whether the key was the program's. A text that the project does not hold has its own steps.
bool frmT3MasterMDI::StepHistory(QObject* pressedOn, bool back) {
  auto* control = qobject_cast<QWidget*>(pressedOn);
  if (!control || WindowOf(*control) != this) return false;
  const auto* box = qobject_cast<TextBox*>(control);
  const bool has = box && (back ? box->isUndoAvailable() : box->isRedoAvailable());
  if (has && box->UndoesItself) return false;
  if (QWidget* list = QApplication::activePopupWidget()) list->close();
  RunHandler([&] { back ? history_->Undo() : history_->Redo(); });
  return true;
}

/// From the screen's grid to its other controls and back.
void frmT3MasterMDI::GoToOtherPart() {
  const ChildForm* form = LoadedForm(front_);
  if (!form) return;
  const QWidget* focus = focusWidget();
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

#include "shell/window/program_keys.h"

#include <QApplication>
#include <QKeyEvent>

#include "shell/controls/dialogs.h"
#include "shell/shell.h"
#include "shell/window/guide_window.h"
#include "shell/window/history.h"
#include "shell/window/screen_stack.h"

namespace {

/// The window of a control; of an open list that over which it stands.
QWidget* WindowOf(const QWidget& control) {
  auto* list = qobject_cast<ComboBox*>(control.window()->parentWidget());
  return list ? list->window() : control.window();
}

}  // namespace

bool ProgramKeys::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = event->type() == QEvent::KeyPress;
  if (pressed || event->type() == QEvent::MouseButtonPress) {
    marks_.GoOn();
    history_.SetTyping(pressed);
  }
  if (!pressed || ProgramEnding()) return false;
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
  if (!key.matches(QKeySequence::HelpContents)) return false;
  ShowGuide(PageOfFocus());
  return true;
}

/// That of the dialog in front; of a question without one that of the part of the screen which
/// asks, where the focus was.
QString ProgramKeys::PageOfFocus() const {
  const QWidget* dialog = QApplication::activeModalWidget();
  const Screen ofDialog = dialog ? ScreenNamed(dialog->objectName().toStdString()) : Screen::None;
  if (ofDialog != Screen::None) return GuidePage(ofDialog);
  QString page = GuidePageAround(dialog);
  if (dialog && page.isEmpty()) page = GuidePageAround(screens_.window()->focusWidget());
  return page.isEmpty() ? GuidePage(screens_.Front()) : page;
}

/// Whether the key was a screen's, which has no other use for it.
bool ProgramKeys::StepItem(const QObject* pressedOn, int step) {
  const auto* widget = qobject_cast<const QWidget*>(pressedOn);
  if (!widget) return false;
  const QWidget* over = WindowOf(*widget);
  if (over != screens_.window())
    return ScreenNamed(over->objectName().toStdString()) != Screen::None;
  if (ChildForm* form = screens_.FrontForm()) RunHandler([&] { form->StepItem(step); });
  return true;
}

/// Whether the key was the program's. A text that the project does not hold has its own steps.
bool ProgramKeys::StepHistory(QObject* pressedOn, bool back) {
  auto* control = qobject_cast<QWidget*>(pressedOn);
  if (!control || WindowOf(*control) != screens_.window()) return false;
  const auto* box = qobject_cast<TextBox*>(control);
  const bool has = box && (back ? box->isUndoAvailable() : box->isRedoAvailable());
  if (has && box->UndoesItself) return false;
  if (QWidget* list = QApplication::activePopupWidget()) list->close();
  RunHandler([&] { back ? history_.Undo() : history_.Redo(); });
  return true;
}

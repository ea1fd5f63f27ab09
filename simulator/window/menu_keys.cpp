#include "simulator/window/menu_keys.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace simulator {

namespace {

class MenuKeys : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ShortcutOverride) return false;
    const QKeySequence key(static_cast<QKeyEvent*>(event)->keyCombination());
    const QList<QAction*> actions = parent()->findChildren<QAction*>();
    const bool ours = std::any_of(actions.begin(), actions.end(), [&key](const QAction* action) {
      return action->isEnabled() && action->shortcut() == key;
    });
    if (ours) event->ignore();
    return ours;
  }
};

}  // namespace

void LetMenuKeysThrough(QWidget& window) {
  auto* keys = new MenuKeys(&window);
  for (QLineEdit* field : window.findChildren<QLineEdit*>()) field->installEventFilter(keys);
  // These have the focus in place of the field in them.
  for (QAbstractSpinBox* box : window.findChildren<QAbstractSpinBox*>()) {
    box->installEventFilter(keys);
  }
}

}  // namespace simulator

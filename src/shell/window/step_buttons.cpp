#include "shell/window/step_buttons.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>
#include <QUndoView>
#include <QWidgetAction>

#include "shell/controls/go_to_item.h"
#include "shell/window/history.h"
#include "shell/window/screen_stack.h"

namespace {

constexpr int MostListed = 100;

/// Steps, the last of them where the project stands. The list is the toolkit's; of a long history
/// it shows the end.
class StepList : public QUndoView {
 public:
  explicit StepList(QUndoStack* stack) : QUndoView(stack) {
    setObjectName(QStringLiteral("lstSteps"));
    setAccessibleName(QStringLiteral("Steps"));
    setEmptyLabel(QStringLiteral("As it was opened"));
    setMinimumSize(fontMetrics().averageCharWidth() * 50, fontMetrics().height() * 12);
  }

 protected:
  void showEvent(QShowEvent* event) override {
    const int rows = model()->rowCount();
    for (int row = 0; row < rows; ++row) setRowHidden(row, row < rows - 1 - MostListed);
    QUndoView::showEvent(event);
    scrollTo(currentIndex());
    setFocus();
  }
};

}  // namespace

void AddStepButtons(QHBoxLayout& line, History& history) {
  QUndoStack& stack = history.Stack();
  const auto add = [&](const char* name, const QString& sign, const QString& verb,
                       const QString& key, void (History::*go)(), bool can,
                       QString (QUndoStack::*words)() const) {
    auto* button = new QToolButton;
    button->setObjectName(QString::fromLatin1(name));
    button->setText(sign);
    button->setAutoRaise(true);
    constexpr double larger = 1.3;  // these signs are small ones
    QFont font = button->font();
    font.setPointSizeF(font.pointSizeF() * larger);
    button->setFont(font);
    button->setEnabled(can);
    const auto tell = [=, &stack] {
      const QString step = (stack.*words)();
      const QString told = step.isEmpty() ? verb : verb + u' ' + step;
      button->setAccessibleName(told);
      button->setToolTip(QStringLiteral("%1 (%2)").arg(told, key));
    };
    tell();
    QObject::connect(&stack, &QUndoStack::indexChanged, button, tell);
    QObject::connect(button, &QToolButton::clicked, &history,
                     [&history, go] { RunHandler([&] { (history.*go)(); }); });
    line.addWidget(button);
    return button;
  };
  auto* undo =
      add("cmdUndo", QStringLiteral("\u21b6"), QStringLiteral("Undo"), QStringLiteral("Ctrl+Z"),
          &History::Undo, stack.canUndo(), &QUndoStack::undoText);
  QObject::connect(&stack, &QUndoStack::canUndoChanged, undo, &QWidget::setEnabled);
  auto* redo =
      add("cmdRedo", QStringLiteral("\u21b7"), QStringLiteral("Redo"), QStringLiteral("Ctrl+Y"),
          &History::Redo, stack.canRedo(), &QUndoStack::redoText);
  QObject::connect(&stack, &QUndoStack::canRedoChanged, redo, &QWidget::setEnabled);

  auto* steps = new QToolButton;
  steps->setObjectName(QStringLiteral("cmdSteps"));
  steps->setArrowType(Qt::DownArrow);
  steps->setAutoRaise(true);
  steps->setAccessibleName(QStringLiteral("Steps"));
  steps->setToolTip(QStringLiteral("The last steps (Ctrl+Alt+Z)"));
  steps->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Z));
  line.addWidget(steps);
  auto* menu = new QMenu(steps);
  // Not the button's own menu, whose opening would wait for its end.
  QObject::connect(steps, &QToolButton::clicked, menu, [=, &stack] {
    if (menu->isEmpty()) {
      auto* list = new QWidgetAction(menu);
      list->setDefaultWidget(new StepList(&stack));
      menu->addAction(list);
    }
    menu->popup(steps->mapToGlobal(QPoint(0, steps->height())));
  });
}

void ShowChange(ScreenStack& screens, const std::vector<Setting>& changes,
                const std::function<bool()>& stillSame) {
  ChildForm* front = screens.FrontForm();
  const auto find = [&](const auto& suits) {
    const auto found = std::find_if(changes.begin(), changes.end(), suits);
    return found == changes.end() ? nullptr : &*found;
  };
  const auto isOnFront = [&](const Setting& change) {
    return EditorOf(change).On == screens.Front();
  };
  const Setting* shown = !front ? nullptr : find([&](const Setting& change) {
    return isOnFront(change) && ShowsItem(*front, ItemOf(change));
  });
  if (!shown) shown = find(isOnFront);
  if (!shown)
    shown = find([](const Setting& change) { return EditorOf(change).On != Screen::None; });
  if (shown) {
    GoToSetting(front, *shown);
    if (stillSame()) return;
    const Item item = ItemOf(*shown);
    if (item.Kind == ItemKind::DeviceInput || item.Kind == ItemKind::Input) {
      GoToItem(TypeScreen(item), item);
      if (stillSame()) return;
    }
  } else if (front) {
    front->ShowAnew();
    if (stillSame()) return;
  }
  screens.ShowAbout();
  stillSame();
}

#include "shell/window/main_menu.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenuBar>

#include "shell/controls/handlers.h"
#include "shell/shell.h"

namespace {

QKeySequence Shortcut(const std::string& entry) {
  if (entry == "mnuNew") return QKeySequence::New;
  if (entry == "mnuOpen") return QKeySequence::Open;
  if (entry == "mnuSave") return QKeySequence::Save;
  if (entry == "mnuSaveAs") return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
  if (entry == "mnuExit") return QKeySequence(Qt::CTRL | Qt::Key_Q);
  return {};
}

/// The told captions have no letters marked: a letter goes to the next entry that begins with it,
/// and into its submenu if no other begins so.
class MenuLetters : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* menu = qobject_cast<QMenu*>(watched);
    if (!menu || event->type() != QEvent::KeyPress) return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.text().isEmpty() || !key.text()[0].isLetter() || key.modifiers() & ~Qt::ShiftModifier) {
      return false;
    }
    QList<QAction*> found;
    for (QAction* action : menu->actions()) {
      const bool begins = action->text().startsWith(key.text(), Qt::CaseInsensitive);
      if (begins && action->isEnabled()) found << action;
    }
    if (found.isEmpty()) return false;
    const auto next = found.indexOf(menu->activeAction()) + 1;
    // Made active from outside, an entry would open its submenu, which then takes the keys.
    for (int i = 0; i < menu->actions().size(); ++i) {
      if (menu->activeAction() == found[next % found.size()]) break;
      Press(*menu, Qt::Key_Down);
    }
    if (found.size() == 1 && found[0]->menu()) Press(*menu, Qt::Key_Right);
    return true;
  }

 private:
  static void Press(QMenu& menu, Qt::Key key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&menu, &press);
  }
};

void OpenOn(QAction& action, Screen screen, const ProgramScreens& program) {
  const ScreenEntry& entry = program.Screens[static_cast<std::size_t>(screen)];
  action.setEnabled(entry.Create && screen != Screen::RelayDrive);
  QObject::connect(&action, &QAction::triggered, &action, [screen] {
    RunHandler([screen] {
      UnloadAllForms();
      ShowForm(screen);
    });
  });
}

}  // namespace

void BuildMenu(QMenuBar& bar, const ProgramScreens& program, const MenuCommands& commands) {
  const auto& table = program.Menu;
  auto* letters = new MenuLetters(&bar);
  std::vector<QMenu*> open;  // Submenus from level 1 down to the line before.
  for (std::size_t i = 0; i < table.size(); ++i) {
    const MenuEntry& entry = table[i];
    const QString caption = QString::fromLatin1(entry.Caption);
    open.resize(static_cast<std::size_t>(entry.Level) - 1);
    QAction* action = nullptr;
    if (i + 1 < table.size() && table[i + 1].Level > entry.Level) {
      auto* menu = new QMenu(caption, &bar);
      menu->installEventFilter(letters);
      action = menu->menuAction();
      (open.empty() ? static_cast<QWidget*>(&bar) : open.back())->addAction(action);
      open.push_back(menu);
    } else {
      const bool line = caption == QLatin1String("-");
      action = new QAction(line ? QString() : caption, &bar);
      action->setSeparator(line);
      action->setShortcut(Shortcut(entry.Name));
      if (entry.Opens != Screen::None) {
        OpenOn(*action, entry.Opens, program);
      } else if (const auto command = commands.find(entry.Name); command != commands.end()) {
        QObject::connect(action, &QAction::triggered, &bar,
                         [run = command->second] { RunHandler(run); });
      }
      (open.empty() ? static_cast<QWidget*>(&bar) : open.back())->addAction(action);
    }
    action->setObjectName(QString::fromLatin1(entry.Name));
  }
}

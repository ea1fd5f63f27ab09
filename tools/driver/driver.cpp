#include <unistd.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGenericPlugin>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <QWindow>
#include <QtTest/QTest>
#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>

// A plugin that the toolkit loads into a program when it is told so by the environment. It does to
// the program's windows what standard input says, a line each: a word and what it needs, separated
// by tabs. The answer is a line too, "ok" or, while it cannot be done, "no". Controls go by the
// names that a screen reader tells.

namespace {

using Words = QStringList;
using Action = std::function<void()>;

QString Told(QWidget* widget, QAccessible::Text kind) {
  QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(widget);
  const QString text = heard ? heard->text(kind).trimmed() : QString();
  return text.endsWith(u':') ? text.chopped(1) : text;
}

/// "Relay 01" is also the control "Relay 01, Name"; a button goes by what is written on it, too.
bool IsCalled(QWidget* widget, const QString& name) {
  auto* button = qobject_cast<QAbstractButton*>(widget);
  if (button && button->text().remove(u'&') == name) return true;
  const QString told = Told(widget, QAccessible::Name);
  return told == name || told.startsWith(name + u',');
}

/// What can be seen of the window in front.
QList<QWidget*> WidgetsInSight() {
  QList<QWidget*> seen;
  QWidget* modal = QApplication::activeModalWidget();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || (modal && window != modal)) continue;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
      if (widget->isVisible()) seen << widget;
    }
  }
  return seen;
}

template <typename Control>
Control* Find(const QString& name) {
  for (QWidget* widget : WidgetsInSight()) {
    auto* control = qobject_cast<Control*>(widget);
    if (control && control->isEnabled() && IsCalled(control, name)) return control;
  }
  return nullptr;
}

Action Open(const Words& words) {
  const QStringList path = words[1].split(QStringLiteral(" > "));
  for (QWidget* widget : WidgetsInSight()) {
    auto* bar = qobject_cast<QMenuBar*>(widget);
    if (!bar || !bar->isEnabled()) continue;
    QList<QAction*> entries = bar->actions();
    QAction* found = nullptr;
    for (const QString& caption : path) {
      found = nullptr;
      for (QAction* entry : entries) {
        if (entry->text().remove(u'&') == caption && entry->isEnabled()) found = entry;
      }
      if (!found) return {};
      if (found->menu()) entries = found->menu()->actions();
    }
    return [found] { found->trigger(); };
  }
  return {};
}

bool pressing = false;

Action Press(const Words& words) {
  auto* button = Find<QAbstractButton>(words[1]);
  if (!button) return {};
  return [button] {
    // The window system gives the press to what has popped up, and that may keep it.
    QWidget* popup = QApplication::activePopupWidget();
    QWindow* pressed = (popup ? popup : button->window())->windowHandle();
    const QPointer<QWindow> released = button->window()->windowHandle();
    const QPoint at = button->mapToGlobal(button->rect().center());
    pressing = true;
    QTest::mousePress(pressed, Qt::LeftButton, {}, pressed->mapFromGlobal(at));
    pressing = false;
    if (released) QTest::mouseRelease(released, Qt::LeftButton, {}, released->mapFromGlobal(at));
  };
}

Action Type(const Words& words) {
  auto* box = Find<QLineEdit>(words[1]);
  if (!box) return {};
  return [box, text = words[2]] {
    box->setFocus();
    if (!box->hasSelectedText()) box->selectAll();
    QTest::keyClicks(box, text);
  };
}

/// A click on the item of this text in the list that lies open over a cell.
void ClickItem(const QString& text) {
  for (QWidget* widget : WidgetsInSight()) {
    auto* list = qobject_cast<QAbstractItemView*>(widget);
    if (!list) continue;
    const QModelIndex first = list->model()->index(0, 0);
    const auto items = list->model()->match(first, Qt::DisplayRole, text, 1, Qt::MatchExactly);
    if (items.isEmpty()) continue;
    list->scrollTo(items[0]);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(items[0]).center());
    return;
  }
}

Action Choose(const Words& words) {
  const QString& text = words[2];
  if (auto* list = Find<QComboBox>(words[1])) {
    const int item = list->findText(text);
    if (item < 0) return {};
    return [list, item] {
      list->setCurrentIndex(item);
      Q_EMIT list->activated(item);
    };
  }
  auto* cell = Find<QWidget>(words[1]);
  if (!cell) return {};
  return [cell, text] {
    QTest::mouseClick(cell, Qt::LeftButton);
    ClickItem(text);
  };
}

/// Something to do only where one of the widgets in sight is as wanted.
Action IfSeen(const std::function<bool(QWidget*)>& wanted) {
  const QList<QWidget*> seen = WidgetsInSight();
  return std::any_of(seen.begin(), seen.end(), wanted) ? Action([] {}) : Action();
}

Action See(const Words& words) {
  return IfSeen(
      [&](QWidget* widget) { return Told(widget, QAccessible::Name).startsWith(words[1]); });
}

Action Is(const Words& words) {
  return IfSeen([&](QWidget* widget) {
    return IsCalled(widget, words[1]) && (Told(widget, QAccessible::Value) == words[2] ||
                                          Told(widget, QAccessible::Description) == words[2]);
  });
}

Action Picture(const Words& words) {
  // What was done before is still to be shown.
  QApplication::processEvents();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool shown = qobject_cast<QMainWindow*>(window) && window->isVisible();
    if (shown && window->width() > window->maximumWidth()) {
      // No desktop has brought it to its size.
      window->setWindowState(Qt::WindowNoState);
      window->resize(window->maximumWidth(), window->height());
      QApplication::processEvents();
    }
    if (shown && window->grab().save(words[1])) return [] {};
  }
  return {};
}

struct Verb {
  const char* Word;
  int Count;
  Action (*Prepare)(const Words&);
};
constexpr std::array Verbs{
    Verb{"open", 2, Open},       Verb{"press", 2, Press}, Verb{"type", 3, Type},
    Verb{"choose", 3, Choose},   Verb{"see", 2, See},     Verb{"is", 3, Is},
    Verb{"picture", 2, Picture},
};

class Driver : public QObject {
 public:
  explicit Driver(QObject* parent) : QObject(parent), Input(STDIN_FILENO, QSocketNotifier::Read) {
    connect(&Input, &QSocketNotifier::activated, this, [this] { Read(); });
  }

 private:
  void Read() {
    std::array<char, 4096> bytes;
    const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) return Input.setEnabled(false);
    Pending.append(bytes.data(), count);
    for (auto end = Pending.indexOf('\n'); end >= 0; end = Pending.indexOf('\n')) {
      const QString line = QString::fromUtf8(Pending.left(end));
      Pending.remove(0, end + 1);
      std::puts(Obey(line.split(u'\t')) ? "ok" : "no");
      std::fflush(stdout);
    }
  }

  /// The action itself comes after the answer, as it may open a dialog that waits.
  bool Obey(const Words& words) {
    if (pressing) return false;
    for (const Verb& verb : Verbs) {
      if (words[0] != QLatin1String(verb.Word) || words.size() != verb.Count) continue;
      const Action action = verb.Prepare(words);
      if (action) QTimer::singleShot(0, qApp, action);
      return static_cast<bool>(action);
    }
    return false;
  }

  QSocketNotifier Input;
  QByteArray Pending;
};

class DriverPlugin : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

 public:
  QObject* create(const QString&, const QString&) override { return new Driver(this); }
};

}  // namespace

#include "driver.moc"

#include "shell/controls/accessible_controls.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <utility>

#include "shell/controls/controls.h"
#include "shell/controls/dialogs.h"

namespace {

QAccessible::Role RoleOf(const Label& label) {
  if (!label.Click) {
    return label.MouseDownAction().isEmpty() ? QAccessible::StaticText : QAccessible::Button;
  }
  switch (label.Act()) {
    case CellAct::OpensList:
      return QAccessible::ComboBox;
    case CellAct::Toggles:
      return QAccessible::CheckBox;
    default:
      return QAccessible::Button;
  }
}

class AccessibleLabel : public QAccessibleWidget {
 public:
  explicit AccessibleLabel(Label* label) : QAccessibleWidget(label), label_(label) {}

  QAccessible::Role role() const override { return RoleOf(*label_); }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    if (!label_->Click) return state;
    if (label_->Act() == CellAct::Toggles) {
      state.checkable = true;
      state.checked = label_->Checked();
    } else if (label_->Act() == CellAct::OpensList) {
      state.hasPopup = true;
      state.expandable = true;
      state.expanded = label_->Expanded();
      state.collapsed = !label_->Expanded();
    }
    return state;
  }

  /// The bridge of the desktop passes values of numbers only, so that the description tells the
  /// value too.
  QString text(QAccessible::Text kind) const override {
    const QString name = label_->accessibleName();
    const bool apart = label_->Click && !name.isEmpty();
    switch (kind) {
      case QAccessible::Name:
        if (name.isEmpty()) return Value();
        return apart ? name : name + QStringLiteral(": ") + Value();
      case QAccessible::Value:
        return Value();
      case QAccessible::Description:
        return apart ? Value() : QAccessibleWidget::text(kind);
      default:
        return QAccessibleWidget::text(kind);
    }
  }

  QStringList actionNames() const override {
    QStringList names;
    if (!label_->isEnabled()) return names;
    if (label_->Click) names << (role() == QAccessible::CheckBox ? toggleAction() : pressAction());
    if (!label_->MouseDownAction().isEmpty()) names << label_->MouseDownAction();
    return names + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& name) override {
    if (!actionNames().contains(name)) return;
    if (name == label_->MouseDownAction()) {
      RunHandler([this] { label_->MouseDown(2, 1); });
    } else if (name == pressAction() || name == toggleAction()) {
      label_->Press();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  QString Value() const {
    const QString note = label_->Note();
    return note.isEmpty() ? label_->Value() : label_->Value() + QStringLiteral(", ") + note;
  }

  Label* label_;
};

/// The toolkit's own names a list by the item shown.
class AccessibleList : public QAccessibleWidget {
 public:
  explicit AccessibleList(ComboBox* list)
      : QAccessibleWidget(list, QAccessible::ComboBox), list_(list) {}

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(list_->view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child->object() == list_->view() ? 0 : -1;
  }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    const bool open = list_->view()->isVisible();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = open;
    state.collapsed = !open;
    return state;
  }

  QString text(QAccessible::Text kind) const override {
    QString value = list_->currentIndex() < 0 ? list_->placeholderText() : list_->currentText();
    switch (kind) {
      case QAccessible::Name:
        return list_->accessibleName().isEmpty() ? value : list_->accessibleName();
      case QAccessible::Value:
      case QAccessible::Description:
        return value;
      default:
        return QAccessibleWidget::text(kind);
    }
  }

  QStringList actionNames() const override {
    return list_->isEnabled() ? QStringList{showMenuAction(), pressAction()} : QStringList();
  }
  void doAction(const QString& name) override {
    if (!actionNames().contains(name)) return;
    list_->view()->isVisible() ? list_->hidePopup() : list_->showPopup();
  }

 private:
  ComboBox* list_;
};

class AccessibleDescribed : public QAccessibleWidget {
 public:
  explicit AccessibleDescribed(DescribedWidget* widget)
      : QAccessibleWidget(widget, widget->Role), widget_(widget) {}

  int childCount() const override { return 0; }
  QString text(QAccessible::Text kind) const override {
    const auto said = [](const std::function<QString()>& say) { return say ? say() : QString(); };
    switch (kind) {
      case QAccessible::Name:
        return widget_->Role == QAccessible::StaticText ? said(widget_->Description)
                                                        : widget_->accessibleName();
      case QAccessible::Value:
        return said(widget_->Value);
      case QAccessible::Description: {
        // Not every reader asks a picture for its value.
        const QString inHand = said(widget_->Value);
        const QString all = said(widget_->Description);
        return inHand.isEmpty() ? all : all + QStringLiteral(". ") + inHand;
      }
      default:
        return QAccessibleWidget::text(kind);
    }
  }
  QStringList actionNames() const override {
    return widget_->focusPolicy() == Qt::NoFocus ? QStringList() : QStringList{setFocusAction()};
  }

 private:
  DescribedWidget* widget_;
};

QAccessibleInterface* MakeAccessible(const QString& className, QObject* object) {
  if (className == QLatin1String("Label")) return new AccessibleLabel(static_cast<Label*>(object));
  if (className == QLatin1String("ComboBox")) {
    return new AccessibleList(static_cast<ComboBox*>(object));
  }
  if (className == QLatin1String("DescribedWidget")) {
    return new AccessibleDescribed(static_cast<DescribedWidget*>(object));
  }
  // Else a window that is neither the main one nor a dialog is told as a filler.
  if (className == QLatin1String("GuideWindow")) {
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window);
  }
  return nullptr;
}

}  // namespace

std::function<void(QAccessibleEvent&)> TellReadersSeam = [](QAccessibleEvent& event) {
  QAccessible::updateAccessibility(&event);
};

void InstallAccessibleControls() {
  static const bool installed = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  Q_UNUSED(installed)
}

void DescribedWidget::TellChange() {
  const QString description = Description ? Description() : QString();
  if (description != std::exchange(toldDescription_, description)) {
    QAccessibleEvent text(this, Role == QAccessible::StaticText ? QAccessible::NameChanged
                                                                : QAccessible::DescriptionChanged);
    TellReadersSeam(text);
  }
  const QString inHand = Value ? Value() : QString();
  if (inHand != std::exchange(toldValue_, inHand)) {
    QAccessibleValueChangeEvent value(this, inHand);
    TellReadersSeam(value);
  }
}

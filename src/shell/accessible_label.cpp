#include "shell/accessible_label.h"

#include <QAccessibleWidget>

#include "shell/dialogs.h"
#include "shell/label.h"

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
        if (name.isEmpty()) return label_->Value();
        return apart ? name : name + QStringLiteral(": ") + label_->Value();
      case QAccessible::Value:
        return label_->Value();
      case QAccessible::Description:
        return apart ? label_->Value() : QAccessibleWidget::text(kind);
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
      RunHandler([this] {
        if (label_->MouseDown) label_->MouseDown(1, 0);
        label_->Click();
      });
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  Label* label_;
};

}  // namespace

QAccessibleInterface* AccessibleLabelFactory(const QString& className, QObject* object) {
  auto* label = className == QLatin1String("Label") ? qobject_cast<Label*>(object) : nullptr;
  return label ? new AccessibleLabel(label) : nullptr;
}

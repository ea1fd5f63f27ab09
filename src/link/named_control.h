#pragma once

#include <QBoxLayout>
#include <utility>

#include "shell/controls/controls.h"

/// A control with its object name, in `layout` when one is given.
template <typename Control, typename... Arguments>
Control* NamedControl(QBoxLayout* layout, const char* name, Arguments&&... arguments) {
  auto* control = new Control(std::forward<Arguments>(arguments)...);
  control->setObjectName(QString::fromLatin1(name));
  if (layout) layout->addWidget(control);
  return control;
}

/// A label no higher than its line.
inline Label* NamedLabel(QBoxLayout* layout, const char* name, const QString& caption = {}) {
  auto* label = NamedControl<Label>(layout, name);
  label->SetCaption(caption);
  label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  return label;
}

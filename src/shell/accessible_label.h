#pragma once

class QAccessibleInterface;
class QObject;
class QString;

/// What screen readers know of labels: a value cell has the role of what it does, the name of its
/// item and column, its value as value, and an action that does what a click does.
QAccessibleInterface* AccessibleLabelFactory(const QString& className, QObject* object);

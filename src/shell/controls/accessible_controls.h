#pragma once

#include <QAccessible>
#include <QWidget>
#include <functional>

// What screen readers know of the controls. A value cell has the role of what it does, the name of
// its item and column, its value as value, and an action that does what a click does. A drop-down
// list is named by its caption, with the item shown as its value.

/// Passes on what has changed; tests read it.
extern std::function<void(QAccessibleEvent&)> TellReadersSeam;

/// Makes them known to the toolkit; done once.
void InstallAccessibleControls();

/// A widget that paints or gathers what screen readers are told as one thing, whatever it is made
/// of.
class DescribedWidget : public QWidget {
  Q_OBJECT
 public:
  explicit DescribedWidget(QAccessible::Role role) : Role(role) { InstallAccessibleControls(); }

  const QAccessible::Role Role;
  std::function<QString()> Description;  ///< What there is to see.
  std::function<QString()> Value;        ///< What is in hand.

  /// Says that what there is to see, or what is in hand, has changed. What is as it
  /// was told last is not told again.
  void TellChange();

 private:
  QString toldDescription_;
  QString toldValue_;
};

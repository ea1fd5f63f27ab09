#pragma once

#include <optional>

#include "shell/controls/controls.h"

class QBoxLayout;

// The lists that the dimmers' screens share.

/// A list that tells its title while nothing of it is selected, and to screen readers.
ComboBox* AddTitledList(QBoxLayout* layout, const char* name, const QString& title,
                        const QStringList& items);

/// `count` numbers from `first` on in at least `digits` digits, each behind `lead`.
QStringList CountedItems(const QString& lead, int first, int count, int digits = 1);

/// The numbers 1 to `count` in hexadecimal, each behind `lead`.
QStringList HexItems(const QString& lead, int count);

/// "Title: 0%" to "Title: 100%".
QStringList PercentItems(const QString& title);

/// The twelve devices and the four outputs of one.
ComboBox* AddDeviceList(QBoxLayout* layout);
ComboBox* AddOutputList(QBoxLayout* layout);

/// Shows stored values one after the other. One that the 16-bit percent rules cannot take leaves
/// its own place empty, so that nothing of another output stays on the screen.
class ShownValues {
 public:
  /// Selects the item of a stored value, or none when it cannot be told.
  void Index(ComboBox& list, const std::function<int()>& value);
  void Attempt(const std::function<void()>& show, const std::function<void()>& otherwise);
  /// Throws the first failure, if there was one.
  void TellFailure() const;

 private:
  std::optional<RunTimeFailure> failure_;
};

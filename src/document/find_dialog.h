#pragma once

#include <QDialog>
#include <QListWidget>

#include "document/rules/find_items.h"
#include "shell/controls/controls.h"

/// Finds an item by its name or number, lists where it is used, and opens the screen at it.
class FindDialog : public QDialog {
  Q_OBJECT
 public:
  explicit FindDialog(QWidget* parent);

  void txtFind_Change();
  /// Opens the screen of the row in hand.
  void lstFound_Click();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  TextBox* txtFind = nullptr;
  QListWidget* lstFound = nullptr;
  std::vector<FoundItem> found_;
};

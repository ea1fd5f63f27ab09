#pragma once

#include <QTreeWidget>

#include "shell/controls/child_form.h"

/// All dates of the year that have open and close times of their own, a line each.
class frmT3AllDates : public ChildForm {
 public:
  frmT3AllDates();
  void Form_Load() override;
  void Form_Activate() override;

  /// Opens the date in hand where it is edited.
  void lstDates_Click();

 private:
  QTreeWidget* lstDates = nullptr;
  Label* lblNoDates = nullptr;
};

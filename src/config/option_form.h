#pragma once

#include "panel/panel_record.h"
#include "shell/controls/child_form.h"

struct OptionScreen;

/// The editors of one setting with a few options: photocell filter, clock source, timed-on
/// operation, off-hours sweep interval and relay drive.
class OptionForm : public ChildForm {
 public:
  explicit OptionForm(Screen name);
  void Form_Load() override;
  void Form_Activate() override;

  void optOption_Click(int index);

 private:
  const OptionScreen& Row;
  ControlArray<OptionButton> optOption;
};

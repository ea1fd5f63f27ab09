#pragma once

#include "shell/controls/child_form.h"

/// The screens of add-on modules without settings.
class AddOnModuleForm : public ChildForm {
 public:
  explicit AddOnModuleForm(Screen name);
  void Form_Load() override;

 private:
  QString Text;
};

#pragma once

#include <QGridLayout>

#include "panel/fixed_array.h"
#include "shell/controls/child_form.h"

/// The two Sundays on which the panel changes its own clock.
class frmT3DaylightSavingTime : public ChildForm {
 public:
  frmT3DaylightSavingTime();
  void Form_Load() override;
  void Form_Activate() override;

  void DSTOptEn(Int16 enable);
  void chkEnableDaylightSavingTime_Click();

 private:
  ComboBox* AddList(int row, int column, const char* name, const QStringList& items, Int16& field);
  Label* AddCaption(int row, int column, const char* name, const QString& caption);

  CheckBox* chkEnableDaylightSavingTime = nullptr;
  QGridLayout* rule = nullptr;
  Label* lblDSTStarts = nullptr;
  Label* lblDSTStartOf = nullptr;
  Label* lblDSTEnds = nullptr;
  Label* lblDSTEndOf = nullptr;
  ComboBox* cboDSTStartWeek = nullptr;
  ComboBox* cboDSTStartMonth = nullptr;
  ComboBox* cboDSTEndWeek = nullptr;
  ComboBox* cboDSTEndMonth = nullptr;
};

#pragma once

#include "panel/fixed_array.h"
#include "shell/in_place_list.h"
#include "shell/row_grid.h"

struct TimePairScreen;

/// Two times of day in each row: the building's open and close times by weekday
/// (frmT3OpenAndCloseTimeNormalDays) or by date (frmT3OpenAndCloseTimeSingleDates), and from when
/// to when each input is active (frmT3InputActiveTimes).
class TimePairForm : public ChildForm {
 public:
  explicit TimePairForm(Screen name);
  void Form_Load() override;
  void Form_Activate() override;

  void ShowTimes();
  void optMonth_Click(int index);
  void lblTime_Click(int column, int index);
  void cboNewTime_Click();

 private:
  QWidget* Selector() const override;
  void ChooseBeside(int step) override;
  void AddMonths();
  void ShowNames();
  Int16& Time(int column, int row) const;

  const TimePairScreen& screen;
  int Month = 0;  ///< 0 to 11.
  Int16 SelectedRow = 0;
  int SelectedColumn = 0;
  ControlArray<OptionButton> optMonth;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblName;
  std::array<ControlArray<Label>, 2> lblTime;
  InPlaceList* cboNewTime = nullptr;
};

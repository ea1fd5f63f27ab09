#pragma once

#include "panel/fixed_array.h"
#include "shell/controls/list_column.h"

struct TimePairScreen;

/// The open or close time of a date: "7:30A", "--:--" for none.
QString TimeOfDate(Int16 quarterHours);

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

 private:
  QWidget* Selector() const override;
  void ChooseBeside(int step) override;
  void AddMonths();
  void AddDates();
  void MarkMonths();
  void ShowNames();
  Int16& Time(std::size_t column, int row) const;
  int ItemOf(Int16 time) const;
  QString TimeText(Int16 time) const;
  void StoreTime(std::size_t column, int row, int item);

  const TimePairScreen& screen;
  int Month = 0;  ///< 0 to 11.
  ControlArray<OptionButton> optMonth;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblName;
  std::array<ListColumn, 2> lblTime;
};

#pragma once

#include <QScrollArea>

#include "panel/time_values.h"
#include "schedule/week_picture.h"
#include "shell/controls/row_grid.h"

/// All timers on one sheet: when each runs, what it switches and when it fires next, and the week
/// that comes of them.
class frmT3AllTimers : public ChildForm {
 public:
  frmT3AllTimers();
  void Form_Load() override;
  void Form_Activate() override;
  bool ShowsToo(Screen editedOn, const Item& of) override;

  /// The rows in their order, and the week.
  void ShowTimers();
  void lblNumber_Click(int row);
  void txtWhen_Change(int row);
  void lblActs_Click(int row);
  /// The other one of the two orders: by number, and by the time at which timers fire next.
  void SortOtherwise();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Edit {
    int Timer;
    TimerRun Before;
  };

  QScrollArea* AddScrolled(QWidget* inner, int lines);
  void AddSortHeader(const char* name, bool byNext);
  void Sort(bool byNext);
  void TakeOver(int row, int from);
  void EndEdit(int row);
  int TimerAt(int row) const { return order_[static_cast<std::size_t>(row)]; }

  std::array<int, ItemCount> order_{};  ///< The timer of each row.
  bool byNext_ = false;
  std::optional<Edit> edit_;  ///< The text that is being typed, and what the timer was before it.
  RowGrid* grid = nullptr;
  ControlArray<Label> lblNumber;
  ControlArray<Label> lblName;
  ControlArray<TextBox> txtWhen;
  ControlArray<Label> lblActs;
  ControlArray<Label> lblNext;
  Label* lblInHand = nullptr;  ///< What of the week is in hand.
  WeekPicture* picWeek = nullptr;
};

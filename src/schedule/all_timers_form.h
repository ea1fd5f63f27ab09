#pragma once

#include <QScrollArea>

#include "panel/panel_record.h"
#include "schedule/week_picture.h"
#include "shell/controls/row_grid.h"

/// All timers on one sheet: when each runs, what it switches and when it fires next, and the week
/// that comes of them.
class frmT3AllTimers : public ChildForm {
 public:
  frmT3AllTimers();
  void Form_Load() override;
  void Form_Activate() override;
  bool ShowsToo(const Item& of) override;

  /// The rows in their order, and the week.
  void ShowTimers();
  void lblNumber_Click(int row);
  void txtWhen_Change(int row) { Type(0, row); }
  void txtActs_Change(int row) { Type(1, row); }
  /// The other one of the two orders: by number, and by the time at which timers fire next.
  void SortOtherwise();
  /// Makes the first free timer the other half of the one in hand, on for off; its time waits to be
  /// typed over.
  void MakeOtherHalf();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// A text that is being typed, and the panel before it.
  struct Edit {
    TextBox* Box;
    int Timer;
    PanelRecordType Before;
  };
  static constexpr std::size_t TypedColumns = 2;

  ControlArray<TextBox> AddTyped(std::size_t column);
  QScrollArea* AddScrolled(QWidget* inner);
  void AddSortHeader(const char* name, bool byNext);
  void Sort(bool byNext);
  void TakeOver(int row, int from);
  void Type(std::size_t column, int row);
  bool EndEdit(std::size_t column, int row);
  void FocusTimer(int timer);
  int TimerAt(int row) const { return order_[static_cast<std::size_t>(row)]; }
  int RowOf(int timer) const;

  std::array<int, ItemCount> order_{};  ///< The timer of each row.
  bool byNext_ = false;
  std::optional<Edit> edit_;
  RowGrid* grid = nullptr;
  ControlArray<Label> lblNumber;
  ControlArray<Label> lblName;
  std::array<ControlArray<TextBox>, TypedColumns> txtTyped;  ///< When, and what it does.
  ControlArray<Label> lblNext;
  Button* cmdNewTimer = nullptr;
  Label* lblInHand = nullptr;  ///< What of the week is in hand.
  QScrollArea* gridArea = nullptr;
  QScrollArea* weekArea = nullptr;
  WeekPicture* picWeek = nullptr;
};

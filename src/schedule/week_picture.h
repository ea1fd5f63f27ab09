#pragma once

#include "schedule/rules/timer_week.h"
#include "shell/controls/accessible_controls.h"

/// The week of the timers: a row of bars for all that they have on at the same times. Where a bar
/// begins or ends a timer stands behind it: the arrow keys walk from one to the next, Enter or a
/// click opens it.
class WeekPicture : public DescribedWidget {
  Q_OBJECT
 public:
  WeekPicture();

  void Show(TimerWeek week);

  std::function<void(int timer)> Open;
  std::function<void()> InHandChanged;
  /// What is in hand, in words; empty where no bar begins or ends.
  QString InHand() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool event(QEvent* event) override;

 private:
  int RowHeight() const;
  int NamesWidth() const;
  double XOf(WallMinute minute) const;
  /// The place among the ends of that nearest to a point in its row; -1 for none.
  int EndAt(QPointF point) const;
  int EndNear(int row, WallMinute minute) const;
  void TakeInHand(int end);
  void WalkToRow(int step);
  void OpenInHand();
  void PaintDays(QPainter& painter) const;
  void PaintRow(QPainter& painter, int row) const;

  TimerWeek week_;
  int inHand_ = 0;  ///< Place among the ends.
};

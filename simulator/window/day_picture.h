#pragma once

#include <QLabel>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulator/engine/panel_clock.h"
#include "simulator/watch/bars.h"
#include "simulator/window/narrator.h"

namespace simulator {

/// What a picture of some days shows. Times are the wall clock's, milliseconds since 1970.
struct DayPlan {
  struct Stretch {  // of an item that is on, blinks or stands at a level
    std::int64_t From = 0;
    std::int64_t To = 0;
    int Level = FullLevel;
    bool Blinks = false;
    QString Began = {};  // as in " by SWEEP"; empty: it went on from before
    QString Ended = {};
    QString Since = {};  // before the days on show
  };
  using Stretches = std::vector<Stretch>;
  struct ItemRow {
    QString Name;
    int Row = 0;  // of its bars
    Stretches On;
    Stretches Other;  // of the days that these are compared with
    std::vector<std::pair<std::int64_t, std::int64_t>> Differs;  // between the two
  };
  struct Line {
    std::int64_t At = 0;
    int Kind = 0;  // of DayLineNames
  };
  std::int64_t FirstDay = 0;  // counted from 1970
  int Days = 1;
  std::vector<ItemRow> Items;
  QString OtherName;  // empty: nothing to compare with
  std::vector<Line> Lines;
};

inline constexpr std::array DayLineNames{"Sunrise", "Sunset", "Open", "Close"};
QColor DayLineColor(int kind);

/// Where two rows say different things.
std::vector<std::pair<std::int64_t, std::int64_t>> DifferenceOf(const DayPlan::Stretches& a,
                                                                const DayPlan::Stretches& b);

/// Some days as a picture: a row an item, bars while it is on, striped while it blinks, the height
/// of a dimmer's level; compared with other days, these stand below each bar, and what differs is
/// marked. Lines for sunrise, sunset, open and
/// close, and the present. A press on a moment chooses it; so do the arrow keys, which move a mark
/// and tell why the item in its row stands so, and Enter.
class DayPicture : public QLabel {
 public:
  DayPicture();

  void Show(const DayPlan& plan);
  /// The wall clock's present.
  void ShowNow(std::int64_t wall);

  std::function<void(std::int64_t wall)> Choose;
  /// Tells what is at the mark, or in a tip what is at the pointer; no words: no
  /// longer.
  std::function<void(QWidget*, Telling, const std::optional<QPoint>& tipAt)> Tell;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void MeasureNames();
  int RowHeight() const { return fontMetrics().height() + (Plan.OtherName.isEmpty() ? 4 : 12); }
  int Top() const { return fontMetrics().height() + 6; }
  double X(std::int64_t wall) const;
  std::int64_t WallAt(double x) const;
  int RowAt(double y) const;
  /// Empty for what is not on show.
  QString Words(int row, std::int64_t wall) const;
  void TellMark();
  void PaintGrid(QPainter& painter, int bottom) const;
  void PaintScale(QPainter& painter) const;
  void PaintRow(QPainter& painter, const DayPlan::ItemRow& row, int top, const QRect& wanted) const;
  void PaintStretches(QPainter& painter, const DayPlan::Stretches& stretches, int row,
                      const QRect& lane, const QRect& wanted) const;
  QString StateAt(const DayPlan::Stretches& stretches, std::int64_t wall) const;

  DayPlan Plan;
  std::int64_t Now = 0;
  std::int64_t ToldAt = 0;  // the present when it told something
  std::int64_t Mark = 0;
  int MarkRow = 0;
  int NameWidth = 0;
};

}  // namespace simulator

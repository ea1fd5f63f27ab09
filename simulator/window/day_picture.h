#pragma once

#include <QLabel>
#include <functional>
#include <string>
#include <vector>

#include "simulator/engine/panel_clock.h"
#include "simulator/rehearsal/plan.h"

namespace simulator {

/// What a picture of some days shows. Times are the wall clock's, milliseconds since 1970.
struct DayPlan {
  struct Stretch {  // of a relay that is on
    std::int64_t From = 0;
    std::int64_t To = 0;
  };
  struct RelayRow {
    QString Name;
    std::vector<Stretch> On;
  };
  struct Line {
    std::int64_t At = 0;
    int Kind = 0;  // of DayLineNames
  };
  std::int64_t FirstDay = 0;  // counted from 1970
  int Days = 1;
  std::vector<RelayRow> Relays;
  std::vector<Line> Lines;
};

inline constexpr std::array DayLineNames{"Sunrise", "Sunset", "Open", "Close"};
QColor DayLineColor(int kind);

/// Some days as a picture: a row a relay, bars while it is on, lines for sunrise, sunset, open and
/// close, and the present. A press on a moment chooses it; so do the arrow keys, which move a mark
/// and tell what the relay in its row does, and Enter.
class DayPicture : public QLabel {
 public:
  DayPicture();

  void Show(const DayPlan& plan);
  /// The wall clock's present.
  void ShowNow(std::int64_t wall);

  std::function<void(std::int64_t wall)> Choose;
  /// What is at the mark, in words.
  std::function<void(const QString&)> Tell;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void MeasureNames();
  int RowHeight() const { return fontMetrics().height() + 4; }
  int Top() const { return fontMetrics().height() + 6; }
  double X(std::int64_t wall) const;
  std::int64_t WallAt(double x) const;
  int RowAt(double y) const;
  QString Words(int row, std::int64_t wall) const;
  void TellMark();
  void PaintScale(QPainter& painter, int bottom) const;

  DayPlan Plan;
  std::int64_t Now = 0;
  std::int64_t Mark = 0;
  int MarkRow = 0;
  int NameWidth = 0;
};

}  // namespace simulator

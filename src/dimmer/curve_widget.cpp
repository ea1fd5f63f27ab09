#include "dimmer/curve_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "shell/controls/dialogs.h"

namespace {

constexpr double LeastGripPixels = 10;
constexpr double GripAndLetterPixels = 28;  ///< At the right edge, where C stands at first.

int ShiftState(Qt::KeyboardModifiers modifiers) {
  return (modifiers & Qt::ShiftModifier ? 1 : 0) + (modifiers & Qt::ControlModifier ? 2 : 0) +
         (modifiers & Qt::AltModifier ? 4 : 0);
}

int ButtonNumber(const QMouseEvent& event) {
  const auto buttons = event.button() == Qt::NoButton ? event.buttons() : event.button();
  if (buttons & Qt::LeftButton) return 1;
  return buttons & Qt::RightButton ? 2 : 0;
}

int KeyCode(int key) {
  switch (key) {
    case Qt::Key_Left:
      return 37;
    case Qt::Key_Up:
      return 38;
    case Qt::Key_Right:
      return 39;
    case Qt::Key_Down:
      return 40;
    default:
      return key >= Qt::Key_A && key <= Qt::Key_Z ? key : 0;
  }
}

QString Letter(Int16 grip) {
  switch (grip) {
    case ResponseCurve::GripA:
      return QStringLiteral("A");
    case ResponseCurve::GripB:
      return QStringLiteral("B");
    default:
      return QStringLiteral("C");
  }
}

}  // namespace

CurveWidget::CurveWidget(const ResponseCurve& curve, const Int16& selectedGrip)
    : DescribedWidget(QAccessible::Chart), curve_(curve), selectedGrip_(selectedGrip) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QPointF CurveWidget::ToPixels(double x, double y) const {
  return {x * width() / ResponseCurve::Width, y * height() / ResponseCurve::Height};
}

QRectF CurveWidget::GripSquare(const ResponseCurve::Grip& grip) const {
  const QPointF reach = ToPixels(ResponseCurve::GripReach, ResponseCurve::GripReach);
  const double side = std::max(std::min(reach.x(), reach.y()), LeastGripPixels);
  QRectF square(0, 0, side, side);
  square.moveCenter(
      ToPixels(grip.Left + ResponseCurve::GripCentre, grip.Top + ResponseCurve::GripCentre));
  // At the ends of the scales it would be cut off.
  constexpr double border = 1;
  square.moveLeft(std::max(border, std::min(square.left(), width() - border - side)));
  square.moveTop(std::max(border, std::min(square.top(), height() - border - side)));
  return square;
}

/// On a small graph a grip is drawn larger than it reaches: a point on its edge is taken to the
/// nearest one that hits it.
QPointF CurveWidget::Aimed(QPointF pixel, QPointF units) const {
  if (curve_.GripOver(units.x(), units.y()) != ResponseCurve::NoGrip) return units;
  for (const Int16 i : {ResponseCurve::GripB, ResponseCurve::GripC, ResponseCurve::GripA}) {
    const auto& grip = curve_.shpGrip(i);
    if (!grip.Visible || !GripSquare(grip).contains(pixel)) continue;
    return {std::clamp(units.x(), grip.Left, grip.Left + ResponseCurve::GripReach),
            std::clamp(units.y(), grip.Top, grip.Top + ResponseCurve::GripReach)};
  }
  return units;
}

void CurveWidget::Tell(const PointerEvent& handler, const QMouseEvent& event, bool aims) const {
  if (!handler) return;
  const QPointF pixel = event.position();
  // Whole units: a grip that follows the pointer then stays under it.
  QPointF units(std::round(pixel.x() * ResponseCurve::Width / width()),
                std::round(pixel.y() * ResponseCurve::Height / height()));
  if (aims) units = Aimed(pixel, units);
  RunHandler(
      [&] { handler(ButtonNumber(event), ShiftState(event.modifiers()), units.x(), units.y()); });
}

void CurveWidget::mousePressEvent(QMouseEvent* event) {
  Tell(MouseDown, *event, true);
}

void CurveWidget::mouseMoveEvent(QMouseEvent* event) {
  Tell(MouseMove, *event, event->buttons() == Qt::NoButton);
}

void CurveWidget::mouseReleaseEvent(QMouseEvent* event) {
  Tell(MouseUp, *event, false);
}

void CurveWidget::leaveEvent(QEvent*) {
  RunHandler(MouseLeave);
}

void CurveWidget::keyPressEvent(QKeyEvent* event) {
  const int code = KeyCode(event->key());
  if (KeyDown) RunHandler([&] { KeyDown(code, ShiftState(event->modifiers())); });
  if (code == 0) event->ignore();
}

void CurveWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  PaintGrid(painter);
  PaintLines(painter);
  PaintGrips(painter);
  painter.setBrush(Qt::NoBrush);
  painter.setRenderHint(QPainter::Antialiasing);
  const double pen = hasFocus() ? 2 : 1;
  painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), pen));
  painter.drawRect(QRectF(rect()).adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2));
}

/// Quarters of the input and of the output, where the middle of a grip stands at those values.
void CurveWidget::PaintGrid(QPainter& painter) const {
  QColor grid = palette().color(QPalette::Text);
  grid.setAlpha(45);
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * 0.85);
  painter.setFont(small);
  const QFontMetricsF metrics(small);
  const std::vector<Point> points = Points();
  for (int quarter = 0; quarter <= 4; ++quarter) {
    const double part = quarter / 4.0;
    const QPointF at = ToPixels(part * ResponseCurve::MaxLeft + ResponseCurve::GripCentre,
                                part * ResponseCurve::MaxTop + ResponseCurve::GripCentre);
    painter.setPen(QPen(grid, 0));
    painter.drawLine(QLineF(at.x(), 0, at.x(), height()));
    painter.drawLine(QLineF(0, at.y(), width(), at.y()));
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QString percent = QStringLiteral("%1%").arg(100 - 25 * quarter);
    const double baseline = quarter == 0 ? at.y() + metrics.ascent() + 1 : at.y() - 2;
    const double length = metrics.horizontalAdvance(percent);
    const double left = width() - length - GripAndLetterPixels;
    const QRectF room(left, baseline - metrics.ascent(), length, metrics.ascent());
    const auto covers = [&room](const Point& point) {
      return room.intersects(point.Square) || room.intersects(point.Letter);
    };
    if (std::any_of(points.begin(), points.end(), covers)) continue;
    painter.drawText(room.bottomLeft(), percent);
  }
}

void CurveWidget::PaintLines(QPainter& painter) const {
  QPolygonF path;
  for (int i = 0; i < 4; ++i) {
    const auto& line = curve_.shpLine(i);
    if (!line.Visible) continue;
    if (path.isEmpty()) path << ToPixels(line.X1, line.Y1);
    path << ToPixels(line.X2, line.Y2);
  }
  QPolygonF area = path;
  area << ToPixels(ResponseCurve::Width, ResponseCurve::Height)
       << ToPixels(0, ResponseCurve::Height);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor fill = palette().color(QPalette::Highlight);
  painter.setPen(Qt::NoPen);
  fill.setAlpha(45);
  painter.setBrush(fill);
  painter.drawPolygon(area);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawPolyline(path);
}

/// The points in the order in which they are drawn, each with its letter beside it; points that
/// meet have their letters side by side.
std::vector<CurveWidget::Point> CurveWidget::Points() const {
  constexpr double gap = 4;
  const QFontMetricsF metrics(LetterFont());
  std::vector<Point> points;
  for (const Int16 i : {ResponseCurve::GripA, ResponseCurve::GripC, ResponseCurve::GripB}) {
    const auto& grip = curve_.shpGrip(i);
    if (!grip.Visible) continue;
    const QRectF square = GripSquare(grip);
    QRectF letter({}, QSizeF(metrics.horizontalAdvance(Letter(i)), metrics.height()));
    const bool atRight = square.right() + gap + letter.width() > width() - 2;
    const bool atTop = square.top() - letter.height() < 0;
    letter.moveLeft(atRight ? square.left() - gap - letter.width() : square.right() + gap);
    letter.moveTop(atTop ? square.bottom() : square.top() - 1 - metrics.ascent());
    for (const Point& other : points) {
      if (!letter.intersects(other.Letter)) continue;
      letter.moveLeft(atRight ? other.Letter.left() - letter.width() : other.Letter.right());
    }
    points.push_back({i, square, letter});
  }
  return points;
}

QFont CurveWidget::LetterFont() const {
  QFont bold = font();
  bold.setBold(true);
  return bold;
}

void CurveWidget::PaintGrips(QPainter& painter) const {
  painter.setFont(LetterFont());
  for (const auto& [grip, square, letter] : Points()) {
    const bool selected = grip == selectedGrip_;
    painter.setPen(QPen(palette().color(QPalette::Text), selected ? 2 : 1.5));
    painter.setBrush(palette().color(selected ? QPalette::Highlight : QPalette::Base));
    painter.drawRect(square);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(letter, Letter(grip));
  }
}

#include "dimmer/rules/response_curve.h"

#include <QString>
#include <algorithm>
#include <cmath>

#include "panel/checked_arithmetic.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/format.h"

namespace {

constexpr double UnitsPerCount = 15;
constexpr double UnitsPerPercent = 28.8;
constexpr double KeyStep = UnitsPerCount;

Int16 InputOf(const ResponseCurve::Grip& grip) {
  return ToInt16(static_cast<Int32>(std::lround(grip.Left / UnitsPerCount)));
}

// Multiplied before it is divided, so that a half stays exactly a half.
Int16 PercentOf(const ResponseCurve::Grip& grip) {
  const double below = ResponseCurve::MaxTop - grip.Top;
  return ToInt16(static_cast<Int32>(std::lround(below * 100 / ResponseCurve::MaxTop)));
}

ResponseCurve::Grip GripAt(Int16 input, Int16 percent) {
  PercentToLevel(percent);  // What cannot be stored again is not shown.
  return {input * UnitsPerCount, ResponseCurve::MaxTop - percent * UnitsPerPercent};
}

}  // namespace

void ResponseCurve::Place(const DimmerOutput& output) {
  const Grip a = GripAt(output(dim::PointAIn), output(dim::PointAOut));
  const Grip c = GripAt(output(dim::PointCIn), output(dim::PointCOut));
  const Grip b = GripAt(output(dim::PointBIn), output(dim::PointBOut));
  shpGrip(GripA) = a;
  shpGrip(GripC) = c;
  shpGrip(GripB) = b;
}

void ResponseCurve::DrawLines(bool twoPoint) {
  const bool inOrder = shpGrip(GripA).Left <= shpGrip(GripC).Left;
  const Grip& first = shpGrip(inOrder ? GripA : GripC);
  const Grip& last = shpGrip(inOrder ? GripC : GripA);
  const auto join = [](const Grip& from, const Grip& to) {
    return Line{from.Left + GripCentre, from.Top + GripCentre, to.Left + GripCentre,
                to.Top + GripCentre};
  };
  const Grip& second = twoPoint ? last : shpGrip(GripB);
  shpGrip(GripB).Visible = !twoPoint;
  shpLine(0) = {0, first.Top + GripCentre, first.Left + GripCentre, first.Top + GripCentre};
  shpLine(1) = join(first, second);
  shpLine(2) = join(second, last);
  shpLine(2).Visible = !twoPoint;
  shpLine(3) = {last.Left + GripCentre, last.Top + GripCentre, Width, last.Top + GripCentre};
}

Int16 ResponseCurve::GripOver(double x, double y) const {
  Int16 over = NoGrip;
  for (const Int16 i : {GripA, GripC, GripB}) {
    const Grip& grip = shpGrip(i);
    if (x >= grip.Left && x <= grip.Left + GripReach && y >= grip.Top &&
        y <= grip.Top + GripReach) {
      over = i;
    }
  }
  return over;
}

void ResponseCurve::MoveTo(Int16 grip, double x, double y) {
  shpGrip(grip).Left = std::clamp(std::round(x), 0.0, static_cast<double>(MaxLeft));
  shpGrip(grip).Top = std::clamp(std::round(y), 0.0, static_cast<double>(MaxTop));
}

void ResponseCurve::Step(Int16 grip, Direction direction) {
  Grip& moved = shpGrip(grip);
  switch (direction) {
    case Direction::Left:
      if (moved.Left >= KeyStep) moved.Left -= KeyStep;
      break;
    case Direction::Up:
      if (moved.Top >= KeyStep) moved.Top -= KeyStep;
      break;
    case Direction::Right:
      if (moved.Left < MaxLeft) moved.Left += KeyStep;
      break;
    case Direction::Down:
      if (moved.Top < MaxTop) moved.Top += KeyStep;
      break;
  }
}

void ResponseCurve::KeepBBetween() {
  const auto [least, most] = std::minmax(shpGrip(GripA).Left, shpGrip(GripC).Left);
  shpGrip(GripB).Left = std::clamp(shpGrip(GripB).Left, least, most);
}

ResponseCurve::Readout ResponseCurve::ReadoutOf(Int16 grip) const {
  const Int16 input = InputOf(shpGrip(grip));
  const long tenths = std::lround(100 - shpGrip(grip).Top * 100 / MaxTop);
  return {NumberText(input) + "/255", NumberText(CodeToFootCandles(input)) + " fc",
          QString::number(static_cast<double>(tenths) / 10, 'f', 1).toStdString() + " V"};
}

ResponseCurve::Points ResponseCurve::Stored() const {
  const bool inOrder = shpGrip(GripA).Left <= shpGrip(GripC).Left;
  const Grip& a = shpGrip(inOrder ? GripA : GripC);
  const Grip& c = shpGrip(inOrder ? GripC : GripA);
  const Grip& b = shpGrip(GripB);
  return {InputOf(a), PercentOf(a), InputOf(b), PercentOf(b), InputOf(c), PercentOf(c)};
}

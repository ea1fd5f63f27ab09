#include "dimmer/rules/response_curve.h"

#include "panel/dimmer_fields.h"
#include "panel/document_fixture.h"
#include "panel/live_dimmers.h"

class ResponseCurveTest : public DocumentTest {
 protected:
  /// The curve of these points: input and percent of A, B and C.
  void Place(std::array<Int16, 6> values) {
    constexpr void (*sets[])(Int16, Int16, Int16) = {DimSetAIn,  DimSetAOut, DimSetBIn,
                                                     DimSetBOut, DimSetCIn,  DimSetCOut};
    for (std::size_t i = 0; i < values.size(); ++i) sets[i](0, 0, values[i]);
    curve.Place(DimmerOutput(DimmerBlock, 0, 0));
  }

  using Six = std::array<Int16, 6>;
  using Four = std::array<double, 4>;
  Six Points() const {
    const ResponseCurve::Points points = curve.Stored();
    return {points.AIn, points.AOut, points.BIn, points.BOut, points.CIn, points.COut};
  }

  Four Line(int index) const {
    const ResponseCurve::Line& line = curve.shpLine(index);
    return {line.X1, line.Y1, line.X2, line.Y2};
  }

  std::pair<double, double> At(int grip) const {
    return {curve.shpGrip(grip).Left, curve.shpGrip(grip).Top};
  }

  ResponseCurve curve;
};

TEST_F(ResponseCurveTest, GripsStandByTheStoredPoints) {
  Place({10, 100, 128, 25, 255, 0});
  EXPECT_EQ(At(1), std::pair(150.0, 0.0));
  EXPECT_EQ(At(2), std::pair(3825.0, 2880.0));
  EXPECT_EQ(At(3), std::pair(1920.0, 2160.0));

  for (Int16 percent = 0; percent <= 100; ++percent) {
    Place({0, percent, 77, percent, 255, percent});
    EXPECT_EQ(Points(), (Six{0, percent, 77, percent, 255, percent}));
  }
}

TEST_F(ResponseCurveTest, LinesJoinTheGripsInTheOrderOfTheirInputs) {
  Place({20, 100, 100, 50, 200, 0});
  curve.DrawLines(true);
  EXPECT_EQ(Line(0), (Four{0, 45, 345, 45}));
  EXPECT_EQ(Line(1), (Four{345, 45, 3045, 2925}));
  EXPECT_EQ(Line(3), (Four{3045, 2925, 3945, 2925}));
  EXPECT_FALSE(curve.shpLine(2).Visible || curve.shpGrip(3).Visible);

  curve.MoveTo(ResponseCurve::GripA, 3300, 288);
  curve.DrawLines(false);
  EXPECT_EQ(Line(0), (Four{0, 2925, 3045, 2925}));
  EXPECT_EQ(Line(1), (Four{3045, 2925, 1545, 1485}));
  EXPECT_EQ(Line(2), (Four{1545, 1485, 3345, 333}));
  EXPECT_EQ(Line(3), (Four{3345, 333, 3945, 333}));
  EXPECT_TRUE(curve.shpLine(2).Visible && curve.shpGrip(3).Visible);
}

TEST_F(ResponseCurveTest, TheLastOfOverlappingGripsIsTaken) {
  Place({100, 50, 100, 50, 100, 50});
  EXPECT_EQ(curve.GripOver(1500, 1440), 3);
  curve.DrawLines(true);
  EXPECT_EQ(curve.GripOver(1500, 1440), 3) << "a hidden grip is taken too";
  curve.MoveTo(ResponseCurve::GripB, 0, 0);
  EXPECT_EQ(curve.GripOver(1590, 1530), 2);
  EXPECT_EQ(curve.GripOver(1590.5, 1530), 0);
  EXPECT_EQ(curve.GripOver(1499.5, 1530), 0);
  EXPECT_EQ(curve.GripOver(1500, 1531), 0);
}

TEST_F(ResponseCurveTest, MovesAreKeptOnTheGraphAndKeyStepsNearlySo) {
  using enum ResponseCurve::Direction;
  const auto moved = [this](double x, double y) {
    curve.MoveTo(ResponseCurve::GripC, x, y);
    return At(2);
  };
  EXPECT_EQ(moved(-3, 1e6), std::pair(0.0, 2880.0));
  EXPECT_EQ(moved(3825.2, 200.6), std::pair(3825.0, 201.0));
  const auto step = [&](double x, double y, ResponseCurve::Direction direction) {
    moved(x, y);
    curve.Step(ResponseCurve::GripC, direction);
    return At(2);
  };
  EXPECT_EQ(step(14, 14, Left), std::pair(14.0, 14.0));
  EXPECT_EQ(step(15, 14, Left), std::pair(0.0, 14.0));
  EXPECT_EQ(step(14, 14, Up), std::pair(14.0, 14.0));
  EXPECT_EQ(step(3825, 0, Right), std::pair(3825.0, 0.0));
  EXPECT_EQ(step(3824, 0, Right), std::pair(3839.0, 0.0));
  EXPECT_EQ(step(0, 2879, Down), std::pair(0.0, 2894.0));
}

TEST_F(ResponseCurveTest, BStaysBetweenAndTheLowerInputIsStoredAsA) {
  Place({100, 90, 10, 40, 200, 20});
  curve.KeepBBetween();
  EXPECT_EQ(At(3), std::pair(1500.0, 1728.0));

  curve.MoveTo(ResponseCurve::GripA, 3750, 15);
  curve.KeepBBetween();
  EXPECT_EQ(curve.shpGrip(3).Left, 3000);
  EXPECT_EQ(Points(), (Six{200, 20, 200, 40, 250, 99}));

  curve.MoveTo(ResponseCurve::GripA, 3000, 15);
  EXPECT_EQ(Points(), (Six{200, 99, 200, 40, 200, 20})) << "equal inputs keep their letters";
}

TEST_F(ResponseCurveTest, ReadoutsTellInputAndOutput) {
  const auto told = [this](double x, double y) {
    curve.MoveTo(ResponseCurve::GripB, x, y);
    const auto readout = curve.ReadoutOf(ResponseCurve::GripB);
    return readout.Percent + ", " + readout.FootCandle + ", " + readout.Voltage;
  };
  EXPECT_EQ(told(0, 0), "0/255, 0 fc, 10.0 V");
  EXPECT_EQ(told(3825, 2880), "255/255, 1800 fc, 0.0 V");
  EXPECT_EQ(told(2047, 1440), "136/255, 17 fc, 5.0 V");
  EXPECT_EQ(told(2053, 72), "137/255, 17 fc, 9.8 V");
}

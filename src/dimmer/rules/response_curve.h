#pragma once

#include <string>

#include "panel/fixed_array.h"

class DimmerOutput;

/// What an output does as its photocell's input rises: the points A, B and C as square grips on a
/// graph, and the lines between them. Lengths are in units of which the graph has 3945 by 3000,
/// Y growing downward. Left of a grip is 15 an input count (0 to 255); Top is 0 at 100 percent and
/// 28.8 a percent below it.
class ResponseCurve {
 public:
  static constexpr int Width = 3945;
  static constexpr int Height = 3000;
  static constexpr int GripSize = 120;
  static constexpr int MaxLeft = Width - GripSize;
  static constexpr int MaxTop = Height - GripSize;
  static constexpr double GripReach = 90;   ///< The side of the square that takes the pointer.
  static constexpr double GripCentre = 45;  ///< Where the lines meet, from Left and Top.

  /// The grips' numbers. They are not in the order of the letters.
  enum : Int16 { NoGrip, GripA, GripC, GripB };

  struct Grip {
    double Left = 0;
    double Top = 0;
    bool Visible = true;
  };
  struct Line {
    double X1 = 0;
    double Y1 = 0;
    double X2 = 0;
    double Y2 = 0;
    bool Visible = true;
  };
  /// What the values of a grip are, as the screen tells them.
  struct Readout {
    std::string Percent;     ///< Of the input, "128/255".
    std::string FootCandle;  ///< Of the input, "13 fc".
    std::string Voltage;     ///< Of the output, "5.0 V".
  };

  /// The grip by its number; NoGrip has an element that means nothing.
  FixedArray<Grip, 4> shpGrip;
  FixedArray<Line, 4> shpLine;

  /// Places the grips by the stored points of an output. When a level does not fit the 16-bit
  /// percent rules, throws RunTimeFailure and leaves the grips as they were.
  void Place(const DimmerOutput& output);

  /// Lays out the lines. Of a 2 point curve B and the line behind it are hidden.
  void DrawLines(bool twoPoint);

  /// The grip under a point, the last one where grips overlap, be it hidden or not; else NoGrip.
  Int16 GripOver(double x, double y) const;

  /// Takes a grip to a point, rounded to whole units and kept on the graph.
  void MoveTo(Int16 grip, double x, double y);

  /// Moves a grip one input count or the same length of output, unless it stands at that edge. The
  /// step may pass the edge by less than its length.
  enum class Direction { Left, Up, Right, Down };
  void Step(Int16 grip, Direction direction);

  /// Keeps the input of B between those of the others; its output is free.
  void KeepBBetween();

  Readout ReadoutOf(Int16 grip) const;

  /// The points as they are stored, inputs 0 to 255 and outputs in percent, each value rounded; of
  /// grips A and C the one with the smaller input becomes A.
  struct Points {
    Int16 AIn, AOut, BIn, BOut, CIn, COut;
  };
  Points Stored() const;
};

#pragma once

#include <QGroupBox>
#include <QStackedWidget>

#include "dimmer/curve_widget.h"
#include "shell/controls/controls.h"

/// The photocell's response curve of one output: the graph, its axes and the values of the grip in
/// use. Each move over the graph and each key stores the curve.
class frmScale : public QGroupBox {
  Q_OBJECT
 public:
  frmScale();

  /// Shows the stored curve of an output. Throws RunTimeFailure for a level beyond the 16-bit
  /// percent rules, and shows the old curve still.
  void Show(Int16 dev, Int16 out, bool twoPoint);

  /// Brings B between the others without storing it.
  void KeepBBetween();

  // X and Y in the units of the curve, from the left top corner of the graph.
  void picScale_MouseDown(int button, int shift, double x, double y);
  void picScale_MouseMove(int button, int shift, double x, double y);
  void picScale_MouseUp(int button, int shift, double x, double y);
  void picScale_KeyDown(int keyCode, int shift);

  const ResponseCurve& Curve() const { return curve_; }

  Int16 DragGrip = 0;
  Int16 SelectedGrip = 0;

 private:
  void Store() const;
  void SelectByLetter(int keyCode);
  void DrawLines();
  void ShowReadouts(Int16 grip);
  void HideReadouts();

  Int16 dev_ = 0;
  Int16 out_ = 0;
  QString PointInWords(Int16 grip) const;

  bool twoPoint_ = false;
  ResponseCurve curve_;
  QStackedWidget* line_;  ///< The hint, or the readouts in its place.
  Label* lblCurveHint;
  QWidget* readouts_;
  Label* lblPercent;
  Label* lblFootCandle;
  Label* lblVoltage;
  CurveWidget* picScale;
};

#include "dimmer/scale_frame.h"

#include <QGridLayout>

#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "panel/live_project.h"

namespace {

Label* NewLabel(const char* name, const QString& caption, Label::Look look) {
  auto* label = new Label;
  label->setObjectName(QString::fromLatin1(name));
  label->SetLook(look);
  label->SetCaption(caption);
  return label;
}

QHBoxLayout* NewRow() {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(0, 0, 0, 0);
  return row;
}

}  // namespace

frmScale::frmScale() : QGroupBox(QStringLiteral("PhotoCell Input To Dimmer Output Scaling")) {
  setObjectName(QStringLiteral("frmScale"));
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(4, 2, 4, 2);
  grid->setSpacing(1);

  line_ = new QStackedWidget;
  line_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  lblCurveHint = NewLabel("lblCurveHint", {}, Label::Look::Quiet);
  line_->addWidget(lblCurveHint);
  readouts_ = new QWidget;
  auto* readoutRow = NewRow();
  readouts_->setLayout(readoutRow);
  lblPercent = NewLabel("lblPercent", {}, Label::Look::Plain);
  lblFootCandle = NewLabel("lblFootCandle", {}, Label::Look::Plain);
  lblVoltage = NewLabel("lblVoltage", {}, Label::Look::Plain);
  for (Label* label : {lblPercent, lblFootCandle, lblVoltage}) readoutRow->addWidget(label, 1);
  line_->addWidget(readouts_);
  grid->addWidget(line_, 0, 0, 1, 2);

  auto* output = new QVBoxLayout;
  auto* input = NewRow();
  const auto axisLabel = [](QBoxLayout* axis, const char* name, const QString& caption) {
    auto* label = NewLabel(name, caption, Label::Look::Quiet);
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    axis->addWidget(label);
  };
  axisLabel(output, "lblScale10V", QStringLiteral("10 V"));
  output->addStretch(1);
  axisLabel(output, "lblScale0V", QStringLiteral("0 V"));
  axisLabel(input, "lblScale0Per", QStringLiteral("0"));
  input->addStretch(1);
  axisLabel(input, "lblScaleInput", QStringLiteral("PhotoCell Input"));
  input->addStretch(1);
  axisLabel(input, "lblScale100Per", QStringLiteral("255"));
  grid->addLayout(output, 1, 0);
  grid->addLayout(input, 2, 1);

  picScale = new CurveWidget(curve_, SelectedGrip);
  picScale->setObjectName(QStringLiteral("picScale"));
  picScale->setAccessibleName(title());
  grid->addWidget(picScale, 1, 1);
  grid->setRowStretch(1, 1);
  picScale->Description = [this] {
    QStringList points{PointInWords(ResponseCurve::GripA)};
    if (!twoPoint_) points << PointInWords(ResponseCurve::GripB);
    points << PointInWords(ResponseCurve::GripC);
    return points.join(QStringLiteral("; "));
  };
  picScale->Value = [this] {
    return SelectedGrip == ResponseCurve::NoGrip ? QStringLiteral("No point selected")
                                                 : PointInWords(SelectedGrip);
  };
  picScale->MouseDown = [this](int button, int shift, double x, double y) {
    picScale_MouseDown(button, shift, x, y);
  };
  picScale->MouseMove = [this](int button, int shift, double x, double y) {
    picScale_MouseMove(button, shift, x, y);
  };
  picScale->MouseUp = [this](int button, int shift, double x, double y) {
    picScale_MouseUp(button, shift, x, y);
  };
  picScale->MouseLeave = [this] {
    if (DragGrip == ResponseCurve::NoGrip) HideReadouts();
  };
  picScale->KeyDown = [this](int keyCode, int shift) {
    SelectByLetter(keyCode);
    picScale_KeyDown(keyCode, shift);
  };
}

void frmScale::Store() const {
  const ResponseCurve::Points points = curve_.Stored();
  DimSetAOut(dev_, out_, points.AOut);
  DimSetAIn(dev_, out_, points.AIn);
  DimSetCOut(dev_, out_, points.COut);
  DimSetCIn(dev_, out_, points.CIn);
  DimSetBOut(dev_, out_, points.BOut);
  DimSetBIn(dev_, out_, points.BIn);
}

void frmScale::Show(Int16 dev, Int16 out, bool twoPoint) {
  curve_.Place(DimmerOutput(DimmerBlock, dev, out));
  dev_ = dev;
  out_ = out;
  twoPoint_ = twoPoint;
  lblCurveHint->SetCaption(twoPoint
                               ? QStringLiteral("A or C picks a point, arrow keys move it.")
                               : QStringLiteral("A, B or C picks a point, arrow keys move it."));
  DrawLines();
}

QString frmScale::PointInWords(Int16 grip) const {
  const QChar letter = grip == ResponseCurve::GripA   ? u'A'
                       : grip == ResponseCurve::GripB ? u'B'
                                                      : u'C';
  const ResponseCurve::Readout readout = curve_.ReadoutOf(grip);
  return QStringLiteral("%1: %2, %3, %4")
      .arg(letter)
      .arg(QString::fromStdString(readout.Percent), QString::fromStdString(readout.FootCandle),
           QString::fromStdString(readout.Voltage));
}

void frmScale::KeepBBetween() {
  curve_.KeepBBetween();
}

void frmScale::DrawLines() {
  curve_.DrawLines(twoPoint_);
  picScale->update();
}

void frmScale::ShowReadouts(Int16 grip) {
  const ResponseCurve::Readout readout = curve_.ReadoutOf(grip);
  lblPercent->SetCaption(QString::fromStdString(readout.Percent));
  lblFootCandle->SetCaption(QString::fromStdString(readout.FootCandle));
  lblVoltage->SetCaption(QString::fromStdString(readout.Voltage));
  line_->setCurrentWidget(readouts_);
}

void frmScale::HideReadouts() {
  line_->setCurrentIndex(0);
}

void frmScale::picScale_MouseDown(int button, int shift, double x, double y) {
  DragGrip = curve_.GripOver(x, y);
  if (DragGrip == ResponseCurve::NoGrip) {
    HideReadouts();
    return;
  }
  SelectedGrip = DragGrip;
  picScale_MouseMove(button, shift, x, y);
}

void frmScale::picScale_MouseMove(int, int, double x, double y) {
  if (DragGrip != ResponseCurve::NoGrip) curve_.MoveTo(DragGrip, x, y);
  curve_.KeepBBetween();
  DrawLines();
  const Int16 over = curve_.GripOver(x, y);
  if (over != ResponseCurve::NoGrip) {
    ShowReadouts(over);
  } else {
    HideReadouts();
  }
  Store();
}

void frmScale::picScale_MouseUp(int, int, double, double) {
  if (DragGrip != ResponseCurve::NoGrip) picScale->TellChange();
  DragGrip = ResponseCurve::NoGrip;
  HideReadouts();
}

/// The keyboard's way to a first selection, which the pointer makes by a press.
void frmScale::SelectByLetter(int keyCode) {
  if (keyCode == 'A') SelectedGrip = ResponseCurve::GripA;
  if (keyCode == 'B' && !twoPoint_) SelectedGrip = ResponseCurve::GripB;
  if (keyCode == 'C') SelectedGrip = ResponseCurve::GripC;
}

void frmScale::picScale_KeyDown(int keyCode, int) {
  if (SelectedGrip == ResponseCurve::NoGrip) return;
  if (DimGetTrackMode(dev_, out_) == Track2Point && SelectedGrip == ResponseCurve::GripB) return;
  constexpr int leftKey = 37;
  constexpr int downKey = 40;
  if (keyCode >= leftKey && keyCode <= downKey) {
    curve_.Step(SelectedGrip, static_cast<ResponseCurve::Direction>(keyCode - leftKey));
  }
  curve_.KeepBBetween();
  DrawLines();
  ShowReadouts(SelectedGrip);
  Store();
  picScale->TellChange();
}

#include "panel/dimmer_words.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "panel/dimmer_fields.h"
#include "panel/format.h"
#include "panel/hex.h"

namespace {

/// A straight piece of the photocell's scale up to `Last`: (code - From) * Slope + Base.
struct ScalePiece {
  int Last;
  int From;
  int SlopeHundredths;
  int Base;
};

/// The pieces do not meet: the scale steps where one ends.
constexpr ScalePiece PhotocellScale[] = {
    {75, 0, 5, 0},         {116, 72, 15, 4},      {137, 116, 30, 11},     {170, 138, 68, 18},
    {181, 171, 125, 40},   {190, 182, 250, 55},   {203, 191, 340, 80},    {218, 204, 630, 125},
    {228, 219, 2000, 220}, {233, 229, 5000, 450}, {237, 234, 10000, 700}, {240, 238, 20000, 1200},
};
constexpr Int16 FullDaylight = 1800;

/// What operates a slot, with the dash before it where one belongs.
std::string OperatorText(const DimmerOutput& output, int ctl) {
  const std::string number = NumberText(output(dim::ControlNumber, ctl) + 1, 2);
  const Int16 device = output(dim::ControlDevice, ctl);
  switch (output(dim::ControlType, ctl)) {
    case ControlUnused:
      return "Unused";
    case ControlInput:
    case ControlInvertInput:
      return (device == 0 ? "HW:" : "D:" + HexByte(device)) + "-I:" + number;
    case ControlTimer:
      return "T:" + number;
    case ControlPreset:
      return "P:" + number;
    default:
      return {};
  }
}

}  // namespace

std::string ControlActionText(int code) {
  switch (code) {
    case RevertToPhotocellCode:
      return "Revert To Photocell";
    case LowerCode:
      return "Lower 10%";
    case RaiseCode:
      return "Raise 10%";
    case RampDownCode:
      return "Ramp Down";
    case RampUpCode:
      return "Ramp Up";
    default:
      break;
  }
  if (code < FirstGotoCode || code > RampUpCode) return {};
  return "Goto " + NumberText(code - FirstGotoCode) + '%';
}

std::string RevertWhenText(int code) {
  if (code < 0 || code >= ControlRevertCount) return {};
  if (code == 0) return "When Input Opens";
  if (code == NeverRevertCode) return "Never";
  return "After " + NumberText(RevertMinutes(code)) + " Min";
}

std::string ControlRevertText(int code) {
  const std::string when = RevertWhenText(code);
  if (when.empty()) return {};
  return code == NeverRevertCode ? when + " Revert" : "Revert " + when;
}

std::string ControlTypeListText(int type) {
  const std::string_view word =
      type == ControlInvertInput ? std::string_view("Invert In") : Word(ControlTypes, type);
  return word.empty() ? std::string() : "Control - " + std::string(word);
}

std::string ControlSlotSummary(const DimmerOutput& output, int ctl) {
  std::string summary = ' ' + NumberText(ctl + 1, 2) + '-' + OperatorText(output, ctl);
  if (output(dim::ControlType, ctl) == ControlUnused) return summary;
  const std::string parts[] = {
      ControlActionText(output(dim::ControlAction, ctl)),
      std::string(Word(ControlFades, output(dim::ControlInstant, ctl) != 0)),
      ControlRevertText(output(dim::ControlRevert, ctl))};
  for (const std::string& part : parts) {
    if (!part.empty()) summary += '-' + part;
  }
  return summary;
}

Int16 CodeToFootCandles(Int16 code) {
  if (code < 0) return FullDaylight;
  const auto* piece = std::find_if(std::begin(PhotocellScale), std::end(PhotocellScale),
                                   [code](const ScalePiece& p) { return code <= p.Last; });
  if (piece == std::end(PhotocellScale)) return FullDaylight;
  return static_cast<Int16>((code - piece->From) * piece->SlopeHundredths / 100 + piece->Base);
}

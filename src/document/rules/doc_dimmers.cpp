#include "dimmer/rules/dimmer_model.h"
#include "document/rules/doc_sections.h"
#include "panel/hex.h"
#include "panel/panel_record.h"

namespace {

constexpr int SlotColumns = 10;
constexpr int PointColumns = 6;

using OutputGetter = Int16 (*)(Int16 dev, Int16 out);

/// A level of the output, which is not read when its photocell gives it.
void LevelCell(DocumentText& text, Int16 dev, Int16 out, OutputGetter fromPhotocell,
               OutputGetter percent) {
  if (fromPhotocell(dev, out) != 0) {
    text.Cell("Photocell");
  } else {
    text.Cell(percent(dev, out));
  }
}

/// Photocell, target and points. A two point curve shows its first point alone.
void TrackingCells(DocumentText& text, Int16 dev, Int16 out) {
  const Int16 mode = DimGetTrackMode(dev, out);
  text.Cell(Word(TrackModes, mode));
  if (mode == TrackDisabled) {
    text.Skip(3 + PointColumns);
    return;
  }
  text.Cell(HexByte(DimGetPCNode(dev, out))).Cell(HexByte(DimGetPCDev(dev, out)));
  text.Cell();
  if (mode == TrackSetpoint) {
    text.Number(DimGetTarget(dev, out)).Skip(PointColumns);
    return;
  }
  text.Cell(DimGetAIn(dev, out)).Cell(DimGetAOut(dev, out));
  if (mode == Track2Point) {
    text.Skip(PointColumns - 2);
    return;
  }
  text.Cell(DimGetBIn(dev, out)).Cell(DimGetBOut(dev, out));
  text.Cell(DimGetCIn(dev, out)).Cell(DimGetCOut(dev, out));
}

void OutputLine(DocumentText& text, Int16 dev, Int16 out) {
  text.Header({"DO Device", "Output", "Power On%", "Fade Rate (Sec)", "Min Level%", "Max Level%",
               "DMX Channel", "PC Tracking", "PC Node", "PC Device", "Target", "Point A In",
               "Point A Out", "Point B In", "Point B Out", "Point C In", "Point C Out"});
  text.Cell("DO:").Text(HexByte(dev + 1)).Cell(out + 1).Cell(DimGetPowerOn(dev, out));
  const Int16 fade = DimGetFade(dev, out);
  text.Cell();
  if (fade >= 0 && fade < FadeRateCount) text.Number(FadeSeconds(fade));
  LevelCell(text, dev, out, DimGetMinPC, DimGetMin);
  LevelCell(text, dev, out, DimGetMaxPC, DimGetMax);
  const Int16 channel = DimGetDMX(dev, out);
  if (channel == 0) {
    text.Cell("Disabled");
  } else {
    text.Cell(channel);
  }
  TrackingCells(text, dev, out);
  text.EndRow();
  text.LeadFurtherTables(2);
}

/// Device, input, timer and preset, of which a slot uses what its type names.
void OperatorCells(DocumentText& text, Int16 dev, Int16 out, Int16 slot, Int16 type) {
  const Int16 device = DimGetCtlDevice(dev, out, slot);
  const int number = DimGetCtlNumber(dev, out, slot) + 1;
  switch (type) {
    case ControlTimer:
      text.Skip(2).Cell(number).Cell();
      break;
    case ControlPreset:
      text.Skip(3).Cell(number);
      break;
    default:
      text.Cell(device == 0 ? "HW" : HexByte(device)).Cell(HexByte(number)).Skip(2);
      break;
  }
}

void ControlLines(DocumentText& text, Int16 dev, Int16 out) {
  text.Header(
      {"Control", "Type", "", "Device", "Input", "Timer", "Preset", "Action", "Fade", "Revert"},
      "Dimmer Controls");
  for (Int16 slot = 0; slot < ControlSlotCount; ++slot) {
    const Int16 type = DimGetCtlType(dev, out, slot);
    const std::string_view word = Word(ControlTypes, type);
    text.Cell(slot + 1).Cell(word);
    if (type == ControlUnused || word.empty()) {
      text.Skip(SlotColumns - 2).EndRow();
      continue;
    }
    text.Cell();
    OperatorCells(text, dev, out, slot, type);
    text.Cell(ControlActionText(DimGetCtlAction(dev, out, slot)));
    text.Cell(Word(ControlFades, DimGetCtlInstant(dev, out, slot) != 0));
    text.Cell(RevertWhenText(DimGetCtlRevert(dev, out, slot))).EndRow();
  }
}

void RelayLines(DocumentText& text, Int16 dev, Int16 out) {
  text.Header({"", "Dimmer/Relay Control", "Off Level(%)", "On Level(%)", "Relays"},
              "Dimmer Relays");
  text.Skip(2).Cell(DimGetOffLevel(dev, out)).Cell(DimGetOnLevel(dev, out)).Cell();
  const auto follows = [&](int relay) {
    return DimGetRelay(dev, out, static_cast<Int16>(relay)) != 0;
  };
  text.Items("", ItemCount, follows, 2, ' ').EndRow();
}

}  // namespace

void DocDimmers(DocumentText& text) {
  text.Title("Dimmer Outputs");
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (DimGetEnabled(dev) == 0) continue;
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      try {
        OutputLine(text, dev, out);
        ControlLines(text, dev, out);
        RelayLines(text, dev, out);
      } catch (const RunTimeFailure& failure) {
        throw RunTimeFailure("dimmer device " + HexByte(dev + 1) + ", output " +
                             std::to_string(out + 1) + ": " + failure.what());
      }
    }
  }
}

void DocDMXSchedule(DocumentText& text) {
  const auto& panel = PanelRecord;
  text.Title("DMX Schedule");
  text.Header({"Relay Number", "Relay Name", "DMX Channel"});
  const int ioCount = PanelIOCount();
  for (int relay = 0; relay < ioCount; ++relay) {
    text.Cell(relay + 1, 2).Cell(panel.RelayName(relay));
    const Int16 channel = panel.DMXChannel(relay);
    if (channel == 0) {
      text.Cell("None").EndRow();
    } else {
      text.Cell(channel, 3).EndRow();
    }
  }
}

#include "document/rules/text/doc_sections.h"
#include "panel/code_page.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/format.h"
#include "panel/hex.h"
#include "panel/panel_record.h"
#include "panel/setting.h"

namespace {

constexpr int SlotColumns = 10;
constexpr int PointColumns = 6;

/// A level of the output, which is not read when its photocell gives it.
void LevelCell(DocumentText& text, const DimmerOutput& output, const DimmerField& fromPhotocell,
               const DimmerField& percent) {
  if (output(fromPhotocell) != 0) {
    text.Cell("Photocell");
  } else {
    text.Cell(output(percent));
  }
}

/// An output with its place in a project, in which its numbers have words.
struct PlacedOutput : DimmerOutput {
  PlacedOutput(const Project& project, int dev, int out)
      : DimmerOutput(project.Dimmers, dev, out), In(project), At{dev, out} {}

  std::string WordsOf(const DimmerField& field) const {
    return FromUnicode(::WordsOf(In, {nullptr, &field, At}));
  }

  const Project& In;
  Place At;
};

/// The light at the photocell, by its code.
void LightCell(DocumentText& text, const PlacedOutput& output, const DimmerField& field) {
  text.Cell(output(field)).InSheet([&] { return output.WordsOf(field); });
}

/// Photocell, target and points. A two point curve shows its first point alone.
void TrackingCells(DocumentText& text, const PlacedOutput& output) {
  const Int16 mode = output(dim::TrackMode);
  text.Cell(Word(TrackModes, mode));
  if (mode == TrackDisabled) {
    text.Skip(3 + PointColumns);
    return;
  }
  text.Cell(HexByte(output(dim::PhotocellNode))).Cell(HexByte(output(dim::PhotocellDevice)));
  text.InSheet([&] { return output.WordsOf(dim::PhotocellDevice); });
  if (mode == TrackSetpoint) {
    LightCell(text, output, dim::Target);
    text.Skip(PointColumns);
    return;
  }
  text.Cell();
  LightCell(text, output, dim::PointAIn);
  text.Cell(output(dim::PointAOut));
  if (mode == Track2Point) {
    text.Skip(PointColumns - 2);
    return;
  }
  LightCell(text, output, dim::PointBIn);
  text.Cell(output(dim::PointBOut));
  LightCell(text, output, dim::PointCIn);
  text.Cell(output(dim::PointCOut));
}

void OutputLine(DocumentText& text, const PlacedOutput& output) {
  text.Header({"DO Device", "Output", "Power On%", "Fade Rate (Sec)", "Min Level%", "Max Level%",
               "DMX Channel", "PC Tracking", "PC Node", "PC Device", "Target", "Point A In",
               "Point A Out", "Point B In", "Point B Out", "Point C In", "Point C Out"});
  text.Cell("DO:")
      .Text(HexByte(output.At.Device + 1))
      .Cell(output.At.First + 1)
      .Cell(output(dim::PowerOnLevel));
  const Int16 fade = output(dim::FadeRate);
  text.Cell();
  if (fade >= 0 && fade < FadeRateCount) text.Number(FadeSeconds(fade));
  LevelCell(text, output, dim::MinFromPhotocell, dim::MinLevel);
  LevelCell(text, output, dim::MaxFromPhotocell, dim::MaxLevel);
  const Int16 channel = output(dim::DMXChannel);
  if (channel == 0) {
    text.Cell("Disabled");
  } else {
    text.Cell(channel);
  }
  TrackingCells(text, output);
  text.EndRow();
  text.LeadFurtherTables(2);
}

/// Device, input, timer and preset, of which a slot uses what its type names.
void OperatorCells(DocumentText& text, const DimmerOutput& output, int slot, Int16 type) {
  const Int16 device = output(dim::ControlDevice, slot);
  const int number = output(dim::ControlNumber, slot) + 1;
  switch (type) {
    case ControlTimer:
      text.Skip(2).Cell(number).Cell();
      break;
    case ControlPreset:
      text.Skip(3).Cell(number);
      break;
    default:
      text.Cell(device == 0 ? "HW" : HexByte(device));
      if (device != 0) text.InSheet([&] { return "FL " + HexByte(device); });
      text.Cell(HexByte(number)).InSheet([&] { return NumberText(number); }).Skip(2);
      break;
  }
}

void ControlLines(DocumentText& text, const DimmerOutput& output) {
  text.Header(
      {"Control", "Type", "", "Device", "Input", "Timer", "Preset", "Action", "Fade", "Revert"},
      "Dimmer Controls");
  for (int slot = 0; slot < ControlSlotCount; ++slot) {
    const Int16 type = output(dim::ControlType, slot);
    const std::string_view word = Word(ControlTypes, type);
    text.Cell(slot + 1).Cell(word);
    if (type == ControlUnused || word.empty()) {
      text.Skip(SlotColumns - 2).EndRow();
      continue;
    }
    text.Cell();
    OperatorCells(text, output, slot, type);
    text.Cell(ControlActionText(output(dim::ControlAction, slot)));
    text.Cell(Word(ControlFades, output(dim::ControlInstant, slot) != 0));
    text.Cell(RevertWhenText(output(dim::ControlRevert, slot))).EndRow();
  }
}

void RelayLines(DocumentText& text, const DimmerOutput& output) {
  text.Header({"", "Dimmer/Relay Control", "Off Level(%)", "On Level(%)", "Relays"},
              "Dimmer Relays");
  text.Skip(2).Cell(output(dim::RelayOffLevel)).Cell(output(dim::RelayOnLevel)).Cell();
  const auto follows = [&](int relay) { return output(dim::RelayInclude, relay) != 0; };
  text.Items("", ItemCount, follows, 2, ' ').EndRow();
}

}  // namespace

void DocDimmers(DocumentText& text, const Project& project) {
  text.Title("Dimmer Outputs");
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (!DimmerEnabled(project.Dimmers, dev)) continue;
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const PlacedOutput output(project, dev, out);
      try {
        OutputLine(text, output);
        ControlLines(text, output);
        RelayLines(text, output);
      } catch (const RunTimeFailure& failure) {
        throw RunTimeFailure("dimmer device " + HexByte(dev + 1) + ", output " +
                             std::to_string(out + 1) + ": " + failure.what());
      }
    }
  }
}

void DocDMXSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("DMX Schedule");
  text.Header({"Relay Number", "Relay Name", "DMX Channel"});
  const int ioCount = PanelIOCount(project.Panel);
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

#include "panel/dimmer_fields.h"

#include "panel/checked_arithmetic.h"
#include "panel/code_page.h"
#include "panel/dimmer_words.h"
#include "panel/hex.h"

namespace {

constexpr int BitsOfRowElement = 8;

int BitOf(const DimmerField& field, int index) {
  return field.Way == DimmerField::How::BitRow ? index % BitsOfRowElement : field.Bit;
}

QString TextOr(const std::string& text, Int32 value) {
  return text.empty() ? QString::number(value) : ToUnicode(text);
}

bool IsUnusedSlot(const Project& project, const Place& place) {
  const DimmerOutput output(project.Dimmers, place.Device, place.First);
  return output(dim::ControlType, place.Second) == ControlUnused;
}

}  // namespace

Int16 PercentToLevel(Int16 percent) {
  return ToInt16(FloorDiv(ToInt16(percent * 255), 100));
}

Int16 LevelToPercent(Int16 level) {
  return ToInt16(FloorDiv(ToInt16(ToInt16(level * 100) + 128), 255));
}

Int32 DimmerElement(const DimmerField& field, OutputPlace place, int index) {
  const int within =
      field.Way == DimmerField::How::BitRow ? FloorDiv(index, BitsOfRowElement) : index;
  constexpr int elementsOfDevice = ElementsOfOutput * DimmerOutputCount;
  return ToInt16(
      ToInt16(ToInt16(place.Device * elementsOfDevice) + ToInt16(place.Output * ElementsOfOutput)) +
      field.Element + within);
}

int MaskOf(const DimmerField& field, int index) {
  using enum DimmerField::How;
  switch (field.Way) {
    case LowBits:
      return (1 << field.Bit) - 1;
    case Bit:
    case BitRow:
      return 1 << BitOf(field, index);
    default:
      return ~0;
  }
}

Int16 DecodeDimmer(const DimmerField& field, Int16 element, Int16 next, int index) {
  using enum DimmerField::How;
  switch (field.Way) {
    case Raw:
      return element;
    case Percent:
      return LevelToPercent(element);
    case LowBits:
      return static_cast<Int16>(element & ((1 << field.Bit) - 1));
    case Bit:
    case BitRow:
      return ((1 << BitOf(field, index)) & element) > 0 ? -1 : 0;
    case HighLow:
      return ToInt16(ToInt16(element * 256) + next);
  }
  return 0;
}

Int16 EncodeDimmer(const DimmerField& field, Int16 old, Int16 value, int index) {
  using enum DimmerField::How;
  switch (field.Way) {
    case Raw:
      return value;
    case Percent:
      return PercentToLevel(value);
    case LowBits:
      return ToInt16((old & (0xFF & ~((1 << field.Bit) - 1))) + value);
    case Bit:
    case BitRow: {
      const int mask = 1 << BitOf(field, index);
      return static_cast<Int16>(value != 0 ? old | mask : old & (mask ^ 255));
    }
    case HighLow:
      return static_cast<Int16>(FloorDiv(value, 256));
  }
  return 0;
}

Int16 DimmerValue(const DimmerBlockType& block, const DimmerField& field, OutputPlace place,
                  int index) {
  const Int32 element = DimmerElement(field, place, index);
  const bool pair = field.Way == DimmerField::How::HighLow;
  return DecodeDimmer(field, block(element), pair ? block(element + 1) : Int16{0}, index);
}

void SetDimmerValue(DimmerBlockType& block, const DimmerField& field, OutputPlace place,
                    Int16 value, int index) {
  const Int32 element = DimmerElement(field, place, index);
  block(element) = EncodeDimmer(field, block(element), value, index);
  if (field.Way == DimmerField::How::HighLow) block(element + 1) = value % 256;
}

bool DimmerEnabled(const DimmerBlockType& block, int device) {
  return block(DeviceEnabledElement + device) != 0;
}

bool FollowsRelays(const DimmerOutput& output) {
  for (int relay = 0; relay < ItemCount; ++relay) {
    if (output(dim::RelayInclude, relay) != 0) return true;
  }
  return false;
}

namespace told {

QString DimmerFade(const Project&, const Place&, Int32 value) {
  return value >= 0 && value < FadeRateCount ? QStringLiteral("%1 s").arg(FadeSeconds(value))
                                             : QString::number(value);
}

QString FootCandles(const Project&, const Place&, Int32 value) {
  return QStringLiteral("%1/255 (%2 fc)")
      .arg(value)
      .arg(CodeToFootCandles(static_cast<Int16>(value)));
}

QString DimmerPhotocell(const Project&, const Place&, Int32 value) {
  return ItemCode({ItemKind::Device, value + 1});
}

QString SlotNumber(const Project& project, const Place& place, Int32 value) {
  const DimmerOutput output(project.Dimmers, place.Device, place.First);
  switch (output(dim::ControlType, place.Second)) {
    case ControlTimer:
      return ItemCode({ItemKind::Timer, value});
    case ControlPreset:
      return ItemCode({ItemKind::Preset, value});
    default:
      return ItemCode({ItemKind::Input, value});
  }
}

QString SlotDevice(const Project&, const Place&, Int32 value) {
  return value == 0 ? QStringLiteral("HW") : ItemCode({ItemKind::Device, value});
}

QString SlotAction(const Project&, const Place&, Int32 value) {
  return TextOr(ControlActionText(value), value);
}

QString SlotRevert(const Project&, const Place&, Int32 value) {
  return TextOr(RevertWhenText(value), value);
}

bool IsDimmerFade(const Project&, const Place&, Int32 value) {
  return value >= 0 && value < FadeRateCount;
}

bool IsSlotAction(const Project& project, const Place& place, Int32 value) {
  return IsUnusedSlot(project, place) || (value >= 0 && value < ControlActionCount);
}

bool IsSlotRevert(const Project& project, const Place& place, Int32 value) {
  return IsUnusedSlot(project, place) || (value >= 0 && value < ControlRevertCount);
}

}  // namespace told

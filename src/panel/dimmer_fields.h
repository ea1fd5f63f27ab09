#pragma once

#include <array>
#include <span>

#include "panel/dimmer_words.h"
#include "panel/field_facts.h"

// The table of a dimmer output's fields, in the order of its 128 elements, and the way to read and
// write one. Two fields may share an element.

struct DimmerField {
  enum class How {
    Raw,
    Percent,  ///< A level byte, read and written as a percentage.
    LowBits,  ///< `Bit` low bits of the element.
    Bit,      ///< Reads as -1 or 0.
    HighLow,  ///< Two elements, high byte first.
    BitRow,   ///< A bit for each relay, eight an element; reads as -1 or 0.
  };
  const char* Name;
  int Element;  ///< The first one; of a slot's field that of slot 0.
  How Way;
  int Bit;
  int Count;           ///< Slots or relays; 1 for a single value.
  const char* Phrase;  ///< "%1" is the slot or the relay.
  Words Told;
  Int16 Start;  ///< Of a new panel, as it is written.
  Editor Where;
};

/// An output of a dimmer device in a project, or the same in no project's block.
struct OutputPlace {
  Int16 Device;  ///< 0 to 11.
  Int16 Output;  ///< 0 to 3.
};

/// The element of a field; `index` counts slots or relays. The arithmetic is 16-bit: a place far
/// outside throws RunTimeFailure.
Int32 DimmerElement(const DimmerField& field, OutputPlace place, int index = 0);

/// The bits of an element that are the field's.
int MaskOf(const DimmerField& field, int index);

/// What the element, and for a pair the one behind it, hold of a field.
Int16 DecodeDimmer(const DimmerField& field, Int16 element, Int16 next, int index);
/// The element with `value` in the field's part; of a pair the first one.
Int16 EncodeDimmer(const DimmerField& field, Int16 old, Int16 value, int index);

/// The value of a field. Levels are percent, flags -1 or 0. Throws RunTimeFailure for a level that
/// no percentage tells.
Int16 DimmerValue(const DimmerBlockType& block, const DimmerField& field, OutputPlace place,
                  int index = 0);

void SetDimmerValue(DimmerBlockType& block, const DimmerField& field, OutputPlace place,
                    Int16 value, int index = 0);

/// An output to be read: `output(dim::Target)`, `output(dim::ControlAction, slot)`.
class DimmerOutput {
 public:
  DimmerOutput(const DimmerBlockType& block, int device, int output)
      : block_(block), place_{static_cast<Int16>(device), static_cast<Int16>(output)} {}
  Int16 operator()(const DimmerField& field, int index = 0) const {
    return DimmerValue(block_, field, place_, index);
  }

 private:
  const DimmerBlockType& block_;
  OutputPlace place_;
};

/// Whether a device is enabled.
bool DimmerEnabled(const DimmerBlockType& block, int device);

/// Whether an output follows any relay, which it does on a device that is not enabled, too.
bool FollowsRelays(const DimmerOutput& output);

namespace told {

QString DimmerFade(const Project&, const Place&, Int32 value);
/// "128/255 (8 fc)".
QString FootCandles(const Project&, const Place&, Int32 value);
QString DimmerPhotocell(const Project&, const Place&, Int32 value);
QString SlotNumber(const Project&, const Place&, Int32 value);
QString SlotDevice(const Project&, const Place&, Int32 value);
QString SlotAction(const Project&, const Place&, Int32 value);
QString SlotRevert(const Project&, const Place&, Int32 value);
bool IsDimmerFade(const Project&, const Place&, Int32 value);
bool IsSlotAction(const Project&, const Place&, Int32 value);
bool IsSlotRevert(const Project&, const Place&, Int32 value);

}  // namespace told

namespace dim {

using enum DimmerField::How;
constexpr Editor OnOutput(const char* control) {
  return EditedBy(Screen::DimmerOutput, control);
}

// clang-format off
inline constexpr DimmerField TrackMode{"TrackMode", 0, LowBits, 2, 1, "tracking mode", FromList<TrackModes>(), 0, OnOutput("cboPCTrack")};
inline constexpr DimmerField MinFromPhotocell{"MinFromPhotocell", 0, Bit, 2, 1, "minimum from the photocell", Words{told::YesOrNo}, 0, OnOutput("cboMinLevel")};
inline constexpr DimmerField MaxFromPhotocell{"MaxFromPhotocell", 0, Bit, 3, 1, "maximum from the photocell", Words{told::YesOrNo}, 0, OnOutput("cboMaxLevel")};
inline constexpr DimmerField PowerOnLevel{"PowerOnLevel", 1, Percent, 0, 1, "power-on level", Words{told::Percent}, 100, OnOutput("cboPowerOnLevel")};
inline constexpr DimmerField FadeRate{"FadeRate", 2, Raw, 0, 1, "fade rate", FromSome(told::DimmerFade, told::IsDimmerFade), 0, OnOutput("cboFadeRate")};
inline constexpr DimmerField MinLevel{"MinLevel", 3, Percent, 0, 1, "minimum", Words{told::Percent}, 0, OnOutput("cboMinLevel")};
inline constexpr DimmerField MaxLevel{"MaxLevel", 4, Percent, 0, 1, "maximum", Words{told::Percent}, 100, OnOutput("cboMaxLevel")};
inline constexpr DimmerField PhotocellNode{"PhotocellNode", 5, Raw, 0, 1, "photocell node", ByNumber(), 0, NotEdited("it is copied with an output, and the panel has one node")};
inline constexpr DimmerField PhotocellDevice{"PhotocellDevice", 6, Raw, 0, 1, "tracking photocell", Words{told::DimmerPhotocell}, 0, OnOutput("cboPCDev")};
inline constexpr DimmerField PointAIn{"PointAIn", 7, Raw, 0, 1, "point A input", Words{told::FootCandles}, 0, OnOutput("picScale")};
inline constexpr DimmerField PointAOut{"PointAOut", 8, Percent, 0, 1, "point A output", Words{told::Percent}, 100, OnOutput("picScale")};
inline constexpr DimmerField PointBIn{"PointBIn", 9, Raw, 0, 1, "point B input", Words{told::FootCandles}, 128, OnOutput("picScale")};
inline constexpr DimmerField PointBOut{"PointBOut", 10, Percent, 0, 1, "point B output", Words{told::Percent}, 50, OnOutput("picScale")};
inline constexpr DimmerField PointCIn{"PointCIn", 11, Raw, 0, 1, "point C input", Words{told::FootCandles}, 255, OnOutput("picScale")};
inline constexpr DimmerField PointCOut{"PointCOut", 12, Percent, 0, 1, "point C output", Words{told::Percent}, 0, OnOutput("picScale")};
inline constexpr DimmerField DMXChannel{"DimmerDMXChannel", 13, HighLow, 0, 1, "DMX channel", FromSome(told::DMXChannel, told::IsWithin<DMXChannelRange>), 0, OnOutput("cboDMX")};
inline constexpr DimmerField Target{"Target", 15, Raw, 0, 1, "target", Words{told::FootCandles}, 0, OnOutput("cboTarget")};
inline constexpr DimmerField ControlType{"ControlType", 16, LowBits, 3, ControlSlotCount, "control type %1", FromList<ControlTypes>(), 0, OnOutput("cboCOTyp")};
inline constexpr DimmerField ControlInstant{"ControlInstant", 16, Bit, 7, ControlSlotCount, "control fade %1", FromFlags<ControlFades>(), 0, OnOutput("cboCOFade")};
inline constexpr DimmerField Unused32{"", 32, Raw, 0, 16, "unused element %1", ByNumber(), 0, NotEdited("it means nothing")};
inline constexpr DimmerField ControlNumber{"ControlNumber", 48, Raw, 0, ControlSlotCount, "control number %1", Words{told::SlotNumber}, 0, OnOutput("cboCONum")};
inline constexpr DimmerField ControlDevice{"ControlDevice", 64, Raw, 0, ControlSlotCount, "control device %1", Words{told::SlotDevice}, 0, OnOutput("cboCODev")};
inline constexpr DimmerField ControlAction{"ControlAction", 80, Raw, 0, ControlSlotCount, "control action %1", FromSome(told::SlotAction, told::IsSlotAction), 0, OnOutput("cboCOAct")};
inline constexpr DimmerField ControlRevert{"ControlRevert", 96, Raw, 0, ControlSlotCount, "control revert %1", FromSome(told::SlotRevert, told::IsSlotRevert), 0, OnOutput("cboCORevert")};
inline constexpr DimmerField RelayOnLevel{"RelayOnLevel", 112, Percent, 0, 1, "relay on level", Words{told::Percent}, 0, EditedBy(Screen::DimmerRelayControl, "cboOnLevel")};
inline constexpr DimmerField RelayOffLevel{"RelayOffLevel", 113, Percent, 0, 1, "relay off level", Words{told::Percent}, 0, EditedBy(Screen::DimmerRelayControl, "cboOffLevel")};
inline constexpr DimmerField RelayInclude{"RelayInclude", 114, BitRow, 0, ItemCount, "RELAY %1", Words{told::YesOrNo}, 0, EditedBy(Screen::DimmerRelayControl, "imgInclude")};
inline constexpr DimmerField Unused120{"", 120, Raw, 0, 8, "unused last element %1", ByNumber(), 0, NotEdited("it means nothing")};
/// Of a device, counted from 0, in the output {0, 0}; none of an output's fields.
inline constexpr DimmerField DeviceEnabled{"DeviceEnabled", DeviceEnabledElement, Raw, 0, DimmerDeviceCount, "enabled", FromSome(told::YesOrNo, told::IsWithin<ByteRange>), 0, OnOutput("chkEnabled")};
// clang-format on

/// By element; every one of the 128 is of a row.
inline constexpr auto Fields = std::to_array<const DimmerField*>(
    {&TrackMode,     &MinFromPhotocell, &MaxFromPhotocell, &PowerOnLevel,    &FadeRate,
     &MinLevel,      &MaxLevel,         &PhotocellNode,    &PhotocellDevice, &PointAIn,
     &PointAOut,     &PointBIn,         &PointBOut,        &PointCIn,        &PointCOut,
     &DMXChannel,    &Target,           &ControlType,      &ControlInstant,  &Unused32,
     &ControlNumber, &ControlDevice,    &ControlAction,    &ControlRevert,   &RelayOnLevel,
     &RelayOffLevel, &RelayInclude,     &Unused120});

}  // namespace dim

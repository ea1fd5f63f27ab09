#pragma once

#include <QString>
#include <array>
#include <optional>

#include "panel/dimmer_fields.h"

// A control slot of a dimmer's output in one sentence, and the way back.

/// All that a control slot holds, as the fields of its parts tell it.
struct ControlSlot {
  Int16 Type = 0;
  Int16 Instant = 0;  ///< -1 or 0.
  Int16 Number = 0;
  Int16 Device = 0;
  Int16 Action = 0;
  Int16 Revert = 0;

  bool operator==(const ControlSlot&) const = default;
};

struct ControlSlotPart {
  const DimmerField* Field;
  Int16 ControlSlot::*Member;
};
inline constexpr auto ControlSlotParts = std::to_array<ControlSlotPart>({
    {&dim::ControlType, &ControlSlot::Type},
    {&dim::ControlInstant, &ControlSlot::Instant},
    {&dim::ControlNumber, &ControlSlot::Number},
    {&dim::ControlDevice, &ControlSlot::Device},
    {&dim::ControlAction, &ControlSlot::Action},
    {&dim::ControlRevert, &ControlSlot::Revert},
});

ControlSlot ControlSlotOf(const DimmerOutput& output, int slot);

/// "PRESET 03 OFFICE SCENE goes to 40 %, fades, back after 5 min", with the project's names, or
/// "Unused". Empty for a slot with a code that no list holds.
QString SlotInWords(const Project& project, const ControlSlot& slot);

/// The way back from such words: what they tell, over a slot that keeps what they do not tell. The
/// names do not count. Nothing for words of no slot.
std::optional<ControlSlot> ReadSlotWords(const QString& words, ControlSlot over);

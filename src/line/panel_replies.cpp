#include "line/panel_replies.h"

#include "line/panel_transact.h"
#include "panel/hex.h"

namespace {

constexpr int FirstPosition = 2;  ///< Of a reply's data.

Int32 ReplyDigit(int position) {
  return ParseHexByte(ReplyMid(position, 1));
}

/// Fills an array from the pairs of digits of a reply, in order.
template <typename Array>
void TakeBytes(Array& array) {
  int position = FirstPosition;
  for (auto& element : array) {
    element = static_cast<Int16>(ReplyByte(position));
    position += 2;
  }
}

}  // namespace

QDateTime PanelStatus::Clock() const {
  constexpr int century = 2000;
  return {QDate(century + Year, Month, Day), QTime(Hour, Minute, Second)};
}

PanelStatus ReplyStatus() {
  return {.Hour = ReplyByte(2),
          .Minute = ReplyByte(4),
          .Second = ReplyByte(6),
          .Month = ReplyByte(8),
          .Day = ReplyByte(10),
          .Year = ReplyByte(12),
          .Weekday = ReplyDigit(14),
          .Points = ReplyByte(16),
          .CardType = ReplyDigit(19),
          .CardRevision = ReplyDigit(20)};
}

PointCounts ReplyPointCounts() {
  PointCounts counts;
  TakeBytes(counts);
  return counts;
}

PasswordDigits ReplyPassWord() {
  PasswordDigits digits;
  TakeBytes(digits);
  return digits;
}

OutputStates ReplyOutputs() {
  OutputStates on;
  for (int i = 0; i < ItemCount; ++i) on(i) = ReplyMid(FirstPosition + i, 1) != "0";
  return on;
}

InputStates ReplyInputs() {
  InputStates inputs;
  constexpr int bothContacts = 3;
  for (int i = 0; i < ItemCount; ++i) {
    const int state = ReplyCode(FirstPosition + i) - '0';
    if (state < 0 || state > bothContacts) continue;
    inputs(i) = {.Known = true, .On = (state & 1) != 0, .Off = (state & 2) != 0};
  }
  return inputs;
}

PresetStates ReplyPresets() {
  PresetStates presets;
  for (int i = 0; i < ItemCount; ++i) {
    const std::string_view state = ReplyMid(FirstPosition + i, 1);
    presets(i) = state == "2"   ? PresetState::Empty
                 : state == "0" ? PresetState::Off
                                : PresetState::Set;
  }
  return presets;
}

DeviceBytes ReplyDevices() {
  DeviceBytes bytes;
  TakeBytes(bytes.elements);
  return bytes;
}

DimmerLevels ReplyDimmers() {
  DimmerLevels levels;
  TakeBytes(levels.elements);
  return levels;
}

PanelFront ReplyFront() {
  PanelFront front;
  for (int i = 0; i < PanelFront::CellCount; ++i) front.Cells(i) = ReplyCode(FirstPosition + i);
  front.Leds = static_cast<Int16>(ReplyByte(FirstPosition + PanelFront::CellCount));
  return front;
}

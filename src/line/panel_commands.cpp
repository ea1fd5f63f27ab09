#include "line/panel_commands.h"

#include <algorithm>

#include "line/panel_transact.h"
#include "panel/hex.h"

namespace {

/// A command's code, how many characters its reply has and how many seconds it may take.
struct CommandCode {
  const char* Code;
  Int16 ExpectedLength;
  Int32 TimeoutSeconds;
};

namespace Codes {

constexpr CommandCode Clock{"00", 4, 4};
constexpr CommandCode Status{"01", 34, 5};
constexpr CommandCode ForcedTimerDone{"02", 80, 6};
constexpr CommandCode Firmware{"05", 44, 3};
constexpr CommandCode Keys{"07", 86, 3};
constexpr CommandCode Relay{"10", 4, 4};
constexpr CommandCode Group{"11", 4, 4};
constexpr CommandCode Force{"13", 4, 4};
constexpr CommandCode Inputs{"20FF", 52, 4};
constexpr CommandCode RelayStates{"23FF", 52, 5};
constexpr CommandCode GroupStates{"24FF", 52, 5};
constexpr CommandCode PresetStates{"25FF", 52, 5};
constexpr CommandCode Write{"30", 4, 4};
constexpr CommandCode PassWordWrite{"301F7A05", 4, 4};
constexpr CommandCode Read{"31", 132, 10};
constexpr CommandCode PassWordRead{"311F7A05", 16, 4};
constexpr CommandCode PointCountsRead{"311FF00B", 28, 2};
constexpr CommandCode Sum{"3400009FFF", 8, 6};
constexpr CommandCode Clear{"36", 4, 4};
constexpr CommandCode Preset{"40", 4, 4};
constexpr CommandCode Capture{"41", 4, 4};
constexpr CommandCode DeviceInputs{"46", 134, 4};
constexpr CommandCode DevicesPresent{"47", 134, 4};
constexpr CommandCode DeviceLevels{"48", 134, 4};
constexpr CommandCode Dimmers{"49", 100, 4};

}  // namespace Codes

bool Do(const CommandCode& command, const std::string& arguments = {}) {
  return PanelTransact(command.Code + arguments, command.ExpectedLength, command.TimeoutSeconds) !=
         0;
}

/// What `reply` reads out of the reply to a command.
template <typename Reply>
std::optional<Reply> Ask(const CommandCode& command, Reply (*reply)(),
                         const std::string& arguments = {}) {
  if (!Do(command, arguments)) return {};
  return reply();
}

std::string Digit(bool on) {
  return on ? "1" : "0";
}

}  // namespace

std::optional<std::string> ReadFirmware() {
  constexpr int length = 40;
  if (!Do(Codes::Firmware)) return {};
  return std::string(ReplyMid(2, length));
}

std::optional<PanelStatus> ReadPanelStatus() {
  return Ask(Codes::Status, ReplyStatus);
}

std::optional<PointCounts> ReadPointCounts() {
  return Ask(Codes::PointCountsRead, ReplyPointCounts);
}

std::optional<OutputStates> ReadRelays() {
  return Ask(Codes::RelayStates, ReplyOutputs);
}

std::optional<OutputStates> ReadGroups() {
  return Ask(Codes::GroupStates, ReplyOutputs);
}

std::optional<InputStates> ReadInputs() {
  return Ask(Codes::Inputs, ReplyInputs);
}

std::optional<PresetStates> ReadPresets() {
  return Ask(Codes::PresetStates, ReplyPresets);
}

std::optional<DeviceBytes> ReadDeviceInputs() {
  return Ask(Codes::DeviceInputs, ReplyDevices);
}

std::optional<DeviceBytes> ReadDevicesPresent() {
  return Ask(Codes::DevicesPresent, ReplyDevices);
}

std::optional<DeviceBytes> ReadDeviceLevels() {
  return Ask(Codes::DeviceLevels, ReplyDevices);
}

std::optional<DimmerLevels> ReadDimmerLevels() {
  return Ask(Codes::Dimmers, ReplyDimmers);
}

std::optional<PanelFront> PressKeys(Int16 keys) {
  return Ask(Codes::Keys, ReplyFront, HexByte(keys));
}

bool SetPanelClock(const QDateTime& time) {
  const QTime clock = time.time();
  const QDate date = time.date();
  constexpr int daysOfWeek = 7;  // Sunday is 7 in Qt and 0 on the wire.
  return Do(Codes::Clock, HexByte(clock.hour()) + HexByte(clock.minute()) + HexByte(date.month()) +
                              HexByte(date.day()) + HexByte(date.year() % 100) +
                              std::to_string(date.dayOfWeek() % daysOfWeek));
}

bool SwitchRelay(int relay, bool on) {
  return Do(Codes::Relay, HexByte(relay) + Digit(on));
}

bool SwitchAllRelays(bool on) {
  return Do(Codes::Relay, "FF" + Digit(on));
}

bool SwitchGroup(int group, bool on) {
  return Do(Codes::Group, HexByte(group) + Digit(on));
}

bool ForceTimer(int timer) {
  return Do(Codes::Force, HexByte(timer) + "0");
}

bool AwaitForcedTimer() {
  return Do(Codes::ForcedTimerDone);
}

bool SetPreset(int preset) {
  return Do(Codes::Preset, HexByte(preset) + "0");
}

bool CapturePreset(int preset) {
  return Do(Codes::Capture, HexByte(preset) + "0");
}

std::optional<PasswordDigits> ReadPassWord() {
  return Ask(Codes::PassWordRead, ReplyPassWord);
}

bool WritePassWord(const PasswordDigits& digits) {
  std::string bytes;
  for (const Int16 digit : digits) bytes += HexByte(digit);
  return Do(Codes::PassWordWrite, bytes);
}

bool ReadBlock(int block, PanelImageType& image) {
  const int address = block * ImageBlockSize;
  if (!Do(Codes::Read, HexWord(address) + HexByte(ImageBlockSize - 1))) return false;
  std::string_view bytes = ReplyMid(2, 2 * ImageBlockSize);
  auto* element = &image(address);
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(2, bytes.size()))) {
    *element++ = static_cast<Int16>(ParseHexByte(bytes));
  }
  return true;
}

bool WriteBlock(int block, const PanelImageType& image) {
  const int address = block * ImageBlockSize;
  const auto* first = &image(address);
  const auto* behind = first + ImageBlockSize;
  // A block of zeros costs ten characters in place of 128.
  if (std::all_of(first, behind, [](Int16 element) { return element == 0; })) {
    return Do(Codes::Clear, HexWord(address) + HexWord(address + ImageBlockSize - 1));
  }
  std::string bytes = HexWord(address) + HexByte(ImageBlockSize - 1);
  bytes.reserve(bytes.size() + std::size_t{2} * ImageBlockSize);
  std::for_each(first, behind, [&](Int16 element) { AppendHexByte(bytes, element); });
  return Do(Codes::Write, bytes);
}

std::optional<Int32> ReadMemorySum() {
  if (!Do(Codes::Sum)) return {};
  return ParseHexWord(ReplyMid(2, 4));
}

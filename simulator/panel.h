#pragma once

#include <QDateTime>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/engine.h"

namespace simulator {

/// The present local date and time. Tests put a clock of their own here.
using Clock = std::function<QDateTime()>;

/// A panel without its wire: memory, outputs, inputs, devices, front. Numbers of relays, groups,
/// inputs, timers and presets run from 0 to 47, of devices from 1 to 64, of a device's inputs
/// from 0 to 7; one outside throws std::out_of_range. Belongs to one thread.
class Panel {
 public:
  static constexpr int FirmwareSize = 40;  // two rows of twenty

  explicit Panel(const PanelMemory& memory = SmallInstallation(), Clock clock = {});

  /// The reply to one frame, both with their brackets. Nothing for a frame that the panel keeps
  /// silent about: another address, a bad checksum, an unknown command, a number out of range.
  std::optional<std::string> Answer(std::string_view frame);

  PanelMemory Memory;
  std::string Firmware;  // padded or cut to 40 characters on the wire
  int AddOnType = 0;     // one hex digit on the wire, 0..15
  int AddOnRevision = 0;

  bool Relay(int relay);
  void SetRelay(int relay, bool on);
  void SetAllRelays(bool on);

  /// On when the group has relays and all of them are on.
  bool Group(int group);
  void SetGroup(int group, bool on);

  /// '2' when the preset controls no relay, '1' when every relay it controls is as it wants it,
  /// '0' otherwise.
  char PresetState(int preset);
  void SetPreset(int preset);
  /// Writes the states of the installed relays into the preset; the others keep their codes.
  void CapturePreset(int preset);
  /// Does at once what the timer does when it fires.
  void ForceTimer(int timer);

  /// Installed points, 0..48, by the I/O counts in memory.
  int Points() const;

  /// Closes or opens a contact of a local input and does what the input's type says.
  void SetContact(int input, Contact contact, bool closed);
  /// Bit 0: the On contact is closed; bit 1: the Off contact.
  int InputState(int input) const { return Inputs.at(static_cast<std::size_t>(input)); }

  enum class Presence {
    ByMemory,  // answers when memory gives it a type
    Present,
    Dropped,
  };
  void SetPresence(int device, Presence presence);
  bool DevicePresent(int device) const;
  void SetDeviceInput(int device, int input, bool closed);
  int DeviceInputBits(int device) const { return DeviceBits.at(static_cast<std::size_t>(device)); }
  /// 0..255; reported by devices that are present.
  void SetDeviceLevel(int device, int level);
  int DeviceLevel(int device) const { return Levels.at(static_cast<std::size_t>(device)); }

  /// Level byte of a dimmer output, device * 4 + output, 0..47: `RelayOnLevel` while a relay of
  /// its map is on, `RelayOffLevel` while none is, `PowerOnLevel` when it has no map.
  int DimmerLevel(int output);

  /// The panel's date and time; the year's century is 20.
  QDateTime Time() const;
  /// 0 Sunday .. 6 Saturday. The panel keeps the weekday that it was given, right or wrong.
  int Weekday() const;
  void SetTime(const QDateTime& time);

  /// Keys of the front, a bit a key. Up 01, Down 02, Enter 04, Exit 08, Previous 10, Next 20; the
  /// chord 30 shows the firmware text.
  void PressKeys(int bits);
  /// The 80 characters; codes below 8 are the panel's own glyphs.
  std::string Display();
  /// Bit i is LED i, lit while relay i is on, i 0..5.
  int Leds();

 private:
  using Arguments = std::vector<int>;
  using Data = std::optional<std::string>;
  struct Command {
    const char* Form;
    Data (Panel::*Handler)(const Arguments&);
  };
  static const Command Commands[];

  Data RunCommand(std::string_view command);
  Data DoSetClock(const Arguments& a);
  Data DoStatus(const Arguments& a);
  Data DoAwaitTimer(const Arguments& a);
  Data DoFirmware(const Arguments& a);
  Data DoKeys(const Arguments& a);
  Data DoAllRelays(const Arguments& a);
  Data DoRelay(const Arguments& a);
  Data DoGroup(const Arguments& a);
  Data DoForceTimer(const Arguments& a);
  Data DoInputs(const Arguments& a);
  Data DoRelays(const Arguments& a);
  Data DoGroups(const Arguments& a);
  Data DoPresets(const Arguments& a);
  Data DoWrite(const Arguments& a);
  Data DoRead(const Arguments& a);
  Data DoSum(const Arguments& a);
  Data DoClear(const Arguments& a);
  Data DoSetPreset(const Arguments& a);
  Data DoCapture(const Arguments& a);
  Data DoDeviceInputs(const Arguments& a);
  Data DoDevicePresence(const Arguments& a);
  Data DoDeviceLevels(const Arguments& a);
  Data DoDimmers(const Arguments& a);

  /// What an input does, local or on a device.
  enum class InputKind {
    None,
    MomentaryOnOff,
    MomentaryPB,
    MaintainedOnOff,
    MaintainedMultiWay,
    SetPreset,
    TimedOn,
    ForceTimer
  };
  struct InputAction {
    InputKind Kind = InputKind::None;
    std::array<int, Items> Codes{};  // action code by relay, groups taken apart; by timer for
                                     // ForceTimer
    int Preset = 0;
    int Minutes = 0;
  };
  InputAction LocalAction(int input) const;
  InputAction DeviceAction(int device, int input) const;
  void MergeGroups(InputAction& action, const std::function<int(int)>& groupCode) const;
  void RunInput(const InputAction& action, Contact contact, bool closed);
  void ActionOn(const InputAction& action);
  void ActionOff(const InputAction& action);
  void ActionToggle(const InputAction& action);
  void ActionTimedOn(const InputAction& action, bool closed);

  /// Switches off the relays whose time is up.
  void Advance();
  std::int64_t NowMs() const { return Now().toMSecsSinceEpoch(); }

  enum class Page { Home, Relays, Groups, Presets, Firmware };
  std::string HomePage();
  std::string ListPage();
  int PageItems() const;
  void EnterKey();

  Clock Now;
  std::int64_t ClockOffsetMs = 0;
  int WeekdayOffset = 0;
  std::array<bool, Items> Relays{};
  std::array<std::optional<std::int64_t>, Items> OffAtMs;
  std::array<int, Items> Inputs{};
  std::array<Presence, Devices + 1> Presences{};
  std::array<int, Devices + 1> DeviceBits{};
  std::array<int, Devices + 1> Levels{};
  Page Shown = Page::Home;
  int Selected = 0;
};

}  // namespace simulator

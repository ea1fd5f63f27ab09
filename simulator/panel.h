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
#include "simulator/panel_clock.h"

namespace simulator {

/// The present local date and time. Tests put a clock of their own here.
using Clock = std::function<QDateTime()>;

/// A panel without its wire: memory, outputs, inputs, devices, front. Numbers of relays, groups,
/// inputs, timers and presets run from 0 to 47, of devices from 1 to 64, of a device's inputs
/// from 0 to 7; one outside throws std::out_of_range. Belongs to one thread.
class Panel {
 public:
  static constexpr int FirmwareSize = 40;  // two rows of twenty

  using By = Subject::Kind;

  explicit Panel(const PanelMemory& memory = SmallInstallation(), Clock clock = {});
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  /// The reply to one frame, both with their brackets. Nothing for a frame that the panel keeps
  /// silent about: another address, a bad checksum, an unknown command, a number out of range.
  std::optional<std::string> Answer(std::string_view frame);

  PanelMemory Memory;
  std::string Firmware;  // padded or cut to 40 characters on the wire
  int AddOnType = 0;     // one hex digit on the wire, 0..15
  int AddOnRevision = 0;

  /// What runs the memory, brought up to the present. Everything that the panel shows is its state.
  Engine& Runner();
  /// How many times as fast as real time the panel's clock runs; 0 stands still.
  int Speed() const { return Pace.Speed(); }
  void SetSpeed(int factor);
  /// As if power had come at midnight: the day so far happens.
  void RunDaySoFar();
  /// To a time of the panel's clock; see PanelClock.
  void JumpTo(const QDateTime& time);
  /// To the next event; false when there is none within a year.
  bool Step();

  bool Relay(int relay);
  void SetRelay(int relay, bool on, By by = By::Hand);
  void SetAllRelays(bool on, By by = By::Hand);

  /// On when the group has relays and all of them are on.
  bool Group(int group);
  void SetGroup(int group, bool on, By by = By::Hand);

  /// '2' when the preset controls no relay, '1' when every relay it controls is as it wants it,
  /// '0' otherwise.
  char PresetState(int preset);
  void SetPreset(int preset, By by = By::Hand);
  /// Writes the states of the installed relays into the preset; the others keep their codes.
  void CapturePreset(int preset);
  /// Does at once what the timer does when it fires.
  void ForceTimer(int timer, By by = By::Hand);

  /// Installed points, 0..48, by the I/O counts in memory.
  int Points() const { return Memory.Points(); }

  /// Closes or opens a contact of a local input and does what the input's type says.
  void SetContact(int input, Contact contact, bool closed);
  /// Bit 0: the On contact is closed; bit 1: the Off contact.
  int InputState(int input);

  enum class Presence {
    ByMemory,  // answers when memory gives it a type
    Present,
    Dropped,
  };
  void SetPresence(int device, Presence presence);
  bool DevicePresent(int device) const;
  void SetDeviceInput(int device, int input, bool closed);
  int DeviceInputBits(int device);
  /// 0..255; reported by devices that are present.
  void SetDeviceLevel(int device, int level);
  int DeviceLevel(int device);

  /// Level byte of a dimmer output, device * 4 + output, 0..47.
  int DimmerLevel(int output);

  /// The panel's date and time; the year's century is 20.
  QDateTime Time();
  /// 0 Sunday .. 6 Saturday. The panel keeps the weekday that it was given, right or wrong.
  int Weekday();
  void SetTime(const QDateTime& time, int weekdayShift = 0);

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

  /// Lets happen what real time has brought.
  void Advance() { Pace.Tick(RealMs()); }
  std::int64_t RealMs() const { return Now().toMSecsSinceEpoch(); }

  enum class Page { Home, Relays, Groups, Presets, Firmware };
  std::string HomePage();
  std::string ListPage();
  int PageItems() const;
  void EnterKey();

  Clock Now;
  Engine Run;
  PanelClock Pace;
  std::array<Presence, Devices + 1> Presences{};
  Page Shown = Page::Home;
  int Selected = 0;
};

}  // namespace simulator

#pragma once

#include <QDateTime>
#include <optional>
#include <string>

#include "line/panel_replies.h"

// The commands to a panel by name; each is one PanelTransact. False or nothing: the panel has not
// answered. Relays, groups, timers and presets count from 0.

[[nodiscard]] std::optional<std::string> ReadFirmware();
[[nodiscard]] std::optional<PanelStatus> ReadPanelStatus();
[[nodiscard]] std::optional<PointCounts> ReadPointCounts();
[[nodiscard]] std::optional<OutputStates> ReadRelays();
[[nodiscard]] std::optional<OutputStates> ReadGroups();
[[nodiscard]] std::optional<InputStates> ReadInputs();
[[nodiscard]] std::optional<PresetStates> ReadPresets();
/// The inputs of the devices, input 1 in bit 0.
[[nodiscard]] std::optional<DeviceBytes> ReadDeviceInputs();
/// Not 0 for the devices that answer on the bus.
[[nodiscard]] std::optional<DeviceBytes> ReadDevicesPresent();
/// The light levels of the devices, 0 to 255.
[[nodiscard]] std::optional<DeviceBytes> ReadDeviceLevels();
[[nodiscard]] std::optional<DimmerLevels> ReadDimmerLevels();
/// Presses keys of the front, key 1 in bit 0, and reads it.
[[nodiscard]] std::optional<PanelFront> PressKeys(Int16 keys);

/// The seconds cannot be sent.
[[nodiscard]] bool SetPanelClock(const QDateTime& time);
[[nodiscard]] bool SwitchRelay(int relay, bool on);
[[nodiscard]] bool SwitchAllRelays(bool on);
[[nodiscard]] bool SwitchGroup(int group, bool on);
[[nodiscard]] bool ForceTimer(int timer);
/// Answered once the panel has done what a forced timer does.
[[nodiscard]] bool AwaitForcedTimer();
[[nodiscard]] bool SetPreset(int preset);
/// Makes the present states of the relays those of the preset.
[[nodiscard]] bool CapturePreset(int preset);

/// A panel tells its password to any caller.
[[nodiscard]] std::optional<PasswordDigits> ReadPassWord();
[[nodiscard]] bool WritePassWord(const PasswordDigits& digits);
/// Block 0 to 639 of the memory, into the image or out of it.
[[nodiscard]] bool ReadBlock(int block, PanelImageType& image);
[[nodiscard]] bool WriteBlock(int block, const PanelImageType& image);
/// The panel's own sum of its whole memory.
[[nodiscard]] std::optional<Int32> ReadMemorySum();

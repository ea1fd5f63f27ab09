#pragma once

#include <array>
#include <string_view>

// The types of bus devices, and which of them are configured alike.

struct FennlinkDeviceType {
  std::string_view ListText;      ///< The caption is a blank and this text.
  int InputCount;                 ///< Inputs in use.
  std::string_view DocumentText;  ///< Empty: as in the list.
  int DocumentInputs;             ///< Rows in the document's input schedule.
};

/// By DeviceType. The document knows the largest station as "6 Button", with six of its inputs.
inline constexpr auto FennlinkDeviceTypes = std::to_array<FennlinkDeviceType>({
    {"None", 0, "", 0},
    {"1 Button", 1, "", 1},
    {"2 Button", 2, "", 2},
    {"3 Button", 3, "", 3},
    {"4 Button", 4, "", 4},
    {"5 Button", 5, "", 5},
    {"6/7/8 Button", 8, "6 Button", 6},
    {"4 Input", 4, "", 4},
    {"8 Input", 8, "", 8},
    {"Photocell", 8, "PhotoCell", 8},
});

constexpr int LargestButtonStation = 6;
constexpr int DeviceType4Input = 7;
constexpr int DeviceType8Input = 8;
constexpr int DeviceTypePhotocell = 9;

/// The row of a type; that of "None" for a code outside the table.
constexpr const FennlinkDeviceType& FennlinkDevice(int deviceType) {
  const bool known =
      deviceType >= 0 && static_cast<std::size_t>(deviceType) < FennlinkDeviceTypes.size();
  return FennlinkDeviceTypes[known ? static_cast<std::size_t>(deviceType) : 0];
}

/// Device types that are configured alike.
struct FennlinkFamily {
  std::string_view Suffix;  ///< In the names of its controls: "cboInput16Type".
  std::string_view Name;    ///< Empty: the list text of its only type.
  int FirstType;
  int LastType;  ///< The type with the most inputs.
};

inline constexpr auto FennlinkFamilies = std::to_array<FennlinkFamily>({
    {"16", "Push Button", 1, LargestButtonStation},
    {"7", "", DeviceType4Input, DeviceType4Input},
    {"8", "", DeviceType8Input, DeviceType8Input},
    {"F", "", DeviceTypePhotocell, DeviceTypePhotocell},
});
constexpr int FennlinkFamilyCount = static_cast<int>(FennlinkFamilies.size());

/// The family of a device type; null for "None" and a code outside the table.
constexpr const FennlinkFamily* FennlinkFamilyOf(int deviceType) {
  for (const FennlinkFamily& family : FennlinkFamilies) {
    if (deviceType >= family.FirstType && deviceType <= family.LastType) return &family;
  }
  return nullptr;
}

constexpr std::string_view FennlinkFamilyName(const FennlinkFamily& family) {
  return family.Name.empty() ? FennlinkDevice(family.FirstType).ListText : family.Name;
}

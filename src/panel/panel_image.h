#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <string>

#include "panel/items.h"
#include "panel/packing.h"
#include "panel/screens.h"

constexpr int PanelImageSize = 0xA000;
constexpr int ImageBlockSize = 64;
constexpr int ImageBlockCount = PanelImageSize / ImageBlockSize;
constexpr int PasswordAddress = 0x1F7A;
/// What stands behind is left from transfer to transfer.
constexpr int ClearedImageSize = 0x8000;
/// The first bus device whose action bits stand there.
constexpr int FirstUnclearedDevice = (ClearedImageSize - DeviceControlBlock) / DeviceControlStride;

/// The panel's memory, one byte an element; the index is the panel's address. A field that does not
/// fit a byte stands here as it is: the wire carries its low byte, the sum counts it whole.
using PanelImageType = FixedArray<Int16, PanelImageSize>;
using PasswordDigits = std::array<Int16, 6>;  ///< One digit value, 0 to 9, an element.

/// Packs the project and the password into `image`, which an earlier transfer may have left. What
/// stands there from 0x8000 on is not cleared: the unused bytes go back to the panel as they came,
/// and the action bits (device 62's from the end of its last relay plane, all of 63 and 64) are
/// added to those that stand. Throws RunTimeFailure when a damaged project overflows a word or a
/// level; the image is then half built.
void BuildPanelImage(const Project& project, const PasswordDigits& password, PanelImageType& image);

/// The bytes that a blank panel holds after a download of the project with the password 000000.
/// Throws what BuildPanelImage throws.
std::string FreshPanelMemory(const Project& project);

/// The image of a panel's memory of 40,960 bytes.
PanelImageType ImageOf(std::string_view memory);

/// The project with the image laid over it. Spare elements, the connection settings and, without
/// `names`, all names but the panel's are those of `project`. Throws RunTimeFailure for an Int16
/// word above 32,767.
Project UploadedOver(const Project& project, const PanelImageType& image, bool names);

/// The project as an upload reads it after a download: names cut and filled to ten characters,
/// flags -1, and whatever else a transfer changes lawfully. Throws RunTimeFailure for a project
/// that cannot be downloaded.
Project AsPanelKeeps(const Project& project);

/// A setting at an address of the panel's memory.
struct SettingPlace {
  Item Where;
  QString Setting;  ///< "timer type".
  Screen On;        ///< Where it is edited.
};

/// What stands at an address, among the settings that take a byte or more; none for other bytes.
std::optional<SettingPlace> SettingAt(const Project& project, int address);

/// The panel's sum of its memory: a 16-bit rotate left after each addition. Add the elements in
/// address order. With elements outside 0 to 255 it cannot be relied on to be the panel's sum.
class ImageSum {
 public:
  void Add(Int16 element) {
    const Int32 total = sum_ + element;
    sum_ = total >= 0 ? std::rotl(static_cast<std::uint16_t>(total), 1) : total % 0x10000 * 2;
  }
  Int32 Value() const { return sum_; }

 private:
  Int32 sum_ = 0;
};

// The transfers' own.

/// What the last transfer has left.
extern PanelImageType PanelImage;

/// Non-zero: ApplyPanelImage takes the names of items and devices from the image too.
extern Int16 IncludeNamesInUpload;

/// BuildPanelImage of the live project into PanelImage.
void BuildPanelImage(const PasswordDigits& password);

/// UploadedOver of the live project, which stays untouched by a failure.
void ApplyPanelImage();

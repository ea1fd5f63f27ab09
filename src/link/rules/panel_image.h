#pragma once

#include <array>
#include <string>

#include "panel/fixed_array.h"

constexpr int PanelImageSize = 0xA000;
constexpr int ImageBlockSize = 64;
constexpr int ImageBlockCount = PanelImageSize / ImageBlockSize;

using PanelImageType = FixedArray<Int16, PanelImageSize>;
using PasswordDigits = std::array<Int16, 6>;  ///< One digit value, 0 to 9, an element.

/// The panel's memory, one byte an element; the index is the panel's address. A field that does not
/// fit a byte stands here as it is: the wire carries its low byte, the sum counts it whole.
extern PanelImageType PanelImage;

/// Non-zero: ApplyPanelImage takes the names of items and devices from the image too.
extern Int16 IncludeNamesInUpload;

/// Packs the document and the password into PanelImage. What an earlier transfer left from 0x8000
/// on is not cleared: the unused bytes there go back to the panel as they came, and the action
/// bits there (device 62's from the end of its last relay plane, all of 63 and 64) are added to
/// those that stand. Throws RunTimeFailure when a damaged document overflows a word or a level; the
/// image is then half built.
void BuildPanelImage(const PasswordDigits& password);

/// The bytes that a blank panel holds after a download of the document with the password 000000.
/// PanelImage stays as it is. Throws what BuildPanelImage throws.
std::string FreshPanelMemory();

/// Unpacks PanelImage over the document. Spare elements, the connection settings and, unless
/// IncludeNamesInUpload is set, all names but the panel's keep what they held. Throws
/// RunTimeFailure, with the document untouched, for an Int16 word above 32,767.
void ApplyPanelImage();

/// The panel's sum of its memory: a 16-bit rotate left after each addition. Add the elements in
/// address order. With elements outside 0 to 255 it cannot be relied on to be the panel's sum.
class ImageSum {
 public:
  void Add(Int16 element) {
    sum_ = (sum_ + element) % 0x10000 * 2;
    if (sum_ > 0xFFFF) sum_ -= 0xFFFF;
  }
  Int32 Value() const { return sum_; }

 private:
  Int32 sum_ = 0;
};

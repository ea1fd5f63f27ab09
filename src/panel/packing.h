#pragma once

#include "panel/fennlink_record.h"
#include "panel/panel_record.h"

// How the fields of a project are packed in the panel's memory.

constexpr int DeviceBlock = 0x2000;  ///< Of device 0, which is none.
constexpr int DeviceBlockStride = 0x40;
constexpr int DeviceControlBlock = 0x3200;  ///< Of device 0.
constexpr int DeviceControlStride = 0x140;
constexpr int DimmerBlockAddress = 0x8400;  ///< An element a byte.

constexpr int NameLength = 10;       ///< Characters that the panel keeps of an item's name.
constexpr int PanelNameLength = 18;  ///< And of its own.
constexpr const char* NamelessPanel = "ORV TAMBERLOOM 3";  ///< What a panel without one is told.

constexpr int BitRowSize = ItemCount / 8;  ///< Bytes of a row of 48 bits.

struct Packing {
  enum class How {
    None,
    Byte,        ///< The number as it stands; the wire carries its low byte.
    Word,        ///< High byte first.
    Flag,        ///< 1 when set; read back as -1 exactly from 1.
    Bit,         ///< Of a table or a row of bits; read back as -1.
    Planes,      ///< A code's bits, lowest first, in tables of bits one behind the other.
    Percent,     ///< As a byte 0 to 255.
    PartOfByte,  ///< `Width` bits from bit `Shift` on.
    Name,        ///< Ten characters, filled up with blanks; read back only when asked.
    PanelName,   ///< Eighteen characters; always read back.
  };
  How Way = How::None;
  int Address = 0;
  int Width = 0;  ///< Planes, or bits.
  int Shift = 0;
  const char* WhyNot = "";  ///< Why a field has no place there.
};

constexpr Packing AsByte(int address) {
  return {Packing::How::Byte, address};
}
constexpr Packing AsWord(int address) {
  return {Packing::How::Word, address};
}
constexpr Packing AsFlag(int address) {
  return {Packing::How::Flag, address};
}
constexpr Packing AsBits(int address) {
  return {Packing::How::Bit, address};
}
constexpr Packing AsPlanes(int address, int planes) {
  return {Packing::How::Planes, address, planes};
}
constexpr Packing AsPercent(int address) {
  return {Packing::How::Percent, address};
}
constexpr Packing AsPartOfByte(int address, int shift, int width) {
  return {Packing::How::PartOfByte, address, width, shift};
}
constexpr Packing AsName(int address) {
  return {Packing::How::Name, address};
}
constexpr Packing AsPanelName(int address) {
  return {Packing::How::PanelName, address};
}
/// The panel does not keep it; a transfer leaves it alone.
constexpr Packing NotSent(const char* why) {
  return {Packing::How::None, 0, 0, 0, why};
}

/// Bytes of a number or a text.
constexpr int SizeOf(const Packing& memory) {
  switch (memory.Way) {
    case Packing::How::Word:
      return 2;
    case Packing::How::Name:
      return NameLength;
    case Packing::How::PanelName:
      return PanelNameLength;
    default:
      return 1;
  }
}

/// Whether the panel's memory holds a number as it is; other numbers of bits are cut to theirs.
constexpr bool HoldsNumber(const Packing& memory, std::int64_t value) {
  constexpr int largestByte = 255;
  constexpr int largestWord = 65535;
  constexpr int largestPercent = 99;
  switch (memory.Way) {
    case Packing::How::Byte:
      return value >= 0 && value <= largestByte;
    case Packing::How::Word:
      return value >= 0 && value <= largestWord;
    case Packing::How::Percent:
      return value >= 0 && value <= largestPercent;
    default:
      return true;
  }
}

constexpr bool IsBits(const Packing& memory) {
  return memory.Way == Packing::How::Bit || memory.Way == Packing::How::Planes;
}

/// The fields of a bus device repeat from device to device; `device` is 0 for the panel's own.
constexpr int BaseOf(const Packing& memory, int device) {
  const int stride = memory.Address < DeviceControlBlock ? DeviceBlockStride : DeviceControlStride;
  return memory.Address + device * stride;
}

/// Bytes of a table of bits.
constexpr int PlaneSize(int device) {
  return (device > 0 ? DeviceInputCount : ItemCount) * BitRowSize;
}

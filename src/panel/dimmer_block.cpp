#include "panel/dimmer_block.h"

#include "panel/checked_arithmetic.h"
#include "panel/program_state.h"

DimmerBlockType DimmerBlock;
std::function<void(Int32)> DimmerAddressAlert;

namespace {

// Elements of one output; the control fields are followed by one element a slot.
constexpr int Mode = 0;
constexpr int MinFromPhotocellBit = 2;
constexpr int MaxFromPhotocellBit = 3;
constexpr int PowerOnLevel = 1;
constexpr int FadeRate = 2;
constexpr int MinLevel = 3;
constexpr int MaxLevel = 4;
constexpr int PhotocellNode = 5;
constexpr int PhotocellDevice = 6;
constexpr int PointAIn = 7;
constexpr int PointAOut = 8;
constexpr int PointBIn = 9;
constexpr int PointBOut = 10;
constexpr int PointCIn = 11;
constexpr int PointCOut = 12;
constexpr int DimmerDMXChannelHigh = 13;
constexpr int DimmerDMXChannelLow = 14;
constexpr int Target = 15;
constexpr int ControlType = 16;
constexpr int ControlInstantBit = 7;
constexpr int ControlNumber = 48;
constexpr int ControlDevice = 64;
constexpr int ControlAction = 80;
constexpr int ControlRevert = 96;
constexpr int RelayOnLevel = 112;
constexpr int RelayOffLevel = 113;
constexpr int RelayInclude = 114;
constexpr int DeviceEnabled = 6144;

Int32 Element(Int16 dev, Int16 out, int element) {
  return ToInt16(ToInt16(ToInt16(dev * 512) + ToInt16(out * 128)) + element);
}

}  // namespace

DimmerBlockType NewDimmerBlock() {
  DimmerBlockType block;
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      const auto element = [&](int field) -> Int16& { return block(Element(dev, out, field)); };
      element(PowerOnLevel) = element(MaxLevel) = element(PointAOut) = PercentToLevel(100);
      element(PointBIn) = 128;
      element(PointBOut) = PercentToLevel(50);
      element(PointCIn) = 255;
    }
  }
  return block;
}

Int16 DimGet(Int32 addr) {
  if ((addr < 0 || addr >= DimmerBlockType::Size) && DimmerAddressAlert) DimmerAddressAlert(addr);
  return DimmerBlock(addr);
}

void DimSet(Int32 addr, Int16 value) {
  DataChanged = -1;
  DimmerBlock(addr) = value;
}

Int16 DimGetBit(Int32 addr, int bit) {
  return ((1 << bit) & DimGet(addr)) > 0 ? -1 : 0;
}

void DimSetBit(Int32 addr, int bit, Int16 value) {
  const int mask = 1 << bit;
  const int old = DimGet(addr);
  DimSet(addr, static_cast<Int16>(value != 0 ? old | mask : old & (mask ^ 255)));
}

Int16 PercentToLevel(Int16 percent) {
  return ToInt16(FloorDiv(ToInt16(percent * 255), 100));
}

Int16 LevelToPercent(Int16 level) {
  return ToInt16(FloorDiv(ToInt16(ToInt16(level * 100) + 128), 255));
}

Int16 DimGetEnabled(Int16 dev) {
  return DimGet(DeviceEnabled + dev);
}

void DimSetEnabled(Int16 dev, Int16 value) {
  DimSet(DeviceEnabled + dev, value);
}

// Fields that are stored as they stand, and fields that callers see as percent.
#define RAW_FIELD(Name, Field)                           \
  Int16 DimGet##Name(Int16 dev, Int16 out) {             \
    return DimGet(Element(dev, out, Field));             \
  }                                                      \
  void DimSet##Name(Int16 dev, Int16 out, Int16 value) { \
    DimSet(Element(dev, out, Field), value);             \
  }
#define PERCENT_FIELD(Name, Field)                           \
  Int16 DimGet##Name(Int16 dev, Int16 out) {                 \
    return LevelToPercent(DimGet(Element(dev, out, Field))); \
  }                                                          \
  void DimSet##Name(Int16 dev, Int16 out, Int16 value) {     \
    DimSet(Element(dev, out, Field), PercentToLevel(value)); \
  }
#define BIT_FIELD(Name, Field, Bit)                      \
  Int16 DimGet##Name(Int16 dev, Int16 out) {             \
    return DimGetBit(Element(dev, out, Field), Bit);     \
  }                                                      \
  void DimSet##Name(Int16 dev, Int16 out, Int16 value) { \
    DimSetBit(Element(dev, out, Field), Bit, value);     \
  }
#define SLOT_FIELD(Name, Field)                                     \
  Int16 DimGet##Name(Int16 dev, Int16 out, Int16 ctl) {             \
    return DimGet(Element(dev, out, (Field) + ctl));                \
  }                                                                 \
  void DimSet##Name(Int16 dev, Int16 out, Int16 ctl, Int16 value) { \
    DimSet(Element(dev, out, (Field) + ctl), value);                \
  }

BIT_FIELD(MinPC, Mode, MinFromPhotocellBit)
BIT_FIELD(MaxPC, Mode, MaxFromPhotocellBit)
PERCENT_FIELD(PowerOn, PowerOnLevel)
RAW_FIELD(Fade, FadeRate)
PERCENT_FIELD(Min, MinLevel)
PERCENT_FIELD(Max, MaxLevel)
RAW_FIELD(PCNode, PhotocellNode)
RAW_FIELD(PCDev, PhotocellDevice)
RAW_FIELD(AIn, PointAIn)
PERCENT_FIELD(AOut, PointAOut)
RAW_FIELD(BIn, PointBIn)
PERCENT_FIELD(BOut, PointBOut)
RAW_FIELD(CIn, PointCIn)
PERCENT_FIELD(COut, PointCOut)
RAW_FIELD(Target, Target)
SLOT_FIELD(CtlNumber, ControlNumber)
SLOT_FIELD(CtlDevice, ControlDevice)
SLOT_FIELD(CtlAction, ControlAction)
SLOT_FIELD(CtlRevert, ControlRevert)
PERCENT_FIELD(OnLevel, RelayOnLevel)
PERCENT_FIELD(OffLevel, RelayOffLevel)

#undef RAW_FIELD
#undef PERCENT_FIELD
#undef BIT_FIELD
#undef SLOT_FIELD

Int16 DimGetTrackMode(Int16 dev, Int16 out) {
  return DimGet(Element(dev, out, Mode)) & 3;
}

void DimSetTrackMode(Int16 dev, Int16 out, Int16 value) {
  const Int32 addr = Element(dev, out, Mode);
  DimSet(addr, ToInt16((DimGet(addr) & 252) + value));
}

Int16 DimGetDMX(Int16 dev, Int16 out) {
  return ToInt16(ToInt16(DimGet(Element(dev, out, DimmerDMXChannelHigh)) * 256) +
                 DimGet(Element(dev, out, DimmerDMXChannelLow)));
}

void DimSetDMX(Int16 dev, Int16 out, Int16 value) {
  DimSet(Element(dev, out, DimmerDMXChannelHigh), static_cast<Int16>(FloorDiv(value, 256)));
  DimSet(Element(dev, out, DimmerDMXChannelLow), value % 256);
}

Int16 DimGetCtlType(Int16 dev, Int16 out, Int16 ctl) {
  return DimGet(Element(dev, out, ControlType + ctl)) & 7;
}

void DimSetCtlType(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  const Int32 addr = Element(dev, out, ControlType + ctl);
  DimSet(addr, ToInt16((DimGet(addr) & 248) + value));
}

Int16 DimGetCtlInstant(Int16 dev, Int16 out, Int16 ctl) {
  return DimGetBit(Element(dev, out, ControlType + ctl), ControlInstantBit);
}

void DimSetCtlInstant(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  DimSetBit(Element(dev, out, ControlType + ctl), ControlInstantBit, value);
}

Int16 DimGetRelay(Int16 dev, Int16 out, Int16 relay) {
  return DimGetBit(Element(dev, out, RelayInclude + FloorDiv(relay, 8)), relay & 7);
}

void DimSetRelay(Int16 dev, Int16 out, Int16 relay, Int16 value) {
  DimSetBit(Element(dev, out, RelayInclude + FloorDiv(relay, 8)), relay & 7, value);
}

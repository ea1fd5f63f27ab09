#include "panel/live_dimmers.h"

#include "panel/dimmer_fields.h"
#include "panel/live_project.h"
#include "panel/program_state.h"

std::function<void(Int32)> DimmerAddressAlert;

namespace {

Int16 Get(const DimmerField& field, Int16 dev, Int16 out, int index = 0) {
  const Int32 addr = DimmerElement(field, {dev, out}, index);
  const bool pair = field.Way == DimmerField::How::HighLow;
  return DecodeDimmer(field, DimGet(addr), pair ? DimGet(addr + 1) : Int16{0}, index);
}

void Set(const DimmerField& field, Int16 dev, Int16 out, Int16 value, int index = 0) {
  const Int32 addr = DimmerElement(field, {dev, out}, index);
  DimSet(addr, EncodeDimmer(field, DimGet(addr), value, index));
  if (field.Way == DimmerField::How::HighLow) DimSet(addr + 1, value % 256);
}

}  // namespace

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

Int16 DimGetEnabled(Int16 dev) {
  return DimGet(DeviceEnabledElement + dev);
}
void DimSetEnabled(Int16 dev, Int16 value) {
  DimSet(DeviceEnabledElement + dev, value);
}

Int16 DimGetTrackMode(Int16 dev, Int16 out) {
  return Get(dim::TrackMode, dev, out);
}
void DimSetTrackMode(Int16 dev, Int16 out, Int16 value) {
  Set(dim::TrackMode, dev, out, value);
}

Int16 DimGetMinPC(Int16 dev, Int16 out) {
  return Get(dim::MinFromPhotocell, dev, out);
}
void DimSetMinPC(Int16 dev, Int16 out, Int16 value) {
  Set(dim::MinFromPhotocell, dev, out, value);
}

Int16 DimGetMaxPC(Int16 dev, Int16 out) {
  return Get(dim::MaxFromPhotocell, dev, out);
}
void DimSetMaxPC(Int16 dev, Int16 out, Int16 value) {
  Set(dim::MaxFromPhotocell, dev, out, value);
}

Int16 DimGetPowerOn(Int16 dev, Int16 out) {
  return Get(dim::PowerOnLevel, dev, out);
}
void DimSetPowerOn(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PowerOnLevel, dev, out, value);
}

Int16 DimGetFade(Int16 dev, Int16 out) {
  return Get(dim::FadeRate, dev, out);
}
void DimSetFade(Int16 dev, Int16 out, Int16 value) {
  Set(dim::FadeRate, dev, out, value);
}

Int16 DimGetMin(Int16 dev, Int16 out) {
  return Get(dim::MinLevel, dev, out);
}
void DimSetMin(Int16 dev, Int16 out, Int16 value) {
  Set(dim::MinLevel, dev, out, value);
}

Int16 DimGetMax(Int16 dev, Int16 out) {
  return Get(dim::MaxLevel, dev, out);
}
void DimSetMax(Int16 dev, Int16 out, Int16 value) {
  Set(dim::MaxLevel, dev, out, value);
}

Int16 DimGetPCNode(Int16 dev, Int16 out) {
  return Get(dim::PhotocellNode, dev, out);
}
void DimSetPCNode(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PhotocellNode, dev, out, value);
}

Int16 DimGetPCDev(Int16 dev, Int16 out) {
  return Get(dim::PhotocellDevice, dev, out);
}
void DimSetPCDev(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PhotocellDevice, dev, out, value);
}

Int16 DimGetAIn(Int16 dev, Int16 out) {
  return Get(dim::PointAIn, dev, out);
}
void DimSetAIn(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PointAIn, dev, out, value);
}

Int16 DimGetAOut(Int16 dev, Int16 out) {
  return Get(dim::PointAOut, dev, out);
}
void DimSetAOut(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PointAOut, dev, out, value);
}

Int16 DimGetBIn(Int16 dev, Int16 out) {
  return Get(dim::PointBIn, dev, out);
}
void DimSetBIn(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PointBIn, dev, out, value);
}

Int16 DimGetBOut(Int16 dev, Int16 out) {
  return Get(dim::PointBOut, dev, out);
}
void DimSetBOut(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PointBOut, dev, out, value);
}

Int16 DimGetCIn(Int16 dev, Int16 out) {
  return Get(dim::PointCIn, dev, out);
}
void DimSetCIn(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PointCIn, dev, out, value);
}

Int16 DimGetCOut(Int16 dev, Int16 out) {
  return Get(dim::PointCOut, dev, out);
}
void DimSetCOut(Int16 dev, Int16 out, Int16 value) {
  Set(dim::PointCOut, dev, out, value);
}

Int16 DimGetDMX(Int16 dev, Int16 out) {
  return Get(dim::DMXChannel, dev, out);
}
void DimSetDMX(Int16 dev, Int16 out, Int16 value) {
  Set(dim::DMXChannel, dev, out, value);
}

Int16 DimGetTarget(Int16 dev, Int16 out) {
  return Get(dim::Target, dev, out);
}
void DimSetTarget(Int16 dev, Int16 out, Int16 value) {
  Set(dim::Target, dev, out, value);
}

Int16 DimGetCtlType(Int16 dev, Int16 out, Int16 ctl) {
  return Get(dim::ControlType, dev, out, ctl);
}
void DimSetCtlType(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  Set(dim::ControlType, dev, out, value, ctl);
}

Int16 DimGetCtlInstant(Int16 dev, Int16 out, Int16 ctl) {
  return Get(dim::ControlInstant, dev, out, ctl);
}
void DimSetCtlInstant(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  Set(dim::ControlInstant, dev, out, value, ctl);
}

Int16 DimGetCtlNumber(Int16 dev, Int16 out, Int16 ctl) {
  return Get(dim::ControlNumber, dev, out, ctl);
}
void DimSetCtlNumber(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  Set(dim::ControlNumber, dev, out, value, ctl);
}

Int16 DimGetCtlDevice(Int16 dev, Int16 out, Int16 ctl) {
  return Get(dim::ControlDevice, dev, out, ctl);
}
void DimSetCtlDevice(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  Set(dim::ControlDevice, dev, out, value, ctl);
}

Int16 DimGetCtlAction(Int16 dev, Int16 out, Int16 ctl) {
  return Get(dim::ControlAction, dev, out, ctl);
}
void DimSetCtlAction(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  Set(dim::ControlAction, dev, out, value, ctl);
}

Int16 DimGetCtlRevert(Int16 dev, Int16 out, Int16 ctl) {
  return Get(dim::ControlRevert, dev, out, ctl);
}
void DimSetCtlRevert(Int16 dev, Int16 out, Int16 ctl, Int16 value) {
  Set(dim::ControlRevert, dev, out, value, ctl);
}

Int16 DimGetOnLevel(Int16 dev, Int16 out) {
  return Get(dim::RelayOnLevel, dev, out);
}
void DimSetOnLevel(Int16 dev, Int16 out, Int16 value) {
  Set(dim::RelayOnLevel, dev, out, value);
}

Int16 DimGetOffLevel(Int16 dev, Int16 out) {
  return Get(dim::RelayOffLevel, dev, out);
}
void DimSetOffLevel(Int16 dev, Int16 out, Int16 value) {
  Set(dim::RelayOffLevel, dev, out, value);
}

Int16 DimGetRelay(Int16 dev, Int16 out, Int16 relay) {
  return Get(dim::RelayInclude, dev, out, relay);
}
void DimSetRelay(Int16 dev, Int16 out, Int16 relay, Int16 value) {
  Set(dim::RelayInclude, dev, out, value, relay);
}

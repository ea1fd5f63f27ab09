#pragma once

#include <functional>

#include "panel/dimmer_block.h"

// The dimmer settings of the live project, field by field.

/// Told the address before a read outside the block fails.
extern std::function<void(Int32)> DimmerAddressAlert;

/// The element at `addr`. Outside 0 to 6155: DimmerAddressAlert, then RunTimeFailure.
Int16 DimGet(Int32 addr);

/// Marks the project as changed, then stores.
void DimSet(Int32 addr, Int16 value);

/// -1 when the bit is set, else 0.
Int16 DimGetBit(Int32 addr, int bit);

/// Sets the bit, or clears it together with the high byte of the element.
void DimSetBit(Int32 addr, int bit, Int16 value);

// One pair for each field. `dev` 0 to 11, `out` 0 to 3, `ctl` 0 to 15, `relay` 0 to 47. Levels
// (power on, minimum, maximum, point outputs, relay on and off) are percent; point inputs and the
// target are 0 to 255; flags read as -1 or 0.
Int16 DimGetEnabled(Int16 dev);
void DimSetEnabled(Int16 dev, Int16 value);
Int16 DimGetTrackMode(Int16 dev, Int16 out);
void DimSetTrackMode(Int16 dev, Int16 out, Int16 value);
Int16 DimGetMinPC(Int16 dev, Int16 out);
void DimSetMinPC(Int16 dev, Int16 out, Int16 value);
Int16 DimGetMaxPC(Int16 dev, Int16 out);
void DimSetMaxPC(Int16 dev, Int16 out, Int16 value);
Int16 DimGetPowerOn(Int16 dev, Int16 out);
void DimSetPowerOn(Int16 dev, Int16 out, Int16 value);
Int16 DimGetFade(Int16 dev, Int16 out);
void DimSetFade(Int16 dev, Int16 out, Int16 value);
Int16 DimGetMin(Int16 dev, Int16 out);
void DimSetMin(Int16 dev, Int16 out, Int16 value);
Int16 DimGetMax(Int16 dev, Int16 out);
void DimSetMax(Int16 dev, Int16 out, Int16 value);
Int16 DimGetPCNode(Int16 dev, Int16 out);
void DimSetPCNode(Int16 dev, Int16 out, Int16 value);
Int16 DimGetPCDev(Int16 dev, Int16 out);
void DimSetPCDev(Int16 dev, Int16 out, Int16 value);
Int16 DimGetAIn(Int16 dev, Int16 out);
void DimSetAIn(Int16 dev, Int16 out, Int16 value);
Int16 DimGetAOut(Int16 dev, Int16 out);
void DimSetAOut(Int16 dev, Int16 out, Int16 value);
Int16 DimGetBIn(Int16 dev, Int16 out);
void DimSetBIn(Int16 dev, Int16 out, Int16 value);
Int16 DimGetBOut(Int16 dev, Int16 out);
void DimSetBOut(Int16 dev, Int16 out, Int16 value);
Int16 DimGetCIn(Int16 dev, Int16 out);
void DimSetCIn(Int16 dev, Int16 out, Int16 value);
Int16 DimGetCOut(Int16 dev, Int16 out);
void DimSetCOut(Int16 dev, Int16 out, Int16 value);
Int16 DimGetDMX(Int16 dev, Int16 out);
void DimSetDMX(Int16 dev, Int16 out, Int16 value);
Int16 DimGetTarget(Int16 dev, Int16 out);
void DimSetTarget(Int16 dev, Int16 out, Int16 value);
Int16 DimGetCtlType(Int16 dev, Int16 out, Int16 ctl);
void DimSetCtlType(Int16 dev, Int16 out, Int16 ctl, Int16 value);
Int16 DimGetCtlInstant(Int16 dev, Int16 out, Int16 ctl);
void DimSetCtlInstant(Int16 dev, Int16 out, Int16 ctl, Int16 value);
Int16 DimGetCtlNumber(Int16 dev, Int16 out, Int16 ctl);
void DimSetCtlNumber(Int16 dev, Int16 out, Int16 ctl, Int16 value);
Int16 DimGetCtlDevice(Int16 dev, Int16 out, Int16 ctl);
void DimSetCtlDevice(Int16 dev, Int16 out, Int16 ctl, Int16 value);
Int16 DimGetCtlAction(Int16 dev, Int16 out, Int16 ctl);
void DimSetCtlAction(Int16 dev, Int16 out, Int16 ctl, Int16 value);
Int16 DimGetCtlRevert(Int16 dev, Int16 out, Int16 ctl);
void DimSetCtlRevert(Int16 dev, Int16 out, Int16 ctl, Int16 value);
Int16 DimGetOnLevel(Int16 dev, Int16 out);
void DimSetOnLevel(Int16 dev, Int16 out, Int16 value);
Int16 DimGetOffLevel(Int16 dev, Int16 out);
void DimSetOffLevel(Int16 dev, Int16 out, Int16 value);
Int16 DimGetRelay(Int16 dev, Int16 out, Int16 relay);
void DimSetRelay(Int16 dev, Int16 out, Int16 relay, Int16 value);

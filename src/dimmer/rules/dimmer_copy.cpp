#include "dimmer/rules/dimmer_copy.h"

#include <array>

namespace {

struct OutputField {
  Int16 (*Get)(Int16 dev, Int16 out);
  void (*Set)(Int16 dev, Int16 out, Int16 value);
};

struct SlotField {
  Int16 (*Get)(Int16 dev, Int16 out, Int16 ctl);
  void (*Set)(Int16 dev, Int16 out, Int16 ctl, Int16 value);
};

constexpr auto ConfigurationFields = std::to_array<OutputField>({
    {DimGetPowerOn, DimSetPowerOn},
    {DimGetFade, DimSetFade},
    {DimGetMinPC, DimSetMinPC},
    {DimGetMaxPC, DimSetMaxPC},
    {DimGetMin, DimSetMin},
    {DimGetMax, DimSetMax},
    {DimGetTrackMode, DimSetTrackMode},
    {DimGetAIn, DimSetAIn},
    {DimGetBIn, DimSetBIn},
    {DimGetCIn, DimSetCIn},
    {DimGetAOut, DimSetAOut},
    {DimGetBOut, DimSetBOut},
    {DimGetCOut, DimSetCOut},
    {DimGetTarget, DimSetTarget},
    {DimGetPCNode, DimSetPCNode},
    {DimGetPCDev, DimSetPCDev},
    {DimGetDMX, DimSetDMX},
});

constexpr auto ControlFields = std::to_array<SlotField>({
    {DimGetCtlType, DimSetCtlType},
    {DimGetCtlNumber, DimSetCtlNumber},
    {DimGetCtlDevice, DimSetCtlDevice},
    {DimGetCtlAction, DimSetCtlAction},
    {DimGetCtlInstant, DimSetCtlInstant},
    {DimGetCtlRevert, DimSetCtlRevert},
});

template <typename Write>
void ForEachDestination(const DimmerOutputSet& destinations, Write write) {
  for (std::size_t i = 0; i < destinations.size(); ++i) {
    if (!destinations[i]) continue;
    const auto dev = static_cast<Int16>(i / DimmerOutputCount);
    DimSetEnabled(dev, 1);
    write(dev, static_cast<Int16>(i % DimmerOutputCount));
  }
}

}  // namespace

void CopyDimmerConfiguration(Int16 dev, Int16 out, const DimmerOutputSet& destinations) {
  std::array<Int16, ConfigurationFields.size()> values{};
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = ConfigurationFields[i].Get(dev, out);
  ForEachDestination(destinations, [&values](Int16 toDev, Int16 toOut) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      ConfigurationFields[i].Set(toDev, toOut, values[i]);
    }
  });
}

void CopyDimmerControls(Int16 dev, Int16 out, const DimmerOutputSet& destinations,
                        const ControlSlotSet& slots) {
  FixedArray<Int16, static_cast<int>(ControlFields.size()), ControlSlotCount> values;
  for (Int16 ctl = 0; ctl < ControlSlotCount; ++ctl) {
    for (int i = 0; i < static_cast<int>(ControlFields.size()); ++i) {
      values(i, ctl) = ControlFields[static_cast<std::size_t>(i)].Get(dev, out, ctl);
    }
  }
  ForEachDestination(destinations, [&](Int16 toDev, Int16 toOut) {
    for (Int16 ctl = 0; ctl < ControlSlotCount; ++ctl) {
      if (!slots[static_cast<std::size_t>(ctl)]) continue;
      for (int i = 0; i < static_cast<int>(ControlFields.size()); ++i) {
        ControlFields[static_cast<std::size_t>(i)].Set(toDev, toOut, ctl, values(i, ctl));
      }
    }
  });
}

#include "dimmer/rules/dimmer_copy.h"

#include <array>

#include "panel/dimmer_fields.h"

namespace {

constexpr auto ConfigurationFields = std::to_array<const DimmerField*>(
    {&dim::PowerOnLevel, &dim::FadeRate, &dim::MinFromPhotocell, &dim::MaxFromPhotocell,
     &dim::MinLevel, &dim::MaxLevel, &dim::TrackMode, &dim::PointAIn, &dim::PointBIn,
     &dim::PointCIn, &dim::PointAOut, &dim::PointBOut, &dim::PointCOut, &dim::Target,
     &dim::PhotocellNode, &dim::PhotocellDevice, &dim::DMXChannel});

constexpr auto ControlFields = std::to_array<const DimmerField*>(
    {&dim::ControlType, &dim::ControlNumber, &dim::ControlDevice, &dim::ControlAction,
     &dim::ControlInstant, &dim::ControlRevert});

/// A value that is copied.
struct Copied {
  const DimmerField* Field;
  int Slot;
  Int16 Value;
};

template <typename Fields>
void Read(std::vector<Copied>& values, const Fields& fields, const DimmerOutput& output, int slot) {
  for (const DimmerField* field : fields) values.push_back({field, slot, output(*field, slot)});
}

void Write(DimmerBlockType& dimmers, const std::vector<Copied>& values,
           const DimmerOutputSet& destinations) {
  for (std::size_t i = 0; i < destinations.size(); ++i) {
    if (!destinations[i]) continue;
    const auto dev = static_cast<Int16>(i / DimmerOutputCount);
    dimmers(DeviceEnabledElement + dev) = 1;
    const OutputPlace place{dev, static_cast<Int16>(i % DimmerOutputCount)};
    for (const Copied& value : values) {
      SetDimmerValue(dimmers, *value.Field, place, value.Value, value.Slot);
    }
  }
}

}  // namespace

void CopyDimmerConfiguration(DimmerBlockType& dimmers, Int16 dev, Int16 out,
                             const DimmerOutputSet& destinations) {
  std::vector<Copied> values;
  Read(values, ConfigurationFields, DimmerOutput(dimmers, dev, out), 0);
  Write(dimmers, values, destinations);
}

void CopyDimmerControls(DimmerBlockType& dimmers, Int16 dev, Int16 out,
                        const DimmerOutputSet& destinations, const ControlSlotSet& slots) {
  const DimmerOutput output(dimmers, dev, out);
  std::vector<Copied> values;
  for (int slot = 0; slot < ControlSlotCount; ++slot) {
    std::vector<Copied> ofSlot;
    Read(ofSlot, ControlFields, output, slot);
    if (slots[static_cast<std::size_t>(slot)]) {
      values.insert(values.end(), ofSlot.begin(), ofSlot.end());
    }
  }
  Write(dimmers, values, destinations);
}

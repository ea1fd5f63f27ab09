#pragma once

#include <limits>

#include "panel/fields.h"
#include "panel/live_project.h"

/// Fills the live document, spare elements and all, with one code, and with names of bytes that are
/// no text. `blocks`: the four-point I/O blocks of the first node.
inline void FillWithNonsense(Int16 code, Int16 blocks) {
  using Int32Limits = std::numeric_limits<Int32>;
  const auto fill = [code](const FieldFacts&, auto& field) {
    const auto spoil = [code]<typename Value>(Value& value) {
      if constexpr (std::is_same_v<Value, std::string>) {
        value = std::string("\0\x81\xFF<b>&amp;", 10);
      } else if constexpr (std::is_same_v<Value, Int32>) {
        value = code < 0 ? Int32Limits::min() : Int32Limits::max();
      } else {
        value = static_cast<Value>(code);
      }
    };
    if constexpr (requires { field.elements; }) {
      for (auto& element : field.elements) spoil(element);
    } else {
      spoil(field);
    }
  };
  ForEachPanelField(PanelRecord, fill);
  for (FennlinkRecord& device : FennlinkRecords.elements) ForEachDeviceField(device, fill);
  DimmerBlock.elements.fill(code);
  PanelRecord.PanelName = std::string(30'000, '\x9D');
  for (int node = 0; node < NodeCount; ++node)
    PanelRecord.IOCount(node) = node == 0 ? blocks : Int16{0};
}

#pragma once

#include "panel/dimmer_block.h"
#include "panel/fennlink_record.h"
#include "panel/panel_record.h"

/// The configuration of one panel: what a .T3 file holds. A value, copied and compared like a
/// number; what computes takes one or gives one back.
struct Project {
  PanelRecordType Panel;
  FennlinkRecordsType Devices;
  DimmerBlockType Dimmers;

  bool operator==(const Project&) const = default;
};

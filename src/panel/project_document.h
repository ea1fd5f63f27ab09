#pragma once

#include <memory>
#include <utility>

#include "panel/dimmer_block.h"
#include "panel/fennlink_record.h"
#include "panel/panel_record.h"

/// One panel's whole configuration, apart from the live one.
struct ProjectDocument {
  PanelRecordType Panel;
  FennlinkRecordsType Devices;
  DimmerBlockType Dimmers;
};

/// Has `change` work on a copy of the live document and puts the copy in its place. When `change`
/// throws, the live document is untouched.
template <typename Change>
void ChangeDocument(Change change) {
  const std::unique_ptr<ProjectDocument> copy(
      new ProjectDocument{PanelRecord, FennlinkRecords, DimmerBlock});
  change(*copy);
  PanelRecord = std::move(copy->Panel);
  FennlinkRecords = std::move(copy->Devices);
  DimmerBlock = copy->Dimmers;
}

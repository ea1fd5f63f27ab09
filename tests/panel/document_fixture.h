#pragma once

#include <gtest/gtest.h>

#include "panel/defaults.h"
#include "panel/program_state.h"
#include "panel/project_codec.h"

/// Starts each test with a new panel, spare elements empty.
class DocumentTest : public testing::Test {
 protected:
  DocumentTest() {
    PanelRecord = {};
    FennlinkRecords = {};
    LoadDefaults();
    CurrentFileName = NoFileName;
    DataChanged = 0;
  }

  static std::string Document() { return EncodeProject(PanelRecord, FennlinkRecords, DimmerBlock); }
};

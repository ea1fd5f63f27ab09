#pragma once

#include <gtest/gtest.h>

#include <vector>

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

  /// Gives each field a value of its own.
  template <typename... Fields>
  static std::vector<Int16*> Numbered(Fields&... fields) {
    Int16 number = 1000;
    ((fields = ++number), ...);
    return {&fields...};
  }
};

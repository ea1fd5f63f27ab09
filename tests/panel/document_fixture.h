#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <random>
#include <vector>

#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_codec.h"

inline std::string FileText(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "no file";
}

/// Every number of a new panel's file becomes nonsense; lengths and texts of names stay.
inline std::string Nonsense(std::string bytes, unsigned seed = 1) {
  const std::string names = bytes.substr(36194, 2458);
  std::minstd_rand random(seed);
  for (std::size_t i = 2; i < bytes.size(); ++i) {
    const bool inDevice = i >= 39508 && i < 164698;
    if (inDevice && (i - 39508) % 1926 >= 2 && (i - 39508) % 1926 < 12) continue;
    bytes[i] = static_cast<char>(random() >> 8);
  }
  return bytes.replace(36194, names.size(), names);
}

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

  static std::string Document() { return EncodeProject(LiveProject); }

  /// Gives each field a value of its own.
  template <typename... Fields>
  static std::vector<Int16*> Numbered(Fields&... fields) {
    Int16 number = 1000;
    ((fields = ++number), ...);
    return {&fields...};
  }
};

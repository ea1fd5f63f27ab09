#include "simulator/line/frame.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

TEST(SimulatorFrame, ChecksumsAreTheWorkedOnes) {
  EXPECT_EQ(FrameCommand("05"), "[0005D7]");
  EXPECT_EQ(FrameCommand("10FF0"), "[0010FF07A]");
  EXPECT_EQ(FrameReply(""), "[00]");
  EXPECT_EQ(UnframeCommand("[0005D7]"), "05");
  EXPECT_EQ(UnframeCommand("[0005D8]"), std::nullopt);
  EXPECT_EQ(UnframeCommand("[]"), std::nullopt);
  EXPECT_EQ(UnframeCommand("[" + FrameReply("0105").substr(1)), std::nullopt) << "address 01";
}

TEST(SimulatorFrame, SplitterFindsFramesInAnyStream) {
  const std::string longest(524, 'A');
  const std::string oversize(100'000, 'A');
  const std::pair<std::string, std::vector<std::string>> cases[]{
      {"[0005D7]", {"[0005D7]"}},
      {"noise]\xFF\x01[0005D7]more", {"[0005D7]"}},
      {"[00[0005D7][0001]", {"[0005D7]", "[0001]"}},
      {"[" + oversize + "][0005D7]", {"[0005D7]"}},
      {"[" + longest + "]", {"[" + longest + "]"}},
      {"[%%%%%ATZ", {"[%%%%%"}},
      {"[%%%%]", {"[%%%%]"}},
  };
  for (const auto& [bytes, frames] : cases) {
    FrameSplitter splitter;
    std::vector<std::string> found;
    for (const LineEvent& event : splitter.Feed(bytes)) found.push_back(event.Text);
    EXPECT_EQ(found, frames) << bytes.substr(0, 30);
  }
}

}  // namespace
}  // namespace simulator

#include "panel/input_actions.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// What the rows stand for and the highest action code, for each input type from 0 on.
template <typename Lookup>
std::string Shape(int inputTypes, Lookup lookup) {
  std::string shape;
  for (int type = 0; type < inputTypes; ++type) {
    const std::optional<ControlOptions> options = lookup(type);
    if (options) shape += ".RGIT"[static_cast<std::size_t>(options->Rows)];
    shape += options ? std::to_string(options->MaxControlCode()) : "-";
  }
  return shape;
}

std::string Local(ControlTable table) {
  return Shape(14, [table](int type) { return LocalControlOptions(type, table); });
}

std::string Fennlink(int device, ControlTable table) {
  return Shape(11, [=](int type) { return FennlinkControlOptions(device, type, table); });
}

TEST(ActionTable, GivesEachInputTypeItsActions) {
  EXPECT_EQ(Local(ControlTable::Relay), "R4R3R4R3.0R1R3R2R2I1T1R3T1-");
  EXPECT_EQ(Local(ControlTable::Group), "G4G3G4G3.0G1G3G2G2.0.0G3.0-");
  for (const int button : {1, 6, 8}) {
    EXPECT_EQ(Fennlink(button, ControlTable::Relay), "R3.0R1R2R2------");
  }
  EXPECT_EQ(Fennlink(7, ControlTable::Relay), "R4R3R4.0R1R3R2R2T1R3-");
  EXPECT_EQ(Fennlink(7, ControlTable::Group), "G4G3G4.0G1G3G2G2.0G3-");
  EXPECT_EQ(Fennlink(9, ControlTable::Group), "G4G4G4G4G4G4G4G4G4G4G4");
  for (const int unknown : {-1, 0, 10}) {
    EXPECT_EQ(Fennlink(unknown, ControlTable::Relay), "-----------");
  }
  EXPECT_FALSE(LocalControlOptions(-1, ControlTable::Relay));
  EXPECT_FALSE(FennlinkControlOptions(7, -1, ControlTable::Relay));
  constexpr std::pair<int, int> timedOn[] = {{6, 2}, {7, 4}, {8, 2}, {9, -1}};
  for (const auto& [device, index] : timedOn) EXPECT_EQ(FennlinkTimedOnIndex(device), index);
}

TEST(ActionTable, WrapsTheCaptionsOfTheFamiliesOfFive) {
  EXPECT_EQ(FennlinkInputCaption(1, 8), "2 Step");
  EXPECT_EQ(FennlinkInputCaption(8, 5), "Maint. On/Off");
  EXPECT_EQ(FennlinkInputCaption(7, 10), "");
  EXPECT_EQ(FennlinkInputCaption(1, -1), "");
  EXPECT_EQ(FennlinkInputCaption(9, 40), "Maintained On/Off");
  EXPECT_EQ(FennlinkListText(FennlinkInputKinds(8)[0]), "Maintained On/Off");
}

}  // namespace

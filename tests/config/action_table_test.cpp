#include "config/action_table.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The highest action code for each input type from 0 on, "-" where there is no list, and the
/// initial of what the rows stand for.
template <typename Lookup>
std::string Shape(int inputTypes, Lookup lookup, bool rows = false) {
  std::string shape;
  for (int type = 0; type < inputTypes; ++type) {
    const std::optional<ControlOptions> options = lookup(type);
    if (!options) {
      shape += '-';
    } else if (rows) {
      shape += ".RGIT"[static_cast<std::size_t>(options->Rows)];
    } else {
      shape += static_cast<char>('0' + options->MaxControlCode());
    }
  }
  return shape;
}

std::string Local(ControlTable table, bool rows) {
  return Shape(
      14, [table](int type) { return LocalControlOptions(type, table); }, rows);
}

std::string Fennlink(int device, ControlTable table, bool rows = false) {
  return Shape(
      11, [=](int type) { return FennlinkControlOptions(device, type, table); }, rows);
}

TEST(ActionTable, GivesEachLocalInputTypeItsActions) {
  EXPECT_EQ(Local(ControlTable::Relay, false), "4343013221131-");
  EXPECT_EQ(Local(ControlTable::Relay, true), "RRRR.RRRRITRT-");
  EXPECT_EQ(Local(ControlTable::Group, false), "4343013220030-");
  EXPECT_EQ(Local(ControlTable::Group, true), "GGGG.GGGG..G.-");
  EXPECT_FALSE(LocalControlOptions(-1, ControlTable::Relay));

  EXPECT_EQ(KindControlOptions(InputKind::MaintMultiWay, ControlTable::Relay).Actions.back(),
            "On And Off");
  EXPECT_EQ(KindControlOptions(InputKind::ForceTimer, ControlTable::Group).Actions.back(), ".");
}

TEST(ActionTable, GivesEachFennlinkInputItsActions) {
  for (int button = 1; button <= 6; ++button) {
    EXPECT_EQ(Fennlink(button, ControlTable::Relay), "30122------");
  }
  EXPECT_EQ(Fennlink(8, ControlTable::Relay), "30122------");
  EXPECT_EQ(Fennlink(7, ControlTable::Relay), "4340132213-");
  EXPECT_EQ(Fennlink(7, ControlTable::Relay, true), "RRR.RRRRTR-");
  EXPECT_EQ(Fennlink(7, ControlTable::Group), "4340132203-");
  EXPECT_EQ(Fennlink(7, ControlTable::Group, true), "GGG.GGGG.G-");
  EXPECT_EQ(Fennlink(9, ControlTable::Relay), "44444444444");
  EXPECT_EQ(Fennlink(9, ControlTable::Group, true), "GGGGGGGGGGG");
  for (const int unknown : {-1, 0, 10}) {
    EXPECT_EQ(Fennlink(unknown, ControlTable::Relay), "-----------");
  }
  EXPECT_FALSE(FennlinkControlOptions(7, -1, ControlTable::Relay));

  EXPECT_EQ(FennlinkTimedOnIndex(6), 2);
  EXPECT_EQ(FennlinkTimedOnIndex(7), 4);
  EXPECT_EQ(FennlinkTimedOnIndex(8), 2);
  EXPECT_EQ(FennlinkTimedOnIndex(9), -1);
}

TEST(ActionTable, WrapsTheCaptionsOfTheFamiliesOfFive) {
  EXPECT_EQ(FennlinkInputCaption(1, 8), "2 Step");
  EXPECT_EQ(FennlinkInputCaption(8, 5), "Maint. On/Off");
  EXPECT_EQ(FennlinkInputCaption(7, 2), "Maint. On/Off");
  EXPECT_EQ(FennlinkInputCaption(7, 10), "");
  EXPECT_EQ(FennlinkInputCaption(1, -1), "");
  EXPECT_EQ(FennlinkInputCaption(9, 40), "Maintained On/Off");
  EXPECT_EQ(FennlinkListText(FennlinkInputKinds(8)[0]), "Maintained On/Off");
}

}  // namespace

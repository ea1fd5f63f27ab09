#include "panel/document_fixture.h"
#include "panel/live_dimmers.h"

using DimmerBlockTest = DocumentTest;

TEST_F(DimmerBlockTest, EveryFieldHasItsElement) {
  using Get = Int16 (*)(Int16, Int16);
  using Set = void (*)(Int16, Int16, Int16);
  const std::tuple<int, Get, Set, Int16, Int16> rows[] = {
      {1, DimGetPowerOn, DimSetPowerOn, 50, 127},
      {2, DimGetFade, DimSetFade, 42, 42},
      {3, DimGetMin, DimSetMin, 1, 2},
      {4, DimGetMax, DimSetMax, 99, 252},
      {5, DimGetPCNode, DimSetPCNode, 3, 3},
      {6, DimGetPCDev, DimSetPCDev, 63, 63},
      {7, DimGetAIn, DimSetAIn, 200, 200},
      {8, DimGetAOut, DimSetAOut, 100, 255},
      {9, DimGetBIn, DimSetBIn, 201, 201},
      {10, DimGetBOut, DimSetBOut, 10, 25},
      {11, DimGetCIn, DimSetCIn, 202, 202},
      {12, DimGetCOut, DimSetCOut, 20, 51},
      {15, DimGetTarget, DimSetTarget, 255, 255},
      {112, DimGetOnLevel, DimSetOnLevel, 75, 191},
      {113, DimGetOffLevel, DimSetOffLevel, 5, 12}};
  for (const auto& [element, get, set, value, stored] : rows) {
    set(11, 3, value);
    EXPECT_EQ(DimmerBlock(11 * 512 + 3 * 128 + element), stored) << element;
    EXPECT_EQ(get(11, 3), value) << element;
  }
  DimSetCtlNumber(1, 2, 15, 47);
  DimSetCtlDevice(1, 2, 15, 64);
  DimSetCtlAction(1, 2, 15, 105);
  DimSetCtlRevert(1, 2, 15, 121);
  DimSetEnabled(11, 1);
  const std::pair<int, int> others[] = {{831, 47}, {847, 64}, {863, 105}, {879, 121}, {6155, 1}};
  for (const auto& [element, stored] : others) EXPECT_EQ(DimmerBlock(element), stored);
}

TEST_F(DimmerBlockTest, PackedFieldsKeepTheirNeighbours) {
  DimSetMinPC(0, 0, -1);
  DimSetMaxPC(0, 0, 1);
  DimSetTrackMode(0, 0, 2);
  EXPECT_EQ(DimmerBlock(0), 14);
  DimSetMinPC(0, 0, 0);
  EXPECT_EQ(DimGetTrackMode(0, 0), 2);
  EXPECT_EQ(DimGetMaxPC(0, 0), -1);

  DimSetCtlInstant(0, 0, 3, -1);
  DimSetCtlType(0, 0, 3, 4);
  DimSetDMX(0, 0, 512);
  EXPECT_EQ(DimGetDMX(0, 0), 512);
  DimSetRelay(0, 1, 47, 1);
  DimSetRelay(0, 1, 8, -1);
  EXPECT_EQ(DimGetRelay(0, 1, 47), -1);
  const std::pair<int, int> stored[] = {{19, 132}, {13, 2}, {14, 0}, {247, 128}, {243, 1}};
  for (const auto& [element, value] : stored) EXPECT_EQ(DimmerBlock(element), value) << element;

  DimmerBlock(0) = 0x0107;
  DimSetBit(0, 1, 0);
  EXPECT_EQ(DimmerBlock(0), 5) << "clearing a bit clears the high byte";
}

TEST_F(DimmerBlockTest, PercentSurvivesAndBadValuesAndAddressesAreTold) {
  for (Int16 percent = 0; percent <= 100; ++percent) {
    EXPECT_EQ(LevelToPercent(PercentToLevel(percent)), percent);
  }
  EXPECT_THROW(PercentToLevel(129), RunTimeFailure);
  EXPECT_THROW(LevelToPercent(328), RunTimeFailure);

  DimSet(6155, DimGet(6155));
  EXPECT_EQ(DataChanged, -1);
  std::vector<Int32> told;
  DimmerAddressAlert = [&told](Int32 addr) { told.push_back(addr); };
  for (const Int32 outside : {6156, -1}) EXPECT_THROW(DimGet(outside), RunTimeFailure);
  DimmerAddressAlert = nullptr;
  EXPECT_EQ(told, (std::vector<Int32>{6156, -1}));
}

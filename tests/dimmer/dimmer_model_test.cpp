#include <gtest/gtest.h>

#include "panel/dimmer_words.h"
#include "panel/shown_percent.h"

TEST(DimmerModel, TellsRevertsAsTheEditorDoes) {
  EXPECT_EQ(ControlRevertText(0), "Revert When Input Opens");
  EXPECT_EQ(ControlRevertText(1), "Never Revert");
  EXPECT_EQ(ControlRevertText(2), "Revert After 5 Min");
  EXPECT_EQ(RevertWhenText(121), "After 600 Min");
  EXPECT_EQ(ControlTypeListText(4), "Control - Invert In");
  EXPECT_EQ(ControlActionText(-1) + ControlRevertText(-1) + ControlTypeListText(5), "");
}

TEST(DimmerModel, TurnsPhotocellCodesIntoFootCandles) {
  // Both ends of each straight piece, and codes whose exact product is a whole number.
  const std::pair<Int16, Int16> rows[] = {
      {-1, 1800},  {0, 0},      {20, 1},     {75, 3},    {76, 4},    {92, 7},     {116, 10},
      {117, 11},   {136, 17},   {137, 17},   {138, 18},  {163, 35},  {170, 39},   {171, 40},
      {181, 52},   {182, 55},   {190, 75},   {191, 80},  {203, 120}, {204, 125},  {218, 213},
      {219, 220},  {228, 400},  {229, 450},  {233, 650}, {234, 700}, {237, 1000}, {238, 1200},
      {240, 1600}, {241, 1800}, {255, 1800}, {300, 1800}};
  for (const auto& [code, fc] : rows) EXPECT_EQ(CodeToFootCandles(code), fc) << code;
  EXPECT_EQ(ShownPercent(127), 50);
  EXPECT_EQ(ShownPercent(1), 0);
  EXPECT_EQ(ShownPercent(255), 100);
}

#include "panel/panel_image.h"

#include <random>

#include "panel/document_fixture.h"
#include "panel/live_project.h"

class PanelImageTest : public DocumentTest {
 protected:
  PanelImageTest() {
    PanelImage = {};
    IncludeNamesInUpload = 0;
  }

  static std::string TextAt(int address, int length) {
    std::string text;
    for (int i = 0; i < length; ++i) text += static_cast<char>(PanelImage(address + i));
    return text;
  }
};

TEST_F(PanelImageTest, PackedFieldsStandAtTheirAddresses) {
  auto& panel = PanelRecord;
  auto& device = FennlinkRecords(1);
  const struct {
    Int16* field;
    Int16 value;
    std::vector<std::pair<int, int>> image;
    Int16 back;
  } rows[] = {
      {&panel.InputRelayControl(9, 2), 5, {{0x000D, 2}, {0x012D, 0}, {0x024D, 2}}, 5},
      {&panel.InputGroupControl(47, 47), 15, {{0x047F, 128}, {0x059F, 128}, {0x06BF, 128}}, 7},
      {&panel.GroupRelayInclude(8, 1), 3, {{0x07E7, 1}}, -1},
      {&panel.TimerRelayControl(0, 1), 2, {{0x0936, 0}, {0x0A56, 1}}, 2},
      {&panel.TimerGroupControl(3, 0), 1, {{0x0B70, 8}, {0x0C90, 0}}, 1},
      {&panel.TimerPresetControl(6, 0), -1, {{0x0DB0, 0x40}}, 1},
      {&panel.TimerPresetControl(7, 1), 2, {{0x0DB6, 0}}, 0},
      {&panel.PresetRelayControl(47, 0), 3, {{0x0ED5, 128}, {0x0FF5, 128}}, 3},
      {&panel.OverrideMinutes, 300, {{0x1F51, 1}, {0x1F52, 44}}, 300},
      {&panel.OffHoursSweepRelay(15), 5, {{0x1F56, 128}}, -1},
      {&panel.OffHoursSweepGroup(0), 1, {{0x1F5B, 1}}, -1},
      {&panel.DSTEnabled, 2, {{0x1F61, 1}}, -1},
      {&panel.TimedOnOperation, 1, {{0x1F79, 1}}, -1},
      {&panel.PhotocellFilter, 7, {{0x1F78, 1}}, -1},
      {&panel.DMXChannel(47), 512, {{0x1FDE, 2}, {0x1FDF, 0}}, 512},
      {&panel.DMXChannel(0), -1, {{0x1F80, -1}, {0x1F81, -1}}, -257},
      {&panel.DMXOnLevel, 100, {{0x1FE0, 256}}, 100},
      {&panel.DMXOffLevel, 99, {{0x1FE1, 253}}, 99},
      {&panel.ModBusMode, 1, {{0x1FE3, 23}}, 1},
      {&panel.ModBusBaud, 3, {{0x1FE3, 23}}, 3},
      {&panel.ModBusParity, 2, {{0x1FE3, 23}}, 2},
      {&device.DeviceRelayControl(3, 20), 6, {{0x3354, 0}, {0x3384, 16}, {0x33B4, 16}}, 6},
      {&device.DeviceGroupControl(7, 47), 1, {{0x33FF, 128}}, 1},
      {&FennlinkRecords(64).DeviceRelayControl(0, 0), 1, {{0x8200, 1}}, 1}};
  for (const auto& row : rows) *row.field = row.value;
  panel.InputTimedOnTime(1) = device.DeviceTimedOnTime(0) = 65535;
  BuildPanelImage({});
  for (const auto& row : rows) {
    for (const auto& [address, value] : row.image) {
      EXPECT_EQ(PanelImage(address), value) << std::hex << address;
    }
  }
  EXPECT_EQ(TextAt(0x0782, 2) + TextAt(0x2053, 2), "\xFF\xFF\xFF\xFF");
  ApplyPanelImage();
  for (const auto& row : rows) EXPECT_EQ(*row.field, row.back) << std::hex << row.image[0].first;
  EXPECT_EQ(panel.InputTimedOnTime(1), 65535);
}

// Image to document and back: every byte that the map uses returns to its place, and no other.
TEST_F(PanelImageTest, EveryMappedByteHasItsOwnField) {
  std::minstd_rand random(1);
  for (Int16& element : PanelImage.elements) element = static_cast<Int16>(random() >> 8 & 0x7F);
  for (const int flag : {0x1F61, 0x1F78, 0x1F79}) PanelImage(flag) = 1;
  PanelImage(0x1FE0) = 128;
  PanelImage(0x1FE1) = 26;
  PanelImage(0x1FE3) &= 31;
  PanelImageType expected = PanelImage;
  const auto zero = [&expected](int first, int size) {
    for (int i = 0; i < size; ++i) expected(first + i) = 0;
  };
  const std::pair<int, int> unused[] = {{0x1406, 0x1A}, {0x1D80, 0x80}, {0x1F7A, 6},
                                        {0x1FE4, 12},   {0x2000, 0x40}, {0x3040, 0x300}};
  for (const auto& [first, size] : unused) zero(first, size);
  for (int n = 1; n <= 64; ++n) zero(0x203B + n * 0x40, 5);
  for (int n = 1; n < 62; ++n) zero(0x3328 + n * 0x140, 24);  // those of 62 to 64 are not cleared

  IncludeNamesInUpload = -1;
  ApplyPanelImage();
  BuildPanelImage({});
  for (int address = 0; address < PanelImageSize; ++address) {
    ASSERT_EQ(PanelImage(address), expected(address)) << std::hex << address;
  }
}

TEST_F(PanelImageTest, ByteFieldsStandAtTheirAddresses) {
  auto& panel = PanelRecord;
  auto& device = FennlinkRecords(1);
  const std::vector<Int16*> fields = Numbered(
      panel.InputPreset(0), panel.RelayTimerType(0), panel.RelayPowerOnType(0), panel.InputType(0),
      panel.LocalPilot(0), panel.NormalOpenTime(0), panel.NormalCloseTime(0),
      panel.DateOpenTime(11, 30), panel.DateCloseTime(1, 0), panel.TimerTimeType(0),
      panel.TimerTime(0), panel.TimerDays(0), panel.TimerHolidayMonth(0), panel.TimerHolidayDate(0),
      panel.InputEnableTime(0), panel.InputDisableTime(0), panel.BlinkAlertMinutes,
      panel.AlarmSeconds, panel.OffHoursSweepInterval, panel.Latitude, panel.Longitude,
      panel.TimeZone, panel.RTCSource, panel.DMXFilter, panel.IOCount(11), panel.DSTStartWeek,
      panel.DSTStartMonth, panel.DSTEndWeek, panel.DSTEndMonth, device.DeviceType,
      device.DeviceInputType(7), device.DevicePilot(0), device.DeviceOffLevel(0),
      device.DeviceOnLevel(7), device.DevicePreset(7), DimmerBlock(0), DimmerBlock(6155));
  const int addresses[] = {0x06C0, 0x06F0, 0x0720, 0x0750, 0x0900, 0x1110, 0x1117, 0x1291,
                           0x12B1, 0x1E00, 0x1E30, 0x1E60, 0x1E90, 0x1EC0, 0x1EF0, 0x1F20,
                           0x1F50, 0x1F53, 0x1F54, 0x1F62, 0x1F63, 0x1F64, 0x1F77, 0x1FE2,
                           0x1FFB, 0x1FFC, 0x1FFD, 0x1FFE, 0x1FFF, 0x2040, 0x2052, 0x2063,
                           0x206B, 0x207A, 0x3467, 0x8400, 0x9C0B};
  ASSERT_EQ(fields.size(), std::size(addresses));
  BuildPanelImage({1, 2, 3, 4, 5, 9});
  for (std::size_t i = 0; i < std::size(fields); ++i) {
    EXPECT_EQ(PanelImage(addresses[i]), *fields[i]) << std::hex << addresses[i];
  }
  EXPECT_EQ(TextAt(0x1F7A, 6), "\1\2\3\4\5\x9");
  const std::pair<int, const char*> names[] = {{0x1420, "RELAY 01  "}, {0x1600, "GROUP 01  "},
                                               {0x17E0, "INPUT 01  "}, {0x19C0, "TIMER 01  "},
                                               {0x1BA0, "PRESET 01 "}, {0x3001, "FLINK 40  "}};
  for (const auto& [address, name] : names) EXPECT_EQ(TextAt(address, 10), name);
}

TEST_F(PanelImageTest, OnlyTheLowerPartIsCleared) {
  PanelImage.elements.fill(0x55);
  FennlinkRecords(64).DeviceRelayControl(1, 0) = 1;
  BuildPanelImage({});
  for (const int cleared : {0x1406, 0x2000, 0x3040, 0x7FFF}) EXPECT_EQ(PanelImage(cleared), 0);
  for (const int kept : {0x8328, 0x8340, 0x83FF, 0x9C0C, 0x9FFF}) {
    EXPECT_EQ(PanelImage(kept), 0x55) << std::hex << kept;
  }
  PanelImage(0x8206) = 4;
  BuildPanelImage({});
  EXPECT_EQ(PanelImage(0x8206), 5) << "bits above the cleared part are added";
}

TEST_F(PanelImageTest, NamesAreCutPaddedAndTakenOnRequest) {
  PanelRecord.RelayName(0) = "ABC";
  PanelRecord.RelayName(47) = "ELEVEN CHAR\xE9";
  FennlinkRecords(2).DeviceName = "\xE9";
  PhoneNumber() = "5551234";
  BuildPanelImage({});
  EXPECT_EQ(TextAt(0x1F65, 18), "ORV TAMBERLOOM 3  ");
  EXPECT_EQ(TextAt(0x15F6, 20), "ELEVEN CHAGROUP 01  ");
  EXPECT_EQ(PanelImage(0x2081), 0xE9);
  ApplyPanelImage();
  EXPECT_EQ(PanelRecord.PanelName, "ORV TAMBERLOOM 3  ");
  EXPECT_EQ(PanelRecord.RelayName(0), "ABC");
  EXPECT_EQ(FennlinkRecords(2).DeviceName, "\xE9");
  IncludeNamesInUpload = -1;
  ApplyPanelImage();
  EXPECT_EQ(PanelRecord.RelayName(0), "ABC       ");
  EXPECT_EQ(PanelRecord.RelayName(47), "ELEVEN CHA");
  EXPECT_EQ(FennlinkRecords(2).DeviceName, "\xE9         ");
  EXPECT_EQ(PhoneNumber(), "5551234");
}

TEST_F(PanelImageTest, OddBytesAndOverflows) {
  BuildPanelImage({});
  PanelImage(0x1F61) = 2;
  PanelImage(0x1F51) = 127;
  PanelImage(0x1F52) = 255;
  PanelImage(0x1FE0) = 127;
  ApplyPanelImage();
  EXPECT_EQ(PanelRecord.DMXOnLevel, 50);
  EXPECT_EQ(PanelRecord.DSTEnabled, 0);
  EXPECT_EQ(PanelRecord.OverrideMinutes, 32767);

  const std::string document = Document();
  PanelImage(0x06C0) = 12;
  PanelImage(0x1F51) = 128;
  EXPECT_THROW(ApplyPanelImage(), RunTimeFailure);
  EXPECT_EQ(Document(), document);
  PanelRecord.DMXOnLevel = 127;
  BuildPanelImage({});
  PanelRecord.DMXOnLevel = 128;
  EXPECT_THROW(BuildPanelImage({}), RunTimeFailure);
  PanelRecord.DMXOnLevel = 0;
  PanelRecord.InputTimedOnTime(0) = std::numeric_limits<Int32>::max();
  EXPECT_THROW(BuildPanelImage({}), RunTimeFailure);
}

TEST_F(PanelImageTest, SumRotatesAndCountsWholeElements) {
  ImageSum sum;
  const std::pair<Int16, Int32> steps[] = {{0, 0},     {1, 2},     {0, 4},
                                           {256, 520}, {32248, 1}, {32766, 65534},
                                           {1, 65535}, {0, 65535}, {1, 0}};
  for (const auto& [element, value] : steps) {
    sum.Add(element);
    EXPECT_EQ(sum.Value(), value) << element;
  }
}

#include <cstring>
#include <random>

#include "panel/document_fixture.h"

namespace {

int Int16At(const std::string& bytes, std::size_t offset) {
  Int16 value = 0;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

/// Every number of the file becomes nonsense; lengths and texts of names stay as they are.
std::string Nonsense(std::string bytes) {
  const std::string names = bytes.substr(36194, 2458);
  std::minstd_rand random(1);
  for (std::size_t i = 2; i < bytes.size(); ++i) {
    const bool inDevice = i >= 39508 && i < 164698;
    if (inDevice && (i - 39508) % 1926 >= 2 && (i - 39508) % 1926 < 12) continue;
    bytes[i] = static_cast<char>(random() >> 8);
  }
  return bytes.replace(36194, names.size(), names);
}

}  // namespace

class ProjectCodecTest : public DocumentTest {
 protected:
  /// The document that results from laying `bytes` over a new panel.
  std::string Laid(std::string_view bytes) {
    ProjectDocument document{PanelRecord, FennlinkRecords, DimmerBlock};
    DecodeProject(bytes, document);
    laid_ = document.Panel;
    return EncodeProject(document.Panel, document.Devices, document.Dimmers);
  }

  PanelRecordType laid_;
};

TEST_F(ProjectCodecTest, FieldsStandAtTheirOffsets) {
  PanelRecord.InputRelayControl(3, 5) = 6;
  PanelRecord.InputTimedOnTime(47) = 70000;
  PanelRecord.DateOpenTime(2, 30) = 95;
  PanelRecord.ModBusParity = 2;
  ConnectionType() = 1;
  FennlinkRecords(64).DeviceReserved(0) = 9;
  FennlinkRecords(64).DeviceRelayControl(7, 47) = 5;
  FennlinkRecords(64).DevicePreset(8) = 46;
  DimmerBlock(6155) = 1;
  const std::string bytes = Document();
  ASSERT_EQ(bytes.size(), 177010U);
  const std::pair<std::size_t, int> expected[] = {
      {0, 0},      {498, 6},     {10194, 10},  {10382, 4464}, {10384, 1},    {15286, 47},
      {34514, 84}, {35314, 95},  {36192, 100}, {36194, 8},    {36674, 0},    {38122, 9},
      {38748, 1},  {39144, 120}, {39348, -1},  {39370, 1},    {39506, 2},    {39510, 8},
      {39538, 10}, {162892, 9},  {163776, 5},  {164696, 46},  {164718, 127}, {177008, 1}};
  for (const auto& [offset, value] : expected) EXPECT_EQ(Int16At(bytes, offset), value) << offset;
  EXPECT_EQ(bytes.substr(36196, 8), "RELAY 01");
  EXPECT_EQ(bytes.substr(38124, 9), "PRESET 01");
  EXPECT_EQ(bytes.substr(70328, 8), "FLINK 10");
}

TEST_F(ProjectCodecTest, NonsenseAndSpareElementsSurviveAndTheTailIsNotLookedAt) {
  const std::string nonsense = Nonsense(Document());
  EXPECT_EQ(Laid(nonsense + "tail"), nonsense);

  PanelRecord.PanelName = std::string(300, '\xFF') + '\0';
  PanelRecord.RelayName(0).clear();
  PhoneNumber() = "5551234";
  FennlinkRecords(0).DeviceName = std::string(32767, 'x');
  const std::string odd = Document();
  LoadDefaults();
  EXPECT_EQ(Laid(odd), odd);
  FennlinkRecords(0).DeviceName = std::string(32768, 'x');
  EXPECT_THROW(Document(), RunTimeFailure);
}

TEST_F(ProjectCodecTest, AnEarlyEndLeavesTheRestAsItWas) {
  const std::string old = Document();
  const std::string nonsense = Nonsense(old);
  // Where the bytes end, and how many of them count: a cut number does not.
  const std::pair<std::size_t, std::size_t> cuts[] = {
      {0, 0},           {1, 0},           {2, 2},           {3, 2},          {4, 4},
      {10196, 10194},   {10198, 10198},   {36194, 36194},   {36195, 36194},  {38652, 38652},
      {39507, 39506},   {39508, 39508},   {39509, 39508},   {39541, 39538},  {39629, 39629},
      {164698, 164698}, {164699, 164698}, {177009, 177008}, {177010, 177010}};
  for (const auto& [end, counted] : cuts) {
    EXPECT_EQ(Laid(nonsense.substr(0, end)), nonsense.substr(0, counted) + old.substr(counted))
        << end;
  }
}

TEST_F(ProjectCodecTest, AStringPastTheEndIsCutAndANegativeLengthFails) {
  std::string bytes = Document();
  PanelRecord.RelayName(0) = PanelRecord.RelayName(1) = "OLD";
  Laid(bytes.substr(0, 36199));
  EXPECT_EQ(laid_.RelayName(0), "REL");
  EXPECT_EQ(laid_.RelayName(1), "OLD");
  Laid(bytes.substr(0, 36196));
  EXPECT_EQ(laid_.RelayName(0), "");
  bytes[36195] = '\x7F';
  Laid(bytes);
  EXPECT_EQ(laid_.RelayName(0).size(), 0x7F08U);
  bytes[36195] = '\x80';
  EXPECT_THROW(Laid(bytes), RunTimeFailure);
}

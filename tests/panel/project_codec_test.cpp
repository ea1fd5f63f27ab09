#include <cstring>

#include "panel/document_fixture.h"

namespace {

int Int16At(const std::string& bytes, std::size_t offset) {
  return static_cast<Int16>(static_cast<unsigned char>(bytes[offset]) | bytes[offset + 1] << 8);
}

class ProjectCodecTest : public DocumentTest {
 protected:
  /// The document that results from laying `bytes` over a new panel.
  std::string Laid(std::string_view bytes) {
    Project document = LiveProject;
    whole_ = DecodeProject(bytes, document);
    laid_ = document.Panel;
    return EncodeProject(document);
  }

  PanelRecordType laid_;
  bool whole_ = false;
};

TEST_F(ProjectCodecTest, FieldsStandAtTheirOffsets) {
  auto& panel = PanelRecord;
  auto& device = FennlinkRecords(64);
  const std::vector<Int16*> fields = Numbered(
      panel.InputRelayControl(3, 5), panel.InputGroupControl(0, 0), panel.InputPreset(0),
      panel.RelayTimerType(0), panel.RelayPowerOnType(0), panel.InputType(0),
      panel.InputEnableTime(0), panel.InputDisableTime(0), panel.GroupRelayInclude(0, 0),
      panel.LocalPilot(0), panel.TimerRelayControl(0, 0), panel.TimerGroupControl(0, 0),
      panel.TimerPresetControl(0, 0), panel.PresetRelayControl(0, 0), panel.NormalOpenTime(0),
      panel.NormalCloseTime(0), panel.DateOpenTime(2, 30), panel.DateCloseTime(12, 31),
      panel.TimerTimeType(0), panel.TimerTime(0), panel.TimerDays(0), panel.TimerHolidayMonth(0),
      panel.TimerHolidayDate(0), panel.BlinkAlertMinutes, panel.OverrideMinutes, panel.AlarmSeconds,
      panel.TimedOnOperation, panel.OffHoursSweepInterval, panel.OffHoursSweepRelay(0),
      panel.OffHoursSweepGroup(0), panel.DSTEnabled, panel.DSTStartWeek, panel.DSTStartMonth,
      panel.DSTEndWeek, panel.DSTEndMonth, panel.Latitude, panel.Longitude, panel.TimeZone,
      panel.RTCSource, panel.PhotocellFilter, panel.AddOnModuleType, panel.IOCount(0),
      panel.ComPort, panel.DMXChannel(0), panel.DMXOnLevel, panel.DMXOffLevel, panel.DMXFilter,
      panel.ModBusMode, panel.ModBusBaud, panel.ModBusParity, device.DeviceType,
      device.DeviceInputType(0), device.DevicePilot(0), device.DeviceOffLevel(0),
      device.DeviceOnLevel(0), device.DeviceRelayControl(7, 47), device.DeviceGroupControl(0, 0),
      device.DevicePreset(8), DimmerBlock(0), DimmerBlock(6155));
  const std::size_t offsets[] = {
      498,   4804,  9606,   9704,   9802,   9900,   9998,   10096,  10390,  15192,  15290,  20092,
      24894, 29696, 34498,  34514,  35314,  36192,  38652,  38750,  38848,  38946,  39044,  39142,
      39144, 39146, 39148,  39150,  39152,  39250,  39348,  39350,  39352,  39354,  39356,  39358,
      39360, 39362, 39364,  39366,  39368,  39370,  39396,  39398,  39496,  39498,  39500,  39502,
      39504, 39506, 162772, 162784, 162838, 162856, 162874, 163776, 163798, 164696, 164698, 177008};
  ASSERT_EQ(fields.size(), std::size(offsets));
  panel.InputTimedOnTime(48) = device.DeviceTimedOnTime(8) = 70000;
  device.DeviceReserved(0) = 9;
  const std::string bytes = Document();
  ASSERT_EQ(bytes.size(), 177010U);
  for (std::size_t i = 0; i < std::size(fields); ++i) {
    EXPECT_EQ(Int16At(bytes, offsets[i]), *fields[i]) << offsets[i];
  }
  for (const std::size_t minutes : {10386U, 162834U}) {
    EXPECT_EQ(bytes.substr(minutes, 4), std::string("\x70\x11\1\0", 4));
  }
  EXPECT_EQ(bytes[162892], 9);
  const std::pair<std::size_t, const char*> names[] = {{36194, "RELAY 01"},  {36676, "GROUP 01"},
                                                       {37158, "INPUT 01"},  {37640, "TIMER 01"},
                                                       {38122, "PRESET 01"}, {70326, "FLINK 10"}};
  for (const auto& [offset, name] : names) {
    EXPECT_EQ(Int16At(bytes, offset), static_cast<int>(std::strlen(name)));
    EXPECT_EQ(bytes.substr(offset + 2, std::strlen(name)), name);
  }
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
    EXPECT_EQ(whole_, end == nonsense.size()) << end;
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

}  // namespace

#include <QFile>
#include <algorithm>
#include <random>

#include "document/doc_file.h"
#include "document/sample_panel.h"
#include "panel/document_fixture.h"

namespace {

std::string Render(std::initializer_list<std::size_t> boxes) {
  DocumentChoice chosen{};
  for (const std::size_t box : boxes) chosen[box] = true;
  return RenderDocument("03:05 PM 07/04/2026", chosen);
}

std::string RenderAll() {
  return Render({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
}

bool HasLines(const std::string& document, const std::string& lines) {
  return document.find("\r\n" + lines + "\r\n") != std::string::npos;
}

void ExpectGolden(const char* name) {
  QFile file(QStringLiteral(TEST_DATA_DIR "/document/golden/%1.txt").arg(name));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
  const std::string golden = file.readAll().toStdString();
  const std::string document = RenderAll();
  const auto differs =
      std::mismatch(golden.begin(), golden.end(), document.begin(), document.end());
  EXPECT_TRUE(document == golden) << "from line "
                                  << 1 + std::count(golden.begin(), differs.first, '\n') << ": "
                                  << std::string(differs.second, document.end()).substr(0, 100);
}

class TextDocument : public DocumentTest {
 protected:
  TextDocument() { HostSoftwareVersion = QStringLiteral("Version 1.02"); }
};

TEST_F(TextDocument, OfANewPanel) {
  ExpectGolden("new_panel");
}

TEST_F(TextDocument, OfEveryCode) {
  LoadEveryCode();
  ExpectGolden("every_code");
}

TEST_F(TextDocument, PanelSettingsLeaveOutWhatHasNoWord) {
  const auto expectWords = [](Int16& field, Int16 first, const std::string& label,
                              std::initializer_list<const char*> words) {
    field = static_cast<Int16>(first - 1);
    EXPECT_EQ(Render({0}).find(label), std::string::npos) << field;
    for (const char* word : words) {
      ++field;
      EXPECT_TRUE(HasLines(Render({0}), label + '\t' + word)) << word;
    }
    ++field;
    EXPECT_EQ(Render({0}).find(label), std::string::npos) << field;
  };
  auto& panel = PanelRecord;
  expectWords(panel.AddOnModuleType, 0, "AddOn Module Type",
              {"None", "DMX", "MODBus", "N2", "Voice DTMF", "BACnet"});
  expectWords(panel.TimeZone, 0, "Time Zone",
              {"Eastern", "Central", "Mountain", "Pacific", "Alaska"});
  expectWords(panel.DSTStartWeek, 1, "DST Start Week", {"1st", "2nd", "3rd", "4th", "Last"});
}

TEST_F(TextDocument, PanelSettingsOfTheOtherChoices) {
  CurrentFileName = QStringLiteral("C:\\Caf\u00E9.T3");
  auto& panel = PanelRecord;
  panel.AddOnModuleType = 2;
  panel.ModBusMode = 1;
  panel.ModBusBaud = 3;
  panel.ModBusParity = 2;
  panel.DSTEnabled = 0;
  panel.TimedOnOperation = -1;
  panel.PhotocellFilter = -1;
  const std::string document = Render({0});
  for (const char* lines :
       {"Tamberloom 3 File Name\tC:\\Caf\xE9.T3",
        "Automatic DST Adjustment\tDisabled\r\nBlink Alert (Min)\t010",
        "Timed-On Timers Begin When Input\tCloses", "Photocell Filter Time (Seconds)\t2",
        "Connection Type\tRS232\r\nMODBus Protocol\tRTU\r\nMODBus Baud Rate\t4800\r\n"
        "MODBus Parity\tEven\r\n[End Of File]"}) {
    EXPECT_TRUE(HasLines(document, lines)) << lines << "\n" << document;
  }
}

TEST_F(TextDocument, HoldsTheChosenSections) {
  const std::string two = Render({9, 1});
  EXPECT_LT(two.find("[Relay Schedule]"), two.find("[Off Hours Sweeps Relay Schedule]"));
  EXPECT_EQ(two.find("[Group Schedule]"), std::string::npos);
  EXPECT_EQ(Render({DMXSection}), Render({})) << "no DMX module";
  PanelRecord.AddOnModuleType = 1;
  EXPECT_TRUE(HasLines(Render({DMXSection}), "[DMX Schedule]"));
}

TEST_F(TextDocument, WritesNamesAsTheyStand) {
  PanelRecord.RelayName(0) = std::string("A\tB\r\n\0\x80\xFF", 8);
  EXPECT_NE(Render({1}).find("01\t" + PanelRecord.RelayName(0) + "\t\t\tOff"), std::string::npos);
}

TEST_F(TextDocument, SurvivesNonsense) {
  std::mt19937 random(3);
  const auto fill = [&random](auto& table) {
    for (auto& element : table.elements) element = static_cast<Int16>(random());
  };
  auto& panel = PanelRecord;
  panel.AddOnModuleType = 1;
  for (int round = 0; round < 20; ++round) {
    for (ItemArray* array :
         {&panel.InputPreset, &panel.RelayTimerType, &panel.RelayPowerOnType, &panel.InputType,
          &panel.InputEnableTime, &panel.LocalPilot, &panel.TimerTimeType, &panel.TimerTime,
          &panel.TimerDays, &panel.TimerHolidayMonth, &panel.DMXChannel}) {
      fill(*array);
    }
    fill(panel.InputTimedOnTime);
    fill(panel.NormalOpenTime);
    fill(panel.DateOpenTime);
    fill(panel.DateCloseTime);
    for (FennlinkRecord& device : FennlinkRecords.elements) {
      device.DeviceType = static_cast<Int16>(random() % 12 - 1);
      fill(device.DeviceInputType);
      fill(device.DevicePilot);
    }
    for (auto& element : DimmerBlock.elements) element = static_cast<Int16>(random() % 128);
    panel.IOCount.elements.fill(static_cast<Int16>(random() % 9));
    EXPECT_TRUE(RenderAll().ends_with("[End Of File]\r\n"));
  }
}

TEST_F(TextDocument, TellsTheTimeAsOnAClock) {
  const auto stamp = [](int hour) {
    return DocumentTimeStamp(QDateTime(QDate(2026, 7, 4), QTime(hour, 5)));
  };
  EXPECT_EQ(stamp(0), "12:05 AM 07/04/2026");
  EXPECT_EQ(stamp(12), "12:05 PM 07/04/2026");
  EXPECT_EQ(stamp(15), "03:05 PM 07/04/2026");
}

}  // namespace

#include <algorithm>

#include "document/rules/text/doc_file.h"
#include "document/sample_panel.h"
#include "panel/document_fixture.h"
#include "panel/live_dimmers.h"

namespace {

std::string Render(std::initializer_list<std::size_t> boxes) {
  DocumentChoice chosen{};
  for (const std::size_t box : boxes) chosen[box] = true;
  return RenderDocument(LiveProject, CurrentFileName, "03:05 PM 07/04/2026", chosen);
}

std::string RenderAll() {
  DocumentChoice all;
  all.fill(true);
  return RenderDocument(LiveProject, CurrentFileName, "03:05 PM 07/04/2026", all);
}

bool HasLines(const std::string& document, const std::string& lines) {
  return document.find("\r\n" + lines + "\r\n") != std::string::npos;
}

void ExpectGolden(const char* name) {
  const QString path = QStringLiteral(TEST_DATA_DIR "/document/golden/%1.txt").arg(name);
  const std::string document = RenderAll();
  if (qEnvironmentVariableIsSet("TAMBERLOOM_NEW_GOLDEN")) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(document.data(), static_cast<qint64>(document.size()));
  }
  const std::string golden = FileText(path);
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

TEST_F(TextDocument, OfANewPanelAndOfEveryCode) {
  ExpectGolden("new_panel");
  LoadEveryCode();
  ExpectGolden("every_code");
}

TEST_F(TextDocument, ALevelThatThePhotocellGivesIsNotRead) {
  DimSetEnabled(0, 1);
  DimSetMinPC(0, 0, -1);
  DimmerBlock(3) = 32767;
  EXPECT_NE(Render({11}).find("\tPhotocell\t100\t"), std::string::npos);
}

TEST_F(TextDocument, PanelSettingsLeaveOutWhatHasNoWord) {
  auto& panel = PanelRecord;
  panel.AddOnModuleType = panel.TimeZone = panel.DSTStartWeek = 5;
  const std::string last = Render({0});
  EXPECT_TRUE(HasLines(last, "AddOn Module Type\tBACnet"));
  EXPECT_EQ(last.find("Time Zone\t"), std::string::npos);
  EXPECT_TRUE(HasLines(last, "DST Start Week\tLast"));
  for (const Int16 none : {Int16{-1}, Int16{6}}) {
    panel.AddOnModuleType = panel.TimeZone = none;
    panel.DSTStartWeek = none < 0 ? 0 : none;
    for (const char* label : {"AddOn Module Type", "Time Zone", "DST Start Week"}) {
      EXPECT_EQ(Render({0}).find(label), std::string::npos) << label << none;
    }
  }
}

TEST_F(TextDocument, PanelSettingsOfTheOtherChoices) {
  CurrentFileName = QStringLiteral("C:\\Caf\u00E9.T3");
  auto& panel = PanelRecord;
  panel.AddOnModuleType = panel.ModBusParity = 2;
  panel.ModBusMode = 1;
  panel.ModBusBaud = 3;
  panel.DSTEnabled = 0;
  panel.TimedOnOperation = panel.PhotocellFilter = -1;
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

TEST_F(TextDocument, HoldsTheChosenSectionsWithNamesAsTheyStand) {
  PanelRecord.RelayName(0) = std::string("A\tB\r\n\0\x80\xFF", 8);
  const std::string two = Render({9, 1});
  EXPECT_NE(two.find("01\t" + PanelRecord.RelayName(0) + "\t\t\tOff"), std::string::npos);
  EXPECT_LT(two.find("[Relay Schedule]"), two.find("[Off Hours Sweeps Relay Schedule]"));
  EXPECT_EQ(two.find("[Group Schedule]"), std::string::npos);
  EXPECT_EQ(Render({DMXSection}), Render({})) << "no DMX module";
  PanelRecord.AddOnModuleType = 1;
  EXPECT_TRUE(HasLines(Render({DMXSection}), "[DMX Schedule]"));
}

TEST_F(TextDocument, SurvivesNonsense) {
  const std::string newPanel = Document();
  Project document = LiveProject;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    (void)DecodeProject(Nonsense(newPanel, seed), document);
    PanelRecord = document.Panel;
    FennlinkRecords = document.Devices;
    DimmerBlock = document.Dimmers;
    for (FennlinkRecord& device : FennlinkRecords.elements) {
      device.DeviceType = static_cast<Int16>(device.DeviceType % 12);
    }
    for (Int16& element : DimmerBlock.elements) element = static_cast<Int16>(element & 127);
    PanelRecord.AddOnModuleType = 1;
    PanelRecord.IOCount.elements.fill(static_cast<Int16>(seed % 9));
    EXPECT_TRUE(RenderAll().ends_with("[End Of File]\r\n"));
  }
}

TEST_F(TextDocument, TellsTheTimeAsOnAClock) {
  for (const auto& [hour, told] : {std::pair{0, "12:05 AM"}, {12, "12:05 PM"}, {15, "03:05 PM"}}) {
    const QDateTime time(QDate(2026, 7, 4), QTime(hour, 5));
    EXPECT_EQ(DocumentTimeStamp(time), told + std::string(" 07/04/2026"));
  }
}

}  // namespace

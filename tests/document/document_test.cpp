#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <random>
#include <vector>

#include "document/doc_file.h"
#include "document/sample_panels.h"
#include "panel/document_fixture.h"

namespace {

DocumentChoice Only(std::initializer_list<std::size_t> boxes) {
  DocumentChoice chosen{};
  for (const std::size_t box : boxes) chosen[box] = true;
  return chosen;
}

std::string Render(const DocumentChoice& chosen) {
  return RenderDocument("03:05 PM 07/04/2026", chosen);
}

std::string RenderAll() {
  DocumentChoice all;
  all.fill(true);
  return Render(all);
}

std::string RenderOnly(std::size_t box) {
  return Render(Only({box}));
}

std::string ReadFile(const QString& name) {
  QFile file(name);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
  return file.readAll().toStdString();
}

/// The lines of a document, each of which must have its line end.
std::vector<std::string> Lines(const std::string& document) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < document.size();) {
    const std::size_t end = document.find("\r\n", start);
    if (end == std::string::npos) {
      ADD_FAILURE() << "no line end behind " << document.substr(start);
      break;
    }
    lines.push_back(document.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

bool HasLine(const std::string& document, const std::string& line) {
  return document.find("\r\n" + line + "\r\n") != std::string::npos;
}

void ExpectGolden(const char* name) {
  const std::string document = RenderAll();
  const auto expected =
      Lines(ReadFile(QStringLiteral(TEST_DATA_DIR "/document/golden/%1.txt").arg(name)));
  const auto lines = Lines(document);
  ASSERT_EQ(lines.size(), expected.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    ASSERT_EQ(lines[i], expected[i]) << "line " << i + 1;
  }
}

/// Every row below a header has its tabs. Panel settings have no header, and the dimmers have
/// several.
void ExpectTabsOfHeader(const std::string& document) {
  std::ptrdiff_t tabs = -1;
  bool header = false;
  for (const std::string& line : Lines(document)) {
    ASSERT_FALSE(line.empty());
    const std::ptrdiff_t count = std::count(line.begin(), line.end(), '\t');
    if (line[0] == '[') {
      header = line != "[Panel Settings]" && !line.ends_with("Documentation File]");
      tabs = -1;
    } else if (header || line.starts_with("DO Device\t") || line.starts_with("Control\t") ||
               line.starts_with("\tDimmer/Relay") || line.starts_with("Date Of Year\t")) {
      header = false;
      tabs = count;
    } else if (tabs >= 0) {
      EXPECT_EQ(count, tabs) << line;
    }
  }
}

class TextDocument : public DocumentTest {
 protected:
  TextDocument() { HostSoftwareVersion = QStringLiteral("Version 1.02"); }
};

TEST_F(TextDocument, OfANewPanel) {
  ExpectGolden("new_panel");
}

TEST_F(TextDocument, OfAnOffice) {
  LoadOffice();
  ExpectGolden("office");
}

TEST_F(TextDocument, OfEveryCode) {
  LoadEveryCode();
  ExpectGolden("every_code");
  ExpectTabsOfHeader(RenderAll());
}

TEST_F(TextDocument, PanelSettingsLeaveOutWhatHasNoWord) {
  const struct {
    Int16& Field;
    Int16 First;
    const char* Label;
    std::vector<std::string> Words;
  } rows[] = {
      {PanelRecord.AddOnModuleType,
       0,
       "AddOn Module Type",
       {"None", "DMX", "MODBus", "N2", "Voice DTMF", "BACnet"}},
      {PanelRecord.TimeZone,
       0,
       "Time Zone",
       {"Eastern", "Central", "Mountain", "Pacific", "Alaska"}},
      {PanelRecord.DSTStartWeek, 1, "DST Start Week", {"1st", "2nd", "3rd", "4th", "Last"}},
      {PanelRecord.DSTEndMonth,
       1,
       "DST End Month",
       {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}},
  };
  for (const auto& row : rows) {
    Int16 code = row.First;
    for (const std::string& word : row.Words) {
      row.Field = code++;
      EXPECT_TRUE(HasLine(RenderOnly(0), std::string(row.Label) + '\t' + word)) << word;
    }
    for (const Int16 outside : {static_cast<Int16>(row.First - 1), code}) {
      row.Field = outside;
      EXPECT_EQ(RenderOnly(0).find(row.Label), std::string::npos) << row.Label << outside;
    }
  }
}

TEST_F(TextDocument, HoldsTheChosenSections) {
  EXPECT_EQ(Lines(Render({})).size(), 5U);
  const std::string two = Render(Only({1, 9}));
  EXPECT_LT(two.find("[Relay Schedule]"), two.find("[Off Hours Sweeps Relay Schedule]"));
  EXPECT_EQ(two.find("[Group Schedule]"), std::string::npos);

  EXPECT_EQ(Lines(RenderOnly(DMXSection)).size(), 5U) << "no DMX module";
  PanelRecord.AddOnModuleType = 1;
  EXPECT_TRUE(HasLine(RenderOnly(DMXSection), "[DMX Schedule]"));
}

TEST_F(TextDocument, WritesNamesAsTheyStand) {
  PanelRecord.RelayName(0) = std::string("A\tB\r\n\0\x80\xFF", 8);
  EXPECT_NE(RenderOnly(1).find("01\t" + PanelRecord.RelayName(0) + "\t\t\tOff"), std::string::npos);
}

TEST_F(TextDocument, SurvivesNonsense) {
  std::mt19937 random(3);
  const auto fill = [&random](auto& table) {
    for (auto& element : table.elements) element = static_cast<Int16>(random());
  };
  auto& panel = PanelRecord;
  for (int round = 0; round < 20; ++round) {
    LoadDefaults();
    for (ItemTable* table :
         {&panel.InputRelayControl, &panel.InputGroupControl, &panel.GroupRelayInclude,
          &panel.TimerRelayControl, &panel.TimerGroupControl, &panel.TimerPresetControl,
          &panel.PresetRelayControl}) {
      fill(*table);
    }
    for (ItemArray* array :
         {&panel.InputPreset, &panel.RelayTimerType, &panel.RelayPowerOnType, &panel.InputType,
          &panel.InputEnableTime, &panel.InputDisableTime, &panel.LocalPilot, &panel.TimerTimeType,
          &panel.TimerTime, &panel.TimerDays, &panel.TimerHolidayMonth, &panel.DMXChannel}) {
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
      fill(device.DeviceRelayControl);
    }
    for (auto& element : DimmerBlock.elements) element = static_cast<Int16>(random() % 128);
    panel.IOCount.elements.fill(static_cast<Int16>(random() % 9));
    panel.AddOnModuleType = 1;
    ExpectTabsOfHeader(RenderAll());
  }
  DimmerBlock.elements.fill(32767);
  try {
    RenderOnly(11);
    ADD_FAILURE() << "overflow not noticed";
  } catch (const RunTimeFailure& failure) {
    EXPECT_NE(std::string(failure.what()).find("\"Dimmer Outputs\""), std::string::npos);
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

TEST_F(TextDocument, IsWrittenWholeOrNotAtAll) {
  const QTemporaryDir folder;
  const auto message = [] {
    try {
      WriteDocumentFile("new");
    } catch (const RunTimeFailure& failure) {
      return QString::fromUtf8(failure.what());
    }
    return QString();
  };
  DocumentFileName = folder.filePath("Site.txt");
  WriteDocumentFile("a longer old document");
  EXPECT_EQ(message(), QString());
  EXPECT_EQ(ReadFile(DocumentFileName), "new");

  DocumentFileName = folder.path();
  EXPECT_TRUE(message().contains("folder")) << message().toStdString();
  DocumentFileName = folder.filePath("none/Site.txt");
  EXPECT_TRUE(message().contains(QDir::toNativeSeparators(DocumentFileName)));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("Site.txt"));
#ifdef Q_OS_LINUX
  DocumentFileName = "/dev/full";
  EXPECT_TRUE(message().contains("not a regular file"));
#endif
}

}  // namespace

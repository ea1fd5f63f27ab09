#include "document/rules/report/report.h"

#include <QCryptographicHash>
#include <algorithm>
#include <set>

#include "document/rules/text/doc_file.h"
#include "document/sample_panel.h"
#include "panel/document_fixture.h"
#include "panel/live_dimmers.h"
#include "town_hall.h"

namespace {

using Kind = DocumentCell::Kind;

const QDateTime Morning(QDate(2026, 11, 25), QTime(10, 0));

class ReportTest : public DocumentTest {
 protected:
  static PanelReport Report() { return BuildReport(LiveProject, {.Date = Morning}); }

  static std::vector<QStringList> Rows(const QString& chapter) {
    std::vector<QStringList> rows;
    for (const ReportChapter& known : Report().Chapters) {
      if (known.Title != chapter) continue;
      for (ReportRow row : known.Rows) {
        rows.push_back(row.Cells.replaceInStrings(QChar(QChar::Nbsp), QStringLiteral(" ")));
      }
    }
    return rows;
  }

  /// The cells of the row that begins with `item`; none when it is left out.
  static QStringList Row(const QString& chapter, const QString& item) {
    for (const QStringList& row : Rows(chapter)) {
      if (row[0] == item) return row;
    }
    return {};
  }
};

TEST_F(ReportTest, TellsWhatIsUsedInNamesAndActionWords) {
  PanelRecord.RelayName(0) = "FOYER";
  PanelRecord.InputName(2) = "LOBBY";
  PanelRecord.InputType(2) = 1;
  PanelRecord.InputRelayControl(2, 0) = 3;
  PanelRecord.InputRelayControl(2, 1) = 3;
  PanelRecord.GroupRelayInclude(6, 0) = -1;
  PanelRecord.GroupRelayInclude(6, 3) = -1;
  PanelRecord.TimerGroupControl(47, 6) = 2;
  PanelRecord.TimerRelayControl(47, 3) = 2;
  PanelRecord.TimerTimeType(47) = 6;
  PanelRecord.TimerTime(47) = 30;
  PanelRecord.TimerDays(47) = 0b0100'0001;
  FennlinkRecords(26).DeviceType = 2;
  FennlinkRecords(26).DeviceRelayControl(1, 4) = 2;
  EXPECT_EQ(Row("Inputs", "INPUT 03 LOBBY"),
            (QStringList{"INPUT 03 LOBBY", "Momentary PB", "always",
                         "turns RELAY 01 FOYER, RELAY 02 on and off\n"
                         "has a pilot that follows RELAY 03"}));
  EXPECT_EQ(Row("Relays", "RELAY 01 FOYER")[3].toStdString(),
            "INPUT 03 LOBBY: turns it on and off\n"
            "Through GROUP 07: TIMER 48 (6:30 AM, Mon to Fri): turns it off");
  EXPECT_EQ(Row("Panel", "Latitude").value(1), "45 degrees north");
  EXPECT_EQ(Row("Relays", "RELAY 04").value(3).toStdString(),
            "TIMER 48 (6:30 AM, Mon to Fri): turns it off\nGROUP 07: includes it")
      << "what is done directly is not told again";
  EXPECT_EQ(Row("Bus Devices", "FL 1A INPUT 2")[2], "turns RELAY 05 off");
  EXPECT_EQ(Row("Relays", "RELAY 03"), QStringList()) << "nothing uses it";
  EXPECT_EQ(Row("Panel Door", "03"), (QStringList{"03", "", "", ""}));
}

TEST_F(ReportTest, SheetsHaveEachCellOfItsType) {
  LoadEveryCode();
  PanelRecord.PanelName = "12E5";
  PanelRecord.LocalPilot(1) = 1;
  // Its second row is of a timer.
  for (int i = 0; i < ItemCount; ++i) {
    PanelRecord.InputRelayControl(i, 1) = PanelRecord.TimerRelayControl(i, 1) = 0;
  }
  PanelRecord.InputType(7) = static_cast<Int16>(InputKind::TimerDisable);
  PanelRecord.InputRelayControl(7, 1) = 1;
  const auto sheets = BuildSheets(LiveProject);
  const std::tuple<std::string, std::string, std::size_t, Kind, int, std::string> cells[] = {
      {"Panel Settings", "Value", 0, Kind::Text, 0, "12E5"},
      {"Panel Settings", "Points", 3, Kind::Text, 0, "33-40"},
      {"Relay Schedule", "Relay", 0, Kind::Number, 1, "01"},
      {"Local Input Schedule", "Enable Time", 3, Kind::Time, 90, "1:30A"},
      {"Timer Schedule", "Time", 36, Kind::Time, 1441 % 1440, "12:01A"},
      {"Timer Schedule", "Time", 26, Kind::Text, 0, "045 Before Sunset"},
      {"Timer Schedule", "On Relays", 4, Kind::Text, 0, "5"},
      {"Off Hours Sweeps Group Schedule", "Group Number", 47, Kind::Number, 48, "48"},
      {"Open Close Times Schedule", "Open Time", 6, Kind::Time, 0, "12:00A"},
      {"Open Close Dates", "Date Of Year", 0, Kind::Text, 0, "Jan 01"},
      {"Open Close Dates", "Open Time", 0, Kind::Text, 0, "--:--"},
      {"Dimmer Outputs", "Fade Rate (Sec)", 5, Kind::Number, 40, "40"},
      {"Dimmer Controls", "Device", 15, Kind::Text, 0, "FL 3C"},
      {"Panel Settings", "Value", 15, Kind::Text, 0, "45 degrees north"},
      {"Dimmer Controls", "DO Device", 127, Kind::Text, 0, "DO:0C"},
      {"Dimmer Controls", "Output", 127, Kind::Number, 4, "4"},
      {"Dimmer Controls", "Control", 127, Kind::Number, 16, "16"},
      {"Dimmer Relays", "Relays", 7, Kind::Text, 0, "01 13 48"},
      {"DMX Schedule", "DMX Channel", 0, Kind::Text, 0, "None"},
      {"Local Input Pilot Schedule", "Pilot", 1, Kind::Text, 0, "On If Relay 02"},
      {"Fennlink Pilot Schedule", "Pilot", 1, Kind::Text, 0, "On If Group 01"},
      {"Relay Schedule", "Local Control", 1, Kind::Text, 0, ""},
  };
  for (const auto& [name, column, row, type, value, text] : cells) {
    SCOPED_TRACE(name + " " + column);
    const auto sheet =
        std::find_if(sheets.begin(), sheets.end(),
                     [&name = name](const DocumentTable& table) { return table.Name == name; });
    ASSERT_NE(sheet, sheets.end());
    const auto title = std::find(sheet->Columns.begin(), sheet->Columns.end(), column);
    ASSERT_NE(title, sheet->Columns.end());
    const auto at = static_cast<std::size_t>(title - sheet->Columns.begin());
    const DocumentCell& cell = sheet->Rows.at(row).at(at);
    EXPECT_EQ(std::tie(cell.Type, cell.Value, cell.Text), std::tie(type, value, text)) << cell.Text;
  }
}

TEST_F(ReportTest, TellsItemsInARowAsOneAndAllThatScreensHold) {
  PanelRecord.IOCount(0) = 4;
  PanelRecord.IOCount(3) = 2;
  PanelRecord.AddOnModuleType = 1;
  PanelRecord.DMXChannel(4) = 300;
  PanelRecord.RTCSource = 1;
  PanelRecord.RelayName(7) = "HALL";
  for (int relay = 2; relay < 12; ++relay) PanelRecord.GroupRelayInclude(0, relay) = -1;
  for (const int preset : {3, 8}) {
    PanelRecord.PresetRelayControl(preset, 4) = 1;
    PanelRecord.TimerPresetControl(0, preset) = -1;
  }
  PanelRecord.OffHoursSweepGroup(0) = -1;
  for (const int input : {16, 17}) {
    for (const int relay : {20, 21}) PanelRecord.InputRelayControl(input, relay) = 3;
  }
  FennlinkRecords(2).DeviceType = 3;
  FennlinkRecords(2).DevicePilot(1) = 1;
  DimSetEnabled(0, 1);
  DimSetTrackMode(0, 1, 2);
  DimSetTarget(0, 1, 140);
  DimSetCtlType(0, 1, 0, 3);
  DimSetCtlNumber(0, 1, 0, 8);
  DimSetCtlAction(0, 1, 0, 43);
  DimSetCtlRevert(0, 1, 0, 2);
  DimSetCtlType(0, 1, 5, 2);
  DimSetCtlNumber(0, 1, 5, 90);
  PanelRecord.PresetName(8) = "OFFICE";
  FennlinkRecords(3).DeviceType = 9;
  FennlinkRecords(3).DeviceRelayControl(0, 1) = 3;
  FennlinkRecords(3).DeviceOnLevel(0) = 51;
  DimSetRelay(0, 2, 5, 1);
  DimSetOnLevel(0, 2, 80);
  DimSetOffLevel(0, 2, 5);
  EXPECT_EQ(Row("Groups", "GROUP 01").value(1),
            "includes RELAY 03 to 07, RELAY 08 HALL, RELAY 09 to 12");
  EXPECT_EQ(Row("Relays", "RELAY 05").mid(3),
            (QStringList{"300",
                         "Through GROUP 01: Off hours sweep (1 Hour Interval): sweeps it off\n"
                         "Through PRESET 04, PRESET 09 OFFICE: TIMER 01 (12:00 AM, every day): "
                         "turns it on"}));
  EXPECT_EQ(Row("Relays", "RELAY 21,\nRELAY 22").value(4),
            "INPUT 17, INPUT 18: turn them on and off");
  EXPECT_EQ(Row("Panel", "I/O of node 4").value(1), "8, 17 to 24");
  EXPECT_EQ(Row("Panel", "Clock source").value(1), "Internal Crystal");
  EXPECT_EQ(Row("Panel", "DMX on level").value(1), "90%");
  EXPECT_EQ(Row("Panel", "ModBus mode"), QStringList()) << "of a module that is not there";
  EXPECT_EQ(Row("Bus Devices", "FL 02 INPUT 2").value(2), "has a pilot that is always on");
  EXPECT_TRUE(Row("Dimmers", "DIMMER 1 OUTPUT 2").value(1).endsWith("target 140/255 (19 fc)"));
  EXPECT_EQ(Row("Dimmers", "DIMMER 1 OUTPUT 2").value(2).section(QLatin1Char('\n'), 0, 0),
            "PRESET 09 OFFICE goes to 40 %, fades, back after 5 min");
  EXPECT_TRUE(Row("Dimmers", "DIMMER 1 OUTPUT 2").value(2).contains("06-T:91"))
      << "a timer that is none";
  EXPECT_EQ(Row("Bus Devices", "FL 03 INPUT 1").value(1), "off at 0/255 (0%), on at 51/255 (20%)");
  EXPECT_EQ(Row("Dimmers", "DIMMER 1 OUTPUT 3").value(3),
            "follows RELAY 06\nwith it on 80 %, off 5 %");
}

TEST_F(ReportTest, ItemsAndDaysInARowAreOneAndSheetsHaveARowForEachItem) {
  OpenTownHallWithAnnex();
  EXPECT_EQ(Row("Groups", "GROUP 12 ALL ROOMS").value(1),
            "includes RELAY 25 ROOM 301 to RELAY 40 ROOM 316");
  EXPECT_EQ(Row("Groups", "GROUP 02 OFFICES").value(1),
            "includes RELAY 05 OFFICE 1, RELAY 06 OFFICE 2, RELAY 07 OFFICE 3, RELAY 08 MEETING");
  const auto days = Rows("Open And Close Times");
  EXPECT_EQ(days[1], (QStringList{"Monday to Wednesday", "8:00A", "5:00P"}));
  EXPECT_EQ(Row("Open And Close Times", "Dec 23 to Dec 31").mid(1),
            (QStringList{"9:00A", "2:00P"}));
  PanelRecord.DateOpenTime(11, 24) = PanelRecord.DateCloseTime(11, 24) = 36;
  EXPECT_EQ(Row("Open And Close Times", "Dec 25").mid(1), (QStringList{"closed", ""}));
  EXPECT_EQ(Row("Panel Door", "20"), (QStringList{"20", "SIGN", "", "", "40", "ROOM 316", "", ""}));
  EXPECT_EQ(Rows("Commissioning").size(), 40U + 37U + 7U + 4U);
  EXPECT_EQ(Row("Commissioning", "FL 01 ROOM 204"),
            (QStringList{"FL 01 ROOM 204", "6/7/8 Button", ReportBox, "", ""}));
}

TEST_F(ReportTest, TheYearTellsWhenTimersFireAndWhenTheyHaveRelaysOn) {
  const auto timer = [](Int16 number, Int16 hour, Int16 relay, Int16 code) {
    PanelRecord.TimerTimeType(number) = hour;
    PanelRecord.TimerRelayControl(number, relay) = code;
  };
  timer(0, 9, 0, 1);
  timer(0, 9, 1, 1);
  timer(0, 9, 2, 1);
  timer(1, 18, 0, 2);
  timer(2, 18, 3, 1);
  PanelRecord.TimerHolidayMonth(2) = 3;
  PanelRecord.GroupRelayInclude(5, 1) = PanelRecord.GroupRelayInclude(5, 2) = -1;
  PanelRecord.OffHoursSweepGroup(5) = -1;
  PanelRecord.RelayTimerType(3) = 6;
  const PanelReport report = Report();
  const auto year = std::find_if(report.Chapters.begin(), report.Chapters.end(),
                                 [](const auto& c) { return c.Title == "The Year 2026"; });
  ASSERT_NE(year, report.Chapters.end());
  ASSERT_EQ(year->Rows.size(), 3U);
  EXPECT_EQ(year->Rows[0].Cells.mid(0, 2), (QStringList{"TIMER 01", "9:00A"}));
  EXPECT_EQ(year->Rows[2].Cells.mid(0, 5), (QStringList{"TIMER 03", "-", "-", "6:00P", "-"}));
  ASSERT_EQ(year->Graphs.size(), 2U) << "a relay that is pulsed is on at no time";
  EXPECT_EQ(year->Graphs[1].Title, "RELAY 02 and 1 more");
  ASSERT_EQ(year->Graphs[0].Areas.size(), 1U) << "days alike are one";
  EXPECT_EQ(year->Graphs[0].Areas[0], QRectF(QPointF(0, 0.25), QPointF(1, 0.625)));
  EXPECT_EQ(year->Graphs[1].Areas[0], QRectF(QPointF(0, 0.125), QPointF(1, 0.625)))
      << "until the sweep of the close time, 9 PM";
}

TEST_F(ReportTest, CoverTellsTheFileAndWhoItIsFor) {
  const QTemporaryDir folder;
  const QString file = folder.filePath("yard.T3");
  EXPECT_EQ(ReadCover(file), ReportCover());
  const ReportCover cover{"Ville d'\u00c9vry", "12: Gate \u2116 3", ""};
  KeepCover(file, cover);
  EXPECT_EQ(ReadCover(file), cover);
  EXPECT_EQ(FileText(file + ".report").substr(0, 28), "Tamberloom 3 report\nClient: ");
  QFile project(file);
  ASSERT_TRUE(project.open(QIODevice::WriteOnly));
  project.write("abc");
  project.close();
  ReportFacts facts = FactsOfFile(file, Morning);
  facts.Cover = cover;
  const auto told = BuildReport(LiveProject, facts);
  EXPECT_EQ(told.PanelName, "ORV TAMBERLOOM 3") << "of a panel without a name";
  const std::vector<std::pair<QString, QString>> lines = {
      {"Client", cover.Client},     {"Site", cover.Site}, {"Engineer", ""},
      {"Date", "2026-11-25 10:00"}, {"File", "yard.T3"},  {"SHA-256", "ba78 16bf 8f01 cfea ..."}};
  EXPECT_TRUE(std::equal(lines.begin(), lines.end(), told.Cover.begin()));
  EXPECT_EQ(FactsOfFile(file, Morning, true).Sum, "") << "the file is not what is reported";
}

TEST_F(ReportTest, DamagedNumbersAreToldOrFailAndNeverCrash) {
  const std::string sound = Document();
  int told = 0;
  for (unsigned seed = 1; seed <= 8; ++seed) {
    Project damaged = LiveProject;
    ASSERT_TRUE(DecodeProject(Nonsense(sound, seed), damaged));
    if (seed % 2 == 0) damaged.Dimmers = LiveProject.Dimmers;
    try {
      told += BuildReport(damaged, {.Date = Morning}).Chapters.empty() ? 0 : 1;
    } catch (const RunTimeFailure& failure) {
      EXPECT_STRNE(failure.what(), "");
    }
  }
  EXPECT_GE(told, 1);
}

TEST_F(ReportTest, AForeignFileInTheCoversPlaceIsToldAndStays) {
  const QTemporaryDir folder;
  const QString file = folder.filePath("yard.T3");
  for (const QByteArray& foreign :
       {QByteArray(), QByteArray("Client: A\n"), QByteArray("Tamberloom 3 report\nColor: red\n"),
        QByteArray("Tamberloom 3 report\nSite: A\nSite: B\n"),
        QByteArray("Tamberloom 3 report\nSite: \xff\n"), QByteArray(100'000, '\n')}) {
    QFile kept(CoverFileOf(file));
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
    kept.write(foreign);
    kept.close();
    EXPECT_THROW(ReadCover(file), RunTimeFailure) << foreign.left(40).toStdString();
    EXPECT_THROW(KeepCover(file, {"A", "B", "C"}), RunTimeFailure);
    EXPECT_EQ(FileText(CoverFileOf(file)), foreign.toStdString());
  }
  try {
    ReadCover(file);
  } catch (const RunTimeFailure& failure) {
    EXPECT_TRUE(QString::fromUtf8(failure.what()).contains("yard.T3.report\" is to keep"));
  }
}

TEST_F(ReportTest, AcceptedFindingsStandApartWithTheirReason) {
  OpenTownHallWithAnnex();
  const auto findings = CheckProject(LiveProject);
  const Acceptance known = Accept(findings[0], "It waits for the stage.", {2026, 11, 20});
  Acceptance other = Accept(findings[1], "It said something else.", {2026, 11, 20});
  other.Finding += "!";
  const auto told = BuildReport(LiveProject, {.Date = Morning, .Accepted = {known, other}});
  EXPECT_EQ(told.Chapters[0].Rows.size(), findings.size() - 1);
  EXPECT_EQ(told.Chapters[1].Title, "Accepted Findings");
  ASSERT_EQ(told.Chapters[1].Rows.size(), 1U);
  EXPECT_EQ(told.Chapters[1].Rows[0].Cells.mid(1),
            (QStringList{findings[0].Sentence, "It waits for the stage.", "2026-11-20"}));
  EXPECT_TRUE(told.Cover.back().second.endsWith(", 1 accepted"));
}

}  // namespace

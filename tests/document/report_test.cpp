#include "document/rules/report/report.h"

#include <algorithm>

#include "document/rules/text/doc_file.h"
#include "document/sample_panel.h"
#include "panel/document_fixture.h"

namespace {

using Kind = DocumentCell::Kind;

class ReportTest : public DocumentTest {
 protected:
  /// The cells of the row that begins with `item`; none when it is left out.
  static QStringList Row(const QString& chapter, const QString& item) {
    for (const ReportChapter& known :
         BuildReport(LiveProject, CurrentFileName, QDateTime()).Chapters) {
      if (known.Title != chapter) continue;
      for (QStringList row : known.Rows) {
        if (row[0] == item) return row.replaceInStrings(QChar(QChar::Nbsp), QStringLiteral(" "));
      }
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
  FennlinkRecords(26).DeviceType = 2;
  FennlinkRecords(26).DeviceRelayControl(1, 4) = 2;
  EXPECT_EQ(Row("Inputs", "INPUT 03 LOBBY"),
            (QStringList{"INPUT 03 LOBBY", "Momentary PB", "always",
                         "turns RELAY 01 FOYER, RELAY 02 on and off\n"
                         "has a pilot that follows RELAY 03"}));
  EXPECT_EQ(Row("Relays", "RELAY 01 FOYER")[3].toStdString(),
            "INPUT 03 LOBBY: turns it on and off\nGROUP 07: includes it\n"
            "TIMER 48: turns it off through a group");
  EXPECT_EQ(Row("Relays", "RELAY 04").value(3), "GROUP 07: includes it\nTIMER 48: turns it off");
  EXPECT_EQ(Row("Bus Devices", "FL 1A INPUT 2")[2], "turns RELAY 05 off");
  EXPECT_EQ(Row("Relays", "RELAY 03"), QStringList()) << "nothing uses it";
  EXPECT_EQ(Row("Panel Door", "03"), (QStringList{"03", "", "", ""}));
}

TEST_F(ReportTest, SheetsHaveEachCellOfItsType) {
  LoadEveryCode();
  PanelRecord.PanelName = "12E5";
  const auto sheets = BuildSheets(LiveProject);
  const std::tuple<std::string, std::string, std::size_t, Kind, int, std::string> cells[] = {
      {"Panel Settings", "Value", 0, Kind::Text, 0, "12E5"},
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
      {"Dimmer Controls", "DO Device", 127, Kind::Text, 0, "DO:0C"},
      {"Dimmer Controls", "Output", 127, Kind::Number, 4, "4"},
      {"Dimmer Controls", "Control", 127, Kind::Number, 16, "16"},
      {"Dimmer Relays", "Relays", 7, Kind::Text, 0, "01 13 48"},
      {"DMX Schedule", "DMX Channel", 0, Kind::Text, 0, "None"},
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

}  // namespace

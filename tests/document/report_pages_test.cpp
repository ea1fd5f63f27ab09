#include "document/page_recorder.h"
#include "document/rules/report/report.h"
#include "document/rules/report/report_writer.h"
#include "document/rules/text/doc_file.h"
#include "document/sample_panel.h"
#include "panel/dimmer_words.h"
#include "panel/document_fixture.h"
#include "panel/live_dimmers.h"
#include "town_hall.h"

// The pages of a report as they are printed.

namespace {

/// What a reader of the pages relies on.
class ReportPagesTest : public DocumentTest {
 protected:
  static PanelReport Report() {
    return BuildReport(LiveProject, {.Date = QDateTime(QDate(2026, 11, 25), QTime(10, 0))});
  }

  static const PrintedText* Find(const std::vector<PrintedText>& page, const QString& text) {
    // The contents and the foot are painted last.
    const auto found = std::find_if(page.rbegin(), page.rend(),
                                    [&](const PrintedText& t) { return t.Text == text; });
    return found == page.rend() ? nullptr : &*found;
  }

  /// Looks at the foot, the contents and the edges of all pages.
  static void LookAt(const PageRecorder& pages, const PanelReport& report) {
    const int count = static_cast<int>(pages.Pages().size());
    for (int page = 2; page <= count; ++page) {
      SCOPED_TRACE(page);
      const auto& texts = pages.Pages()[static_cast<std::size_t>(page - 1)];
      const PrintedText* foot = Find(texts, QStringLiteral("Page %1 of %2").arg(page).arg(count));
      ASSERT_NE(foot, nullptr);
      EXPECT_NE(Find(texts, "2026-11-25 10:00"), nullptr);
      for (const PrintedText& text : texts) {
        EXPECT_LE(text.Right, pages.width() + 1) << text.Text.toStdString();
        EXPECT_LE(text.Base, foot->Base) << text.Text.toStdString();
        EXPECT_GE(text.Left, 0) << text.Text.toStdString();
      }
    }
    const auto& contents = pages.Pages()[1];
    for (const ReportChapter& chapter : report.Chapters) {
      SCOPED_TRACE(chapter.Title.toStdString());
      const PrintedText* line = Find(contents, chapter.Title);
      ASSERT_NE(line, nullptr);
      const PrintedText* number = line + 1;
      const int page = number->Text.toInt();
      ASSERT_TRUE(page >= 2 && page <= count);
      const auto& texts = pages.Pages()[static_cast<std::size_t>(page - 1)];
      const auto title = std::find_if(texts.rbegin(), texts.rend(), [&](const PrintedText& t) {
        return t.Text == chapter.Title && t.Left == 0;
      });
      ASSERT_NE(title, texts.rend());
      // Its columns, and a row at least.
      std::set<double> lines;
      for (const PrintedText& text : texts) {
        if (text.Base > title->Base && text.Base < Find(texts, "2026-11-25 10:00")->Base) {
          lines.insert(text.Base);
        }
      }
      EXPECT_GE(lines.size(), 2U) << "a heading alone";
    }
  }
};

TEST_F(ReportPagesTest, ALargeBuildingFitsTenPagesBesideWhatIsFilledIn) {
  OpenTownHallWithAnnex();
  const PanelReport report = Report();
  const auto writer = LoadReportWriter();
  for (const auto paper : {QPageSize::A4, QPageSize::Letter}) {
    PageRecorder pages(paper);
    writer->Paint(report, pages);
    LookAt(pages, report);
    const PrintedText* door = Find(pages.Pages()[1], "Panel Door");
    ASSERT_NE(door, nullptr);
    if (paper == QPageSize::A4) {
      EXPECT_LE((door + 1)->Text.toInt(), 11);
    }
    const PrintedText* tests = Find(pages.Pages()[1], "Commissioning");
    EXPECT_EQ((tests + 1)->Text.toInt(), (door + 1)->Text.toInt() + 1) << "one sheet for the door";
    QString all;
    for (const auto& page : pages.Pages()) {
      for (const PrintedText& text : page) all += text.Text + u' ';
    }
    for (const ReportChapter& chapter : report.Chapters) {
      for (const ReportGraph& graph : chapter.Graphs) {
        EXPECT_TRUE(all.contains(QString(graph.Words).simplified())) << "whole below a graph";
        EXPECT_TRUE(all.contains(graph.Title)) << "whole above it";
      }
      if (!chapter.Title.startsWith("The Year")) continue;
      for (const ReportRow& row : chapter.Rows) {
        EXPECT_TRUE(all.contains(row.Cells.last().simplified())) << "a time is in one line";
      }
    }
  }
  const QString folder = qEnvironmentVariable("TAMBERLOOM_REPORT_FOLDER");
  if (folder.isEmpty()) return;
  const auto keep = [&](const char* name, Paper paper) {
    QFile file(folder + u'/' + QLatin1StringView(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(writer->Pdf(report, paper, {}));
  };
  keep("town_hall_a4.pdf", Paper::A4);
  keep("town_hall_letter.pdf", Paper::Letter);
}

TEST_F(ReportPagesTest, GraphsThatGoOnBehindABreakHaveTheirTitleAndDoNotTouch) {
  constexpr int pairs = 22;
  PanelRecord.IOCount(0) = 8;
  for (int i = 0; i < 2 * pairs; ++i) {
    PanelRecord.TimerTimeType(i) = static_cast<Int16>(i / 2 + i % 2);
    PanelRecord.TimerRelayControl(i, i / 2) = static_cast<Int16>(i % 2 + 1);
  }
  for (int relay = 0; relay < pairs; ++relay) {
    PanelRecord.RelayName(relay) = "A NAME THAT IS WIDER THAN ITS GRAPH BY FAR, AND AGAIN";
  }
  PageRecorder pages(QPageSize::A4);
  LoadReportWriter()->Paint(Report(), pages);
  int continued = 0;
  for (const auto& page : pages.Pages()) {
    for (const PrintedText& text : page) {
      EXPECT_FALSE(text.Text.endsWith(u'\u2026')) << text.Text.toStdString();
    }
    if (!page.front().Text.startsWith("The Year 2026, continued")) continue;
    const auto isGraph = [](const PrintedText& text) { return text.Text.startsWith("RELAY "); };
    std::vector<PrintedText> titles;
    std::copy_if(page.begin(), page.end(), std::back_inserter(titles), isGraph);
    for (std::size_t i = 1; i < titles.size(); ++i) {
      if (titles[i].Base == titles[i - 1].Base) {
        EXPECT_GT(titles[i].Left, titles[i - 1].Right + pages.Millimetres(2));
      }
    }
    ASSERT_FALSE(titles.empty());
    ++continued;
    EXPECT_LT(page.front().Base, titles.front().Base);
  }
  EXPECT_GE(continued, 1);
}

TEST_F(ReportPagesTest, ACurveStandsBelowItsTableAndNotAloneOnAPage) {
  DimSetEnabled(0, 1);
  DimSetTrackMode(0, 0, Track2Point);
  PanelRecord.IOCount(0) = 12;
  const auto writer = LoadReportWriter();
  int pagesWithCurve = 0;
  for (int relays = 4; relays <= ItemCount; relays += 2) {
    for (int relay = 0; relay < relays; ++relay) {
      PanelRecord.RelayName(relay) = "LAMP " + std::to_string(relay);  // a row of its own
    }
    PageRecorder pages(QPageSize::Letter);
    writer->Paint(Report(), pages);
    for (const auto& page : pages.Pages()) {
      EXPECT_FALSE(page.front().Text.contains("continued")) << relays;
      pagesWithCurve += Find(page, "light, fc") ? 1 : 0;
    }
  }
  EXPECT_EQ(pagesWithCurve, 23);
}

TEST_F(ReportPagesTest, ACoverTellsLongEntriesWhole) {
  const QString client = QStringLiteral("The Honourable Company of Lamplighters ").repeated(6);
  PageRecorder pages(QPageSize::Letter);
  const PanelReport report = BuildReport(
      LiveProject,
      {.Date = QDateTime(QDate(2026, 11, 25), QTime(10, 0)), .Cover = {client, {}, {}}});
  LoadReportWriter()->Paint(report, pages);
  QString cover;
  for (const PrintedText& text : pages.Pages()[0]) {
    cover += text.Text + u' ';
    EXPECT_LE(text.Right, pages.width() + 1) << text.Text.toStdString();
  }
  EXPECT_TRUE(cover.contains(client.trimmed())) << cover.toStdString();
}

TEST_F(ReportPagesTest, ARowThatGoesOnBehindABreakHasItsName) {
  LoadEveryCode();
  PanelRecord.RelayName(0) = "FOYER";
  for (int input = 0; input < ItemCount; ++input) {
    PanelRecord.InputName(input) = "SWITCH OF ROOM " + std::to_string(input);
    PanelRecord.InputType(input) = 1;
    for (int relay = 0; relay < ItemCount; ++relay) {
      PanelRecord.InputRelayControl(input, relay) = static_cast<Int16>(1 + (input + relay) % 3);
    }
  }
  const PanelReport report = Report();
  PageRecorder pages(QPageSize::A4);
  LoadReportWriter()->Paint(report, pages);
  LookAt(pages, report);
  int namesOnBreaks = 0;
  for (std::size_t page = 2; page < pages.Pages().size(); ++page) {
    const auto& texts = pages.Pages()[page];
    // Behind a break the columns stand first, then a row, which begins in the first column.
    if (texts.size() < 8 || texts[0].Text != "Relay") continue;
    const auto row = std::find_if(texts.begin(), texts.end(), [&](const PrintedText& t) {
      return t.Base > texts[0].Base + pages.Millimetres(3.9);
    });
    ASSERT_NE(row, texts.end());
    EXPECT_TRUE(row->Text.startsWith("RELAY ")) << row->Text.toStdString();
    EXPECT_LE(row->Left, pages.Millimetres(2)) << row->Text.toStdString();
    ++namesOnBreaks;
  }
  EXPECT_GE(namesOnBreaks, 3);
}

TEST_F(ReportPagesTest, TheSameProjectAndDateGiveTheSameBytes) {
  LoadEveryCode();
  const auto writer = LoadReportWriter();
  const QByteArray pdf = writer->Pdf(Report(), Paper::A4, {});
  EXPECT_TRUE(pdf == writer->Pdf(Report(), Paper::A4, {}));
  EXPECT_EQ(pdf.count("/XYZ null "), static_cast<qsizetype>(Report().Chapters.size()));
  EXPECT_TRUE(pdf.contains("/CreationDate (D:20261125100000)"));
  const QByteArray workbook = writer->Workbook(BuildSheets(LiveProject), Report().Date);
  EXPECT_TRUE(workbook == writer->Workbook(BuildSheets(LiveProject), Report().Date));
  EXPECT_FALSE(workbook == writer->Workbook(BuildSheets(LiveProject), Report().Date.addDays(1)));
}

}  // namespace

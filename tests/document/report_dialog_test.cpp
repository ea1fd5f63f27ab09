#include "document/report_dialog.h"

#include <QDialogButtonBox>
#include <QTimer>

#include "document/rules/report/report_cover.h"
#include "panel/document_fixture.h"
#include "panel/project_file.h"
#include "screen_test.h"

namespace {

class ReportDialogTest : public ScreenTest {
 protected:
  /// The next dialog is looked at, filled in and left with OK.
  static void AnswerReport(const QString& before, const QString& client) {
    QTimer::singleShot(0, [=] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      auto* box = dialog->findChild<TextBox*>("txtClient");
      EXPECT_EQ(box->Text(), before);
      box->TypeOver(client);
      dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
  }
};

TEST_F(ReportDialogTest, ReportsAreWrittenWholeAndSaySo) {
  Menu("mnuDocument");
  nextFileName = {};
  Press("cmdReportPdf");
  EXPECT_EQ(Text("lblFound"), "");
  for (const auto& [button, name] :
       {std::pair{"cmdReportPdf", "panel.pdf"}, std::pair{"cmdSpreadsheet", "panel.xlsx"}}) {
    nextFileName = folder.filePath(QString::fromLatin1(name));
    if (button == QLatin1StringView("cmdReportPdf")) AnswerReport("", "OAK HIGH");
    Press(button);
    EXPECT_GT(QFileInfo(nextFileName).size(), 2000) << name;
    EXPECT_TRUE(Text("lblFound").endsWith(" is written.")) << name;
    nextFileName = folder.path();
    if (button == QLatin1StringView("cmdReportPdf")) AnswerReport("", "");
    Press(button);
    EXPECT_EQ(Text("lblFound"), "") << name;
  }
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_TRUE(messages[0].Text.contains("it is a folder"));
}

TEST_F(ReportDialogTest, WhatTheCoverSaysIsAskedOnceAndKeptBesideTheProject) {
  CurrentFileName = folder.filePath("oak.T3");
  WriteProjectFile();
  Menu("mnuDocument");
  nextFileName = folder.filePath("oak.pdf");
  AnswerReport("", "OAK HIGH");
  Press("cmdReportPdf");
  EXPECT_EQ(ReadCover(CurrentFileName).Client, "OAK HIGH");
  AnswerReport("OAK HIGH", "OAK HIGH");
  Press("cmdReportPdf");
  EXPECT_EQ(messages.size(), 0U);
  const auto nameOnCover = [this] {
    AnswerReport("OAK HIGH", "OAK HIGH");
    return AskReportFacts(window.get()).value().FileName;
  };
  DataChanged = -1;
  EXPECT_EQ(nameOnCover(), "oak.T3") << "changed and undone";
  PanelRecord.TimerDays(0) = 3;
  EXPECT_EQ(nameOnCover(), "oak.T3, with changes that are not saved");
  const QString first = CurrentFileName;
  nextFileName = folder.filePath("elm.T3");
  Menu("mnuSaveAs");
  EXPECT_EQ(ReadCover(nextFileName).Client, "OAK HIGH");
  CurrentFileName = first;
  nextFileName = folder.filePath("oak.pdf");
  Menu("mnuDocument");
  // What somebody else keeps there is told, and the report is made all the same.
  QFile kept(CoverFileOf(CurrentFileName));
  ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
  kept.write("Dear Sirs,\n");
  kept.close();
  ASSERT_TRUE(QFile::remove(nextFileName));
  AnswerReport("", "OAK LOW");
  Press("cmdReportPdf");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].Text.contains("oak.T3.report"));
  EXPECT_TRUE(QFileInfo::exists(nextFileName));
  EXPECT_EQ(FileText(kept.fileName()), "Dear Sirs,\n");
}

}  // namespace

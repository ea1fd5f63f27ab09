#include <QFile>
#include <QTreeWidget>

#include "document/rules/check/accepted.h"
#include "document/rules/check/mend.h"
#include "panel/difference.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "panel/project_file.h"
#include "panel/stopwatch.h"
#include "screen_test.h"
#include "shell/window/history.h"

namespace {

/// An error at a timer, a name that is cut, and a warning.
class ActingOnFindingsTest : public ScreenTest {
 protected:
  ActingOnFindingsTest() {
    PanelRecord.IOCount(0) = 2;
    PanelRecord.TimerGroupControl(6, 3) = 1;
    PanelRecord.TimerRelayControl(6, 20) = 1;
    PanelRecord.RelayName(2) = "OUTER FOYER LEFT";
    file = folder.filePath("hall.T3");
    nextFileName = file;
    Menu("mnuSaveAs");
    Menu("mnuDocument");
    Press("cmdCheck");
  }

  QTreeWidget& List() { return Find<QTreeWidget>("lstFindings"); }

  QStringList Sentences() {
    QStringList sentences;
    for (int row = 0; row < List().topLevelItemCount(); ++row)
      sentences << List().topLevelItem(row)->text(2);
    return sentences;
  }

  /// Selects the one row whose sentence holds the text.
  void Select(const QString& text) {
    const auto found = List().findItems(text, Qt::MatchContains, 2);
    ASSERT_EQ(found.size(), 1) << text.toStdString();
    List().setCurrentItem(found[0]);
  }

  static QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QString Counted() {
    Find<Timer>("tmrFindings").Tick();
    return Text("lblFindings");
  }

  QString file;
  const QString noRelay = "turns on GROUP 04, which has no relay.";
};

TEST_F(ActingOnFindingsTest, AcceptedIsKeptBesideTheFileUntilTheFindingSaysSomethingElse) {
  NowSeam = [] { return QDateTime(QDate(2026, 11, 26), QTime(9, 0)); };
  const auto all = List().topLevelItemCount();
  const int errors = Counted().section(' ', 0, 0).toInt();
  Select(noRelay);
  nextText = " \t";
  Press("cmdAccept");
  EXPECT_EQ(Text("lblMark"), "Nothing is accepted without a reason.");
  EXPECT_EQ(askedAbout, "TIMER 07 turns on GROUP 04, which has no relay.");
  nextText = "Wired\tnext\nspring";
  const std::string bytes = Bytes();
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Insert);
  EXPECT_EQ(Bytes(), bytes);
  EXPECT_EQ(Content(file + ".accepted"),
            "Rule\tItem\tReason\tDate\tFinding\nempty-group\tTIMER 07\tWired next spring\t"
            "2026-11-26\tTIMER 07 turns on GROUP 04, which has no relay.\n");
  EXPECT_EQ(List().topLevelItemCount(), all - 1);
  EXPECT_EQ(Find<CheckBox>("chkAccepted").text(), "1 accepted");
  EXPECT_EQ(Counted().section(' ', 0, 0).toInt(), errors - 1);

  Click(Find<CheckBox>("chkAccepted"));
  Select("Accepted on 2026-11-26: Wired next spring");
  EXPECT_EQ(Find<Button>("cmdAccept").Caption(), "Take Back");
  PanelRecord.TimerName(6) = "DUSK";
  Press("cmdCheck");
  EXPECT_TRUE(Sentences().contains("TIMER 07 DUSK " + noRelay)) << "it says something else now";
  PanelRecord.TimerName(6) = "TIMER 07";
  Press("cmdCheck");
  Select("Accepted on");
  Press("cmdAccept");
  EXPECT_TRUE(Sentences().contains("TIMER 07 " + noRelay));
  EXPECT_FALSE(QFile::exists(file + ".accepted"));
  EXPECT_FALSE(Shows("chkAccepted"));
  NowSeam = QDateTime::currentDateTime;
}

TEST_F(ActingOnFindingsTest, TheRowThatComesUpForAnAcceptedOneIsNext) {
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Home);
  const QString next = Sentences().at(1);
  nextText = "a reason";
  QTest::keyClick(&List(), Qt::Key_Insert);
  ASSERT_EQ(Sentences().at(0), next);
  QTest::keyClick(window.get(), Qt::Key_F8);
  EXPECT_TRUE(Text("lblMark").endsWith(next));
  EXPECT_TRUE(Text("lblMark").startsWith("1 of "));
}

TEST_F(ActingOnFindingsTest, ADamagedListIsToldAndNothingIsHiddenByIt) {
  const QStringList all = Sentences();
  for (const QByteArray& content :
       {QByteArray(), QByteArray("Rule\n"), QByteArray("\xff\x00\x01", 3),
        QByteArray("Rule\tItem\tReason\tDate\tFinding\nempty-group\tTIMER 07\tx\t2026-11-31\t"
                   "TIMER 07 turns on GROUP 04, which has no relay.\n")}) {
    QFile list(file + ".accepted");
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write(content);
    list.close();
    Press("cmdCheck");
    EXPECT_EQ(Sentences(), all);
    EXPECT_TRUE(Text("lblFound").contains("no list of accepted findings")) << content.toStdString();
    Select(noRelay);
    nextText = "a reason";
    messages.clear();
    Press("cmdAccept");
    EXPECT_TRUE(OnlyMessage().contains("no list of accepted findings"));
    EXPECT_EQ(Content(file + ".accepted"), content);
  }
}

TEST_F(ActingOnFindingsTest, SaveAsTakesAlongWhatIsAcceptedAndANewProjectHasNone) {
  Select(noRelay);
  nextText = "a reason";
  Press("cmdAccept");
  nextFileName = folder.filePath("other.T3");
  Menu("mnuSaveAs");
  EXPECT_EQ(Content(nextFileName + ".accepted"), Content(file + ".accepted"));
  EXPECT_FALSE(Content(nextFileName + ".accepted").isEmpty());
  Menu("mnuNew");
  PanelRecord.TimerGroupControl(6, 3) = 1;
  Menu("mnuDocument");
  Press("cmdCheck");
  Select(noRelay);
  Press("cmdAccept");
  EXPECT_EQ(OnlyMessage(), "Save the project first: what is accepted is kept beside its file.");
}

TEST_F(ActingOnFindingsTest, UndoCountsWhatWasTakenOverAsTakeOverDid) {
  // Under a slot that is not used here stands a number, which is a setting of its own on the way
  // back.
  DimSetEnabled(0, 1);
  DimSetCtlNumber(0, 0, 1, 5);
  Project other = LiveProject;
  SetDimmerValue(other.Dimmers, dim::ControlType, {0, 0}, ControlTimer, 1);
  SetDimmerValue(other.Dimmers, dim::ControlNumber, {0, 0}, 3, 1);
  nextFileName = folder.filePath("office.T3");
  WriteProject(nextFileName, other);
  window->Steps().Begin();
  Menu("mnuDocument");
  Press("cmdCompare");
  EXPECT_EQ(List().topLevelItemCount(), 1);
  List().selectAll();
  Press("cmdTakeOver");
  EXPECT_EQ(Text("lblMark"), "Settings taken over: 2");
  QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Text("lblMark"), "Undone: 2 settings of Document");
}

TEST_F(ActingOnFindingsTest, WhatHasOneRightAnswerIsMendedInOneStep) {
  Select("turns on GROUP 04");
  EXPECT_FALSE(Find<Button>("cmdMend").isEnabled());
  window->Steps().Begin();
  const std::string before = Bytes();
  for (const auto& [sentence, words] :
       {std::pair{"\"OUTER FOYE\"",
                  "Mend: Cuts the name to the 10 characters that the panel keeps."},
        {"beyond the 8 installed points",
         "Mend: Clears what TIMER 07 does beyond the 8 installed points."}}) {
    Select(sentence);
    EXPECT_EQ(Text("lblFound"), words);
    DataChanged = 0;
    Press("cmdMend");
    EXPECT_EQ(DataChanged, -1);
    EXPECT_TRUE(List().findItems(sentence, Qt::MatchContains, 2).isEmpty());
  }
  EXPECT_EQ(PanelRecord.RelayName(2), "OUTER FOYE");
  EXPECT_EQ(PanelRecord.TimerRelayControl(6, 20), 0);
  EXPECT_EQ(PanelRecord.TimerGroupControl(6, 3), 1);
  EXPECT_EQ(window->Steps().Stack().count(), 2);
  Key(Qt::Key_Z, Qt::ControlModifier);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Bytes(), before);
}

TEST_F(ActingOnFindingsTest, ARowOfADayOpensThatDay) {
  PanelRecord.OffHoursSweepRelay(0) = -1;
  PanelRecord.DateOpenTime(11, 23) = PanelRecord.DateCloseTime(11, 23) = 0;
  Press("cmdCheck");
  Select("December 24 stays closed");
  QTest::keyClick(&List(), Qt::Key_Return);
  QApplication::processEvents();
  ASSERT_NE(window->LoadedForm(Screen::OpenAndCloseTimeSingleDates), nullptr);
  EXPECT_TRUE(Find<OptionButton>("optMonth(11)").isChecked());
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "lblOpenTime(23)");
}

TEST_F(ActingOnFindingsTest, EveryMendingLeavesNothingOfItsFindingAndNothingElseChanged) {
  struct Fault {
    const char* Rule;
    std::function<void(Project&)> Make;
  };
  DimSetEnabled(0, 1);
  const Project sound = LiveProject;
  for (const auto& [rule, make] : std::initializer_list<Fault>{
           {"input-beyond-points", [](Project& p) { p.Panel.InputName(30) = "OLD SWITCH"; }},
           {"input-beyond-points", [](Project& p) { p.Panel.InputGroupControl(30, 47) = 2; }},
           {"swept-beyond-points", [](Project& p) { p.Panel.OffHoursSweepRelay(47) = -1; }},
           {"beyond-points",
            [](Project& p) {
              SetDimmerValue(p.Dimmers, dim::RelayInclude, {0, 1}, -1, 40);
            }},
           {"daylight-saving", [](Project& p) {
              p.Panel.DSTEnabled = -1;
              p.Panel.DSTEndMonth = p.Panel.DSTStartMonth;
              p.Panel.DSTEndWeek = p.Panel.DSTStartWeek;
            }}}) {
    SCOPED_TRACE(rule);
    Project project = sound;
    make(project);
    const auto isIt = [wanted = rule](const Finding& finding) {
      return finding.Rule == wanted && finding.Where != Item{ItemKind::Timer, 6};
    };
    const auto findings = CheckProject(project);
    const auto found = std::find_if(findings.begin(), findings.end(), isIt);
    ASSERT_NE(found, findings.end());
    const auto mending = MendingOf(project, *found);
    ASSERT_TRUE(mending);
    mending->Apply(project);
    const auto left = CheckProject(project);
    EXPECT_EQ(std::count_if(left.begin(), left.end(), isIt), 0);
    EXPECT_LE(DifferentSettings(project, sound, true).size(), 3U);
  }
}

TEST_F(ActingOnFindingsTest, TheStatusBarCountsAndLeadsToTheList) {
  const QString counted = Counted();
  EXPECT_EQ(counted.section(',', 0, 0), CountOf(Severity::Error, CheckProject(LiveProject)));
  PanelRecord.TimerGroupControl(6, 3) = 0;
  EXPECT_EQ(Text("lblFindings"), counted) << "only once a second";
  EXPECT_NE(Counted(), counted);
  Menu("mnuSetup");
  Find<Label>("lblFindings").Press();
  EXPECT_NE(window->LoadedForm(Screen::Document), nullptr);
  EXPECT_GT(List().topLevelItemCount(), 0);
}

}  // namespace

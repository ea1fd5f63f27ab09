#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <csignal>

#include "limited.h"
#include "panel/project_file.h"
#include "panel/recovery_copy.h"
#include "screen_test.h"
#include "shell/window/end_signals.h"

// Unsaved work, and files that others change.

namespace {

class KeptWorkTest : public ScreenTest {
 protected:
  void Tick() { Find<Timer>("tmrRecovery").Tick(); }

  QStringList Copies() const {
    return QDir(DataPath("Recovery")).entryList({"*.recovery"}, QDir::Files);
  }

  /// What the program leaves when it is killed with unsaved work: its copy, and a lock that nobody
  /// holds.
  static void LeaveWork(const QString& name, int type) {
    const pid_t child = fork();
    if (child == 0) {
      RecoveryCopy copy;
      CurrentFileName = name;
      copy.Settle(LiveProject);
      PanelRecord.RelayTimerType(5) = static_cast<Int16>(type);
      copy.Update(LiveProject);
      _exit(0);
    }
    waitpid(child, nullptr, 0);
  }

  void SaveAs(const QString& name) {
    nextFileName = folder.filePath(name);
    Menu("mnuSaveAs");
  }
};

TEST_F(KeptWorkTest, TheCopyFollowsTheContentNotTheMark) {
  DataChanged = -1;
  Tick();
  EXPECT_TRUE(Copies().isEmpty()) << "a mark alone is no work";
  PanelRecord.TimerDays(0) = 3;
  DataChanged = 0;
  Tick();
  ASSERT_EQ(Copies().size(), 1) << "work without a mark is kept";
  EXPECT_TRUE(FindKeptWork().empty()) << "its owner lives";
  PanelRecord.PanelName.assign(40'000, 'X');
  Tick();
  EXPECT_TRUE(messages.empty()) << "nobody is told every few seconds";
  PanelRecord.PanelName.clear();
  PanelRecord.TimerDays(0) = 0;
  KeepUnsavedWork();
  EXPECT_TRUE(Copies().isEmpty()) << "back at what was opened";

  PanelRecord.TimerDays(0) = 5;
  Tick();
  SaveAs("Hall.T3");
  EXPECT_TRUE(Copies().isEmpty()) << "saved";
  for (const bool exit : {false, true}) {
    PanelRecord.TimerDays(0) = 7;
    DataChanged = -1;
    Tick();
    EXPECT_EQ(Copies().size(), 1);
    exit ? window->mnuExit_Click() : Menu("mnuNew");
    EXPECT_TRUE(Copies().isEmpty()) << "discarded by the user";
  }
}

TEST_F(KeptWorkTest, WhatNobodyWasAskedAboutStaysKept) {
  const QString two = folder.filePath("Two\nlines 100%.T3");
  SaveAs("Two\nlines 100%.T3");
  const auto edit = [this] {
    PanelRecord.TimerDays(0) = static_cast<Int16>(PanelRecord.TimerDays(0) + 1);
    DataChanged = -1;
    window->tmrFix_Timer();
  };
  edit();
  nextFileName = two;
  Menu("mnuOpen");
  EXPECT_EQ(Copies().size(), 1) << "another opened";
  edit();
  Menu("mnuNew");
  EXPECT_EQ(Copies().size(), 2) << "a new one begun";
  Click(Find<Label>("lblDelete(0)"));
  ASSERT_EQ(Copies().size(), 1);
  Find<Timer>("tmrFix").SetEnabled(true);
  Click(Find<Label>("lblTakeUp(0)"));
  EXPECT_EQ(CurrentFileName, two);
  EXPECT_EQ(DataChanged, -1) << "in no file";
  EXPECT_EQ(PanelRecord.TimerDays(0), 1);
  EXPECT_TRUE(Text("lblTakenUp").startsWith("The changes of Two lines 100%.T3 from "));
  EXPECT_FALSE(Find<Timer>("tmrFix").Enabled()) << "the start takes the mark for its own";
  window->EndKeepingWork();
  EXPECT_EQ(Copies().size(), 1);
}

TEST_F(KeptWorkTest, CopiesAreTheirOwnersAloneAndAFullDiskIsTold) {
  PanelRecord.TimerDays(0) = 7;
  DataChanged = -1;
  Tick();
  const QFileInfo copy(DataPath("Recovery/" + Copies().value(0)));
  const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther;
  EXPECT_FALSE(copy.permissions() & others);
  EXPECT_FALSE(QFileInfo(copy.path()).permissions() & (others | QFile::ExeGroup | QFile::ExeOther));

  // A full disk: neither a copy of its own, nor is the one that it takes up removed.
  LeaveWork(folder.filePath(QString(200, u'W') + ".T3"), 2);
  Menu("mnuNew");
  ASSERT_EQ(Copies().size(), 1);
  for (const char* link : {"lblTakeUp", "lblDelete"}) {
    EXPECT_GE(Cell(link, 0).width(), Cell(link, 0).sizeHint().width()) << "beside a long name";
  }
  {
    const Limited full(RLIMIT_FSIZE, 1000);
    Click(Find<Label>("lblTakeUp(0)"));
    EXPECT_EQ(Copies().size(), 1);
    Find<Timer>("tmrMarks").Tick();
    EXPECT_EQ(Text("lblMark"), "No copy of unsaved work can be kept");
  }
  Tick();
  Find<Timer>("tmrMarks").Tick();
  EXPECT_EQ(Text("lblMark"), "Unsaved changes");
}

TEST_F(KeptWorkTest, AnEndFromOutsideKeepsTheWorkOfThisInstant) {
  PanelRecord.TimerDays(0) = 5;
  DataChanged = -1;
  OnEndFromOutside([this] { window->EndKeepingWork(); });
  ASSERT_EQ(std::raise(SIGTERM), 0);
  QApplication::processEvents();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(messages.empty()) << "nobody is asked";
  EXPECT_EQ(Copies().size(), 1);
}

TEST_F(KeptWorkTest, WhatADeadProgramLeftIsOfferedTakenUpAndDeleted) {
  const QString hall = folder.filePath("Hall.T3");
  SaveAs("Hall.T3");
  LeaveWork(NoFileName, 2);
  LeaveWork(hall, 6);
  QFile::copy(hall, DataPath("Recovery/x.recovery"));
  Menu("mnuAbout");
  EXPECT_EQ(window->focusWidget()->objectName().section(u'(', 0, 0), "lblTakeUp");
  std::map<QString, int> rows;
  for (int i = 0; i < 3; ++i) {
    rows[Caption("lblKeptWork", i).section(" from ", 0, 0)] = i;
    EXPECT_TRUE(Shown(Cell("lblKeptWork", i)));
  }
  ASSERT_TRUE(rows.contains("A kept copy"));
  const int damaged = rows["A kept copy"];
  EXPECT_TRUE(Caption("lblKeptWork", damaged).endsWith(" is damaged."));
  EXPECT_FALSE(Shown(Cell("lblTakeUp", damaged)));
  Click(Cell("lblDelete", damaged));
  EXPECT_FALSE(Shown(Cell("lblKeptWork", 2)));
  const bool hallFirst = Caption("lblKeptWork", 0).startsWith("Unsaved changes of Hall.T3 from ");
  EXPECT_TRUE(
      Caption("lblKeptWork", hallFirst ? 1 : 0).startsWith("Unsaved changes of a new project "));
  Click(Cell("lblDelete", hallFirst ? 1 : 0));
  EXPECT_FALSE(Shown(Cell("lblKeptWork", 1)));

  DataChanged = -1;
  answers = {MsgAnswer::No};
  Click(Cell("lblTakeUp", 0));
  EXPECT_EQ(PanelRecord.RelayTimerType(5), 0) << "the rules of Open";
  Menu("mnuNew");
  PanelRecord.RelayTimerType(5) = 6;
  ForgetUnsavedWork();
  Click(Cell("lblTakeUp", 0));
  EXPECT_TRUE(FindKeptWork().empty()) << "kept anew, though it equals what was settled before";
  EXPECT_EQ(PanelRecord.RelayTimerType(5), 6);
  EXPECT_EQ(CurrentFileName, hall);
  EXPECT_EQ(DataChanged, -1);
  EXPECT_EQ(Copies().size(), 1) << "its own copy until it is saved";
  messages.clear();
  QFile others(hall);
  ASSERT_TRUE(others.open(QIODevice::ReadWrite) && others.putChar('x'));
  others.close();
  Menu("mnuSave");
  EXPECT_EQ(messages.size(), 1U) << "others changed the file that it knew";
  EXPECT_EQ(Copies().size(), 1);
  nextChoice = "Save Over It";
  EXPECT_TRUE(Shows("lblTakenUp"));
  Menu("mnuSave");
  EXPECT_TRUE(Copies().isEmpty());
  EXPECT_FALSE(Shows("lblTakenUp")) << "the file has them";
  Menu("mnuAbout");
  EXPECT_EQ(window->findChild<Label*>("lblKeptWork(0)"), nullptr);

  PanelRecord.TimerDays(0) = 4;
  Tick();
  const QString own = DataPath("Recovery/" + Copies().value(0));
  ASSERT_TRUE(QFile::copy(own, DataPath("Recovery/old.recovery")) &&
              QFile::copy(own + ".lock", DataPath("Recovery/old.recovery.lock")));
  ASSERT_EQ(FindKeptWork().size(), 1U) << "of a dead program that had the number of this one";
  EXPECT_EQ(QFileInfo(FindKeptWork()[0].Path).fileName(), "old.recovery");
  DeleteKeptWork(FindKeptWork()[0]);
  ASSERT_TRUE(QFile::copy(own + ".lock", DataPath("Recovery/half.recovery.lock")));
  EXPECT_TRUE(FindKeptWork().empty());
  EXPECT_EQ(QDir(DataPath("Recovery")).entryList(QDir::Files).size(), 2) << "its own two";
  ForgetUnsavedWork();
  EXPECT_TRUE(Copies().isEmpty());
  Tick();
  EXPECT_TRUE(Copies().isEmpty()) << "until the next edit";
}

TEST_F(KeptWorkTest, SaveAsksBeforeItWritesOverWhatOthersChanged) {
  SaveAs("Hall.T3");
  Menu("mnuSave");
  EXPECT_TRUE(messages.empty());
  QFile file(CurrentFileName);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.write("x");
  file.close();
  PanelRecord.ComPort = 9;
  Menu("mnuSave");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].Text.contains("Hall.T3"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.read(1), "x") << "the other's work stays";
  file.close();
  nextChoice = "Save Over It";
  Menu("mnuSave");
  Menu("mnuSave");
  EXPECT_EQ(messages.size(), 2U) << "and asks once";
  QFile::remove(CurrentFileName);
  Menu("mnuSave");
  EXPECT_EQ(messages.size(), 2U) << "nothing is lost where nothing is";
}

TEST_F(KeptWorkTest, ASaveRemovesWhatDeadSavesLeftAndNothingElse) {
  SaveAs("Hall.T3");
  const auto make = [this](const QString& name) {
    auto file = std::make_unique<QFile>(folder.filePath(name));
    EXPECT_TRUE(file->open(QIODevice::WriteOnly));
    return file;
  };
  const QString mark = QStringLiteral(".tamberloom3-saving-");
  const QString dead = mark + QString(32, u'a');
  const QString living = mark + QString(32, u'b');
  const QStringList users =
      QStringLiteral(
          "Hall.T3.MyCopy Hall.T3.OldWay Hall.T3.JanFeb Hall.T3.backup Hall.T3.saving-notes "
          "Hall.T3.saving-abCDef Hall.T3~ .Hall.T3.swp")
          .split(u' ') +
      QStringList{mark + "notes", mark + QString(31, u'a'), mark + QString(33, u'a'),
                  mark + QString(32, u'A')};
  for (const QString& name : users + QStringList{dead}) make(name);
  const auto held = make(living);
  ASSERT_EQ(flock(held->handle(), LOCK_EX), 0);
  Menu("mnuSave");
  const QDir dir(folder.path());
  EXPECT_FALSE(dir.exists(dead));
  for (const QString& stays : users + QStringList{living}) {
    EXPECT_TRUE(dir.exists(stays)) << stays.toStdString();
  }
}

}  // namespace

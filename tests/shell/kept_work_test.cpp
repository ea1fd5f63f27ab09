#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>

#include "panel/project_file.h"
#include "panel/recovery_copy.h"
#include "screen_test.h"

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
      copy.Settle();
      PanelRecord.RelayTimerType(5) = static_cast<Int16>(type);
      copy.Update();
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
  PanelRecord.TimerDays(0) = 6;
  Tick();
  EXPECT_EQ(Copies().size(), 1);
  Menu("mnuNew");
  EXPECT_TRUE(Copies().isEmpty()) << "discarded";
  PanelRecord.TimerDays(0) = 7;
  Tick();
  window->mnuExit_Click();
  EXPECT_TRUE(Copies().isEmpty()) << "its own exit";
}

TEST_F(KeptWorkTest, AnEndFromOutsideKeepsTheWorkOfThisInstant) {
  PanelRecord.TimerDays(0) = 5;
  DataChanged = -1;
  window->EndKeepingWork();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(messages.empty()) << "nobody is asked";
  EXPECT_EQ(Copies().size(), 1);
}

TEST_F(KeptWorkTest, WhatADeadProgramLeftIsOfferedTakenUpAndDeleted) {
  const QString hall = folder.filePath("Hall.T3");
  SaveAs("Hall.T3");
  LeaveWork(NoFileName, 2);
  Menu("mnuAbout");
  Label& line = Find<Label>("lblKeptWork");
  ASSERT_TRUE(Shown(line));
  EXPECT_TRUE(line.Caption().startsWith("Unsaved changes of a new project from "));
  Click(Find<Label>("lblDelete"));
  EXPECT_FALSE(Shown(line));
  LeaveWork(hall, 6);
  Menu("mnuAbout");
  EXPECT_TRUE(Find<Label>("lblKeptWork").Caption().startsWith("Unsaved changes of Hall.T3 from "));

  DataChanged = -1;
  answers = {MsgAnswer::No};
  Click(Find<Label>("lblTakeUp"));
  EXPECT_EQ(PanelRecord.RelayTimerType(5), 0) << "the rules of Open";
  Click(Find<Label>("lblTakeUp"));
  EXPECT_EQ(PanelRecord.RelayTimerType(5), 6);
  EXPECT_EQ(CurrentFileName, hall);
  EXPECT_EQ(DataChanged, -1);
  EXPECT_EQ(Copies().size(), 1) << "its own copy until it is saved";
  Menu("mnuSave");
  EXPECT_TRUE(Copies().isEmpty());
  Menu("mnuAbout");
  EXPECT_FALSE(Shown(Find<Label>("lblKeptWork")));

  PanelRecord.TimerDays(0) = 4;
  Tick();
  const QString own = DataPath("Recovery/" + Copies().value(0));
  ASSERT_TRUE(QFile::copy(own, DataPath("Recovery/old.recovery")) &&
              QFile::copy(own + ".lock", DataPath("Recovery/old.recovery.lock")));
  ASSERT_EQ(FindKeptWork().size(), 1U) << "of a dead program that had the number of this one";
  EXPECT_EQ(QFileInfo(FindKeptWork()[0].Path).fileName(), "old.recovery");
  DeleteKeptWork(FindKeptWork()[0]);
  for (const char* half : {"half.recovery.lock", "half.recovery.saving-abCDef"}) {
    ASSERT_TRUE(QFile::copy(own + ".lock",
                            DataPath(QStringLiteral("Recovery/%1").arg(QLatin1String(half)))));
  }
  EXPECT_TRUE(FindKeptWork().empty());
  EXPECT_EQ(QDir(DataPath("Recovery")).entryList(QDir::Files).size(), 2) << "its own two";
  ForgetUnsavedWork();
  EXPECT_TRUE(Copies().isEmpty());

  QFile damaged(DataPath("Recovery/x.recovery"));
  ASSERT_TRUE(damaged.open(QIODevice::WriteOnly) && damaged.write("junk") > 0);
  damaged.close();
  EXPECT_TRUE(FindKeptWork().empty());
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
  answers = {MsgAnswer::No};
  Menu("mnuSave");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].Text.contains("Hall.T3"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.read(1), "x") << "the other's work stays";
  file.close();
  Menu("mnuSave");
  Menu("mnuSave");
  EXPECT_EQ(messages.size(), 2U) << "and asks once";
  QFile::remove(CurrentFileName);
  Menu("mnuSave");
  EXPECT_EQ(messages.size(), 2U) << "nothing is lost where nothing is";
}

TEST_F(KeptWorkTest, ASaveRemovesWhatDeadSavesLeftAndNothingElse) {
  SaveAs("Hall.T3");
  const auto make = [this](const char* name) {
    auto file = std::make_unique<QFile>(folder.filePath(name));
    EXPECT_TRUE(file->open(QIODevice::WriteOnly));
    return file;
  };
  make("Hall.T3.saving-abCDef");
  make("Hall.T3.abCDef");
  make("Hall.T3.Backup");
  make("Hall.T3.aBcDeFg");
  make("Hall.T3.backup");
  make("Hall2.T3.saving-abCDef");
  const auto living = make("Hall.T3.saving-Living");
  ASSERT_EQ(flock(living->handle(), LOCK_EX), 0);
  Menu("mnuSave");
  const QDir dir(folder.path());
  EXPECT_FALSE(dir.exists("Hall.T3.saving-abCDef") || dir.exists("Hall.T3.abCDef"));
  for (const char* stays : {"Hall.T3.backup", "Hall.T3.Backup", "Hall.T3.aBcDeFg",
                            "Hall2.T3.saving-abCDef", "Hall.T3.saving-Living"}) {
    EXPECT_TRUE(dir.exists(stays)) << stays;
  }
}

}  // namespace

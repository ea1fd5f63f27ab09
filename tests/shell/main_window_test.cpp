#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QToolButton>
#include <QTreeWidget>
#include <fstream>

#include "panel/document_fixture.h"
#include "panel/remembered.h"
#include "screen_test.h"

class MainWindowTest : public ScreenTest {
 protected:
  QString Path(const char* name) { return folder.filePath(QString::fromLatin1(name)); }

  void SaveAs(const QString& path) {
    nextFileName = path;
    Menu("mnuSaveAs");
  }

  QString Status(int panel) { return Caption("StatusBar1", panel); }

  QString FrontScreen() {
    for (const ScreenEntry& entry : ScreenTable()) {
      ChildForm* form = window->LoadedForm(entry.Name);
      if (form && Shown(*form)) return form->objectName();
    }
    return {};
  }
};

TEST_F(MainWindowTest, StartsAsANewPanelWithTheDataFoldersMade) {
  EXPECT_EQ(FrontScreen(), "frmT3About");
  EXPECT_EQ(HostSoftwareVersion, "Version 1.02");
  EXPECT_EQ(Status(1), " File Name: None");
  EXPECT_EQ(Status(2), "Disconnected");
  EXPECT_EQ(PanelIOCount(), 4);
  EXPECT_EQ(DataChanged, 0);
  EXPECT_TRUE(QFileInfo(DataPath("Documentation")).isDir());
  EXPECT_EQ(window->size(), QSize(737, 543));
  window->resize(900, 700);
  QApplication::processEvents();
  EXPECT_EQ(window->size(), QSize(737, 543));
}

TEST_F(MainWindowTest, EditsOfTheFirstSecondAreForgottenOnce) {
  StartAnew();
  auto& tmrFix = Find<Timer>("tmrFix");
  ASSERT_TRUE(tmrFix.Enabled());
  EXPECT_EQ(tmrFix.interval(), 1000);
  DataChanged = -1;
  tmrFix.Tick();
  EXPECT_EQ(DataChanged, 0);
  EXPECT_FALSE(tmrFix.Enabled());
}

TEST_F(MainWindowTest, TheMenuTreeHasItsEntriesAndSwitches) {
  QStringList top;
  for (const QAction* action : window->menuBar()->actions()) top << action->text();
  EXPECT_EQ(top.join(u' '), "&File &Connect &Setup &Edit &Document &About");
  EXPECT_FALSE(Find<QAction>("mnuRelayDrive").isEnabled());
  auto* dates = Find<QAction>("mnuOpenCloseTimeSingleDates").associatedObjects().constFirst();
  EXPECT_EQ(qobject_cast<QMenu*>(dates)->title(), "Open And Close Times");

  DisableMainMenus();
  for (const QAction* action : window->menuBar()->actions())
    EXPECT_FALSE(action->isEnabled()) << action->text().toStdString();
  EnableMainMenus();
  for (const QAction* action : window->menuBar()->actions())
    EXPECT_TRUE(action->isEnabled()) << action->text().toStdString();
}

TEST_F(MainWindowTest, AScreenReplacesTheOneBeforeAndItsCloseBoxBringsTheEmptyState) {
  Menu("mnuSetup");
  Menu("mnuRelayGrouping");
  EXPECT_EQ(FrontScreen(), "frmT3RelayGrouping");
  EXPECT_EQ(window->LoadedForm(Screen::Setup), nullptr);
  EXPECT_EQ(Find<QLabel>("lblTitle").text(), "Relay Grouping");
  Click(Find<QToolButton>("cmdClose"));
  EXPECT_EQ(FrontScreen(), "frmT3About");
}

TEST_F(MainWindowTest, SavesAndOpensTheSameBytes) {
  PanelRecord.PanelName = "LOBBY \x80\x81\xff";
  PanelRecord.IOCount(0) = 3;
  PhoneNumber() = "555-1234";
  DataChanged = -1;
  SaveAs(Path("a.T3"));
  EXPECT_EQ(DataChanged, 0);
  EXPECT_EQ(Status(1), " File Name: " + Path("a.T3"));
  EXPECT_EQ(fileRequests[0].FileName, DataPath("*.T3"));

  Menu("mnuNew");
  EXPECT_EQ(CurrentFileName, "None");
  EXPECT_EQ(PhoneNumber(), "");
  nextFileName = Path("a.T3");
  Menu("mnuOpen");
  EXPECT_EQ(fileRequests[1].FileName, "");
  EXPECT_EQ(PanelRecord.PanelName, "LOBBY \x80\x81\xff");
  EXPECT_EQ(PanelIOCount(), 12);
  SaveAs(Path("b.T3"));
  EXPECT_EQ(FileText(Path("a.T3")), FileText(Path("b.T3")));
  EXPECT_TRUE(messages.empty());
}

TEST_F(MainWindowTest, SaveDialogsBeginWithANameInTheProjectsFolder) {
  QDir(folder.path()).mkdir("far");
  const FileRequest project{FileRequest::Kind::Save, ProjectFileFilter, DataPath("*.T3")};
  const FileRequest report{FileRequest::Kind::Save, "Portable Documents (*.PDF)|*.PDF",
                           DataPath("Documentation/*.PDF"), "pdf"};
  // File, panel's name and request; the name and folder offered, and what is saved when the name is
  // typed anew as "School".
  const std::tuple<const char*, const char*, FileRequest, const char*, const char*, const char*>
      cases[] = {
          {nullptr, "", project, "Tamberloom 3.T3", "Orv Tamberloom 3", "School"},
          {nullptr, "HALL A/B", project, "HALL A-B.T3", "Orv Tamberloom 3", "School"},
          {nullptr, "", report, "Tamberloom 3.PDF", "Orv Tamberloom 3/Documentation", "School.pdf"},
          {"far/Yard.2.T3", "HALL", project, "Yard.2.T3", "far", "School"},
          {"far/Yard.2.T3", "HALL", report, "Yard.2.PDF", "far", "School.pdf"},
          {nullptr, "", report, "Tamberloom 3.PDF", "far", "School.pdf"},
      };
  for (const auto& [file, panel, request, name, where, saved] : cases) {
    SCOPED_TRACE(name);
    CurrentFileName = file ? Path(file) : NoFileName;
    PanelRecord.PanelName = panel;
    QTimer::singleShot(0, window.get(), [&, file = file, name = name, where = where] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      auto* box = dialog->findChild<QLineEdit*>();
      EXPECT_EQ(box->text(), name);
      EXPECT_EQ(box->selectedText(), QFileInfo(name).completeBaseName());
      EXPECT_EQ(dialog->directory().path(), Path(where));
      const auto typed = QFileInfo(name).suffix().prepend('.');
      QTest::keyClicks(box, "School" + typed);
      EXPECT_EQ(box->text(), "School" + typed) << "not twice";
      box->setText("School");
      QTest::keyClick(box, file ? Qt::Key_Return : Qt::Key_Escape);
    });
    EXPECT_EQ(shownFileDialog(request), file ? Path(where) + '/' + saved : QString());
  }
}

TEST_F(MainWindowTest, UnsavedEditsAreAskedForOnce) {
  for (const char* entry : {"mnuNew", "mnuOpen", "mnuExit"}) {
    DataChanged = -1;
    PanelRecord.PanelName = "KEPT";
    answers = {MsgAnswer::No};
    Menu(entry);
    EXPECT_EQ(PanelRecord.PanelName, "KEPT");
  }
  answers = {MsgAnswer::No};
  EXPECT_FALSE(window->close());
  ASSERT_EQ(messages.size(), 4U);
  EXPECT_EQ(messages[0].Text, "Discard Any Changes?");
  EXPECT_EQ(messages[0].Icon, MsgIcon::Question);
  EXPECT_TRUE(fileRequests.empty());
  EXPECT_TRUE(window->isVisible());

  Menu("mnuExit");
  EXPECT_EQ(messages.size(), 5U);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindowTest, AProjectDroppedIsOpenedUnderTheRulesOfOpen) {
  PanelRecord.ComPort = 9;
  SaveAs(Path("Hall.T3"));
  PanelRecord.ComPort = 3;
  DataChanged = -1;
  const auto drop = [this](const QString& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window.get(), &enter);
    if (!enter.isAccepted()) return;
    QDropEvent event({}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window.get(), &event);
  };
  drop(Path("Hall.txt"));
  answers = {MsgAnswer::No};
  drop(nextFileName);
  EXPECT_EQ(PanelRecord.ComPort, 3);
  DisableMainMenus();
  drop(nextFileName);
  EXPECT_EQ(messages.size(), 1U) << "not while the menus are off";
  EXPECT_EQ(PanelRecord.ComPort, 3);
  EnableMainMenus();
  drop(nextFileName);
  EXPECT_EQ(PanelRecord.ComPort, 9);
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(MainWindowTest, F6GoesFromTheGridToTheOtherControlsAndBack) {
  Menu("mnuRelayGrouping");
  Cell("lblInclude", 2).setFocus();
  for (const char* to : {"cboGroup", "lblInclude(2)"}) {
    QTest::keyClick(window.get(), Qt::Key_F6);
    EXPECT_EQ(window->focusWidget()->objectName(), to);
  }
}

TEST_F(MainWindowTest, TheMaskOrNoNameDoesNothing) {
  DataChanged = -1;
  for (const QString& name : {QString(), DataPath("*.T3")}) {
    nextFileName = name;
    Menu("mnuSave");
    EXPECT_EQ(CurrentFileName, "None");
    EXPECT_EQ(DataChanged, -1);
  }
  EXPECT_EQ(fileRequests.size(), 2U);
  DataChanged = 0;
  Menu("mnuOpen");
  EXPECT_EQ(CurrentFileName, "None");
}

TEST_F(MainWindowTest, AFileThatCannotBeReadIsNotOverwritten) {
  const QString path = Path("damaged.T3");
  std::ofstream(path.toStdString(), std::ios::binary) << "\xff\xff nonsense";
  PanelRecord.PanelName = "WHOLE";
  nextFileName = path;
  Menu("mnuOpen");
  EXPECT_TRUE(OnlyMessage().contains(path)) << OnlyMessage().toStdString();
  EXPECT_EQ(Status(1), " File Name: " + path);
  EXPECT_EQ(PanelRecord.PanelName, "WHOLE");

  nextFileName.clear();
  Menu("mnuSave");
  EXPECT_EQ(fileRequests.size(), 2U);
  EXPECT_EQ(FileText(path), "\xff\xff nonsense");
  nextFileName = Path("other.T3");
  Menu("mnuSave");
  Menu("mnuSave");
  EXPECT_EQ(fileRequests.size(), 3U);
  EXPECT_EQ(CurrentFileName, Path("other.T3"));
}

TEST_F(MainWindowTest, AFailedSaveTellsAndKeepsTheEditsUnsaved) {
  DataChanged = -1;
  SaveAs(Path("no such folder/a.T3"));
  EXPECT_TRUE(OnlyMessage().contains("no such folder"));
  EXPECT_EQ(DataChanged, -1);
  EXPECT_EQ(CurrentFileName, "None");
}

TEST_F(MainWindowTest, TheNextStartDeletesTheDiagnosticsFile) {
  bool offered = false;
  Link.ShowNetworkDiagnostics = [&](bool visible) { offered = visible; };
  SaveAs(DataPath("tamberloom 3 DIAGNOSTICS.t3"));
  EXPECT_TRUE(offered);
  SaveAs(DiagnosticsFileName());
  EXPECT_TRUE(offered);
  Menu("mnuNew");
  EXPECT_FALSE(offered);
  Link = {};
  StartAnew();
  EXPECT_EQ(QDir(DataFolder()).entryList({"*.T3"}, QDir::Files), QStringList());
}

TEST_F(MainWindowTest, AboutLeadsToRecentProjectsAndOnWithTheOpenOne) {
  PanelRecord.IOCount(0) = 2;
  PanelRecord.RelayName(0) = "HALL";
  SaveAs(Path("yard\tone.T3"));
  SaveAs(Path("School"));
  RememberSent(Path("School"), QDateTime({2026, 11, 24}, {14, 5}), "10.0.0.7");
  Menu("mnuAbout");
  EXPECT_EQ(Text("lblProjectFile"), "School");
  EXPECT_FALSE(Shows("lblProject"));
  QString opened;
  const auto usual = OpenUrlSeam;
  OpenUrlSeam = [&opened](const QString& address) { opened = address; };
  Click(Find<Label>("lblProjectFile"));
  OpenUrlSeam = usual;
  EXPECT_EQ(opened, QFileInfo(CurrentFileName).absolutePath());
  EXPECT_EQ(Captions("lblStep", {0, 1, 5}),
            "8 relays, 1 named|0 groups|Last sent 2026-11-24 14:05 to 10.0.0.7");
  ASSERT_TRUE(Shows("lblRecent", 0));
  EXPECT_FALSE(Shows("lblRecent", 1)) << "what is open is not offered";
  Click(Cell("lblStep", 0));
  EXPECT_TRUE(window->LoadedForm(Screen::EditRelayNames)->isVisible());

  // A pilot alone does nothing, and what the check finds is listed.
  Menu("mnuAbout");
  QApplication::processEvents();
  EXPECT_EQ(Caption("lblStep", 2), "0 inputs at work");
  PanelRecord.InputRelayControl(0, 1) = 1;
  Menu("mnuAbout");
  EXPECT_EQ(Caption("lblStep", 2), "1 input at work");
  Click(Cell("lblStep", 4));
  auto& findings = Find<QTreeWidget>("lstFindings");
  EXPECT_GT(findings.topLevelItemCount(), 0);
  EXPECT_TRUE(findings.hasFocus());

  // A project without the usual ending is found again.
  QTimer::singleShot(0, window.get(), [] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    EXPECT_EQ(dialog->selectedNameFilter(), "All Files (*)");
    dialog->reject();
  });
  shownFileDialog({FileRequest::Kind::Open, ProjectFileFilter, DataPath("*.T3")});

  Menu("mnuAbout");
  Click(Cell("lblRecent", 0));
  EXPECT_EQ(CurrentFileName, Path("yard\tone.T3"));
  QFile::remove(Path("School"));
  Menu("mnuNew");
  QApplication::processEvents();
  EXPECT_FALSE(Shows("lblProjectFile"));
  EXPECT_TRUE(Shows("lblRecent", 0));
  EXPECT_FALSE(Shows("lblRecent", 1)) << "what is gone is not offered";
}

TEST_F(MainWindowTest, RecentProjectsLineUpInTheRoomThereIs) {
  SaveAs(Path("a.T3"));
  SaveAs(Path("a longer name.T3"));
  Menu("mnuNew");
  QApplication::processEvents();
  ASSERT_TRUE(Shows("lblRecentFolder", 1));
  for (const char* part : {"lblRecentFolder", "lblRecentWhen"}) {
    const Label& first = Cell(part, 0);
    const Label& second = Cell(part, 1);
    EXPECT_EQ(first.x(), second.x()) << part;
    EXPECT_EQ(first.width(), second.width()) << part;
    EXPECT_GE(first.width(), first.sizeHint().width()) << part;
  }
  EXPECT_GT(Cell("lblRecentWhen", 0).geometry().right(), window->width() * 3 / 4);
}

TEST_F(MainWindowTest, ALetterGoesToTheNextEntryOfAMenuAndIntoTheOnlyOne) {
  auto* edit = window->findChild<QAction*>("mnuEdit")->menu();
  edit->popup({});
  const auto type = [&](Qt::Key key) {
    QTest::keyClick(edit, key);
    return edit->activeAction() ? edit->activeAction()->objectName() : QString();
  };
  EXPECT_EQ(type(Qt::Key_S), "mnuSwitchInputs");
  EXPECT_EQ(QApplication::activePopupWidget(), edit);
  EXPECT_EQ(type(Qt::Key_S), "mnuSwitchPilots");
  EXPECT_EQ(type(Qt::Key_P), "mnuPresets");
  const auto* presets = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(presets && presets->activeAction());
  EXPECT_EQ(presets->activeAction()->objectName(), "mnuEditPresets");
  edit->hide();
}

#include <QClipboard>
#include <QListWidget>
#include <QLockFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include "document/rules/find_items.h"
#include "line/transfer.h"
#include "panel/panel_image.h"
#include "panel/project_file.h"
#include "screen_test.h"
#include "status/live_panel.h"

namespace {

class FindingsTest : public ScreenTest {
 protected:
  QTreeWidget& List() { return Find<QTreeWidget>("lstFindings"); }
  /// Enter on the first row that has the text in one of its cells.
  void Activate(const QString& text) {
    for (int column = 0; column < List().columnCount(); ++column) {
      const auto found = List().findItems(text, Qt::MatchExactly, column);
      if (found.isEmpty()) continue;
      List().setCurrentItem(found[0]);
      QTest::keyClick(&List(), Qt::Key_Return);
      QApplication::processEvents();
      return;
    }
    ADD_FAILURE() << text.toStdString();
  }
};

TEST_F(FindingsTest, ACheckIsFilteredCopiedAndLeadsToTheItem) {
  PanelRecord.IOCount(0) = 8;
  PanelRecord.TimerGroupControl(6, 3) = 1;
  PanelRecord.InputType(2) = 4;
  FennlinkRecords(26).DeviceType = 3;
  FennlinkRecords(26).DeviceGroupControl(2, 1) = 3;
  DataChanged = 0;
  Menu("mnuDocument");
  Press("cmdCheck");
  const int all = List().topLevelItemCount();
  Choose("cboShown", 1);
  EXPECT_EQ(List().topLevelItemCount(), 3);
  EXPECT_LT(List().topLevelItemCount(), all);
  Press("cmdCopy");
  EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 3);
  EXPECT_TRUE(
      QApplication::clipboard()->text().startsWith("Severity\tItem\tFinding\nerror\tINPUT 03\t"));
  EXPECT_EQ(DataChanged, 0);

  Activate("TIMER 07");
  ASSERT_NE(window->LoadedForm(Screen::TimerToGroupControl), nullptr);
  EXPECT_EQ(Find<ComboBox>("cboTimer").ListIndex(), 6);
  Menu("mnuDocument");
  Press("cmdCheck");
  Activate("FL 1A INPUT 3");
  ASSERT_NE(window->LoadedForm(Screen::FennlinkInputToGroupControl), nullptr);
  EXPECT_EQ(Find<ComboBox>("cboFennlinkDevice").ListIndex(), 26);
  EXPECT_EQ(Find<ComboBox>("cboInput").ListIndex(), 2);
}

TEST_F(FindingsTest, CutActionsLeadToWhereTheTypeIsChosenAndStay) {
  PanelRecord.IOCount(0) = 8;
  PanelRecord.InputType(6) = 1;
  PanelRecord.InputRelayControl(6, 1) = 4;
  FennlinkRecords(26).DeviceType = 3;
  FennlinkRecords(26).DeviceGroupControl(2, 1) = 4;
  for (const auto& [item, screen, focus] :
       {std::tuple{"INPUT 07", Screen::InputOptions, "lblInputType(6)"},
        {"FL 1A INPUT 3", Screen::ConfigureFennlinkDevices, "cboInput16Type(2)"}}) {
    Menu("mnuDocument");
    Press("cmdCheck");
    Choose("cboShown", 1);
    Activate(QString::fromLatin1(item));
    ASSERT_NE(window->LoadedForm(screen), nullptr) << screen;
    EXPECT_EQ(QApplication::focusWidget()->objectName(), focus);
  }
  EXPECT_EQ(PanelRecord.InputRelayControl(6, 1), 4);
  EXPECT_EQ(FennlinkRecords(26).DeviceGroupControl(2, 1), 4);
}

TEST_F(FindingsTest, TheConnectionScreenTellsHowManyErrorsThereAre) {
  Menu("mnuConnect");
  EXPECT_FALSE(Find<Label>("lblErrors").isVisibleTo(&Find<QWidget>("fraOnLineFunctions")));
  PanelRecord.DMXOnLevel = 100;
  PanelRecord.TimerGroupControl(6, 3) = 1;
  Menu("mnuConnect");
  EXPECT_TRUE(Find<Label>("lblErrors").isVisibleTo(&Find<QWidget>("fraOnLineFunctions")));
  EXPECT_EQ(Text("lblErrors"), "The check finds 2 errors; see Document.");
}

TEST_F(FindingsTest, AnItemIsFoundByNameOrNumberWithItsUses) {
  PanelRecord.IOCount(0) = 8;
  PanelRecord.RelayName(7) = "TOILETS";
  PanelRecord.TimerRelayControl(2, 7) = 2;
  PanelRecord.GroupRelayInclude(4, 7) = -1;
  FennlinkRecords(26).DeviceType = 2;
  FennlinkRecords(26).DeviceRelayControl(1, 7) = 3;
  const auto words = [](const char* text) {
    QStringList found;
    for (const FoundItem& item : FindItems(LiveProject, QString::fromLatin1(text)))
      found << item.Words.trimmed();
    return found;
  };
  const QStringList uses = words("toilets");
  EXPECT_EQ(uses.first(), "RELAY 08 TOILETS");
  for (const char* use :
       {"FL 1A INPUT 2 turns on and off RELAY 08 TOILETS", "TIMER 03 turns off RELAY 08 TOILETS",
        "GROUP 05 includes RELAY 08 TOILETS"}) {
    EXPECT_TRUE(uses.contains(use)) << use;
  }
  EXPECT_EQ(words("relay 8"), uses);
  EXPECT_EQ(words("Relay08"), uses);
  EXPECT_EQ(words("fl 1a").first(), "FL 1A");
  EXPECT_EQ(words("r08"), uses);
  PanelRecord.TimerGroupControl(9, 4) = 1;
  const QStringList reaching = words("toilets");
  const auto group = reaching.indexOf("GROUP 05 includes RELAY 08 TOILETS");
  EXPECT_EQ(reaching.value(group + 1), "TIMER 10 turns on GROUP 05") << "through the group";
  EXPECT_EQ(words("fl 1a input 2").first(), "FL 1A INPUT 2");
  EXPECT_EQ(words("dimmer 3").filter("DIMMER 3 OUTPUT").size(), 4);
  EXPECT_EQ(words("D3.2"), QStringList("DIMMER 3 OUTPUT 2"));
  EXPECT_EQ(words("dimmer 0A"), words("dimmer 10")) << "as the screens count";
  EXPECT_EQ(words("dimmer 0A").size(), 4);
  for (const char* item : {"RELAY 12", "GROUP 12", "INPUT 12", "TIMER 12", "PRESET 12", "FL 12",
                           "DIMMER 12 OUTPUT 1"}) {
    EXPECT_TRUE(words("12").contains(item)) << item;
  }
  EXPECT_TRUE(words("nobody").isEmpty());
  EXPECT_TRUE(words(" 0 ").isEmpty());

  QTimer::singleShot(0, [] {
    QWidget* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    auto* text = dialog->findChild<TextBox*>("txtFind");
    auto* list = dialog->findChild<QListWidget*>("lstFound");
    QTest::keyClicks(text, "q");
    EXPECT_EQ(list->item(0)->text(), "Nothing has such a name or number.");
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    QTest::keyClick(text, Qt::Key_Backspace);
    QTest::keyClicks(text, "toil");
    while (!list->currentItem()->text().contains("TIMER 03")) QTest::keyClick(text, Qt::Key_Down);
    QTest::keyClick(text, Qt::Key_Return);
  });
  QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
  ASSERT_NE(window->LoadedForm(Screen::TimerToRelayControl), nullptr);
  EXPECT_EQ(Find<ComboBox>("cboTimer").ListIndex(), 2);
}

TEST_F(FindingsTest, AComparisonLeavesTheProjectAlone) {
  CurrentFileName = nextFileName = folder.filePath("other.T3");
  PanelRecord.RelayName(3) = "HALL";
  WriteProjectFile();
  Menu("mnuDocument");
  Press("cmdCompare");
  EXPECT_EQ(List().topLevelItemCount(), 0);
  EXPECT_EQ(Text("lblFound"), "Both are equal.");
  PanelRecord.RelayName(3) = "STAIRS";
  Press("cmdCompare");
  EXPECT_EQ(List().topLevelItemCount(), 0);
  Find<CheckBox>("chkNames").click();
  ASSERT_EQ(List().topLevelItemCount(), 1);
  EXPECT_EQ(List().topLevelItem(0)->text(3), "STAIRS");
  EXPECT_EQ(List().topLevelItem(0)->text(4), "HALL");
  EXPECT_EQ(PanelRecord.RelayName(3), "STAIRS");
  nextFileName = folder.path();
  Press("cmdCompare");
  EXPECT_EQ(messages.size(), 1U);
}

TEST_F(FindingsTest, DifferencesAreWalkedTakenOverAndLeaveTheListAsTheyAreMended) {
  nextFileName = folder.filePath("office.T3");
  Project other = LiveProject;
  other.Panel.RelayTimerType(1) = 2;
  other.Panel.RelayPowerOnType(0) = 1;
  other.Panel.GroupRelayInclude(6, 3) = -1;
  other.Panel.DateOpenTime(11, 23) = 40;
  other.Panel.TimerTime(4) = 30;
  TcpAddress(other.Panel) = "10.0.0.9";
  WriteProject(nextFileName, other);
  const std::string before = Bytes();
  Menu("mnuDocument");
  Press("cmdCompare");
  EXPECT_EQ(List().headerItem()->text(4), "office.T3");
  ASSERT_EQ(List().topLevelItemCount(), 6);
  const int width = List().viewport()->width();
  EXPECT_LE(List().columnViewportPosition(4) + List().columnWidth(4), width);
  EXPECT_GT(List().columnWidth(4), width / 8);

  const auto step = [this](Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(window.get(), Qt::Key_F8, held);
    QApplication::processEvents();
    return QApplication::focusWidget()->objectName() + ": " + Text("lblMark").left(6);
  };
  EXPECT_EQ(step(), "lblTimerType(1): 1 of 6");
  EXPECT_EQ(step(), "lblPowerOnType(0): 2 of 6");
  EXPECT_EQ(step(), "lblInclude(3): 3 of 6");
  EXPECT_EQ(Chosen("cboGroup"), 6);
  EXPECT_EQ(step(), "lblOpenTime(23): 4 of 6");
  EXPECT_TRUE(Find<OptionButton>("optMonth(11)").Value());
  EXPECT_EQ(step(Qt::ShiftModifier), "lblInclude(3): 3 of 6");
  Click(Cell("lblInclude", 3));
  EXPECT_EQ(step(), "lblOpenTime(23): 3 of 5") << "what is mended leaves the list";

  Menu("mnuDocument");
  ASSERT_EQ(List().topLevelItemCount(), 5);
  EXPECT_EQ(List().indexOfTopLevelItem(List().currentItem()), 2) << "the place stays";
  Choose("cboShown", 4);
  Find<CheckBox>("chkNames").click();
  Find<CheckBox>("chkNames").click();
  EXPECT_EQ(List().topLevelItemCount(), 1);
  EXPECT_EQ(Find<ComboBox>("cboShown").currentText(), "Timers");
  Choose("cboShown", 0);
  Connected = -1;
  List().selectAll();
  Press("cmdTakeOver");
  Connected = 0;
  EXPECT_EQ(TcpAddress(), "") << "the connection that is up stays";
  ASSERT_EQ(List().topLevelItemCount(), 1);
  List().selectAll();
  Press("cmdTakeOver");
  EXPECT_TRUE(LiveProject == other);
  EXPECT_EQ(Text("lblFound"), "Both are equal.");
  for (int i = 0; i < 3; ++i) QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Bytes(), before);
}

TEST_F(FindingsTest, SaveOffersToMergeWhatSomebodyElseHasSavedMeanwhile) {
  const QString file = folder.filePath("shared.T3");
  WriteProject(file, LiveProject);
  window->OpenFile(file);
  Project theirs = LiveProject;
  theirs.Panel.RelayPowerOnType(1) = 1;
  theirs.Panel.RelayTimerType(1) = 4;
  WriteProject(file, theirs);
  Menu("mnuRelayOutputOptions");
  Pick("lblTimerType", 1, "cboNewTimerType", 3);
  Pick("lblPowerOnType", 2, "cboNewPowerOnType", 2);
  const std::string ours = Bytes();
  const auto saved = [&] { return ReadProject(file, NewProject()).Content; };

  Menu("mnuSave");
  EXPECT_TRUE(saved() == theirs);
  nextChoice = "Compare";
  Menu("mnuSave");
  EXPECT_EQ(List().topLevelItemCount(), 3);
  EXPECT_EQ(Bytes(), ours);
  nextChoice = "Merge";
  Menu("mnuSave");
  EXPECT_EQ(
      Text("lblMark"),
      "Merged. What both had changed stays as it is here: settings: 1, first RELAY 02 timer type.");
  EXPECT_EQ(PanelRecord.RelayPowerOnType(1), 1);
  EXPECT_EQ(PanelRecord.RelayPowerOnType(2), 2);
  EXPECT_EQ(PanelRecord.RelayTimerType(1), 3);
  const std::string merged = Bytes();
  nextChoice.clear();
  QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Bytes(), ours);
  Menu("mnuSave");
  EXPECT_TRUE(saved() == theirs) << "undone, the question is asked again";
  QTest::keyClick(window.get(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Bytes(), merged);
  Menu("mnuSave");
  EXPECT_TRUE(saved() == LiveProject);
  QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Bytes(), ours);
  WriteProject(file, theirs);
  QFile::resize(file, 30'000);
  nextChoice = "Merge";
  Menu("mnuSave");
  EXPECT_TRUE(messages.back().Text.contains("ends early"));
  EXPECT_EQ(Bytes(), ours);
  nextChoice = "Save Over It";
  Menu("mnuSave");
  EXPECT_TRUE(saved() == LiveProject);
}

TEST_F(FindingsTest, WhatHasChangedIsToldAndWhatIsSaidToHaveIsNoDifference) {
  Menu("mnuTimerToRelayControl");
  Click(Cell("lblControl", 0));  // marks, and changes nothing
  Find<Timer>("tmrMarks").Tick();
  EXPECT_EQ(Text("lblMark"), "");
  answers = {MsgAnswer::No};
  Menu("mnuNew");
  EXPECT_EQ(messages.back().Detail, "No setting differs from a new panel.");
  Menu("mnuRelayOutputOptions");
  Pick("lblPowerOnType", 2, "cboNewPowerOnType", 1);
  Find<Timer>("tmrMarks").Tick();
  EXPECT_EQ(Text("lblMark"), "Unsaved changes");
  QEvent tip(QEvent::ToolTip);
  QApplication::sendEvent(&Find<Label>("lblMark"), &tip);
  EXPECT_EQ(Find<Label>("lblMark").toolTip(), "RELAY 03 power-on type: On, was Off");
  answers = {MsgAnswer::No};
  Menu("mnuNew");
  EXPECT_EQ(messages.back().Detail, "");
  Menu("mnuDocument");
  Click(Find<Label>("lblChanged"));
  ASSERT_EQ(List().topLevelItemCount(), 1);
  EXPECT_EQ(List().topLevelItem(0)->text(4), "Off");
  CurrentFileName = folder.filePath("a.T3");
  window->FileSave();
  Find<Timer>("tmrMarks").Tick();
  Find<Timer>("tmrMarks").Tick();
  Click(Find<Label>("lblChanged"));
  EXPECT_EQ(List().topLevelItemCount(), 0);
}

TEST_F(FindingsTest, TheProjectIsRehearsedInThePanelsWindow) {
  const QTemporaryDir programs;
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", programs.path().toLocal8Bit());
  const auto restore = qScopeGuard([&] { qputenv("PATH", path); });
  const QString memory = DataPath("Rehearsal.memory");
  const auto bytes = [](const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  PanelImage(0x9FFF) = 7;  // of an earlier transfer
  Menu("mnuDocument");
  Press("cmdRehearse");
  EXPECT_EQ(Text("lblFound"), "The simulated panel is not installed.");
  EXPECT_FALSE(QFile::exists(memory));

  const QString program = programs.filePath("tamberloom3-panel");
  const QString started = programs.filePath("started");
  QFile script(program);
  ASSERT_TRUE(script.open(QIODevice::WriteOnly));
  script.write("#!/bin/sh\necho \"$@\" >>'" + started.toLocal8Bit() + "'\n");
  script.close();
  script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  PanelRecord.RelayName(4) = "FOYER";
  Press("cmdRehearse");
  EXPECT_EQ(Text("lblFound"), "The project runs in a window of its own.");
  EXPECT_EQ(bytes(memory).size(), PanelImageSize);
  EXPECT_EQ(bytes(memory).mid(0x1420 + 40, 6), "FOYER ");
  EXPECT_EQ(bytes(memory).back(), 0);
  EXPECT_EQ(PanelImage(0x9FFF), 7);
  ASSERT_TRUE(QTest::qWaitFor([&] { return bytes(started).endsWith('\n'); }));
  const QRect place = window->frameGeometry();
  EXPECT_EQ(QString::fromLocal8Bit(bytes(started)),
            QStringLiteral("--window --follow %1 --beside %2,%3,%4,%5 --until %6\n")
                .arg(memory)
                .arg(place.x())
                .arg(place.y())
                .arg(place.width())
                .arg(place.height())
                .arg(QCoreApplication::applicationPid()));
  EXPECT_EQ(bytes(memory + ".title"), "\n") << "a project without a name";

  // The window is on show and watches the file.
  QLockFile lock(memory + ".lock");
  ASSERT_TRUE(lock.tryLock());
  PanelRecord.RelayName(4) = "HALL";
  CurrentFileName = "/srv/School.T3";
  Press("cmdRehearse");
  EXPECT_EQ(bytes(memory + ".title"), "School\n");
  EXPECT_EQ(Text("lblFound"), "The panel's window has the new settings.");
  EXPECT_EQ(bytes(memory).mid(0x1420 + 40, 6), "HALL  ");
  lock.unlock();

  QFile::remove(memory);
  ASSERT_TRUE(QDir().mkdir(memory));
  Press("cmdRehearse");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].Text.endsWith("it is a folder."));
}

class ComparePanelTest : public LivePanelTest {};

TEST_F(ComparePanelTest, ThePanelsMemoryIsReadAndTheProjectStays) {
  ASSERT_EQ(FetchImage(PanelImage, {}), TransferOutcome::Complete);
  IncludeNamesInUpload = -1;
  ApplyPanelImage();
  IncludeNamesInUpload = 0;
  const PanelImageType image = PanelImage;
  Open(Screen::Document);
  Press("cmdComparePanel");
  EXPECT_EQ(Text("lblFound"), "Both are equal.");
  PanelRecord.RelayPowerOnType(2) = 1;
  PanelRecord.OffHoursSweepRelay(1) = PanelRecord.OffHoursSweepRelay(1) != 0 ? 1 : 0;
  Press("cmdComparePanel");
  auto& list = Find<QTreeWidget>("lstFindings");
  ASSERT_EQ(list.topLevelItemCount(), 1);
  EXPECT_EQ(list.topLevelItem(0)->text(2), "power-on type");
  EXPECT_EQ(PanelRecord.RelayPowerOnType(2), 1);
  EXPECT_TRUE(PanelImage == image);
  EXPECT_TRUE(MenusOn());

  answer = [](const std::string&) { return std::optional<std::string>(); };
  Press("cmdComparePanel");
  EXPECT_EQ(Connected, 0);
  EXPECT_NE(window->LoadedForm(Screen::Connect), nullptr);
}

}  // namespace

#include <QClipboard>
#include <QContextMenuEvent>

#include "line/scripted_transport.h"
#include "nonsense_panel.h"
#include "screen_test.h"
#include "shell/controls/row_grid.h"

// Values of a grid's cells are copied, pasted and filled down by what a user's clicks run.

class CopyFillTest : public ScreenTest {
 protected:
  CopyFillTest() { PanelRecord.IOCount(0) = 8; }

  void Focus(const char* name, int index) {
    Find<QWidget>(QString::fromLatin1(name), index).setFocus();
  }
  void SelectDown(int rows) {
    for (int row = 0; row < rows; ++row) Key(Qt::Key_Down, Qt::ShiftModifier);
  }
  void Paste(const QString& text) {
    QApplication::clipboard()->setText(text);
    Key(Qt::Key_V, Qt::ControlModifier);
  }
  /// What stands beside the caption, but for the mark of unsaved changes.
  QString News() { return Text("lblMark").remove(QRegularExpression("^Unsaved changes$")); }
};

TEST_F(CopyFillTest, EveryCellTakesWhatItShows) {
  FennlinkRecords(2).DeviceType = 4;
  int cells = 0;
  OnEveryScreen([&](Screen, ChildForm& form) {
    ChooseDevice(2);
    const std::string before = Bytes();
    for (Label* label : form.findChildren<Label*>()) {
      const bool inGrid = qobject_cast<RowGrid*>(label->parentWidget()) != nullptr;
      if (!inGrid || !Shown(*label) || !label->Click || label->Act() == CellAct::Press) continue;
      label->setFocus();
      ASSERT_TRUE(label->hasFocus());
      for (const Qt::Key key : {Qt::Key_C, Qt::Key_V}) Key(key, Qt::ControlModifier);
      EXPECT_EQ(News(), "Pasted") << label->objectName().toStdString();
      ++cells;
    }
    EXPECT_TRUE(Bytes() == before);
  });
  EXPECT_GT(cells, 500);
}

TEST_F(CopyFillTest, OneValueFillsWhatIsSelectedAndSeveralGoDown) {
  Menu("mnuRelayOutputOptions");
  const QString& pulsed = Find<InPlaceList>("cboNewTimerType").List(3);
  PanelRecord.RelayPowerOnType(2) = 1;
  Focus("lblTimerType", 2);
  SelectDown(3);
  Paste(pulsed);
  for (int row = 1; row < 7; ++row) {
    EXPECT_EQ(PanelRecord.RelayTimerType(row), row >= 2 && row <= 5 ? 3 : 0) << row;
  }
  EXPECT_EQ(DataChanged, -1);
  EXPECT_TRUE(Cell("lblTimerType", 5).hasFocus());

  Key(Qt::Key_Home);
  Paste(Find<InPlaceList>("cboNewTimerType").List(1) + "\r\n" + pulsed + "\r\n");
  EXPECT_EQ(PanelRecord.RelayTimerType(0), 1);
  EXPECT_EQ(PanelRecord.RelayTimerType(1), 3);

  SelectDown(2);
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(2), 1);

  Key(Qt::Key_Home);
  Focus("lblRelayName", 0);
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "Blink")
      << "a name stands for its row's first value";
  Paste(pulsed);
  EXPECT_EQ(PanelRecord.RelayTimerType(0), 3);
  SelectDown(1);
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(1), 3);
}

TEST_F(CopyFillTest, ColumnsGoToTheRightAndTimesAreReadAsPeopleWriteThem) {
  const auto& p = PanelRecord;
  Menu("mnuOpenCloseTimeSingleDates");
  Focus("lblOpenTime", 3);
  Paste("12:00A\t12:15A\n7:00 AM\t19:00\n");
  EXPECT_EQ(News(), "4 cells filled");
  EXPECT_EQ(p.DateOpenTime(0, 3), 0);
  EXPECT_EQ(p.DateCloseTime(0, 3), 1);
  EXPECT_EQ(p.DateOpenTime(0, 4), 28);
  EXPECT_EQ(p.DateCloseTime(0, 4), 76);
  Focus("lblOpenTime", 5);
  Paste("7:00\t--:--");
  EXPECT_TRUE(News().contains("did not stay: 1, first \"7:00\" in Jan 06, Open."))
      << qPrintable(News());

  Menu("mnuInputActiveTimes");
  Focus("lblInputEnableTime", 2);
  // As people write them, and the quarter hours.
  for (const QString& time :
       QStringLiteral("7:00 AM=28,8:15A=33,09:30=38,19:00=76,7 p.m.=76,12:45 am=3,12:00=48,"
                      "07:00:00 AM=28,0:00=0,11:45P=95")
           .split(u',')) {
    Paste(time.section(u'=', 0, 0));
    EXPECT_EQ(p.InputEnableTime(2), time.section(u'=', 1).toInt()) << time.toStdString();
  }
  const std::string before = Bytes();
  for (const char* text : {"7:10", "25:00", "13:00 PM", "7", "0:30 AM", "7:00\t8:00\t9:00"}) {
    Paste(QString::fromLatin1(text));
    EXPECT_TRUE(News().startsWith("Nothing was pasted: ")) << qPrintable(News());
  }
  EXPECT_TRUE(News().contains("3 columns are more than the 2")) << qPrintable(News());
  Focus("lblInputDisableTime", 2);
  Paste("7:00\t8:00");
  EXPECT_TRUE(News().contains("2 columns are more than the 1")) << qPrintable(News());
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(CopyFillTest, ARefusedPasteChangesNothingAndSaysWhatMayStandThere) {
  HandClock clock;
  Menu("mnuInputToRelayControl");
  Focus("lblControl", 0);
  DataChanged = 0;
  Paste(Find<InPlaceList>("cboControl").List(2) + "\nSing");
  EXPECT_EQ(
      News(),
      "Nothing was pasted: \"Sing\" is not a choice of Relay 02 (No Action, On Only, Off Only, On "
      "And Off, Blink Alert).");
  clock.NowMs += 60'000;
  Find<Timer>("tmrMarks").Tick();
  EXPECT_TRUE(News().contains("Sing")) << "it stays until the next key";
  Key(Qt::Key_Down);
  EXPECT_EQ(News(), "");
  Focus("lblControl", PanelIOCount() - 1);
  Paste("No Action\nNo Action");
  EXPECT_TRUE(News().contains("1 rows")) << qPrintable(News());
  QApplication::clipboard()->clear();
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.InputRelayControl(0, 0), 0);
  EXPECT_EQ(DataChanged, 0);

  FennlinkRecords(2).DeviceType = 4;
  Menu("mnuFennlinkPilots");
  Choose("cboFennlinkDevice", 2);
  Focus("lblPilotNumber", 0);
  Paste("7");
  EXPECT_TRUE(News().contains("(On, Off).")) << qPrintable(News());
  EXPECT_EQ(FennlinkRecords(2).DevicePilot(0), 0);
  Paste("Off");
  EXPECT_EQ(DataChanged, 0) << "it is so already";
  Paste("On");
  EXPECT_EQ(FennlinkRecords(2).DevicePilot(0), 1);
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(CopyFillTest, AllRowsGoFromOneItemToAnother) {
  for (int relay = 0; relay < PanelIOCount(); ++relay) {
    PanelRecord.PresetRelayControl(0, relay) = static_cast<Int16>(relay % 3);
  }
  Menu("mnuEditPresets");
  Focus("lblRelayControl", 9);
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_PageDown}) Key(key, Qt::ControlModifier);
  EXPECT_EQ(Chosen("cboPresetNumber"), 1);
  Focus("lblRelayControl", 0);
  Key(Qt::Key_V, Qt::ControlModifier);
  for (int relay = 0; relay < PanelIOCount(); ++relay) {
    EXPECT_EQ(PanelRecord.PresetRelayControl(1, relay), relay % 3) << relay;
  }
}

TEST_F(CopyFillTest, NamesComeFromASpreadsheetThroughTheKeyFilter) {
  Menu("mnuEditRelayNames");
  const auto& name = PanelRecord.RelayName;
  Focus("txtRelayName", 1);
  Paste(u"foyer, left\nStair_2\nBüro 1\nCafé – Straße\nŁØß\n\n"_qs);
  EXPECT_EQ(name(1), "FOYER LEFT");
  EXPECT_EQ(name(2), "STAIR2");
  EXPECT_EQ(name(3), "BURO 1");
  EXPECT_EQ(name(4), "CAFE - STRASSE");
  EXPECT_EQ(name(5), "LOSS");
  EXPECT_EQ(name(6), "");
  EXPECT_TRUE(News().startsWith("6 cells filled. Characters left out: 2, first \",\" in Relay 02"))
      << qPrintable(News());
  Paste(u"\"Hall\nleft\"\nAnnex"_qs);
  EXPECT_EQ(name(1), "HALL");
  EXPECT_EQ(name(2), "ANNEX") << "a line end within a value starts no row";
  EXPECT_TRUE(News().contains("left out: 4, first \"l\"")) << qPrintable(News());
  Paste("one, as told\r\n");
  EXPECT_TRUE(Find<TextBox>("txtRelayName(1)").Text().contains(u','));
  EXPECT_EQ(name(1).find_first_of("\r\n"), std::string::npos);
}

TEST_F(CopyFillTest, ADragSelectsAndIsNoClick) {
  Menu("mnuRelayGrouping");
  Label& first = Cell("lblInclude", 2);
  Label& last = Cell("lblInclude", 4);
  const auto drag = [&](QEvent::Type type, Label& under, Qt::MouseButtons held) {
    const QPoint at = under.mapToGlobal(under.rect().center());
    QMouseEvent event(type, first.mapFromGlobal(at), at, Qt::LeftButton, held, {});
    QApplication::sendEvent(&first, &event);
  };
  Choose("cboGroup", 0);
  PanelRecord.GroupRelayInclude(0, 2) = 5;
  Choose("cboGroup", 0);
  drag(QEvent::MouseButtonPress, first, Qt::LeftButton);
  drag(QEvent::MouseMove, last, Qt::LeftButton);
  drag(QEvent::MouseButtonRelease, first, Qt::NoButton);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(0, 2), 5);
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(0, 3), -1);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(0, 4), -1);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(0, 5), 0);

  QTest::mouseClick(&first, Qt::RightButton);
  QContextMenuEvent menu(QContextMenuEvent::Mouse, first.rect().center(),
                         first.mapToGlobal(first.rect().center()));
  QApplication::sendEvent(&first, &menu);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_C);
  EXPECT_EQ(QApplication::clipboard()->text(), "Yes\nYes\nYes");
  first.setFocus();
  Paste("No");
  EXPECT_EQ(PanelRecord.GroupRelayInclude(0, 2), 0) << "a click would turn its bits";
}

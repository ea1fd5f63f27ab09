#include <QClipboard>
#include <QContextMenuEvent>

#include "nonsense_panel.h"
#include "screen_test.h"
#include "shell/cell_value.h"
#include "shell/row_grid.h"

// Values of a grid's cells are copied, pasted and filled down by what a user's clicks run.

namespace {

class CopyFillTest : public ScreenTest {
 protected:
  CopyFillTest() { PanelRecord.IOCount(0) = 8; }

  void Focus(const char* name, int index) {
    Find<QWidget>(QString::fromLatin1(name), index).setFocus();
  }
  void Key(int key, Qt::KeyboardModifiers held) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), held);
  }
  void SelectDown(int rows) {
    for (int row = 0; row < rows; ++row) Key(Qt::Key_Down, Qt::ShiftModifier);
  }
  void Paste(const QString& text) {
    QApplication::clipboard()->setText(text);
    Key(Qt::Key_V, Qt::ControlModifier);
  }
  QString News() { return Text("lblMark"); }
};

TEST_F(CopyFillTest, EveryListHoldsWhatItsCellsShow) {
  int cells = 0;
  for (const ScreenEntry& entry : ScreenTable()) {
    if (!entry.Create) continue;
    ChildForm* form = window->ShowForm(entry.Name);
    QApplication::processEvents();
    for (Label* label : form->findChildren<Label*>()) {
      if (!Shown(*label) || !CellValue(*label) || label->Act() != CellAct::OpensList) continue;
      EXPECT_TRUE(CellTakes(*label, *CellValue(*label), {}))
          << entry.Name << ' ' << label->objectName().toStdString();
      ++cells;
    }
    window->UnloadAllForms();
  }
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

  Key(Qt::Key_Home, Qt::NoModifier);
  Paste(Find<InPlaceList>("cboNewTimerType").List(1) + "\r\n" + pulsed + "\tmore\r\n");
  EXPECT_EQ(PanelRecord.RelayTimerType(0), 1);
  EXPECT_EQ(PanelRecord.RelayTimerType(1), 3);

  SelectDown(2);
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(2), 1);
}

TEST_F(CopyFillTest, ARefusedPasteChangesNothing) {
  Menu("mnuInputToRelayControl");
  Focus("lblControl", 0);
  DataChanged = 0;
  Paste(Find<InPlaceList>("cboControl").List(2) + "\nSing");
  EXPECT_TRUE(News().contains("\"Sing\"") && News().contains("Relay 02")) << qPrintable(News());
  Focus("lblControl", PanelIOCount() - 1);
  Paste("No Action\nNo Action");
  EXPECT_TRUE(News().contains("1 rows")) << qPrintable(News());
  EXPECT_EQ(PanelRecord.InputRelayControl(0, 0), 0);
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(CopyFillTest, AllRowsGoFromOneItemToAnother) {
  for (int relay = 0; relay < PanelIOCount(); ++relay) {
    PanelRecord.PresetRelayControl(0, relay) = static_cast<Int16>(relay % 3);
  }
  Menu("mnuEditPresets");
  Focus("lblRelayControl", 9);
  Key(Qt::Key_A, Qt::ControlModifier);
  Key(Qt::Key_C, Qt::ControlModifier);
  Key(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Find<ComboBox>("cboPresetNumber").ListIndex(), 1);
  Focus("lblRelayControl", 0);
  Key(Qt::Key_V, Qt::ControlModifier);
  for (int relay = 0; relay < PanelIOCount(); ++relay) {
    EXPECT_EQ(PanelRecord.PresetRelayControl(1, relay), relay % 3) << relay;
  }
}

TEST_F(CopyFillTest, NamesComeFromASpreadsheetThroughTheKeyFilter) {
  Menu("mnuEditRelayNames");
  Focus("txtRelayName", 1);
  Paste("foyer, left\nStair_2\n\n");
  EXPECT_EQ(PanelRecord.RelayName(1), "FOYER LEFT");
  EXPECT_EQ(PanelRecord.RelayName(2), "STAIR2");
  EXPECT_EQ(PanelRecord.RelayName(3), "");
  Paste("one, as told");
  EXPECT_TRUE(Find<TextBox>("txtRelayName(1)").Text().contains(u','));
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
  PanelRecord.GroupRelayInclude(0, 2) = -1;
  Choose("cboGroup", 0);
  drag(QEvent::MouseButtonPress, first, Qt::LeftButton);
  drag(QEvent::MouseMove, last, Qt::LeftButton);
  drag(QEvent::MouseButtonRelease, first, Qt::NoButton);
  EXPECT_EQ(PanelRecord.GroupRelayInclude(0, 2), -1);
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
}

}  // namespace

#include <QClipboard>

#include "screen_test.h"

class NamesTest : public ScreenTest {
 protected:
  QString Display() {
    QString text;
    for (int i = 0;; ++i) {
      auto* cell = window->findChild<Label*>(QStringLiteral("lblPanelChar(%1)").arg(i));
      if (!cell) return text;
      text += cell->Caption();
    }
  }
};

TEST_F(NamesTest, TypingPassesTheFilterAndAPasteDoesNot) {
  Menu("mnuEditRelayNames");
  TextBox& box = Find<TextBox>("txtRelayName", 1);
  Click(box);
  EXPECT_EQ(Display(), "RELAY 02");
  box.selectAll();
  QTest::keyClicks(&box, "relay-1,_;[{~'&(a):?.*#@/ 9");
  EXPECT_EQ(PanelRecord.RelayName(1), "RELAY-1(A):?.*#@/ 9");
  EXPECT_EQ(Display(), "RELAY-1(A)");
  box.selectAll();
  QApplication::clipboard()->setText(QStringLiteral("Größe, €_"));
  QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayName(1),
            "Gr\xF6\xDF"
            "e, \x80_");
}

TEST_F(NamesTest, OnlyRelaysAndInputsFollowTheInstalledPoints) {
  for (const QString item : {"Relay", "Input", "Group", "Timer", "Preset"}) {
    Menu(("mnuEdit" + item + "Names").toLatin1());
    EXPECT_EQ(Shows("txt" + item + "Name", 4), item != "Relay" && item != "Input");
    EXPECT_EQ(Caption("lbl" + item + "Number", 9), item + " 10");
    QTest::keyClick(&Find<TextBox>("txt" + item + "Name", 3), Qt::Key_Return);
    EXPECT_EQ(Display(), item.toUpper() + " 04");
  }
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(NamesTest, DevicesCountInHexadecimalAndShowEightLetters) {
  FennlinkRecords(64).DeviceName = "LONG DEVICE NAME";
  Menu("mnuEditFennlinkNames");
  EXPECT_EQ(Caption("lblFennlinkNumber", 9), "FL Node 0A");
  TextBox& box = Find<TextBox>("txtFennlinkName", 63);
  Click(box);
  EXPECT_EQ(Display(), "LONG DEV");
  QTest::keyClick(&box, Qt::Key_End);
  QTest::keyClicks(&box, "s");
  EXPECT_EQ(FennlinkRecords(64).DeviceName, "LONG DEVICE NAMES");
}

TEST_F(NamesTest, TheDefaultPanelNameHidesTheOwnOne) {
  Menu("mnuEditPanelName");
  auto& box = Find<TextBox>("txtPanelName");
  EXPECT_FALSE(Shown(box) || Shows("lblPanelName") || Shows("lblPanelChar", 0));
  Click(Find<CheckBox>("chkDefaultPanelName"));
  EXPECT_TRUE(Shown(box));
  EXPECT_EQ(DataChanged, 0);
  QTest::keyClicks(&box, "warehouse north and south");
  EXPECT_EQ(PanelRecord.PanelName, "WAREHOUSE NORTH AND SOUTH");
  EXPECT_EQ(Display(), "WAREHOUSE NORTH AN");
  DataChanged = 0;
  Menu("mnuEditGroupNames");
  Menu("mnuEditPanelName");
  EXPECT_EQ(DataChanged, 0);
  EXPECT_TRUE(Find<TextBox>("txtPanelName").hasFocus())
      << "Space on the other would erase the name";
}

#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>

#include "screen_test.h"

// What every screen relies on: when a control runs its handler, and what a failing handler does.

class ControlsTest : public ScreenTest {
 protected:
  int runs = 0;
  std::function<void()> count = [this] { ++runs; };
};

TEST_F(ControlsTest, ListsRunTheirHandlerOnADifferentValueAndOnAnyChoice) {
  ComboBox list;
  list.Click = count;
  list.SetItems({"A", "B", "C"});
  EXPECT_EQ(list.ListIndex(), -1);
  list.SetListIndex(1);
  list.SetListIndex(1);
  EXPECT_EQ(runs, 1);
  Q_EMIT list.activated(1);
  EXPECT_EQ(runs, 2);
  for (const int outside : {3, -1, 32767}) {
    list.SetListIndex(outside);
    EXPECT_EQ(list.ListIndex(), -1);
  }
  EXPECT_EQ(runs, 2);
  EXPECT_EQ(list.List(9), "");
}

TEST_F(ControlsTest, BarsRunTheirHandlerOnADifferentValueWithinTheirRange) {
  ScrollBar bar;
  bar.setRange(0, 255);
  bar.Change = count;
  bar.SetValue(300);
  EXPECT_EQ(runs, 0);
  EXPECT_EQ(bar.Value(), 255);
  bar.SetValue(254);
  bar.SetValue(254);
  EXPECT_EQ(runs, 1);
}

TEST_F(ControlsTest, TextsRunTheirHandlerAlways) {
  TextBox box;
  box.Change = count;
  for (int i = 0; i < 2; ++i) box.SetText("same");
  EXPECT_EQ(runs, 2);
  QTest::keyClick(&box, Qt::Key_Backspace);
  EXPECT_EQ(box.Text(), "sam");
  EXPECT_EQ(runs, 3);
}

TEST(TextBoxTest, ATextWithoutTheRoomEndsInDots) {
  for (const bool fits : {true, false}) {
    TextBox box;
    QLineEdit plain;
    for (QLineEdit* one : std::initializer_list<QLineEdit*>{&box, &plain}) {
      one->setText(fits ? "HALLS on" : "turns HALLS, OFFICES and 4 more on");
      one->setCursorPosition(0);
      one->resize(100, 24);
    }
    EXPECT_EQ(box.grab().toImage() == plain.grab().toImage(), fits);
  }
}

TEST_F(ControlsTest, NothingBringsAControlCharacterIntoAText) {
  const std::pair<QString, QString> texts[] = {{"FOYER\n", "FOYER"},
                                               {"FOYER\r\nLEFT", "FOYER"},
                                               {"A\tB\x07_\x7F", "AB_"},
                                               {QString("A") + QChar(0x2028) + "B", "A"},
                                               {QString("A") + QChar(0x9D), "A"},
                                               {"\n<", ""}};
  const auto paste = [](TextBox& box, const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
  };
  const auto commit = [](TextBox& box, const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&box, &event);
  };
  const auto drop = [](TextBox& box, const QString& text) {
    QMimeData data;
    data.setText(text);
    const QPoint at = box.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&box, &enter);
    QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&box, &event);
  };
  TextBox box;
  box.resize(300, 30);
  std::vector<QString> stored;
  box.Change = [&] { stored.push_back(box.Text()); };
  for (const auto& way :
       std::vector<std::function<void(TextBox&, const QString&)>>{paste, commit, drop}) {
    for (const auto& [text, arrives] : texts) {
      box.SetText("<\x01>");
      box.setCursorPosition(1);
      stored.clear();
      way(box, text);
      EXPECT_EQ(box.Text(), "<" + arrives + "\x01>") << "only what comes in is cleaned";
      EXPECT_EQ(box.cursorPosition(), 1 + arrives.size());
      EXPECT_EQ(stored, std::vector{box.Text()});
    }
  }
}

TEST_F(ControlsTest, ASecondFastPressCountsAsAClick) {
  Label cell;
  cell.Click = count;
  cell.resize(50, 20);
  QTest::mouseClick(&cell, Qt::LeftButton);
  QTest::mouseDClick(&cell, Qt::LeftButton);
  QTest::mouseRelease(&cell, Qt::LeftButton);
  EXPECT_EQ(runs, 2);
  QTest::mousePress(&cell, Qt::LeftButton);
  QTest::mouseRelease(&cell, Qt::LeftButton, {}, QPoint(90, 90));
  EXPECT_EQ(runs, 2);
}

TEST_F(ControlsTest, ARunTimeFailureIsOneMessageAndTheProgramGoesOn) {
  Button button("b");
  CheckBox box("c");
  box.Click = [] { PanelRecord.IOCount(13) = 1; };
  button.Click = [&] {
    box.SetValue(1);
    ++runs;
  };
  button.click();
  EXPECT_EQ(runs, 0);
  EXPECT_TRUE(OnlyMessage().contains("13"));
  EXPECT_EQ(messages[0].Icon, MsgIcon::Critical);
}

TEST_F(ControlsTest, AScreenClosedInsideItsOwnHandlerLivesUntilTheHandlerEnds) {
  Menu("mnuSetup");
  QPointer<ChildForm> setup = window->LoadedForm(Screen::Setup);
  bool alive = false;
  RunHandler([&] {
    UnloadAllForms();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    RunHandler([] {});
    alive = !setup.isNull();
  });
  EXPECT_TRUE(alive);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(setup.isNull());
}

#include "shell/window/history.h"

#include <QClipboard>
#include <QRandomGenerator>
#include <QToolButton>
#include <map>

#include "panel/live_dimmers.h"
#include "panel/patch.h"
#include "screen_test.h"

// The way back, whatever was done.

namespace {

class HistoryTest : public ScreenTest {
 protected:
  ~HistoryTest() override { MonotonicMsSeam = shownClock; }

  void Undo() { QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier); }
  void Redo() { QTest::keyClick(window.get(), Qt::Key_Y, Qt::ControlModifier); }
  QUndoStack& Steps() { return window->Steps().Stack(); }
  QString Tells(const char* button) { return Find<QToolButton>(button).accessibleName(); }
  Screen Front() {
    for (auto* form : window->findChildren<ChildForm*>()) {
      if (form->isVisible()) return form->Which();
    }
    return Screen::None;
  }
  void Type(const char* keys) { QTest::keyClicks(QApplication::focusWidget(), keys); }

  std::function<qint64()> shownClock = MonotonicMsSeam;
};

TEST_F(HistoryTest, AStepIsTakenBackWhereverOneStandsAndShownWhereItIs) {
  Menu("mnuRelayOutputOptions");
  Pick("lblPowerOnType", 2, "cboNewPowerOnType", 1);
  const std::string changed = Bytes();
  EXPECT_EQ(Tells("cmdUndo"), "Undo RELAY 03 power-on type: On");
  Menu("mnuInputToRelayControl");
  Choose("cboInput", 3);
  ASSERT_EQ(Steps().count(), 1) << "to open a screen and to choose an item are no steps";
  DataChanged = 0;
  Undo();
  EXPECT_EQ(PanelRecord.RelayPowerOnType(2), 0);
  EXPECT_EQ(DataChanged, -1);
  EXPECT_EQ(Front(), Screen::RelayOutputOptions);
  EXPECT_EQ(QApplication::focusWidget(), &Cell("lblPowerOnType", 2));
  EXPECT_EQ(Caption("lblPowerOnType", 2), "Off ");
  EXPECT_EQ(Text("lblMark"), "Undone: RELAY 03 power-on type: On");
  EXPECT_FALSE(Find<QToolButton>("cmdUndo").isEnabled());
  Undo();
  QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Bytes(), changed);
  Click(Find<QToolButton>("cmdUndo"));
  EXPECT_EQ(Tells("cmdRedo"), "Redo RELAY 03 power-on type: On");
  Pick("lblTimerType", 0, "cboNewTimerType", 2);
  EXPECT_FALSE(Steps().canRedo()) << "a new edit drops what was undone";

  Menu("mnuSave");
  EXPECT_EQ(Steps().count(), 1);
  Menu("mnuNew");
  EXPECT_EQ(Steps().count(), 0);
}

TEST_F(HistoryTest, TheSelectorStaysWhereTheChangeShows) {
  Menu("mnuRelayGrouping");
  for (const int group : {7, 9}) {
    Choose("cboGroup", group);
    Click(Cell("lblInclude", 2));
  }
  Undo();
  EXPECT_EQ(Chosen("cboGroup"), 9);
  EXPECT_EQ(Caption("lblInclude", 2), "No");
  Choose("cboGroup", 4);
  Undo();
  EXPECT_EQ(Chosen("cboGroup"), 7);
  EXPECT_EQ(QApplication::focusWidget(), &Cell("lblInclude", 2));
}

TEST_F(HistoryTest, OfATimerThePartIsFocusedThatChanged) {
  Menu("mnuConfigureTimers");
  Choose("cboNormalTimeHour", 7);
  Choose("cboNormalTimeHour", 8);
  Click(Find<CheckBox>("chkDays", 2));
  Find<ComboBox>("cboTimerNumber").setFocus();
  Undo();
  EXPECT_EQ(QApplication::focusWidget(), &Find<CheckBox>("chkDays", 0));
  Undo();
  EXPECT_EQ(QApplication::focusWidget(), &Find<ComboBox>("cboNormalTimeHour"));
  Click(Find<OptionButton>("optTimeType(1)"));
  Choose("cboMinuteFromAstro", 3);
  Undo();
  EXPECT_EQ(QApplication::focusWidget(), &Find<ComboBox>("cboMinuteFromAstro"));
}

TEST_F(HistoryTest, KeysAreOneStepUntilTheFieldIsLeftOrTheyPause) {
  qint64 ms = 0;
  MonotonicMsSeam = [&ms] { return ms; };
  PanelRecord.RelayName(0) = "OLD";
  Menu("mnuNew");
  Menu("mnuEditRelayNames");
  Find<TextBox>("txtRelayName", 0).setFocus();
  Type("AB");
  ms += 1900;
  Type("C");
  EXPECT_EQ(Steps().count(), 1);
  EXPECT_EQ(Tells("cmdUndo"), "Undo RELAY 01 name: ABC");
  ms += 2100;
  Type("D");
  EXPECT_EQ(Steps().count(), 2);
  Key(Qt::Key_Down);
  Type("X");
  Key(Qt::Key_Backspace);
  Type("Y");
  EXPECT_EQ(Steps().count(), 3);
  Key(Qt::Key_Up);
  Type("E");
  EXPECT_EQ(Steps().count(), 4) << "the field was left between";
  Key(Qt::Key_Z, Qt::ControlModifier);
  Key(Qt::Key_Z, Qt::ControlModifier);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayName(0), "ABC");
  EXPECT_EQ(Find<TextBox>("txtRelayName", 0).Text(), "ABC");
  EXPECT_EQ(PanelRecord.RelayName(1), "RELAY 02");

  Find<TextBox>("txtRelayName", 3).setFocus();
  const int before = Steps().index();
  Find<TextBox>("txtRelayName", 3).end(false);
  Type("Q");
  Key(Qt::Key_Backspace);
  EXPECT_EQ(Steps().index(), before) << "what is taken back by hand is no step";
  Type("R");
  EXPECT_EQ(Steps().index(), before + 1);
  QApplication::clipboard()->setText("ZZ");
  Key(Qt::Key_V, Qt::ControlModifier);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Steps().index(), before);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Steps().index(), before - 1) << "never the box's own";
  Redo();
  // A text that no project holds.
  Menu("mnuAstroClockSettings");
  Press("cmdFindLatLon");
  Find<TextBox>("txtFindCity").setFocus();
  Type("BER");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(Find<TextBox>("txtFindCity").Text(), "BER");
  EXPECT_EQ(Steps().index(), before);
}

TEST_F(HistoryTest, WhatSeveralCellsGotIsOneStep) {
  Menu("mnuEditRelayNames");
  const std::string before = Bytes();
  QApplication::clipboard()->setText("A\nB\nC\n");
  Find<TextBox>("txtRelayName", 0).setFocus();
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.RelayName(2), "C");
  EXPECT_EQ(Tells("cmdUndo"), "Undo 3 settings of Edit Relay Names");
  Key(Qt::Key_Down);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Bytes(), before);
  Menu("mnuConfigureTimers");
  Find<ComboBox>("cboNormalTimeHour").setFocus();
  Key(Qt::Key_Down);
  Key(Qt::Key_PageDown, Qt::ControlModifier);
  Key(Qt::Key_Down);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(PanelRecord.TimerTimeType(0), 1) << "another timer, another step";
  Key(Qt::Key_Z, Qt::ControlModifier);
  Menu("mnuRelayOutputOptions");
  PanelRecord.RelayTimerType(0) = 3;
  QTest::mouseClick(&Cell("lblRelayName", 0), Qt::RightButton, Qt::ShiftModifier);
  EXPECT_EQ(PanelRecord.RelayTimerType(3), 3);
  Undo();
  EXPECT_EQ(Bytes(), before);
}

/// Actions beyond what the input's type offers are cut as they are shown.
TEST_F(HistoryTest, WhatShowingStoresBelongsToTheStepBefore) {
  PanelRecord.InputRelayControl(0, 0) = 2;
  Menu("mnuInputToRelayControl");
  ASSERT_EQ(PanelRecord.InputRelayControl(0, 0), 2);
  window->Steps().Begin();
  Menu("mnuInputOptions");
  const std::string start = Bytes();
  Pick("lblInputType", 0, "cboNewType", 5);
  const std::string chosen = Bytes();
  Pick("lblInputType", 1, "cboNewType", 1);
  const std::string second = Bytes();
  Undo();
  ASSERT_EQ(Bytes(), chosen);
  Menu("mnuInputToRelayControl");
  ASSERT_NE(Bytes(), chosen) << "this screen cuts nothing";
  const std::string cut = Bytes();
  EXPECT_EQ(Steps().count(), 2);
  Redo();
  EXPECT_EQ(Bytes(), second) << "every byte of the step that was undone";
  Undo();
  EXPECT_EQ(Bytes(), cut);
  Undo();
  EXPECT_EQ(Bytes(), start);
}

TEST_F(HistoryTest, AChangeWhoseScreenWouldCutItAnewShowsWhereTheTypeIsChosen) {
  PanelRecord.InputType(0) = 5;
  window->Steps().Begin();
  PanelRecord.InputRelayControl(0, 0) = 2;
  window->Steps().Record();
  PanelRecord.InputRelayControl(0, 0) = 0;
  window->Steps().Record();
  Undo();
  EXPECT_EQ(PanelRecord.InputRelayControl(0, 0), 2);
  EXPECT_EQ(Front(), Screen::InputOptions);
}

TEST_F(HistoryTest, RestsWhileThePanelIsAtWorkAndKeepsTheConnectionThatIsUp) {
  Menu("mnuRelayOutputOptions");
  Pick("lblPowerOnType", 2, "cboNewPowerOnType", 1);
  const std::string changed = Bytes();
  window->SetMainMenusEnabled(false);
  Undo();
  EXPECT_EQ(Bytes(), changed);
  EXPECT_EQ(Text("lblMark"), "Undo is off while the program works with the panel.");
  EXPECT_EQ(Steps().index(), 1);
  window->SetMainMenusEnabled(true);

  TcpAddress() = "10.0.0.7";
  window->Steps().Record();
  Connected = -1;
  Undo();
  EXPECT_EQ(TcpAddress(), "10.0.0.7");
  EXPECT_EQ(Steps().index(), 2);
  Connected = 0;
  Undo();
  EXPECT_EQ(Bytes(), changed);
}

TEST_F(HistoryTest, HoldsThirtyTwoMegabytesAndThenForgetsTheOldest) {
  std::vector<std::string> seen = {Bytes()};
  constexpr int steps = 600;
  for (int step = 1; step <= steps; ++step) {
    PanelRecord.PanelName.assign(32'000, static_cast<char>(step % 200 + 32));
    window->Steps().Record();
    seen.push_back(Bytes());
  }
  EXPECT_LT(Steps().text(0).size(), 100);
  Steps().setIndex(steps - 450);
  EXPECT_EQ(Bytes(), seen[steps - 450]);
  Steps().setIndex(0);
  EXPECT_EQ(Bytes(), seen[steps - 450]);
  EXPECT_EQ(Steps().index(), steps - 450);
  EXPECT_EQ(Text("lblMark"), "What was before is not kept any more.");
  Steps().setIndex(steps);
  EXPECT_EQ(Bytes(), seen[steps]);
}

/// Whatever a user does: all that has been is met again.
TEST_F(HistoryTest, RandomActionsAreUndoneOneByOne) {
  const int actions = qEnvironmentVariableIntValue("TAMBERLOOM_ACTIONS");
  QRandomGenerator random(1);
  const auto any = [&random](auto size) {
    return static_cast<int>(random.bounded(static_cast<int>(size)));
  };
  std::vector<QAction*> screens;
  for (const MenuEntry& entry : MenuTable()) {
    const bool editor = entry.Opens != Screen::None && entry.Opens != Screen::Connect &&
                        entry.Opens != Screen::Document && entry.Opens != Screen::About;
    if (editor && ScreenTable()[static_cast<std::size_t>(entry.Opens)].Create)
      screens.push_back(window->findChild<QAction*>(entry.Name));
  }
  PanelRecord.IOCount(0) = 8;
  for (Int16 device = 1; device <= 10; ++device) FennlinkRecords(device).DeviceType = device;
  DimSetEnabled(0, 1);
  window->Steps().Begin();
  std::map<int, std::string> seen = {{0, Bytes()}};
  for (int action = 0; action < (actions > 0 ? actions : 500); ++action) {
    std::vector<QWidget*> controls;
    for (auto* form : window->findChildren<ChildForm*>()) {
      if (!form->isVisible()) continue;
      for (auto* control : form->findChildren<QWidget*>()) {
        const auto* label = qobject_cast<Label*>(control);
        const bool works = (label && label->Click) || qobject_cast<ComboBox*>(control) ||
                           qobject_cast<InPlaceList*>(control) ||
                           qobject_cast<CheckBox*>(control) ||
                           qobject_cast<OptionButton*>(control) ||
                           qobject_cast<TextBox*>(control) || qobject_cast<ScrollBar*>(control);
        if (works && control->isVisible() && control->isEnabled()) controls.push_back(control);
      }
    }
    if (controls.empty() || any(10) == 0) {
      QAction* entry = screens[static_cast<std::size_t>(any(screens.size()))];
      if (entry->isEnabled()) entry->trigger();
    } else {
      QWidget* control = controls[static_cast<std::size_t>(any(controls.size()))];
      for (QWidget* other : controls) {
        if (qobject_cast<InPlaceList*>(other)) control = other;
      }
      if (auto* list = qobject_cast<ComboBox*>(control)) {
        if (list->count() > 0) list->Choose(any(list->count()));
      } else if (auto* open = qobject_cast<InPlaceList*>(control)) {
        const auto item = open->model()->index(any(open->ListCount()), 0);
        open->scrollTo(item);
        QTest::mouseClick(open->viewport(), Qt::LeftButton, {}, open->visualRect(item).center());
      } else if (auto* bar = qobject_cast<ScrollBar*>(control)) {
        bar->setValue(any(bar->maximum() + 1));
      } else if (qobject_cast<TextBox*>(control)) {
        control->setFocus();
        QTest::keyClick(control, any(2) == 0 ? Qt::Key_7 : Qt::Key_Backspace);
      } else {
        QTest::mouseClick(control, Qt::LeftButton);
      }
    }
    QApplication::processEvents();
    seen[Steps().index()] = Bytes();
  }
  ASSERT_GT(Steps().count(), actions / 10);
  for (int step = Steps().count(); step > 0; --step) {
    ASSERT_EQ(Steps().index(), step);
    ASSERT_EQ(Bytes(), seen[step]) << step << ": " << Steps().text(step).toStdString();
    Undo();
  }
  EXPECT_EQ(Bytes(), seen[0]);
  for (int step = 1; step <= Steps().count(); ++step) {
    Redo();
    ASSERT_EQ(Bytes(), seen[step]) << step;
  }
}

TEST(PatchTest, LeadsBothWaysWhateverTheLengths) {
  const std::pair<std::string, std::string> pairs[] = {
      {"", ""},           {"", "A"},
      {"AAAA", "AA"},     {"ABAB", "ABABAB"},
      {"XBCDY", "XBQDY"}, {std::string(400, 'A'), "B" + std::string(398, 'A') + "B"}};
  for (const auto& [before, after] : pairs) {
    for (const auto& [from, to] : {std::pair(before, after), std::pair(after, before)}) {
      const Patch patch(from, to);
      EXPECT_EQ(patch.After(from), to);
      EXPECT_EQ(patch.Before(to), from);
      EXPECT_EQ(patch.Empty(), from == to);
    }
  }
  const Patch far(pairs[5].first, pairs[5].second);
  EXPECT_LT(far.Size(), 300U) << "what is equal between is held, too";
}

}  // namespace

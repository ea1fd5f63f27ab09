#include <QAccessible>

#include "screen_test.h"

class InputOptionsTest : public ScreenTest {};

TEST_F(InputOptionsTest, OnlyATimedOnInputShowsItsTimeAndKeepsItThroughOtherTypes) {
  PanelRecord.InputType(1) = 5;
  PanelRecord.InputType(2) = 13;
  PanelRecord.InputTimedOnTime(3) = 1000;
  Menu("mnuInputOptions");
  EXPECT_FALSE(Shows("lblInputTimedOn", 0));
  EXPECT_TRUE(Shows("lblInputTimedOn", 1));
  EXPECT_EQ(Caption("lblInputTimedOn", 1), " 10 Min");
  EXPECT_EQ(Caption("lblInputType", 2), " ");

  Click(Cell("lblInputType", 0));
  const auto& types = Find<InPlaceList>("cboNewType");
  EXPECT_GE(types.viewport()->height(), types.ListCount() * types.sizeHintForRow(0)) << "all seen";
  Click(Cell("lblInputTimedOn", 1));
  auto& times = Find<InPlaceList>("cboNewTime");
  EXPECT_EQ(times.List(times.ListIndex()), "10Min");
  ChooseInPlace("cboNewTime", 994);
  Pick("lblInputType", 1, "cboNewType", 12);
  EXPECT_FALSE(Shows("lblInputTimedOn", 1));
  for (int input : {1, 3}) {
    Pick("lblInputType", input, "cboNewType", 5);
    Click(Cell("lblInputTimedOn", input));
  }
  EXPECT_EQ(Captions("lblInputTimedOn", {1, 3}), " 999 Min| 1000 Min");
  EXPECT_EQ(times.ListIndex(), -1);
}

TEST_F(InputOptionsTest, APilotPacksSourceAndNumber) {
  PanelRecord.LocalPilot(1) = 3 * 64 + 50;
  PanelRecord.LocalPilot(2) = 70;
  Menu("mnuLocalInputPilots");
  EXPECT_EQ(Caption("lblPilotSource", 1) + Caption("lblPilotNumber", 1), "  51");
  EXPECT_EQ(Caption("lblPilotSource", 2) + Caption("lblPilotNumber", 2), "On If Group  7");

  PanelRecord.RelayName(3) = "FOYER";
  PanelRecord.GroupName(6) = "OFFICES";
  window->UnloadAllForms();
  Menu("mnuLocalInputPilots");
  Label& number = Cell("lblPilotNumber", 2);
  EXPECT_EQ(number.Caption(), " 7") << "the name is no part of the value";
  EXPECT_EQ(number.Note(), "OFFICES");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&number)->text(QAccessible::Value), "7, OFFICES");
  Click(number);
  const QAbstractItemModel& items = *Find<InPlaceList>("cboNewNumber").model();
  EXPECT_EQ(items.index(6, 0).data(Qt::AccessibleTextRole), "7  OFFICES");
  EXPECT_EQ(items.index(3, 0).data(Qt::AccessibleTextRole), "4") << "another kind of item";

  Pick("lblPilotNumber", 2, "cboNewNumber", 47);
  EXPECT_EQ(PanelRecord.LocalPilot(2), 64 + 47);
  Pick("lblPilotSource", 1, "cboNewSource", 2);
  EXPECT_EQ(PanelRecord.LocalPilot(1), 128 + 50);
  Click(Cell("lblPilotNumber", 1));
  EXPECT_EQ(Offered("cboNewNumber"), -1);
}

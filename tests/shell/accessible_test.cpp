
#include "panel/live_dimmers.h"
#include "screen_test.h"
#include "shell/controls/accessible_controls.h"

// What screen readers are told.

class AccessibleTest : public ScreenTest {
 protected:
  AccessibleTest() {
    TellReadersSeam = [this](QAccessibleEvent& event) {
      events.emplace_back(event.object(), event.type());
    };
  }
  ~AccessibleTest() override { TellReadersSeam = passOn; }

  using Event = std::pair<QObject*, QAccessible::Event>;
  bool Told(QWidget& widget, QAccessible::Event event) const {
    return std::count(events.begin(), events.end(), Event(&widget, event)) > 0;
  }

  static QAccessibleInterface& Of(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
  }
  static QString Name(QWidget& widget) { return Of(widget).text(QAccessible::Name); }
  static QString Value(QWidget& widget) { return Of(widget).text(QAccessible::Value); }

  std::vector<Event> events;
  const std::function<void(QAccessibleEvent&)> passOn = TellReadersSeam;
};

TEST_F(AccessibleTest, EveryControlThatTakesTheFocusHasRoleNameAndAction) {
  for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = 4;
  for (int d = 1; d <= DeviceCount; ++d) {
    FennlinkRecords(d).DeviceType = static_cast<Int16>(d % 10);
  }
  OnEveryScreen([this](Screen, ChildForm&) {
    for (QWidget* widget : window->findChildren<QWidget*>()) {
      if (!(widget->focusPolicy() & Qt::TabFocus) || !Shown(*widget) || !widget->isEnabled())
        continue;
      SCOPED_TRACE(widget->objectName().toStdString() + " " + widget->metaObject()->className());
      QAccessibleInterface& told = Of(*widget);
      EXPECT_NE(told.role(), QAccessible::NoRole);
      EXPECT_NE(told.role(), QAccessible::Client);
      EXPECT_FALSE(told.text(QAccessible::Name).isEmpty());
      EXPECT_TRUE(told.actionInterface() || told.valueInterface() || told.textInterface() ||
                  told.role() == QAccessible::List || told.role() == QAccessible::Tree);
    }
  });
}

TEST_F(AccessibleTest, ACellTellsWhatItDoesWhoseItIsAndItsValue) {
  PanelRecord.IOCount(0) = 8;
  PanelRecord.RelayName(7) = "TOILETS";
  PanelRecord.RelayTimerType(7) = 5;
  Menu("mnuRelayOutputOptions");
  Label& cell = Cell("lblTimerType", 7);
  EXPECT_EQ(Of(cell).role(), QAccessible::ComboBox);
  EXPECT_EQ(Name(cell), "TOILETS, Relay 08, Timers");
  EXPECT_EQ(Value(cell), "Pulsed Off");
  EXPECT_TRUE(Of(cell).state().collapsed);
  Of(cell).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(Of(cell).state().expanded);
  events.clear();
  Find<InPlaceList>("cboNewTimerType").Choose(1);
  EXPECT_TRUE(Told(cell, QAccessible::ValueChanged) && Told(cell, QAccessible::DescriptionChanged));
  EXPECT_EQ(Value(cell), "Blink");
  EXPECT_EQ(Name(Cell("lblRelayName", 0)), "Relay 01: RELAY 01");
  Of(Cell("lblRelayName", 0)).actionInterface()->doAction("Copy to all");
  EXPECT_EQ(PanelRecord.RelayTimerType(7), 0);

  Menu("mnuRelayGrouping");
  Label& member = Cell("lblInclude", 7);
  EXPECT_EQ(Of(member).role(), QAccessible::CheckBox);
  Of(member).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(Of(member).state().checked && Told(member, QAccessible::StateChanged));
  EXPECT_EQ(PanelRecord.GroupRelayInclude(0, 7), -1);

  auto& groups = Find<ComboBox>("cboGroup");
  EXPECT_EQ(Name(groups), "Group");
  EXPECT_EQ(Value(groups), "GROUP 01");
}

TEST_F(AccessibleTest, WhatIsPaintedIsToldInWords) {
  DimSetEnabled(0, 1);
  DimSetTrackMode(0, 0, 1);
  DimSetAIn(0, 0, 40);
  DimSetCIn(0, 0, 200);
  Menu("mnuConfigureDimmers");
  auto& curve = Find<QWidget>("picScale");
  EXPECT_EQ(Of(curve).role(), QAccessible::Chart);
  EXPECT_TRUE(Of(curve).text(QAccessible::Description).startsWith("A: 40/255, "));
  EXPECT_EQ(Value(curve), "No point selected");
  events.clear();
  QTest::keyClick(&curve, Qt::Key_C);
  EXPECT_TRUE(Value(curve).startsWith("C: 200/255, "));
  EXPECT_TRUE(Told(curve, QAccessible::ValueChanged));
  EXPECT_TRUE(Of(curve).text(QAccessible::Description).endsWith(Value(curve)));

  Menu("mnuConnect");
  EXPECT_EQ(Name(Find<QWidget>("txtPassWord(2)")), "Current password, digit 3");
  EXPECT_EQ(Name(Find<QWidget>("txtNewPassWord(5)")), "New password, digit 6");
  events.clear();
  SetLinkStatus("Error - Retry: 1");
  EXPECT_TRUE(Told(Find<QWidget>("StatusBar1(2)"), QAccessible::NameChanged));
}

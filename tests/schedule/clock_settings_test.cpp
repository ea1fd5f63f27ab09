#include <QAbstractItemView>
#include <QCompleter>

#include "panel/live_project.h"
#include "screen_test.h"

class ClockSettingsTest : public ScreenTest {
 protected:
  QString Text(const char* list) { return Find<ComboBox>(list).currentText(); }
};

TEST_F(ClockSettingsTest, TheDaylightSavingRuleStaysWhileItIsOff) {
  PanelRecord.DSTEnabled = 5;
  Menu("mnuDaylightSavingTime");
  auto& enabled = Find<CheckBox>("chkEnableDaylightSavingTime");
  EXPECT_EQ(Text("cboDSTStartWeek"), "2nd Sunday");
  EXPECT_EQ(Text("cboDSTEndMonth"), "Nov");

  Click(enabled);
  EXPECT_EQ(PanelRecord.DSTEnabled, 0);
  EXPECT_FALSE(Find<ComboBox>("cboDSTEndWeek").isEnabled());
  EXPECT_EQ(Text("cboDSTStartMonth"), "Mar");
  Click(enabled);
  EXPECT_EQ(PanelRecord.DSTEnabled, -1);
  Choose("cboDSTEndWeek", 4);
  EXPECT_EQ(PanelRecord.DSTEndWeek, 5);
}

TEST_F(ClockSettingsTest, CodesOutsideTheListsShowNoSelectionAndStay) {
  PanelRecord.DSTEnabled = 0;
  PanelRecord.DSTStartWeek = 0;
  PanelRecord.DSTStartMonth = 13;
  PanelRecord.DSTEndWeek = 6;
  PanelRecord.DSTEndMonth = -32768;
  PanelRecord.Latitude = 19;
  PanelRecord.Longitude = 151;
  PanelRecord.TimeZone = 5;
  Menu("mnuDaylightSavingTime");
  for (const char* list :
       {"cboDSTStartWeek", "cboDSTStartMonth", "cboDSTEndWeek", "cboDSTEndMonth"}) {
    EXPECT_EQ(Find<ComboBox>(list).ListIndex(), -1);
  }
  EXPECT_EQ(PanelRecord.DSTEndMonth, -32768);
  Menu("mnuAstroClockSettings");
  EXPECT_EQ(Text("cboLatitude"), "");
  EXPECT_EQ(Text("cboTimeZone"), "");
  EXPECT_EQ(PanelRecord.Longitude, 151);
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(ClockSettingsTest, ACityGivesThePositionWhenItIsAccepted) {
  Menu("mnuAstroClockSettings");
  EXPECT_FALSE(Shown(Find<ComboBox>("cboFindLatLon")));
  Click(Find<Button>("cmdFindLatLon"));
  EXPECT_FALSE(Find<ComboBox>("cboTimeZone").isEnabled());
  EXPECT_EQ(Find<ComboBox>("cboFindLatLon").count(), 260);
  Choose("cboFindLatLon", 7);
  DataChanged = 0;
  Click(Find<Button>("cmdCancel"));
  EXPECT_EQ(PanelRecord.Longitude, 90);
  EXPECT_EQ(DataChanged, 0);

  Click(Find<Button>("cmdFindLatLon"));
  EXPECT_EQ(Text("cboFindLatLon"), "Alaska,Juneau");
  Click(Find<Button>("cmdAccept"));
  EXPECT_EQ(PanelRecord.Latitude, 58);
  EXPECT_EQ(PanelRecord.Longitude, 135);
  EXPECT_EQ(PanelRecord.TimeZone, 1);
  EXPECT_TRUE(Find<ComboBox>("cboTimeZone").isEnabled());
}

TEST_F(ClockSettingsTest, AnyPartOfTheNameFindsACity) {
  Menu("mnuAstroClockSettings");
  Click(Find<Button>("cmdFindLatLon"));
  auto& search = Find<TextBox>("txtFindCity");
  EXPECT_EQ(QApplication::focusWidget(), &search);
  QTest::keyClicks(&search, "springf");
  EXPECT_EQ(Text("cboFindLatLon"), "Illinois,Springfield");
  QWidget* matches = search.completer()->popup();
  ASSERT_TRUE(matches->isVisible());
  for (int i = 0; i < 4; ++i) QTest::keyClick(matches, Qt::Key_Down);
  QTest::keyClick(matches, Qt::Key_Escape);
  EXPECT_EQ(Text("cboFindLatLon"), "Ohio,Springfield");
  search.clear();
  QTest::keyClicks(&search, "xx");
  EXPECT_TRUE(Shown(Find<Label>("lblNoCity")));
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_TRUE(Shown(search));

  search.clear();
  QTest::keyClicks(&search, "SHER");
  EXPECT_FALSE(Shown(Find<Label>("lblNoCity")));
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_FALSE(Shown(search));
  EXPECT_EQ(PanelRecord.Latitude, 45);
  EXPECT_EQ(PanelRecord.Longitude, 107);
}

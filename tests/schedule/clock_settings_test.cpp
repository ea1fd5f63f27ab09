#include <QAbstractItemView>
#include <QCompleter>

#include "panel/stopwatch.h"
#include "schedule/rules/city_table.h"
#include "schedule/rules/time_zones.h"
#include "screen_test.h"

class ClockSettingsTest : public ScreenTest {};

TEST_F(ClockSettingsTest, TheDaylightSavingRuleStaysWhileItIsOff) {
  PanelRecord.DSTEnabled = 5;
  Menu("mnuDaylightSavingTime");
  auto& enabled = Find<CheckBox>("chkEnableDaylightSavingTime");
  EXPECT_EQ(ChosenText("cboDSTStartWeek"), "2nd Sunday");
  EXPECT_EQ(ChosenText("cboDSTEndMonth"), "Nov");

  Click(enabled);
  EXPECT_EQ(PanelRecord.DSTEnabled, 0);
  EXPECT_FALSE(Find<ComboBox>("cboDSTEndWeek").isEnabled());
  EXPECT_EQ(ChosenText("cboDSTStartMonth"), "Mar");
  Click(enabled);
  EXPECT_EQ(PanelRecord.DSTEnabled, -1);
}

TEST_F(ClockSettingsTest, CodesOutsideTheListsShowNoSelectionAndStay) {
  auto& p = PanelRecord;
  const std::tuple<Int16*, Int16, const char*> codes[] = {
      {&p.DSTStartWeek, 0, "cboDSTStartWeek"},
      {&p.DSTStartMonth, 13, "cboDSTStartMonth"},
      {&p.DSTEndWeek, 6, "cboDSTEndWeek"},
      {&p.DSTEndMonth, -32768, "cboDSTEndMonth"}};
  p.DSTEnabled = 0;
  for (const auto& [field, code, list] : codes) *field = code;
  Menu("mnuDaylightSavingTime");
  for (const auto& [field, code, list] : codes) {
    EXPECT_EQ(Chosen(list), -1);
    EXPECT_EQ(*field, code);
  }
  EXPECT_EQ(DataChanged, 0);
}

/// The zone by the sun, or the one east of it, as borders lean west; Alaska's reaches furthest.
TEST(TimeZonesTest, EveryCityHasAZoneOfItsOwnAndNoneThatIsFarOff) {
  for (const City& city : CityTable) {
    const ZoneSet zones = PlausibleZones(city.CityLatitude, city.CityLongitude);
    const auto bySun = static_cast<std::size_t>(
        std::clamp((city.CityLongitude - 67) / 15, 0, static_cast<int>(zones.size()) - 1));
    EXPECT_TRUE(zones[bySun] || (bySun > 0 && zones[bySun - 1])) << city.CityName;
    for (std::size_t zone = 0; zone < zones.size(); ++zone) {
      const auto apart = std::max(zone, bySun) - std::min(zone, bySun);
      EXPECT_FALSE(zones[zone] && apart > 2) << city.CityName << ' ' << zone;
    }
  }
}

TEST_F(ClockSettingsTest, ThePlaceTellsItsSunAndAZoneThatCannotBeIts) {
  NowSeam = [] { return QDateTime(QDate(2026, 11, 26), QTime(12, 0)); };
  auto& p = PanelRecord;
  p.Latitude = 41;
  p.Longitude = 74;
  p.TimeZone = 0;
  Menu("mnuAstroClockSettings");
  EXPECT_EQ(Captions("lblSun", {0, 1, 2}).toStdString(),
            "Today, November 26: sunrise 6:56 AM, sunset 4:30 PM|"
            "Shortest day, December 21: sunrise 7:17 AM, sunset 4:31 PM|"
            "Longest day, June 21: sunrise 5:24 AM, sunset 8:32 PM");
  EXPECT_EQ(Text("lblZoneDoubt"), "");
  Choose("cboTimeZone", 3);
  EXPECT_EQ(Text("lblZoneDoubt"),
            "The time zone is Pacific, which is not that of 41 degrees north, 74 west.");
  EXPECT_TRUE(Caption("lblSun", 0).endsWith("sunrise 3:56 AM, sunset 1:30 PM"));
  for (const auto& [latitude, longitude] :
       {std::pair(45, 50), std::pair(35, 60), std::pair(45, 60), std::pair(50, 60)}) {
    p.Latitude = static_cast<Int16>(latitude);
    p.Longitude = static_cast<Int16>(longitude);
    for (const Int16 zone : std::initializer_list<Int16>{0, 2, 3, 4}) {
      p.TimeZone = zone;
      EXPECT_EQ(ZoneDoubt(p).isEmpty(), zone == 0) << latitude << ' ' << longitude << ' ' << zone;
    }
  }
  p.Latitude = 80;
  Menu("mnuAstroClockSettings");
  EXPECT_FALSE(Shows("lblSun", 0)) << "no sun is told of a place that no list has";
  NowSeam = QDateTime::currentDateTime;
}

TEST_F(ClockSettingsTest, ACityGivesThePositionWhenItIsAccepted) {
  Menu("mnuAstroClockSettings");
  EXPECT_FALSE(Shows("cboFindLatLon"));
  Press("cmdFindLatLon");
  EXPECT_FALSE(Find<ComboBox>("cboTimeZone").isEnabled());
  EXPECT_EQ(Find<ComboBox>("cboFindLatLon").count(), 260);
  Choose("cboFindLatLon", 7);
  DataChanged = 0;
  Press("cmdCancel");
  EXPECT_EQ(PanelRecord.Longitude, 90);
  EXPECT_EQ(DataChanged, 0);

  Press("cmdFindLatLon");
  EXPECT_EQ(ChosenText("cboFindLatLon"), "Alaska,Juneau");
  Press("cmdAccept");
  EXPECT_EQ(PanelRecord.Latitude, 58);
  EXPECT_EQ(PanelRecord.Longitude, 135);
  EXPECT_EQ(PanelRecord.TimeZone, 1);
  EXPECT_TRUE(Find<ComboBox>("cboTimeZone").isEnabled());
}

TEST_F(ClockSettingsTest, AnyPartOfTheNameFindsACity) {
  Menu("mnuAstroClockSettings");
  Press("cmdFindLatLon");
  auto& search = Find<TextBox>("txtFindCity");
  EXPECT_EQ(QApplication::focusWidget(), &search);
  QTest::keyClicks(&search, "springf");
  EXPECT_EQ(ChosenText("cboFindLatLon"), "Illinois,Springfield");
  QWidget* matches = search.completer()->popup();
  ASSERT_TRUE(matches->isVisible());
  for (int i = 0; i < 4; ++i) QTest::keyClick(matches, Qt::Key_Down);
  QTest::keyClick(matches, Qt::Key_Escape);
  EXPECT_EQ(ChosenText("cboFindLatLon"), "Ohio,Springfield");
  EXPECT_FALSE(matches->isVisible());
  EXPECT_TRUE(Shown(search)) << "an open list takes Escape for itself";
  search.clear();
  QTest::keyClicks(&search, "xx");
  EXPECT_TRUE(Shows("lblNoCity"));
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_TRUE(Shown(search));
  QTest::keyClick(&search, Qt::Key_Escape);
  EXPECT_FALSE(Shown(search));
  Press("cmdFindLatLon");

  search.clear();
  QTest::keyClicks(&search, "SHER");
  EXPECT_FALSE(Shows("lblNoCity"));
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_FALSE(Shown(search));
  EXPECT_EQ(PanelRecord.Latitude, 45);
  EXPECT_EQ(PanelRecord.Longitude, 107);
}

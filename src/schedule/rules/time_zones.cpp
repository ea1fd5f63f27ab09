#include "schedule/rules/time_zones.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "panel/code_page.h"
#include "schedule/rules/city_table.h"

namespace {

/// The first letters of the zones, by code.
constexpr std::string_view ZoneLetters = "ECMPA";
static_assert(ZoneLetters.size() == TimeZones.size());

struct State {
  std::string_view Name;
  std::string_view Zones;  ///< By their letters.
};

/// The zones in any part of a state.
constexpr auto States = std::to_array<State>({
    {"Alabama", "C"},        {"Alaska", "A"},        {"Arizona", "M"},
    {"Arkansas", "C"},       {"California", "P"},    {"Colorado", "M"},
    {"Connecticut", "E"},    {"Delaware", "E"},      {"District of Columbia", "E"},
    {"Florida", "EC"},       {"Georgia", "E"},       {"Idaho", "MP"},
    {"Illinois", "C"},       {"Indiana", "EC"},      {"Iowa", "C"},
    {"Kansas", "CM"},        {"Kentucky", "EC"},     {"Louisiana", "C"},
    {"Maine", "E"},          {"Maryland", "E"},      {"Massachusetts", "E"},
    {"Michigan", "EC"},      {"Minnesota", "C"},     {"Mississippi", "C"},
    {"Missouri", "C"},       {"Montana", "M"},       {"Nebraska", "CM"},
    {"Nevada", "MP"},        {"New Hampshire", "E"}, {"New Jersey", "E"},
    {"New Mexico", "M"},     {"New York", "E"},      {"North Carolina", "E"},
    {"North Dakota", "CM"},  {"Ohio", "E"},          {"Oklahoma", "C"},
    {"Oregon", "MP"},        {"Pennsylvania", "E"},  {"Rhode Island", "E"},
    {"South Carolina", "E"}, {"South Dakota", "CM"}, {"Tennessee", "EC"},
    {"Texas", "CM"},         {"Utah", "M"},          {"Vermont", "E"},
    {"Virginia", "E"},       {"Washington", "P"},    {"West Virginia", "E"},
    {"Wisconsin", "C"},      {"Wyoming", "M"},
});

/// How far a zone reaches, degrees west; the prairies keep Central time further on.
struct Reach {
  int East;
  int West;
  int WestOfPrairies;
};
constexpr int PrairieLatitude = 49;
constexpr std::array<Reach, TimeZones.size()> Reaches{
    {{64, 91, 91}, {82, 105, 111}, {100, 121, 121}, {113, 142, 142}, {129, 190, 190}}};

/// The zones whose noon is not too far from the sun's.
ZoneSet ZonesNear(int longitudeWest) {
  constexpr int easternMeridian = 75;
  constexpr int degreesPerHour = 15;
  constexpr int mostHours = 2;
  ZoneSet near;
  for (std::size_t zone = 0; zone < near.size(); ++zone) {
    const int meridian = easternMeridian + static_cast<int>(zone) * degreesPerHour;
    near[zone] = std::abs(meridian - longitudeWest) <= mostHours * degreesPerHour;
  }
  return near;
}

ZoneSet ZonesOf(const City& city) {
  const std::string_view name = city.CityName.substr(0, city.CityName.find(','));
  const auto* state = std::find_if(States.begin(), States.end(),
                                   [name](const State& one) { return one.Name == name; });
  ZoneSet zones;
  for (const char letter : state == States.end() ? ZoneLetters : state->Zones) {
    zones.set(ZoneLetters.find(letter));
  }
  return zones;
}

}  // namespace

ZoneSet PlausibleZones(int latitude, int longitudeWest) {
  constexpr int around = 1;
  ZoneSet zones;
  for (const City& city : CityTable) {
    if (std::abs(city.CityLatitude - latitude) <= around &&
        std::abs(city.CityLongitude - longitudeWest) <= around) {
      zones |= ZonesOf(city);
    }
  }
  if (zones.any()) return zones;
  ZoneSet reaching;
  for (std::size_t zone = 0; zone < Reaches.size(); ++zone) {
    const auto& [east, west, westOfPrairies] = Reaches[zone];
    reaching[zone] = longitudeWest >= east &&
                     longitudeWest <= (latitude >= PrairieLatitude ? westOfPrairies : west);
  }
  return reaching.any() ? reaching : ZonesNear(longitudeWest);
}

bool IsNewPanelsPlace(const PanelRecordType& panel) {
  constexpr Int16 latitude = 45;
  constexpr Int16 longitude = 90;
  return panel.Latitude == latitude && panel.Longitude == longitude;
}

bool IsOnTheMap(const PanelRecordType& panel) {
  const auto isIn = [](const ListRange& range, Int16 degrees) {
    return degrees >= range.First && degrees <= range.Last;
  };
  return isIn(LatitudeRange, panel.Latitude) && isIn(LongitudeRange, panel.Longitude);
}

QString ZoneDoubt(const PanelRecordType& panel) {
  const std::string_view zone = Word(TimeZones, panel.TimeZone);
  if (zone.empty() || IsNewPanelsPlace(panel) || !IsOnTheMap(panel) ||
      PlausibleZones(panel.Latitude, panel.Longitude)[static_cast<std::size_t>(panel.TimeZone)]) {
    return {};
  }
  return QStringLiteral("The time zone is %1, which is not that of %2 degrees north, %3 west.")
      .arg(ToUnicode(zone))
      .arg(panel.Latitude)
      .arg(panel.Longitude);
}

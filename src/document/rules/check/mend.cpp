#include "document/rules/check/mend.h"

#include <algorithm>
#include <array>

#include "panel/code_page.h"
#include "panel/defaults.h"
#include "panel/dimmer_fields.h"
#include "panel/fennlink_record.h"
#include "panel/input_actions.h"
#include "panel/panel_record.h"
#include "panel/time_values.h"

namespace {

/// All long names of the item's kind, from its own on: they are one finding.
Mending CutNames(const Project& project, const Item& first) {
  const bool ofPanel = first.Kind == ItemKind::Panel;
  const int chars = ofPanel ? PanelNameLength : NameLength;
  const auto isLong = [=](const Project& in, const Item& item) {
    const std::string* name = StoredName(in, item);
    return name && ToUnicode(*name).trimmed().size() > chars;
  };
  std::vector<Item> items;
  for (Item item = first; item.Number <= DeviceCount; ++item.Number) {
    if (isLong(project, item)) items.push_back(item);
    if (ofPanel) break;
  }
  return {QStringLiteral("Cuts the %1 to the %2 characters that the panel keeps.")
              .arg(QLatin1String(items.size() == 1 ? "name" : "names"))
              .arg(chars),
          [=](Project& mended) {
            for (const Item& item : items) {
              std::string& name = *StoredName(mended, item);
              name = FromUnicode(ToUnicode(name).trimmed().left(chars));
            }
          }};
}

/// Calls `clear` with each cell by which the user acts on relays or inputs, and what it is for.
template <typename Clear>
void ForEachCell(Project& project, const Item& user, Clear clear) {
  auto& panel = project.Panel;
  const auto control = [&](const std::optional<ControlOptions>& options, auto cell) {
    if (!options) return;
    if (options->Rows != ControlRows::Relays && options->Rows != ControlRows::Inputs) return;
    for (int row = 0; row < ItemCount; ++row) clear(cell(row), row);
  };
  const int number = user.Number;
  if (user.Kind == ItemKind::Group) {
    for (int row = 0; row < ItemCount; ++row) clear(panel.GroupRelayInclude(number, row), row);
  } else if (user.Kind == ItemKind::Preset) {
    for (int row = 0; row < ItemCount; ++row) clear(panel.PresetRelayControl(number, row), row);
  } else if (user.Kind == ItemKind::Timer) {
    for (int row = 0; row < ItemCount; ++row) clear(panel.TimerRelayControl(number, row), row);
  } else if (user.Kind == ItemKind::Input) {
    const int type = panel.InputType(number);
    control(LocalControlOptions(type, ControlTable::Relay),
            [&](int row) -> Int16& { return panel.InputRelayControl(number, row); });
    control(LocalControlOptions(type, ControlTable::Group),
            [&](int row) -> Int16& { return panel.InputGroupControl(number, row); });
  } else if (user.Kind == ItemKind::DeviceInput) {
    FennlinkRecord& device = project.Devices(number);
    const int type = device.DeviceInputType(user.Part);
    control(FennlinkControlOptions(device.DeviceType, type, ControlTable::Relay),
            [&](int row) -> Int16& { return device.DeviceRelayControl(user.Part, row); });
    control(FennlinkControlOptions(device.DeviceType, type, ControlTable::Group),
            [&](int row) -> Int16& { return device.DeviceGroupControl(user.Part, row); });
  }
}

OutputPlace OutputOf(const Item& output) {
  return {static_cast<Int16>(output.Number), static_cast<Int16>(output.Part)};
}

Mending ClearBeyondPoints(const Project& project, const Item& user) {
  const int points = InstalledPoints(project);
  return {QStringLiteral("Clears what %1 does beyond the %2 installed points.")
              .arg(ItemText(project, user))
              .arg(points),
          [=](Project& mended) {
            for (int relay = points; user.Kind == ItemKind::DimmerOutput && relay < ItemCount;
                 ++relay) {
              SetDimmerValue(mended.Dimmers, dim::RelayInclude, OutputOf(user), 0, relay);
            }
            ForEachCell(mended, user, [&](Int16& cell, int row) {
              if (row >= points) cell = 0;
            });
          }};
}

/// What the points do not reach is as in a new panel.
Mending ClearInputsBeyondPoints(const Project& project, const Item&) {
  const int points = InstalledPoints(project);
  return {QStringLiteral("Clears names and actions of inputs beyond the %1 installed points.")
              .arg(points),
          [=](Project& mended) {
            const Project fresh = NewProject();
            for (int input = points; input < ItemCount; ++input) {
              mended.Panel.InputName(input) = fresh.Panel.InputName(input);
              for (int row = 0; row < ItemCount; ++row) {
                mended.Panel.InputRelayControl(input, row) = 0;
                mended.Panel.InputGroupControl(input, row) = 0;
              }
              if (LocalInputKind(mended.Panel.InputType(input)) == InputKind::SetPreset) {
                mended.Panel.InputType(input) = fresh.Panel.InputType(input);
              }
            }
          }};
}

Mending ClearSweepBeyondPoints(const Project& project, const Item&) {
  const int points = InstalledPoints(project);
  return {QStringLiteral("The sweep leaves out relays beyond the %1 installed points.").arg(points),
          [=](Project& mended) {
            for (int relay = points; relay < ItemCount; ++relay) {
              mended.Panel.OffHoursSweepRelay(relay) = 0;
            }
          }};
}

Mending ClearMissingDates(const Project&, const Item&) {
  constexpr int lastDate = 31;
  return {QStringLiteral("Clears the open and close times of dates that no calendar has."),
          [](Project& mended) {
            for (std::size_t month = 0; month < MonthDays.size(); ++month) {
              for (int date = MonthDays[month]; date < lastDate; ++date) {
                mended.Panel.DateOpenTime(static_cast<int>(month), date) = NoEntry;
                mended.Panel.DateCloseTime(static_cast<int>(month), date) = NoEntry;
              }
            }
          }};
}

Mending TurnDaylightSavingOff(const Project&, const Item&) {
  return {QStringLiteral("Turns daylight saving off."),
          [](Project& project) { project.Panel.DSTEnabled = 0; }};
}

struct MendedRule {
  std::string_view Name;
  Mending (*Mend)(const Project& project, const Item& item);
};

constexpr auto MendedRules = std::to_array<MendedRule>({
    {"long-name", CutNames},
    {"beyond-points", ClearBeyondPoints},
    {"held-beyond-points", ClearBeyondPoints},
    {"input-beyond-points", ClearInputsBeyondPoints},
    {"swept-beyond-points", ClearSweepBeyondPoints},
    {"hours-on-no-date", ClearMissingDates},
    {"daylight-saving", TurnDaylightSavingOff},
});

}  // namespace

std::optional<Mending> MendingOf(const Project& project, const Finding& finding) {
  const auto* const rule =
      std::find_if(MendedRules.begin(), MendedRules.end(),
                   [&](const MendedRule& mended) { return mended.Name == finding.Rule; });
  if (rule == MendedRules.end()) return std::nullopt;
  return rule->Mend(project, finding.Where);
}

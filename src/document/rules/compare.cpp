#include "document/rules/compare.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

#include "dimmer/rules/dimmer_model.h"
#include "link/rules/panel_image.h"
#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/input_actions.h"
#include "panel/project_layout.h"
#include "panel/shown_percent.h"
#include "panel/words.h"
#include "schedule/rules/time_values.h"

namespace {

/// A value of a project: a number, or a text.
struct Cell {
  const char* Name;
  int Device;  ///< The record that it is of, or -1.
  int First;
  int Second;
  Int32 Number;
  const std::string* Text;
};

/// Takes a project apart by its layout.
class CellReader {
 public:
  explicit CellReader(const ProjectDocument& project) {
    constexpr std::size_t roomForAll = 130'000;
    Cells.reserve(roomForAll);
    ProjectLayout(*this, project.Panel, project.Devices, project.Dimmers);
  }

  template <typename Field>
  void operator()(const char* name, const Field& field) {
    if (name == std::string_view("DeviceType")) ++device_;  // it begins a device
    if (name == std::string_view("DimmerBlock")) device_ = -1;
    Add(name, field, 0, 0);
  }

  std::vector<Cell> Cells;

 private:
  void Add(const char* name, Int32 value, int first, int second) {
    Cells.push_back({name, device_, first, second, value, nullptr});
  }
  void Add(const char* name, const std::string& text, int first, int second) {
    Cells.push_back({name, device_, first, second, 0, &text});
  }
  template <typename T, int First, int Second>
  void Add(const char* name, const FixedArray<T, First, Second>& table, int, int) {
    for (int second = 0; second < Second; ++second) {
      for (int first = 0; first < First; ++first) Add(name, table(first, second), first, second);
    }
  }

  int device_ = -1;
};

using ValueWords = QString (*)(const ProjectDocument& project, const Cell& cell);

/// How a field is told. One that has no row here is told by its own name and number.
struct FieldWords {
  std::string_view Name;
  std::string_view Area;
  ItemKind Kind;           ///< What the first index counts; Panel: nothing.
  std::string_view Field;  ///< With %1 for the item that the second index counts.
  ItemKind Target = ItemKind::Panel;
  ValueWords Words = nullptr;
};

template <const auto& Table>
QString WordOf(const ProjectDocument&, const Cell& cell) {
  const std::string_view word = Word(Table, cell.Number);
  return word.empty() ? QString::number(cell.Number) : ToUnicode(word);
}

QString YesOrNo(const ProjectDocument&, const Cell& cell) {
  return cell.Number != 0 ? QStringLiteral("Yes") : QStringLiteral("No");
}

QString Quarters(const ProjectDocument&, const Cell& cell) {
  return cell.Number >= NoEntry ? QStringLiteral("--:--")
                                : QString::fromStdString(QuarterHourText(cell.Number));
}

QString OnOrOff(const ProjectDocument&, const Cell& cell) {
  return WordOf<PresetRelayCodes>({}, cell);
}

QString ActionWord(const std::optional<ControlOptions>& options, Int32 code) {
  const std::string_view word = options ? Word(options->Actions, code) : std::string_view();
  return word.empty() ? QString::number(code) : ToUnicode(word);
}

template <ControlTable Table>
QString LocalAction(const ProjectDocument& project, const Cell& cell) {
  return ActionWord(LocalControlOptions(project.Panel.InputType(cell.First), Table), cell.Number);
}

template <ControlTable Table>
QString DeviceAction(const ProjectDocument& project, const Cell& cell) {
  const FennlinkRecord& device = project.Devices(cell.Device);
  return ActionWord(
      FennlinkControlOptions(device.DeviceType, device.DeviceInputType(cell.First), Table),
      cell.Number);
}

QString DeviceInputWord(const ProjectDocument& project, const Cell& cell) {
  const std::string_view word =
      FennlinkInputCaption(project.Devices(cell.Device).DeviceType, cell.Number);
  return word.empty() ? QString::number(cell.Number) : ToUnicode(word);
}

QString DeviceTypeWord(const ProjectDocument&, const Cell& cell) {
  return ToUnicode(FennlinkDevice(cell.Number).ListText);
}

QString PresetWord(const ProjectDocument&, const Cell& cell) {
  return ItemCode({ItemKind::Preset, cell.Number});
}

QString TimerWords(const ProjectDocument& project, const Cell& cell) {
  const PanelRecordType& panel = project.Panel;
  const int timer = cell.First;
  return QString::fromStdString(TimerInWords({panel.TimerTimeType(timer), panel.TimerTime(timer)},
                                             panel.TimerDays(timer), panel.TimerHolidayMonth(timer),
                                             panel.TimerHolidayDate(timer)));
}

using enum ItemKind;

constexpr auto FieldsInWords = std::to_array<FieldWords>({
    {"PanelName", "Names", Panel, "name"},
    {"RelayName", "Names", Relay, "name"},
    {"GroupName", "Names", Group, "name"},
    {"InputName", "Names", Input, "name"},
    {"TimerName", "Names", Timer, "name"},
    {"PresetName", "Names", Preset, "name"},
    {"DeviceName", "Names", Device, "name"},
    {"InputRelayControl", "Inputs", Input, "%1", Relay, LocalAction<ControlTable::Relay>},
    {"InputGroupControl", "Inputs", Input, "%1", Group, LocalAction<ControlTable::Group>},
    {"InputPreset", "Inputs", Input, "preset", Panel, PresetWord},
    {"RelayTimerType", "Relays", Relay, "timer type", Panel, WordOf<RelayTimerTypes>},
    {"RelayPowerOnType", "Relays", Relay, "power-on type", Panel, WordOf<RelayPowerOnTypes>},
    {"InputType", "Inputs", Input, "type", Panel, WordOf<InputTypes>},
    {"InputEnableTime", "Inputs", Input, "enable time", Panel, Quarters},
    {"InputDisableTime", "Inputs", Input, "disable time", Panel, Quarters},
    {"InputTimedOnTime", "Inputs", Input, "timed-on minutes"},
    {"GroupRelayInclude", "Groups", Group, "%1", Relay, YesOrNo},
    {"LocalPilot", "Pilots", Input, "pilot"},
    {"TimerRelayControl", "Timers", Timer, "%1", Relay, OnOrOff},
    {"TimerGroupControl", "Timers", Timer, "%1", Group, OnOrOff},
    {"TimerPresetControl", "Timers", Timer, "%1", Preset, YesOrNo},
    {"PresetRelayControl", "Presets", Preset, "%1", Relay, OnOrOff},
    {"TimerTimeType", "Timers", Timer, "runs", Panel, TimerWords},
    {"TimerTime", "Timers", Timer, "runs", Panel, TimerWords},
    {"TimerDays", "Timers", Timer, "runs", Panel, TimerWords},
    {"TimerHolidayMonth", "Timers", Timer, "runs", Panel, TimerWords},
    {"TimerHolidayDate", "Timers", Timer, "runs", Panel, TimerWords},
    {"OffHoursSweepRelay", "Sweeps", Relay, "swept", Panel, YesOrNo},
    {"OffHoursSweepGroup", "Sweeps", Group, "swept", Panel, YesOrNo},
    {"DMXChannel", "Add-on module", Relay, "DMX channel"},
    {"DSTEnabled", "Panel", Panel, "daylight saving", Panel, YesOrNo},
    {"TimeZone", "Panel", Panel, "time zone", Panel, WordOf<TimeZones>},
    {"DeviceType", "Bus devices", Device, "type", Panel, DeviceTypeWord},
    {"DeviceInputType", "Bus devices", DeviceInput, "type", Panel, DeviceInputWord},
    {"DeviceTimedOnTime", "Bus devices", DeviceInput, "timed-on minutes"},
    {"DevicePilot", "Pilots", DeviceInput, "pilot"},
    {"DeviceOffLevel", "Bus devices", DeviceInput, "off level"},
    {"DeviceOnLevel", "Bus devices", DeviceInput, "on level"},
    {"DeviceRelayControl", "Bus devices", DeviceInput, "%1", Relay,
     DeviceAction<ControlTable::Relay>},
    {"DeviceGroupControl", "Bus devices", DeviceInput, "%1", Group,
     DeviceAction<ControlTable::Group>},
    {"DevicePreset", "Bus devices", DeviceInput, "preset", Panel, PresetWord},
});

const FieldWords* WordsOf(const char* name) {
  const auto found = std::find_if(FieldsInWords.begin(), FieldsInWords.end(),
                                  [&](const FieldWords& row) { return row.Name == name; });
  return found == FieldsInWords.end() ? nullptr : &*found;
}

/// The communications settings stand in spare elements.
const char* SpareField(const Cell& cell) {
  if (cell.First != SpareItem) return nullptr;
  const std::string_view name = cell.Name;
  return name == "TimerName"       ? "phone number"
         : name == "PresetName"    ? "TCP/IP address"
         : name == "TimerTimeType" ? "connection type"
                                   : nullptr;
}

bool IsSpare(const Cell& cell, const FieldWords* words) {
  if (cell.Device == 0) return true;
  const std::string_view name = cell.Name;
  if (name == "DateOpenTime" || name == "DateCloseTime") return cell.First > 11 || cell.Second > 30;
  if (name == "NormalOpenTime" || name == "NormalCloseTime") return cell.First > 6;
  if (name == "IOCount") return cell.First >= NodeCount;
  if (!words || words->Kind == Panel) return false;
  if (cell.Device > 0) {
    return words->Kind == DeviceInput &&
           (cell.First >= DeviceInputCount || (words->Target != Panel && cell.Second >= ItemCount));
  }
  return cell.First >= ItemCount || (words->Target != Panel && cell.Second >= ItemCount);
}

/// "OffHoursSweepInterval" as "off hours sweep interval"; runs of capitals stay.
QString SplitName(std::string_view name) {
  QString words;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool capital = name[i] >= 'A' && name[i] <= 'Z';
    const bool before = i > 0 && name[i - 1] >= 'A' && name[i - 1] <= 'Z';
    const bool behind = i + 1 < name.size() && name[i + 1] >= 'a' && name[i + 1] <= 'z';
    if (capital && i > 0 && (!before || behind)) words += u' ';
    const QChar letter = QLatin1Char(name[i]);
    words += capital && behind ? letter.toLower() : letter;
  }
  return words;
}

struct DimmerField {
  int First;
  int Count;
  std::string_view Name;
};

constexpr auto DimmerFields = std::to_array<DimmerField>({
    {0, 1, "tracking mode"},
    {1, 1, "power-on level"},
    {2, 1, "fade rate"},
    {3, 1, "minimum"},
    {4, 1, "maximum"},
    {5, 1, "photocell node"},
    {6, 1, "tracking photocell"},
    {7, 1, "point A input"},
    {8, 1, "point A output"},
    {9, 1, "point B input"},
    {10, 1, "point B output"},
    {11, 1, "point C input"},
    {12, 1, "point C output"},
    {13, 2, "DMX channel"},
    {15, 1, "target"},
    {16, 16, "control type"},
    {48, 16, "control number"},
    {64, 16, "control device"},
    {80, 16, "control action"},
    {96, 16, "control revert"},
    {112, 1, "relay on level"},
    {113, 1, "relay off level"},
    {114, 6, "relays"},
});

/// A dimmer element: 128 an output, then one a device that says whether it is enabled.
Difference DimmerDifference(int element) {
  constexpr int elementsOfOutput = 128;
  constexpr int firstEnabled = elementsOfOutput * DimmerOutputCount * DimmerDeviceCount;
  const QString area = QStringLiteral("Dimmers");
  if (element >= firstEnabled) {
    return {area, {DimmerOutput, element - firstEnabled}, QStringLiteral("enabled"), {}, {}};
  }
  const int output = element / elementsOfOutput;
  const int offset = element % elementsOfOutput;
  QString field = QStringLiteral("setting %1").arg(offset);
  for (const DimmerField& known : DimmerFields) {
    if (offset < known.First || offset >= known.First + known.Count) continue;
    field = QString::fromLatin1(known.Name);
    if (known.Count > 2) field += QStringLiteral(" %1").arg(offset - known.First + 1);
  }
  return {
      area, {DimmerOutput, output / DimmerOutputCount, output % DimmerOutputCount}, field, {}, {}};
}

/// Area, item and field of a cell.
Difference Place(const Cell& cell, const FieldWords* words) {
  if (std::string_view(cell.Name) == "DimmerBlock") return DimmerDifference(cell.First);
  if (const char* spare = SpareField(cell)) {
    return {QStringLiteral("Connection"), {}, QString::fromLatin1(spare), {}, {}};
  }
  if (!words) {
    const bool device = cell.Device > 0;
    QString field = SplitName(cell.Name);
    const std::string_view name = cell.Name;
    if (name == "DateOpenTime" || name == "DateCloseTime") {
      field += QStringLiteral(" of %1 %2")
                   .arg(ToUnicode(Word(MonthNames, cell.First)))
                   .arg(cell.Second + 1);
    } else if (name == "NormalOpenTime" || name == "NormalCloseTime") {
      field += QStringLiteral(" of ") + ToUnicode(Word(WeekdayNames, cell.First));
    } else if (cell.First > 0 || cell.Second > 0 || name == "IOCount" || device) {
      field += QStringLiteral(" %1").arg(cell.First + 1);
    }
    const Item item = device ? Item{Device, cell.Device} : Item{};
    return {device ? QStringLiteral("Bus devices") : QStringLiteral("Panel"), item, field, {}, {}};
  }
  Item item{words->Kind, words->Kind == Panel ? 0 : cell.First};
  if (cell.Device > 0)
    item = {words->Kind, cell.Device, words->Kind == DeviceInput ? cell.First : 0};
  QString field = QString::fromLatin1(words->Field);
  if (words->Target != Panel) field = field.arg(ItemCode({words->Target, cell.Second}));
  return {QString::fromLatin1(words->Area), item, field, {}, {}};
}

QString Value(const ProjectDocument& project, const Cell& cell, const FieldWords* words) {
  if (cell.Text) return ToUnicode(*cell.Text);
  const std::string_view name = cell.Name;
  const bool time = name.ends_with("OpenTime") || name.ends_with("CloseTime");
  if (time) return Quarters(project, cell);
  if (!words || !words->Words || SpareField(cell)) return QString::number(cell.Number);
  return words->Words(project, cell);
}

}  // namespace

std::vector<Difference> CompareProjects(const ProjectDocument& one, const ProjectDocument& other,
                                        bool names) {
  const CellReader these(one);
  const CellReader those(other);
  std::vector<Difference> differences;
  std::set<Item> timersTold;  // The parts of a timer's time are told as one.
  const char* name = nullptr;
  const FieldWords* words = nullptr;
  for (std::size_t i = 0; i < these.Cells.size(); ++i) {
    const Cell& a = these.Cells[i];
    const Cell& b = those.Cells[i];
    const bool same = a.Text ? *a.Text == *b.Text : a.Number == b.Number;
    if (same) continue;
    if (a.Name != name) words = WordsOf(name = a.Name);
    if (IsSpare(a, words) && !SpareField(a)) continue;
    Difference difference = Place(a, words);
    if (!names && difference.Area == QLatin1String("Names")) continue;
    if (words && words->Words == TimerWords && !SpareField(a) &&
        !timersTold.insert(difference.Where).second) {
      continue;
    }
    difference.This = Value(one, a, words);
    difference.Other = Value(other, b, words);
    if (difference.This == difference.Other && !a.Text) {
      // Two codes with one word.
      difference.This = QString::number(a.Number);
      difference.Other = QString::number(b.Number);
    }
    differences.push_back(std::move(difference));
  }
  return differences;
}

ProjectDocument ThisProject() {
  return {PanelRecord, FennlinkRecords, DimmerBlock};
}

namespace {

/// What `change` makes of a project with the functions that work on the live one, which stays.
template <typename Change>
ProjectDocument Changed(const ProjectDocument& project, Change change) {
  const ProjectDocument live = ThisProject();
  const PanelImageType image = PanelImage;
  const Int16 namesToo = std::exchange(IncludeNamesInUpload, Int16{-1});
  const auto put = [](const ProjectDocument& document) {
    PanelRecord = document.Panel;
    FennlinkRecords = document.Devices;
    DimmerBlock = document.Dimmers;
  };
  const auto restore = [&] {
    put(live);
    PanelImage = image;
    IncludeNamesInUpload = namesToo;
  };
  try {
    put(project);
    change();
  } catch (...) {
    restore();
    throw;
  }
  ProjectDocument changed = ThisProject();
  restore();
  return changed;
}

}  // namespace

ProjectDocument AsPanelKeeps(const ProjectDocument& project) {
  return Changed(project, [] {
    const std::string memory = FreshPanelMemory();
    std::transform(memory.begin(), memory.end(), PanelImage.elements.begin(),
                   [](char byte) { return static_cast<unsigned char>(byte); });
    ApplyPanelImage();
  });
}

ProjectDocument UploadedOver(const ProjectDocument& project, const PanelImageType& memory) {
  return Changed(project, [&] {
    PanelImage = memory;
    ApplyPanelImage();
  });
}

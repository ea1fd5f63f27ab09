#include "panel/fields.h"

#include "panel/code_page.h"
#include "panel/dimmer_block.h"
#include "panel/fennlink_types.h"
#include "panel/format.h"
#include "panel/hex.h"
#include "panel/input_actions.h"
#include "panel/panel_image.h"
#include "panel/pilot_code.h"
#include "panel/pilot_source.h"
#include "panel/shown_percent.h"
#include "panel/time_values.h"

namespace {

/// An input without a type does nothing.
QString Action(const std::optional<ControlOptions>& options, Int32 code) {
  if (!options && code == 0)
    return ToUnicode(KindControlOptions({}, ControlTable::Relay).Actions[0]);
  return told::Code(options ? options->Actions : WordTable(), code);
}

QString LocalAction(const Project& project, const Place& place, Int32 value, ControlTable table) {
  return Action(LocalControlOptions(project.Panel.InputType(place.First), table), value);
}

QString DeviceAction(const Project& project, const Place& place, Int32 value, ControlTable table) {
  const FennlinkRecord& device = project.Devices(place.Device);
  return Action(
      FennlinkControlOptions(device.DeviceType, device.DeviceInputType(place.First), table), value);
}

/// "On If Relay 03".
QString Pilot(WordTable sources, Int32 value) {
  const auto pilot = static_cast<Int16>(value);
  const std::string_view source = Word(sources, PilotSource(pilot));
  if (source.empty()) return QString::number(value);
  return ToUnicode(source) + u' ' + QString::fromStdString(NumberText(PilotNumber(pilot) + 1, 2));
}

ItemKind KindOfRows(const std::optional<ControlOptions>& options) {
  switch (options ? options->Rows : ControlRows::Relays) {
    case ControlRows::Inputs:
      return ItemKind::Input;
    case ControlRows::Timers:
      return ItemKind::Timer;
    default:
      return ItemKind::Relay;
  }
}

// The compiler sees to it that the fields stand apart in the panel's memory.

/// Bits of the memory, counted from its start.
struct Stretch {
  int First;
  int End;
};

constexpr Stretch BytesFrom(int address, int count) {
  return {address * 8, (address + count) * 8};
}

constexpr Stretch StretchOf(const FieldFacts& facts, int device) {
  const Packing& memory = facts.Memory.Value;
  const int base = BaseOf(memory, device);
  const int first = facts.First.Value.Items;
  const int second = facts.Second.Value.Items;
  switch (memory.Way) {
    case Packing::How::None:
      return {};
    case Packing::How::PartOfByte:
      return {base * 8 + memory.Shift, base * 8 + memory.Shift + memory.Width};
    case Packing::How::Bit:
      return BytesFrom(base, (device > 0 ? first : second) * BitRowSize);
    case Packing::How::Planes:
      return BytesFrom(base, memory.Width * PlaneSize(device));
    default:
      return BytesFrom(base, first * second * SizeOf(memory));
  }
}

/// What a field must not leave.
constexpr Stretch RoomOf(const FieldFacts& facts, int device) {
  const Packing& memory = facts.Memory.Value;
  if (memory.Way == Packing::How::PartOfByte) return BytesFrom(BaseOf(memory, device), 1);
  if (device == 0) return BytesFrom(0, DeviceBlock);
  return memory.Address < DeviceControlBlock
             ? BytesFrom(DeviceBlock + device * DeviceBlockStride, DeviceBlockStride)
             : BytesFrom(DeviceControlBlock + device * DeviceControlStride, DeviceControlStride);
}

/// Whether each field keeps to its room and no two of them, nor one and `taken`, overlap.
template <typename Table>
constexpr bool StandApart(const Table& table, int device, Stretch taken) {
  return std::apply(
      [&](const auto&... field) {
        const std::array rooms{RoomOf(field.Facts, device)...};
        const std::array fields{StretchOf(field.Facts, device)..., taken};
        for (std::size_t i = 0; i < rooms.size(); ++i) {
          if (fields[i].First == fields[i].End) continue;
          if (fields[i].First < rooms[i].First || fields[i].End > rooms[i].End) return false;
          for (std::size_t j = i + 1; j < fields.size(); ++j) {
            if (fields[i].First < fields[j].End && fields[j].First < fields[i].End) return false;
          }
        }
        return true;
      },
      table);
}

static_assert(StandApart(fields::OfPanel, 0,
                         BytesFrom(PasswordAddress, std::tuple_size_v<PasswordDigits>)),
              "A field of the panel leaves its room or overlaps another.");
// The first bus device stands for all, whose blocks lie side by side.
static_assert(StandApart(fields::OfDevice, 1, {}),
              "A field of bus devices leaves its block or overlaps another.");
static_assert(BaseOf({.Address = DeviceBlock}, DeviceCount + 1) <=
              BaseOf({.Address = DeviceControlBlock}, 1));
static_assert(BaseOf({.Address = DeviceControlBlock}, DeviceCount + 1) <= DimmerBlockAddress);
static_assert(DimmerBlockAddress + DimmerBlockType::Size <= PanelImageSize);

}  // namespace

template <typename Owner, typename Type>
const FieldFacts& FactsOf(Type Owner::*member) {
  const FieldFacts* found = nullptr;
  const auto look = [&](const auto& field) {
    if constexpr (std::is_same_v<decltype(field.Member), Type Owner::*>) {
      if (field.Member == member) found = &field.Facts;
    }
  };
  const auto lookAtAll = [&](const auto&... field) { (look(field), ...); };
  std::apply(lookAtAll, fields::OfPanel);
  std::apply(lookAtAll, fields::OfDevice);
  return *found;
}

// The kinds of members that are asked for.
template const FieldFacts& FactsOf(Int16 PanelRecordType::*);
template const FieldFacts& FactsOf(std::string PanelRecordType::*);
template const FieldFacts& FactsOf(ItemArray PanelRecordType::*);
template const FieldFacts& FactsOf(ItemTable PanelRecordType::*);
template const FieldFacts& FactsOf(NameArray PanelRecordType::*);
template const FieldFacts& FactsOf(DateTable PanelRecordType::*);
template const FieldFacts& FactsOf(decltype(PanelRecordType::InputTimedOnTime) PanelRecordType::*);
template const FieldFacts& FactsOf(decltype(PanelRecordType::NormalOpenTime) PanelRecordType::*);
template const FieldFacts& FactsOf(decltype(PanelRecordType::IOCount) PanelRecordType::*);
template const FieldFacts& FactsOf(std::string FennlinkRecord::*);
template const FieldFacts& FactsOf(DeviceInputArray FennlinkRecord::*);

ItemKind KindOf(Axis axis) {
  switch (axis.Counts) {
    case Axis::Of::Relay:
      return ItemKind::Relay;
    case Axis::Of::Group:
      return ItemKind::Group;
    case Axis::Of::Input:
      return ItemKind::Input;
    case Axis::Of::Timer:
      return ItemKind::Timer;
    case Axis::Of::Preset:
      return ItemKind::Preset;
    case Axis::Of::DeviceInput:
      return ItemKind::DeviceInput;
    default:
      return ItemKind::Panel;
  }
}

Item ItemOf(const FieldFacts& facts, const Place& place) {
  const ItemKind kind = KindOf(facts.First.Value);
  if (kind == ItemKind::DeviceInput) return {kind, place.Device, place.First};
  if (place.Device > 0) return {ItemKind::Device, place.Device};
  return kind == ItemKind::Panel ? Item{} : Item{kind, place.First};
}

QString PhraseOf(const Project& project, const FieldFacts& facts, const Place& place) {
  QString phrase = QString::fromLatin1(facts.Phrase.Value);
  if (!phrase.contains(u'%')) return phrase;
  switch (facts.First.Value.Counts) {
    case Axis::Of::Month:
      return phrase.arg(QStringLiteral("%1 %2")
                            .arg(ToUnicode(Word(MonthNames, place.First)))
                            .arg(place.Second + 1));
    case Axis::Of::Weekday:
      return phrase.arg(ToUnicode(Word(WeekdayNames, place.First)));
    case Axis::Of::Node:
      return phrase.arg(QString::number(place.First + 1, 16).toUpper());
    case Axis::Of::Byte:
      return phrase.arg(place.First + 1);
    default:
      break;
  }
  const auto target = facts.Told.Value.Target;
  const ItemKind kind = target ? target(project, place) : KindOf(facts.Second.Value);
  return phrase.arg(ItemCode({kind, place.Second}));
}

namespace told {

QString Code(WordTable table, Int32 code) {
  const std::string_view word = Word(table, code);
  return word.empty() ? QString::number(code) : ToUnicode(word);
}

QString Number(const Project&, const Place&, Int32 value) {
  return QString::number(value);
}

QString NumberFrom1(const Project&, const Place&, Int32 value) {
  return QString::number(value + 1);
}

QString YesOrNo(const Project&, const Place&, Int32 value) {
  return value != 0 ? QStringLiteral("Yes") : QStringLiteral("No");
}

QString Quarters(const Project&, const Place&, Int32 value) {
  return value >= NoEntry ? QStringLiteral("--:--")
                          : QString::fromStdString(QuarterHourText(value));
}

QString Minutes(const Project&, const Place&, Int32 value) {
  return QStringLiteral("%1 min").arg(value);
}

QString Seconds(const Project&, const Place&, Int32 value) {
  return QStringLiteral("%1 s").arg(value);
}

QString DegreesNorth(const Project&, const Place&, Int32 value) {
  return QStringLiteral("%1 degrees north").arg(value);
}

QString DegreesWest(const Project&, const Place&, Int32 value) {
  return QStringLiteral("%1 degrees west").arg(value);
}

QString Percent(const Project&, const Place&, Int32 value) {
  return QStringLiteral("%1%").arg(value);
}

QString LevelOf255(const Project&, const Place&, Int32 value) {
  return QStringLiteral("%1/255 (%2%)").arg(value).arg(ShownPercent(value));
}

QString PresetCode(const Project&, const Place&, Int32 value) {
  return ItemCode({ItemKind::Preset, value});
}

QString Blocks(const Project&, const Place&, Int32 value) {
  return value == 0 ? QStringLiteral("No I/O")
                    : QStringLiteral("%1 I/O").arg(value * PointsOfBlock);
}

QString Port(const Project&, const Place&, Int32 value) {
  return QStringLiteral("COM%1").arg(value);
}

QString DMXChannel(const Project&, const Place&, Int32 value) {
  return value == 0 ? QStringLiteral("None") : QStringLiteral("DMX %1").arg(value);
}

QString AddOnModule(const Project&, const Place&, Int32 value) {
  const std::string_view word = AddOnModuleOf(value).OptionText;
  return word.empty() ? QString::number(value) : ToUnicode(word);
}

QString Month(const Project&, const Place&, Int32 value) {
  const std::string_view word = Word(MonthNames, value - 1);
  return word.empty() ? QString::number(value) : ToUnicode(word);
}

QString Week(const Project&, const Place&, Int32 value) {
  const std::string_view word = Word(DSTWeeks, value - 1);
  return word.empty() ? QString::number(value) : QString::fromStdString(DSTWeekListText(word));
}

QString LocalPilot(const Project&, const Place&, Int32 value) {
  return Pilot(LocalPilotSources, value);
}

QString DevicePilot(const Project&, const Place&, Int32 value) {
  const auto pilot = static_cast<Int16>(value);
  if (PilotSource(pilot) != PilotStatic) return Pilot(FennlinkPilotSources, value);
  return (pilot & 1) != 0 ? QStringLiteral("Static On") : QStringLiteral("Static Off");
}

QString RelayAction(const Project& project, const Place& place, Int32 value) {
  return LocalAction(project, place, value, ControlTable::Relay);
}

QString GroupAction(const Project& project, const Place& place, Int32 value) {
  return LocalAction(project, place, value, ControlTable::Group);
}

QString DeviceRelayAction(const Project& project, const Place& place, Int32 value) {
  return DeviceAction(project, place, value, ControlTable::Relay);
}

QString DeviceGroupAction(const Project& project, const Place& place, Int32 value) {
  return DeviceAction(project, place, value, ControlTable::Group);
}

ItemKind LocalRows(const Project& project, const Place& place) {
  return KindOfRows(LocalControlOptions(project.Panel.InputType(place.First), ControlTable::Relay));
}

ItemKind DeviceRows(const Project& project, const Place& place) {
  const FennlinkRecord& device = project.Devices(place.Device);
  return KindOfRows(FennlinkControlOptions(device.DeviceType, device.DeviceInputType(place.First),
                                           ControlTable::Relay));
}

QString DeviceType(const Project&, const Place&, Int32 value) {
  const bool known = value >= 0 && static_cast<std::size_t>(value) < FennlinkDeviceTypes.size();
  return known ? ToUnicode(FennlinkDevice(value).ListText) : QString::number(value);
}

QString DeviceInputType(const Project& project, const Place& place, Int32 value) {
  const Int16 type = project.Devices(place.Device).DeviceType;
  const std::string_view word = FennlinkInputCaption(type, value);
  if (word.empty() && value == 0) return QStringLiteral("None");
  return word.empty() ? QString::number(value) : ToUnicode(word);
}

QString TimerRuns(const Project& project, const Place& place, Int32) {
  const PanelRecordType& panel = project.Panel;
  const int timer = place.First;
  return QString::fromStdString(TimerInWords({panel.TimerTimeType(timer), panel.TimerTime(timer)},
                                             panel.TimerDays(timer), panel.TimerHolidayMonth(timer),
                                             panel.TimerHolidayDate(timer)));
}

}  // namespace told

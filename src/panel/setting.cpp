#include "panel/setting.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "panel/fields.h"
#include "panel/format.h"
#include "panel/slot_words.h"

namespace {

using How = DimmerField::How;

constexpr int BitsOfByte = 8;
constexpr int BitsOfElement = 16;

/// The bits of an element that are a field's, and those of none with the first of its fields.
Int32 OwnBits(const DimmerField& field, int index) {
  const bool row = field.Way == How::BitRow;
  if (field.Way == How::Bit || (row && index % BitsOfByte != 0)) return MaskOf(field, index);
  Int32 others = row ? 0xFE : 0;
  for (const DimmerField* other : dim::Fields) {
    if (other->Way == How::Bit && other->Element == field.Element) others |= MaskOf(*other, 0);
  }
  return ~others;
}

Int32 ElementOf(const Setting& setting) {
  const OutputPlace place{static_cast<Int16>(setting.At.Device),
                          static_cast<Int16>(setting.At.First)};
  return DimmerElement(*setting.Dimmer, place, setting.At.Second);
}

Int32 DimmerNumber(const DimmerBlockType& block, const Setting& setting) {
  const Int32 element = ElementOf(setting);
  if (setting.Dimmer->Way == How::HighLow) {
    return block(element) * (1 << BitsOfElement) + static_cast<std::uint16_t>(block(element + 1));
  }
  return static_cast<Int16>(block(element) & OwnBits(*setting.Dimmer, setting.At.Second));
}

void PutDimmerNumber(DimmerBlockType& block, const Setting& setting, Int32 number) {
  const Int32 element = ElementOf(setting);
  if (setting.Dimmer->Way == How::HighLow) {
    block(element) = static_cast<Int16>(number >> BitsOfElement);
    block(element + 1) = static_cast<Int16>(number);
  } else {
    const Int32 own = OwnBits(*setting.Dimmer, setting.At.Second);
    block(element) = static_cast<Int16>((block(element) & ~own) | (number & own));
  }
}

/// Calls `visit(element)` for the element of a field that is no dimmer's.
template <typename ProjectType, typename Visit>
void VisitElement(ProjectType& project, const Setting& setting, const Visit& visit) {
  const auto look = [&](const FieldFacts& facts, auto& field) {
    if (&facts != setting.Field) return;
    if constexpr (requires { field.elements; }) {
      visit(field(setting.At.First, setting.At.Second));
    } else {
      visit(field);
    }
  };
  // The null device is no panel.
  if (setting.At.Device == 0) ForEachPanelField(project.Panel, look);
  ForEachDeviceField(project.Devices(setting.At.Device), look);
}

/// The number by which editors store the Yes of a flag of which the panel keeps a bit, be it 1 or
/// -1 here; 0 of all else. A dimmer's numbers it keeps as they are.
Int32 YesOf(const Setting& setting) {
  if (setting.Dimmer) return 0;
  const Packing& memory = setting.Field->Memory.Value;
  if (memory.Way == Packing::How::Planes && memory.Width == 1) return 1;
  return memory.Way == Packing::How::Flag || memory.Way == Packing::How::Bit ? -1 : 0;
}

/// Walks two projects side by side.
class SettingWalk {
 public:
  using Visit = std::function<void(const Setting& setting, bool spare)>;

  SettingWalk(const Project& one, const Project& other, bool all, const Visit& visit)
      : one_(one), other_(other), all_(all), visit_(visit) {}

  void Walk() {
    Fields(fields::OfPanel, one_.Panel, other_.Panel, 0, false);
    for (int n = 0; n <= DeviceCount; ++n) {
      Fields(fields::OfDevice, one_.Devices(n), other_.Devices(n), n, n == 0);
    }
    if (!all_ && one_.Dimmers == other_.Dimmers) return;
    for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
      for (int out = 0; out < DimmerOutputCount; ++out) Output(dev, out);
    }
    for (int dev = 0; dev < DimmerDeviceCount; ++dev) Dimmer(dim::DeviceEnabled, {0, 0, dev});
  }

 private:
  template <typename Table, typename Owner>
  void Fields(const Table& table, const Owner& one, const Owner& other, int device, bool spare) {
    if (!all_ && one == other) return;
    const auto each = [&](const auto& field) {
      Elements(field.Facts, one.*field.Member, other.*field.Member, device, spare);
    };
    std::apply([&](const auto&... field) { (each(field), ...); }, table);
  }

  template <typename T, int First, int Second>
  void Elements(const FieldFacts& facts, const FixedArray<T, First, Second>& one,
                const FixedArray<T, First, Second>& other, int device, bool spare) {
    if (!all_ && one == other) return;
    for (int j = 0; j < Second; ++j) {
      for (int i = 0; i < First; ++i) {
        const bool item = i < facts.First.Value.Items && j < facts.Second.Value.Items;
        const bool used = item || (facts.Spare && i == SpareItem);
        if (all_ || one(i, j) != other(i, j)) {
          visit_({&facts, nullptr, {device, i, j}}, spare || !used);
        }
      }
    }
  }

  template <typename T>
  void Elements(const FieldFacts& facts, const T& one, const T& other, int device, bool spare) {
    if (all_ || one != other) visit_({&facts, nullptr, {device}}, spare);
  }

  void Output(int dev, int out) {
    const int first = (dev * DimmerOutputCount + out) * ElementsOfOutput;
    const auto* elements = &one_.Dimmers(first);
    if (!all_ && std::equal(elements, elements + ElementsOfOutput, &other_.Dimmers(first))) {
      return;
    }
    for (const DimmerField* field : dim::Fields) {
      for (int index = 0; index < field->Count; ++index) Dimmer(*field, {dev, out, index});
    }
  }

  void Dimmer(const DimmerField& field, const Place& place) {
    const Setting setting{nullptr, &field, place};
    if (all_ || DimmerNumber(one_.Dimmers, setting) != DimmerNumber(other_.Dimmers, setting)) {
      visit_(setting, false);
    }
  }

  const Project& one_;
  const Project& other_;
  bool all_;
  const Visit& visit_;
};

}  // namespace

const SpareUse* SpareOf(const Setting& setting) {
  return setting.Field && setting.At.First == SpareItem ? setting.Field->Spare : nullptr;
}

QString AreaOf(const Setting& setting) {
  if (setting.Dimmer) return QStringLiteral("Dimmers");
  const SpareUse* spare = SpareOf(setting);
  return QString::fromLatin1(spare ? spare->Area : setting.Field->Area.Value);
}

Item ItemOf(const Setting& setting) {
  const Place& at = setting.At;
  if (setting.Dimmer == &dim::DeviceEnabled) return {ItemKind::DimmerOutput, at.Second};
  if (setting.Dimmer) return {ItemKind::DimmerOutput, at.Device, at.First};
  return SpareOf(setting) ? Item{} : ItemOf(*setting.Field, at);
}

QString PhraseOf(const Project& project, const Setting& setting) {
  if (setting.Whole && !setting.Dimmer) return QStringLiteral("runs");
  if (setting.Whole) return QStringLiteral("control slot %1").arg(setting.At.Second + 1);
  if (const DimmerField* field = setting.Dimmer) {
    QString phrase = QString::fromLatin1(field->Phrase);
    if (!phrase.contains(u'%')) return phrase;
    const int number = setting.At.Second + 1;
    return phrase.arg(field->Way == How::BitRow ? TwoDigits(number) : QString::number(number));
  }
  const SpareUse* spare = SpareOf(setting);
  return spare ? QString::fromLatin1(spare->Phrase) : PhraseOf(project, *setting.Field, setting.At);
}

const Editor& EditorOf(const Setting& setting) {
  if (setting.Dimmer) return setting.Dimmer->Where;
  const SpareUse* spare = SpareOf(setting);
  return spare ? spare->Where : setting.Field->Where.Value;
}

Spot SpotOf(const Setting& setting) {
  const auto counts = [&](const Needed<Axis> FieldFacts::*axis, Axis::Of what) {
    return setting.Field && (setting.Field->*axis).Value.Counts == what;
  };
  const bool single = counts(&FieldFacts::Second, Axis::Of::Nothing);
  const bool ofMonth = counts(&FieldFacts::First, Axis::Of::Month);
  return {EditorOf(setting), single ? setting.At.First : setting.At.Second,
          ofMonth ? setting.At.First : -1};
}

SettingValue ValueOf(const Project& project, const Setting& setting) {
  if (setting.Dimmer) return DimmerNumber(project.Dimmers, setting);
  SettingValue value;
  VisitElement(project, setting, [&](const auto& element) { value = element; });
  return value;
}

void PutValue(Project& project, const Setting& setting, const SettingValue& value) {
  if (setting.Dimmer) return PutDimmerNumber(project.Dimmers, setting, std::get<Int32>(value));
  VisitElement(project, setting, [&]<typename T>(T& element) {
    if constexpr (std::is_same_v<T, std::string>) {
      element = std::get<std::string>(value);
    } else {
      element = static_cast<T>(std::get<Int32>(value));
    }
  });
}

NumberRange RangeOf(const Project& project, const Setting& setting) {
  NumberRange range{};
  const auto all = [&range]<typename T>(const T&) {
    if constexpr (!std::is_same_v<T, std::string>) {
      range = {std::numeric_limits<T>::min(), std::numeric_limits<T>::max()};
    }
  };
  if (!setting.Dimmer) {
    VisitElement(project, setting, all);
  } else if (setting.Dimmer->Way == How::HighLow) {
    all(Int32{});
  } else {
    all(Int16{});
  }
  return range;
}

SettingValue UsualValueOf(const Project& project, const Setting& setting) {
  SettingValue value = ValueOf(project, setting);
  if (const Int32* number = std::get_if<Int32>(&value)) {
    return YesOf(setting) != 0 ? NumberOfMeaning(setting, *number) : *number;
  }
  const Packing::How way = setting.Field->Memory.Value.Way;
  if (SpareOf(setting)) return value;
  auto& text = std::get<std::string>(value);
  text.resize(text.find_last_not_of(' ') + 1);
  if (way == Packing::How::PanelName && text.empty()) text = NamelessPanel;
  return value;
}

Int32 MeaningOf(const Setting& setting, Int32 number) {
  if (!setting.Dimmer) return number;
  const bool pair = setting.Dimmer->Way == How::HighLow;
  return DecodeDimmer(*setting.Dimmer, static_cast<Int16>(pair ? number >> BitsOfElement : number),
                      static_cast<Int16>(number), setting.At.Second);
}

Int32 NumberOfMeaning(const Setting& setting, Int32 meaning) {
  const Int32 yes = YesOf(setting);
  if (yes != 0) return meaning == 1 || meaning == -1 ? yes : meaning;
  if (!setting.Dimmer) return meaning;
  const auto value = static_cast<Int16>(meaning);
  const Int32 element = EncodeDimmer(*setting.Dimmer, 0, value, setting.At.Second);
  constexpr int channelsOfHigh = 256;
  return setting.Dimmer->Way == How::HighLow
             ? element * (1 << BitsOfElement) + static_cast<std::uint16_t>(value % channelsOfHigh)
             : element;
}

void TakeOver(Project& into, const Project& from, const Setting& setting) {
  if (setting.Whole) {
    for (const Setting& part : PartsOf(setting)) TakeOver(into, from, part);
  } else {
    PutValue(into, setting, ValueOf(from, setting));
  }
}

void ForEachDifferent(const Project& one, const Project& other,
                      const std::function<void(const Setting& setting, bool spare)>& visit) {
  SettingWalk(one, other, false, visit).Walk();
}

void ForEachSetting(const std::function<void(const Setting& setting)>& visit) {
  const auto told = [&](const Setting& setting, bool spare) {
    if (spare) return;
    visit(setting);
    const auto whole = WholeOf(setting);
    if (whole && PartsOf(*whole).front() == setting) visit(*whole);
  };
  const auto none = std::make_unique<Project>();
  SettingWalk(*none, *none, true, told).Walk();
}

SettingUnit UnitOf(const Project& project, const Setting& setting) {
  using P = PanelRecordType;
  // Each opening with its closing.
  static const std::array pairs = {
      std::pair(&FactsOf(&P::NormalOpenTime), &FactsOf(&P::NormalCloseTime)),
      std::pair(&FactsOf(&P::DateOpenTime), &FactsOf(&P::DateCloseTime))};
  if (const auto whole = WholeOf(setting)) return {PhraseOf(project, *whole), PartsOf(*whole)};
  for (const auto& [open, close] : pairs) {
    if (setting.Field != open && setting.Field != close) continue;
    return {PhraseOf(project, {open, nullptr, setting.At}).replace("open time", "times"),
            {{open, nullptr, setting.At}, {close, nullptr, setting.At}}};
  }
  return {PhraseOf(project, setting), {setting}};
}

std::optional<Setting> WholeOf(const Setting& part) {
  const auto isPart = [&](const ControlSlotPart& row) { return row.Field == part.Dimmer; };
  const bool isOne =
      part.Dimmer ? std::any_of(ControlSlotParts.begin(), ControlSlotParts.end(), isPart)
                  : part.Field->Told.Value.Tell == told::TimerRuns && part.At.First < ItemCount;
  return isOne ? std::optional(Setting{part.Field, part.Dimmer, part.At, true}) : std::nullopt;
}

std::vector<Setting> PartsOf(const Setting& whole) {
  using P = PanelRecordType;
  std::vector<Setting> parts;
  if (whole.Dimmer) {
    for (const ControlSlotPart& part : ControlSlotParts) {
      parts.push_back({nullptr, part.Field, whole.At});
    }
    return parts;
  }
  for (const auto member : {&P::TimerTimeType, &P::TimerTime, &P::TimerDays, &P::TimerHolidayMonth,
                            &P::TimerHolidayDate}) {
    parts.push_back({&FactsOf(member), nullptr, whole.At});
  }
  return parts;
}

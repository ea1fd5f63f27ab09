#include "panel/difference.h"

#include <array>
#include <string_view>

#include "panel/code_page.h"
#include "panel/dimmer_fields.h"
#include "panel/fields.h"

namespace {

const QString NamesArea = QStringLiteral("Names");

Spot SpotOf(const FieldFacts& facts, const Place& place) {
  const bool table = facts.Second.Value.Counts != Axis::Of::Nothing;
  const bool ofMonth = facts.First.Value.Counts == Axis::Of::Month;
  return {facts.Where.Value, table ? place.Second : place.First, ofMonth ? place.First : -1};
}

/// Walks two projects side by side and collects what differs.
class Comparison {
 public:
  Comparison(const Project& one, const Project& other, bool names)
      : one_(one), other_(other), names_(names) {}

  std::vector<Difference> Compare() {
    Fields(one_.Panel, other_.Panel, 0);
    for (int n = 1; n <= DeviceCount; ++n) Fields(one_.Devices(n), other_.Devices(n), n);
    Dimmers();
    return std::move(found_);
  }

 private:
  /// The rows of the other project pass in step.
  template <typename Owner>
  void Fields(const Owner& one, const Owner& other, int device) {
    if (one == other) return;
    const auto compare = [&](const auto& field) {
      Field(field.Facts, one.*field.Member, other.*field.Member, device);
    };
    if constexpr (std::is_same_v<Owner, PanelRecordType>) {
      std::apply([&](const auto&... field) { (compare(field), ...); }, fields::OfPanel);
    } else {
      std::apply([&](const auto&... field) { (compare(field), ...); }, fields::OfDevice);
    }
  }

  template <typename Value>
  void Field(const FieldFacts& facts, const Value& one, const Value& other, int device) {
    if (one == other) return;
    if constexpr (requires { one.elements; }) {
      for (int j = 0; j < facts.Second.Value.Items; ++j) {
        for (int i = 0; i < facts.First.Value.Items; ++i) {
          Element(facts, one(i, j), other(i, j), {device, i, j});
        }
      }
      if (facts.Spare && one(SpareItem) != other(SpareItem)) {
        Add({QString::fromLatin1(facts.Spare->Area),
             {},
             QString::fromLatin1(facts.Spare->Phrase),
             Told(facts.Spare->Told, one_, {}, one(SpareItem)),
             Told(facts.Spare->Told, other_, {}, other(SpareItem)),
             {facts.Spare->Where}});
      }
    } else {
      Element(facts, one, other, {device});
    }
  }

  template <typename Value>
  void Element(const FieldFacts& facts, const Value& one, const Value& other, const Place& place) {
    if (one == other) return;
    const QString area = QString::fromLatin1(facts.Area.Value);
    if (area == NamesArea && !names_) return;
    // The parts of a timer's time are told as one.
    const bool runs = facts.Told.Value.Tell == told::TimerRuns;
    if (runs && std::exchange(timerTold_[static_cast<std::size_t>(place.First)], true)) return;
    Difference difference{area,
                          ItemOf(facts, place),
                          runs ? QStringLiteral("runs") : PhraseOf(one_, facts, place),
                          Told(facts.Told.Value, one_, place, one),
                          Told(facts.Told.Value, other_, place, other),
                          SpotOf(facts, place)};
    if constexpr (!std::is_same_v<Value, std::string>) {
      if (difference.This == difference.Other) {
        // Two codes with one word, a date of a timer that runs by weekdays.
        difference.Field = PhraseOf(one_, facts, place);
        difference.This = QString::number(one);
        difference.Other = QString::number(other);
      }
    }
    Add(std::move(difference));
  }

  static QString Told(const Words&, const Project&, const Place&, const std::string& text) {
    return ToUnicode(text);
  }
  static QString Told(const Words& words, const Project& project, const Place& place, Int32 value) {
    return words.Tell(project, place, value);
  }

  void Dimmers() {
    if (one_.Dimmers == other_.Dimmers) return;
    for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
      for (Int16 out = 0; out < DimmerOutputCount; ++out) Output(dev, out);
    }
    for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
      const Int16 one = one_.Dimmers(DeviceEnabledElement + dev);
      const Int16 other = other_.Dimmers(DeviceEnabledElement + dev);
      if (one == other) continue;
      AddDimmer({ItemKind::DimmerOutput, dev}, QStringLiteral("enabled"), {told::YesOrNo}, {},
                {EditedBy(Screen::DimmerOutput, "chkEnabled")}, one, other);
    }
  }

  /// The fields that differ, then what differs besides in elements whose fields are equal.
  void Output(Int16 dev, Int16 out) {
    std::array<bool, ElementsOfOutput> seen{};
    const Int32 base = DimmerElement(*dim::Fields.front(), {dev, out});
    for (const bool raw : {false, true}) {
      for (const DimmerField* field : dim::Fields) {
        for (int index = 0; index < field->Count; ++index) {
          const Int32 at = DimmerElement(*field, {dev, out}, index);
          const bool pair = field->Way == DimmerField::How::HighLow;
          bool differs = false;
          for (Int32 element = at; element <= at + (pair ? 1 : 0); ++element) {
            const int one = one_.Dimmers(element);
            const int other = other_.Dimmers(element);
            bool& done = seen[static_cast<std::size_t>(element - base)];
            const int mask = raw ? ~0 : MaskOf(*field, index);
            if (((one ^ other) & mask) == 0 || (raw && done)) continue;
            differs = done = true;
          }
          if (differs) AddField(*field, {dev, out}, index, raw);
        }
      }
    }
  }

  void AddField(const DimmerField& field, OutputPlace place, int index, bool raw) {
    const Item item{ItemKind::DimmerOutput, place.Device, place.Output};
    QString phrase = QString::fromLatin1(field.Phrase);
    const bool relay = field.Way == DimmerField::How::BitRow;
    if (phrase.contains(u'%')) phrase = phrase.arg(index + 1, relay ? 2 : 1, 10, QLatin1Char('0'));
    const Int32 at = DimmerElement(field, place, index);
    const auto value = [&](const Project& project) -> std::optional<Int16> {
      try {
        return DimmerValue(project.Dimmers, field, place, index);
      } catch (const RunTimeFailure&) {
        return {};  // a level that no percentage tells
      }
    };
    const std::optional<Int16> one = value(one_);
    const std::optional<Int16> other = value(other_);
    if (raw || !one || !other) {
      Add({QStringLiteral("Dimmers"),
           item,
           phrase,
           QString::number(one_.Dimmers(at)),
           QString::number(other_.Dimmers(at)),
           {field.Where, index}});
      return;
    }
    AddDimmer(item, phrase, field.Told, {place.Device, place.Output, index}, {field.Where, index},
              *one, *other, at);
  }

  void AddDimmer(const Item& item, const QString& phrase, const Words& words, const Place& place,
                 const Spot& spot, Int16 one, Int16 other, Int32 element = -1) {
    QString these = words.Tell(one_, place, one);
    QString those = words.Tell(other_, place, other);
    if (these == those) {
      these = QString::number(element < 0 ? one : one_.Dimmers(element));
      those = QString::number(element < 0 ? other : other_.Dimmers(element));
    }
    Add({QStringLiteral("Dimmers"), item, phrase, these, those, spot});
  }

  void Add(Difference difference) { found_.push_back(std::move(difference)); }

  const Project& one_;
  const Project& other_;
  bool names_;
  std::array<bool, ItemCount> timerTold_{};
  std::vector<Difference> found_;
};

}  // namespace

std::vector<Difference> CompareProjects(const Project& one, const Project& other, bool names) {
  return Comparison(one, other, names).Compare();
}

#include "document/rules/check/check.h"
#include "panel/fields.h"
#include "panel/lists_in_words.h"

// Numbers that no list of the editors has, by the table of fields.

namespace {

/// Tells of a field in one row, by the first of its numbers.
class CodeWalk {
 public:
  CodeWalk(const CheckScope& scope, const TellFinding& tell) : scope_(scope), tell_(tell) {}

  /// The fields of a bus device from 1, or of the panel's own record for 0.
  void SetDevice(int device) { device_ = device; }

  void operator()(const FieldFacts&, const std::string&) const {}

  template <typename Number>
  void operator()(const FieldFacts& facts, const Number& value) const {
    Wrong wrong;
    if (!IsSound(facts, {device_}, value)) wrong.Add({&facts, nullptr, {device_}});
    Tell(wrong);
  }

  template <typename T, int First, int Second>
  void operator()(const FieldFacts& facts, const FixedArray<T, First, Second>& array) const {
    if constexpr (!std::is_same_v<T, std::string>) {
      LookAtSpare(facts, array);
      const Words& words = facts.Told.Value;
      if (!words.Has && words.Choices.empty()) return;
      Wrong wrong;
      for (int i = 0; i < facts.First.Value.Items; ++i) {
        for (int j = 0; j < facts.Second.Value.Items; ++j) {
          const Place place{device_, i, j};
          if (!IsSound(facts, place, array(i, j))) wrong.Add({&facts, nullptr, place});
        }
      }
      Tell(wrong);
    }
  }

  void Output(int dev, int out) const {
    const DimmerOutput output(scope_.Of.Dimmers, dev, out);
    for (const DimmerField* field : dim::Fields) {
      if (!field->Told.Has && field->Told.Choices.empty()) continue;
      Wrong wrong;
      for (int index = 0; index < field->Count; ++index) {
        const Place place{dev, out, index};
        const Int16 value = output(*field, index);
        if (!IsListed(field->Told, scope_.Of, place, value)) wrong.Add({nullptr, field, place});
      }
      Tell(wrong);
    }
  }

 private:
  struct Wrong {
    Setting First;
    int Count = 0;

    void Add(const Setting& setting) {
      if (Count++ == 0) First = setting;
    }
  };

  /// What does not fit the panel's memory is told as such. Without the module its settings do
  /// nothing.
  bool IsSound(const FieldFacts& facts, const Place& place, Int32 value) const {
    const bool ofDMX = facts.Where.Value.On == Screen::AddOnModuleDMX;
    return (ofDMX && scope_.Of.Panel.AddOnModuleType != AddOnModuleDMX) ||
           IsListed(facts.Told.Value, scope_.Of, place, value) ||
           !HoldsNumber(facts.Memory.Value, value);
  }

  /// The last element, which holds something else.
  template <typename Array>
  void LookAtSpare(const FieldFacts& facts, const Array& array) const {
    if (!facts.Spare) return;
    Wrong wrong;
    const Place place{device_, SpareItem};
    if (!IsListed(facts.Spare->Told, scope_.Of, place, array(SpareItem, 0))) {
      wrong.Add({&facts, nullptr, place});
    }
    Tell(wrong);
  }

  void Tell(const Wrong& wrong) const {
    if (wrong.Count == 0) return;
    const QString more =
        wrong.Count == 1
            ? QString()
            : QStringLiteral(" The same is wrong with %1.")
                  .arg(Counted(wrong.Count - 1, QStringLiteral("other"), QStringLiteral("others")));
    const Item item = ItemOf(wrong.First);
    tell_(item,
          QStringLiteral("%1, %2: %3 is in no list of its editor.")
                  .arg(scope_.Text(item), PhraseOf(scope_.Of, wrong.First),
                       WordsOf(scope_.Of, wrong.First)) +
              more,
          wrong.First);
  }

  const CheckScope& scope_;
  const TellFinding& tell_;
  int device_ = 0;
};

void LookAtCodes(const CheckScope& scope, const TellFinding& tell) {
  CodeWalk walk(scope, tell);
  ForEachPanelField(scope.Of.Panel, walk);
  for (int n = 1; n <= DeviceCount; ++n) {
    walk.SetDevice(n);
    ForEachDeviceField(scope.Of.Devices(n), walk);
  }
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (!DimmerEnabled(scope.Of.Dimmers, dev)) continue;
    for (int out = 0; out < DimmerOutputCount; ++out) walk.Output(dev, out);
  }
}

constexpr auto RulesOfCodes = std::to_array<CheckRule>({
    {"unlisted-code", Severity::Error, Screen::None, LookAtCodes,
     "A number is in no list of its editor."},
});

}  // namespace

std::span<const CheckRule> CodeRules() {
  return RulesOfCodes;
}

#pragma once

#include <QHash>
#include <array>
#include <bitset>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "document/rules/uses.h"
#include "panel/panel_image.h"
#include "panel/setting.h"

// What a configuration has wrong that no single screen shows. A rule is a row in one of the tables
// of the check_*.cpp files and a small function beside it; nothing is changed by looking.

enum class Severity { Error, Warning, Note };

/// "error", "warning", "note".
QString SeverityWord(Severity severity);

struct Finding {
  Severity Level;
  std::string_view Rule;  ///< The rule's short name, which never changes.
  Item Where;
  QString Sentence;
  Screen On;                  ///< Where it is mended.
  std::optional<Setting> Of;  ///< The setting to open there, where no item leads to it.
};

/// "1 error", "2 warnings".
QString CountOf(int count, Severity severity);
/// How many are of that severity.
QString CountOf(Severity severity, std::span<const Finding> findings);

constexpr Int16 PowerOnByInput = 2;  ///< "On/In:1": the first input decides.

/// EffectOn and EffectOff of each relay.
using RelayEffects = std::array<unsigned, ItemCount>;

using ItemSet = std::bitset<ItemCount>;

/// What relays are told in the end.
struct RelayOutcome {
  ItemSet On;
  ItemSet Off;

  /// Something else is told later.
  void Then(const RelayOutcome& later) {
    On = (On & ~later.Off) | later.On;
    Off = (Off & ~later.On) | later.Off;
  }
};

/// What a check is told beside the project.
struct CheckFacts {
  bool FileEndsEarly = false;  ///< The file that was opened did not hold all of it.
  /// What the last transfer of this run has left.
  const PanelImageType* LastTransfer = nullptr;
};

/// Effects by item. A panel in full use has tens of thousands of uses, so those of real items stand
/// in a row; numbers of damaged fields are kept aside.
class EffectsByItem {
 public:
  void Add(const Item& item, unsigned effects);
  unsigned Of(const Item& item) const;

 private:
  /// -1 for an item that is none.
  static int Place(const Item& item);

  std::vector<unsigned> real_;
  QHash<Item, unsigned> others_;
};

/// What one user does to items of one kind.
struct GatheredUses {
  Item User;
  std::vector<Item> Used;
  QString Words;  ///< Those of the uses, or "acts on" where they differ.
  Screen On;
};

/// What all rules look at, computed once.
struct CheckScope {
  explicit CheckScope(const Project& project, const CheckFacts& facts);

  const Project& Of;
  const CheckFacts& Facts;
  int Points = 0;  ///< Installed relays and inputs.
  /// What a download after a first start would send, or why there is none.
  std::unique_ptr<PanelImageType> Image = std::make_unique<PanelImageType>();
  std::optional<QString> ImageTrouble;
  std::vector<Use> Uses;
  std::vector<Use> UsesOfRuns;  ///< Of presets and timers alone, which are few.
  // What they do themselves, by their groups and by their presets.
  RelayEffects OnRelays{};  ///< All inputs, timers, the sweep, and presets that nothing runs.
  RelayEffects Holding{};   ///< Inputs that hold relays for as long as they are closed.
  RelayEffects BySweep{};

  /// ItemText and the like of the project.
  QString Text(const Item& item) const { return ItemText(Of, item); }
  QString OwnName(const Item& item) const { return ::OwnName(Of, item); }
  QString Sentence(const Use& use) const { return SentenceOf(Of, use); }
  QString Sentence(const GatheredUses& uses) const;
  /// The uses with one of these effects of items that are `wanted`, in as few rows as they have
  /// users and kinds of items.
  std::vector<GatheredUses> Gather(const std::function<bool(const Item& used)>& wanted,
                                   unsigned effects) const;
  QString InputType(const Item& input) const { return InputTypeWord(Of, input); }
  /// Whether any use of the item has one of these effects.
  bool IsUsed(const Item& used, unsigned effects) const;
  /// Whether the item is the user of any use with one of these effects.
  bool DoesAnything(const Item& user, unsigned effects = ~0U) const;
  /// Whether slots of dimmers are controlled by the timer or preset.
  bool DimmersFollow(const Item& timerOrPreset) const;
  /// Whether the timer switches or runs anything, or dimmers follow it.
  bool IsAtWork(const Item& timer) const { return DoesAnything(timer) || DimmersFollow(timer); }
  /// Whether the timer has a date or a weekday, on which it runs by itself.
  bool HasDay(const Item& timer) const;
  /// Whether the timer has none of its eight boxes checked, no date, and no input that forces it:
  /// what it is set to do is not done.
  bool IsParked(const Item& timer) const;
  /// Whether the local input or the input of a bus device does nothing.
  bool IsIdle(const Item& input) const;
  bool IsInstalled(const Item& relayOrInput) const;
  bool IsRelayBeyondPoints(const Item& item) const {
    return item.Kind == ItemKind::Relay && !IsInstalled(item);
  }
  /// "are beyond the 8 installed points" of so many things.
  QString AreBeyondPoints(std::size_t count) const;
  /// Whether the panel's own keys alone switch the group or run the preset.
  bool IsForKeys(const Item& groupOrPreset) const;
  /// Whether the group or preset holds an installed relay.
  bool HoldsRelay(const Item& groupOrPreset) const;

 private:
  /// What some users do, and to what.
  struct Reach {
    RelayEffects Relays{};
    std::array<unsigned, ItemCount> Groups{};
    std::array<unsigned, ItemCount> Presets{};

    void Add(const Use& use);
  };
  RelayEffects EffectsOf(const Reach& reach) const;

  std::array<RelayEffects, ItemCount> inGroup_{};   ///< All bits for a member.
  std::array<RelayEffects, ItemCount> inPreset_{};  ///< What the preset does.
  EffectsByItem usedWith_;                          ///< The effects of all uses of it.
  EffectsByItem doesWith_;                          ///< The effects of all uses by it.
  ItemSet switchedGroups_;                          ///< By anything but parked timers.
  ItemSet runPresets_;
  ItemSet timersOfSlots_;
  ItemSet presetsOfSlots_;
};

/// Where a finding is mended.
struct MendingPlace {
  MendingPlace() = default;  ///< On the rule's own screen.
  // NOLINTNEXTLINE(google-explicit-constructor): a screen is a place.
  MendingPlace(Screen screen) : On(screen) {}
  // NOLINTNEXTLINE(google-explicit-constructor): so is a setting.
  MendingPlace(const Setting& setting) : On(EditorOf(setting).On), Of(setting) {}

  Screen On = Screen::None;
  std::optional<Setting> Of;
};

using TellFinding =
    std::function<void(const Item& where, const QString& sentence, const MendingPlace& place)>;

struct CheckRule {
  std::string_view Name;
  Severity Level;
  Screen On;
  void (*Look)(const CheckScope& scope, const TellFinding& tell);
  std::string_view About;  ///< A sentence about all that it finds.
};

std::span<const CheckRule> TransferRules();
std::span<const CheckRule> CodeRules();
std::span<const CheckRule> ControlRules();
std::span<const CheckRule> RelayRules();
std::span<const CheckRule> TimerRules();
std::span<const CheckRule> ClockRules();
std::span<const CheckRule> NameRules();
std::span<const CheckRule> DimmerRules();

/// The rows of all of these tables.
std::vector<CheckRule> AllRules();

/// The findings over the whole project: errors, then warnings, then notes, each by item.
std::vector<Finding> CheckProject(const Project& project, const CheckFacts& facts = {});

#include <algorithm>
#include <tuple>
#include <utility>

#include "line/panel_commands.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/code_page.h"
#include "panel/lists_in_words.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/program_texts.h"
#include "panel/words.h"
#include "status/walk_test_form.h"

// What the walk test does with the panel.

namespace {

/// Relays of alarms and pulses among those from `first` on, a line for each kind.
QString StartlingRelays(int first) {
  QStringList lines;
  for (int type = 0; type < static_cast<int>(RelayTimerTypes.size()); ++type) {
    if (!OffIsForAWhile(type) && !OnIsForAWhile(type)) continue;
    std::vector<Item> relays;
    for (int relay = first; relay < PanelIOCount(); ++relay) {
      if (PanelRecord.RelayTimerType(relay) == type) relays.push_back({ItemKind::Relay, relay});
    }
    if (relays.empty()) continue;
    lines << QStringLiteral("%1: %2.").arg(ToUnicode(Word(RelayTimerTypes, type)),
                                           ListOf(LiveProject, relays));
  }
  return lines.join(u'\n');
}

}  // namespace

void frmT3WalkTest::cmdWalk_Click() {
  if (Polling()) {
    AskPanel([this] { End(); });
  } else {
    AskPanel([this] { Begin(); });
  }
}

void frmT3WalkTest::Begin() {
  const std::optional<WalkStates> now = ReadWalk(Chosen());
  if (!now) {
    Lost();
    return;
  }
  states_ = *now;
  ShowRows();
  if (Chosen() != Walk::Relays) {
    SetPolling(true);
    ShowWalking();
    return;
  }
  const int first = std::max(0, lstItems->indexOfTopLevelItem(lstItems->currentItem()));
  if (!MayBegin(first)) return;
  found_ = states_;
  walked_.clear();
  lblTold->SetCaption({});
  SetPolling(true);
  ShowWalking();
  StepTo(first);
}

bool frmT3WalkTest::MayBegin(int first) const {
  std::vector<Item> relays, on;
  for (int relay = first; relay < PanelIOCount(); ++relay) {
    relays.push_back({ItemKind::Relay, relay});
    if (states_.at(relays.back()).Active) on.push_back(relays.back());
  }
  if (relays.empty()) return false;
  QString detail = StartlingRelays(first);
  if (!on.empty()) {
    detail += QStringLiteral("\nOn now, and off for its turn: %1.").arg(ListOf(LiveProject, on));
  }
  return MsgBox(QStringLiteral("The walk test switches %1, one after the other. Each goes on for "
                               "its turn, and is then put back as it was found. Begin?")
                    .arg(CodesOf(relays)),
                MsgIcon::Question, ProgramTitle, MsgButtons::YesNo,
                detail.trimmed()) == MsgAnswer::Yes;
}

void frmT3WalkTest::StepTo(int relay) {
  if (!PutBack()) return;
  if (relay >= PanelIOCount()) {
    End();
    return;
  }
  const Item item{ItemKind::Relay, relay};
  const bool on = !found_->at(item).Active;
  inHand_ = relay;
  walked_.push_back(item);
  if (!SwitchRelay(relay, on)) {
    Lost();
    return;
  }
  states_[item] = {on ? QStringLiteral("on") : QStringLiteral("off"), on};
  BringToFront(item);
}

bool frmT3WalkTest::PutBack() {
  if (inHand_ < 0) return true;
  if (!SwitchRelay(inHand_, found_->at({ItemKind::Relay, inHand_}).Active)) {
    Lost();
    return false;
  }
  inHand_ = -1;
  return true;
}

/// Those of the walk that were found off, and that an off turns on again when its time is over.
std::vector<Item> frmT3WalkTest::GoingOnAgain() const {
  std::vector<Item> again;
  for (const Item& item : walked_) {
    const bool goesBack = OffIsForAWhile(PanelRecord.RelayTimerType(item.Number));
    if (goesBack && !found_->at(item).Active && !states_.at(item).Active) again.push_back(item);
  }
  return again;
}

void frmT3WalkTest::End() {
  if (!Polling() || !PutBack()) return;
  QString told;
  if (Chosen() == Walk::Relays) {
    const std::optional<WalkStates> now = ReadWalk(Walk::Relays);
    if (!now) {
      Lost();
      return;
    }
    states_ = *now;
    std::vector<Item> others;
    for (const auto& [item, state] : *found_) {
      const auto is = states_.find(item);
      if (is != states_.end() && is->second.Active != state.Active) others.push_back(item);
    }
    told = others.empty() ? QStringLiteral("Every relay is as it was found.")
                          : QStringLiteral("Not as they were found, or in their warning still: %1.")
                                .arg(ListOf(LiveProject, others));
    const std::vector<Item> again = GoingOnAgain();
    if (!again.empty()) {
      told += QStringLiteral(" Put off, and on again by itself after a while: %1.")
                  .arg(ListOf(LiveProject, again));
    }
  }
  SetPolling(false);
  front_.reset();
  waiting_.clear();
  typing_ = false;
  ShowRows();
  ShowWalking();
  const auto ticked = std::count_if(rows_.begin(), rows_.end(), [this](const Item& item) {
    return FindTested(tested_, ItemCode(item)) != nullptr;
  });
  lblTold->SetCaption(
      (told + QStringLiteral(" %1 of %2 are ticked.").arg(ticked).arg(rows_.size())).trimmed());
  cmdWalk->setFocus();
}

void frmT3WalkTest::Lost() {
  QString left;
  if (inHand_ >= 0) {
    const Item item{ItemKind::Relay, inHand_};
    left = QStringLiteral("The walk test could not put %1 back: it may have stayed %2.")
               .arg(ItemText(LiveProject, item),
                    found_->at(item).Active ? QStringLiteral("off") : QStringLiteral("on"));
  }
  inHand_ = -1;
  PanelConnectionLost(left);
}

void frmT3WalkTest::PutPanelBack() {
  const int relay = std::exchange(inHand_, -1);
  if (relay < 0 || Connected == 0) return;
  std::ignore = SwitchRelay(relay, found_->at({ItemKind::Relay, relay}).Active);
}

void frmT3WalkTest::Form_Unload() {
  PutPanelBack();
  PollingForm::Form_Unload();
}

void frmT3WalkTest::ReadStatus() {
  if (!Polling()) return;
  const std::optional<WalkStates> now = ReadWalk(Chosen());
  if (!now) {
    Lost();
    return;
  }
  if (Chosen() != Walk::Relays) NoteArrivals(*now);
  if (states_ == *now) return;
  states_ = *now;
  ShowRows();
  if (!front_ && !waiting_.empty()) {
    BringToFront(waiting_.front());
    waiting_.pop_front();
  } else if (front_) {
    ShowFront();
  }
}

/// What has closed since the last reading comes to the front, before what waits there already.
/// While a name is being typed it waits behind.
void frmT3WalkTest::NoteArrivals(const WalkStates& now) {
  for (const auto& [item, state] : now) {
    const auto before = states_.find(item);
    if (!state.Active || (before != states_.end() && before->second == state)) continue;
    std::erase(waiting_, item);
    if (typing_ && front_ == item) continue;
    waiting_.insert(typing_ ? waiting_.end() : waiting_.begin(), item);
    if (!typing_) front_.reset();
  }
}

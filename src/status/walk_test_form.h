#pragma once

#include <QTreeWidget>
#include <deque>

#include "panel/tested_items.h"
#include "status/status_form.h"
#include "status/walk_reading.h"

/// Commissioning: whoever walks through the building presses switches, each of which comes to the
/// front, and steps through the relays, each of which goes on for as long as it takes to find what
/// lights. What is in front can be named and ticked; the ticks are kept beside the project.
class frmT3WalkTest : public PollingForm {
 public:
  frmT3WalkTest();
  void Form_Load() override;
  void Form_Unload() override;
  void PutPanelBack() override;
  QWidget* FirstFocus() override;

  void ChooseWalk(Walk walk);

  void cboWalk_Click();
  void cmdWalk_Click();
  /// Ticks what is in front; of relays the next one follows.
  void cmdTick_Click();
  /// The next relay without a tick.
  void cmdSkip_Click();
  void cmdUntick_Click();
  void lstItems_Click();
  void txtName_Change();

 protected:
  void ShowConnected(bool connected) override;
  void ReadStatus() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Walk Chosen() const { return static_cast<Walk>(cboWalk->ListIndex()); }
  bool StepsRelays() const { return Polling() && Chosen() == Walk::Relays; }
  void Begin();
  void End();
  std::vector<Item> GoingOnAgain() const;
  bool MayBegin(int first) const;
  void StepTo(int relay);
  /// Puts the relay in hand back as it was found; false when the line is lost.
  bool PutBack();
  void Lost();
  void ShowWalking();

  void NoteArrivals(const WalkStates& now);
  void Tick();
  void BringToFront(const Item& item);
  void ShowFront();
  void ShowRows();
  QTreeWidgetItem* RowOf(const Item& item);
  void ShowRow(QTreeWidgetItem& row, const Item& item);
  /// The name that is edited; of a station's input the station's.
  std::string& NameOf(const Item& item) const;

  std::vector<TestedItem> tested_;
  bool keepsTicks_ = false;
  WalkStates states_;
  std::vector<Item> rows_;  ///< In the order of the list.
  std::optional<Item> front_;
  std::deque<Item> waiting_;  ///< Pressed while a name is being typed.
  bool typing_ = false;
  bool filling_ = false;
  std::optional<WalkStates> found_;  ///< The relays before the walk.
  std::vector<Item> walked_;         ///< Relays, in their order.
  int inHand_ = -1;                  ///< The relay that stands otherwise than it was found.

  QWidget* controls_ = nullptr;
  ComboBox* cboWalk = nullptr;
  Button* cmdWalk = nullptr;
  Label* lblMenusOff = nullptr;
  TextBox* txtBy = nullptr;
  Label* lblFront = nullptr;
  Label* lblName = nullptr;
  TextBox* txtName = nullptr;
  Button* cmdTick = nullptr;
  Button* cmdSkip = nullptr;
  Button* cmdUntick = nullptr;
  QTreeWidget* lstItems = nullptr;
  Label* lblTold = nullptr;
};

/// Leaves the screen for the walk test.
void OpenWalkTest(Walk walk);

#pragma once

#include "shell/controls/row_grid.h"
#include "status/walk_reading.h"

/// A screen that needs a panel; without one only lblNoConnection shows.
class LiveForm : public ChildForm {
 public:
  using ChildForm::ChildForm;
  void Form_Activate() override;

 protected:
  void AddNoConnection();

  /// Shows the screen's own controls, or hides them all.
  virtual void ShowConnected(bool connected) = 0;

 private:
  Label* lblNoConnection = nullptr;
  QWidget* connect_ = nullptr;  ///< Offers the way to a panel.
};

/// "On" on white or "Off" on grey.
void ShowOnOff(Label& label, bool on);

/// A column of buttons with one caption, at least `chars` average characters wide.
ControlArray<Button> AddButtons(RowGrid& grid, const char* name, const QString& caption, int chars);

/// A screen that asks the panel four times a second while it is told to, with the menus locked
/// meanwhile. A derived screen says how it reads and redraws.
class PollingForm : public LiveForm {
 public:
  using LiveForm::LiveForm;
  void Form_Unload() override;

  void Timer1_Timer();

 protected:
  void AddTimer();

  /// Asks the panel once and redraws. A failed reading calls PanelConnectionLost and stops.
  virtual void ReadStatus() = 0;

  /// ReadStatus, after what has been asked of the panel before.
  void Update();

  void SetPolling(bool on);
  bool Polling() const { return polling_; }

 private:
  bool polling_ = false;
  Timer* Timer1 = nullptr;
};

/// What the status screens share: one reading on request or four a second.
class StatusForm : public PollingForm {
 public:
  using PollingForm::PollingForm;
  void Form_Activate() override;
  void Form_Unload() override;

  void cmdUpdateStatus_Click();
  void cmdAutoUpdate_Click();

 protected:
  /// Adds the buttons and texts of the pattern; more controls may follow in the row given back.
  QHBoxLayout* AddUpdateControls();
  /// A button that leaves for the walk test.
  void AddWalkButton(QHBoxLayout* row, Walk walk);

  /// Controls that are off while automatic updates run.
  virtual void EnableForManual(bool enabled);

 private:
  void ShowPolling();

  QWidget* updateControls_ = nullptr;
  Button* cmdUpdateStatus = nullptr;
  Button* cmdAutoUpdate = nullptr;
  Label* lblAutoUpdate = nullptr;
  Label* lblMenusOff = nullptr;
  Button* cmdWalkTest = nullptr;
  Timer* tmrFirstReading = nullptr;  ///< Reads once the screen is there to be seen.
};

#pragma once

#include "shell/controls/row_grid.h"

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

/// What the polling screens share: one reading on request or four a second, with the menus locked
/// meanwhile. A derived screen says how it reads and redraws.
class StatusForm : public LiveForm {
 public:
  using LiveForm::LiveForm;
  void Form_Activate() override;
  void Form_Unload() override;

  void cmdUpdateStatus_Click();
  void cmdAutoUpdate_Click();
  void Timer1_Timer();

 protected:
  /// Adds the buttons and texts of the pattern; more controls may follow in the row given back.
  QHBoxLayout* AddUpdateControls();

  /// Asks the panel once and redraws. A failed reading calls PanelConnectionLost and stops.
  virtual void ReadStatus() = 0;

  /// Controls that are off while automatic updates run.
  virtual void EnableForManual(bool enabled);

  /// ReadStatus, after what has been asked of the panel before.
  void Update();

  bool AutoUpdating() const { return autoUpdating_; }

 private:
  void SetAutoUpdating(bool on);

  bool autoUpdating_ = false;
  QWidget* updateControls_ = nullptr;
  Button* cmdUpdateStatus = nullptr;
  Button* cmdAutoUpdate = nullptr;
  Label* lblAutoUpdate = nullptr;
  Label* lblMenusOff = nullptr;
  Timer* Timer1 = nullptr;
  Timer* tmrFirstReading = nullptr;  ///< Reads once the screen is there to be seen.
};

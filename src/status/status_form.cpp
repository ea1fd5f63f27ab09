#include "status/status_form.h"

#include "link/panel_queue.h"
#include "panel/program_state.h"
#include "shell/shell.h"

void LiveForm::AddNoConnection() {
  lblNoConnection =
      AddLabel(nullptr, "lblNoConnection", QStringLiteral("Not Connected To Tamberloom 3"));
  AddWidget(lblNoConnection);
  connect_ = new QWidget;
  auto* row = new QHBoxLayout(connect_);
  row->setContentsMargins(0, 0, 0, 0);
  auto* cmdGoConnect = Add<Button>(row, "cmdGoConnect", QStringLiteral("Connect..."));
  cmdGoConnect->Click = [] {
    UnloadAllForms();
    ShowForm(Screen::Connect);
  };
  row->addStretch(1);
  AddWidget(connect_);
}

void LiveForm::Form_Activate() {
  lblNoConnection->setVisible(Connected == 0);
  connect_->setVisible(Connected == 0);
  if (auto* hint = findChild<QWidget*>(QStringLiteral("lblHint"))) hint->setVisible(Connected != 0);
  ShowConnected(Connected != 0);
}

void ShowOnOff(Label& label, bool on) {
  label.SetCaption(on ? QStringLiteral("On") : QStringLiteral("Off"));
  label.SetBackColor(on ? Colors::White : Colors::Grey);
}

ControlArray<Button> AddButtons(RowGrid& grid, const char* name, const QString& caption,
                                int chars) {
  auto buttons = grid.Add<Button>(name, {.Chars = chars, .HeaderText = caption});
  for (int i = 0; i < buttons.Count(); ++i) buttons(i).SetCaption(caption);
  return buttons;
}

QHBoxLayout* StatusForm::AddUpdateControls() {
  AddNoConnection();
  updateControls_ = new QWidget;
  AddWidget(updateControls_);
  auto* row = new QHBoxLayout(updateControls_);
  row->setContentsMargins(0, 0, 0, 0);
  cmdUpdateStatus = Add<Button>(row, "cmdUpdateStatus", QStringLiteral("Update Status"));
  cmdUpdateStatus->Click = [this] { cmdUpdateStatus_Click(); };
  cmdAutoUpdate = Add<Button>(row, "cmdAutoUpdate", QString());
  cmdAutoUpdate->Click = [this] { cmdAutoUpdate_Click(); };
  lblAutoUpdate = Add<Label>(row, "lblAutoUpdate");
  lblAutoUpdate->SetWidthInChars(18);
  lblAutoUpdate->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  lblAutoUpdate->SetAlignment(Qt::AlignCenter);
  lblMenusOff = AddLabel(row, "lblMenusOff", QStringLiteral("The menus rest meanwhile."));
  lblMenusOff->SetLook(Label::Look::Quiet);
  row->addStretch(1);
  Timer1 = new Timer(this, "Timer1", 250);
  Timer1->Tick = [this] { Timer1_Timer(); };
  tmrFirstReading = new Timer(this, "tmrFirstReading", 0);
  tmrFirstReading->Tick = [this] {
    tmrFirstReading->SetEnabled(false);
    Update();
  };
  SetAutoUpdating(false);
  return row;
}

void StatusForm::Form_Activate() {
  const bool connected = Connected != 0;
  updateControls_->setVisible(connected);
  LiveForm::Form_Activate();
  tmrFirstReading->SetEnabled(connected);
}

void StatusForm::Form_Unload() {
  Timer1->SetEnabled(false);
  tmrFirstReading->SetEnabled(false);
  ForgetRequests();
  // A lost connection closes the screen while the menus are locked.
  if (autoUpdating_) EnableMainMenus();
  autoUpdating_ = false;
}

void StatusForm::EnableForManual(bool enabled) {
  cmdUpdateStatus->setEnabled(enabled);
}

void StatusForm::Update() {
  AskPanel([this] { ReadStatus(); });
}

void StatusForm::cmdUpdateStatus_Click() {
  Update();
}

void StatusForm::cmdAutoUpdate_Click() {
  SetAutoUpdating(!autoUpdating_);
  autoUpdating_ ? DisableMainMenus() : EnableMainMenus();
}

void StatusForm::SetAutoUpdating(bool on) {
  autoUpdating_ = on;
  cmdAutoUpdate->SetCaption(on ? QStringLiteral("Disable Auto Updates")
                               : QStringLiteral("Enable Auto Updates"));
  lblAutoUpdate->SetCaption(on ? QStringLiteral("Updates Enabled")
                               : QStringLiteral("Updates Disabled"));
  lblMenusOff->setVisible(on);
  lblAutoUpdate->SetBackColor(on ? Colors::LightGreen : Colors::Grey);
  EnableForManual(!on);
  Timer1->SetEnabled(on);
}

/// The timer rests while it reads, as a tick may come in the middle of a TCP wait.
void StatusForm::Timer1_Timer() {
  if (Connected == 0 || PanelBusy()) return;
  Timer1->SetEnabled(false);
  Update();
  Timer1->SetEnabled(autoUpdating_);
}

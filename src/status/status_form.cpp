#include "status/status_form.h"

#include "link/panel_queue.h"
#include "panel/program_state.h"
#include "shell/shell.h"
#include "status/walk_test_form.h"

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

void PollingForm::AddTimer() {
  Timer1 = new Timer(this, "Timer1", 250);
  Timer1->Tick = [this] { Timer1_Timer(); };
}

void PollingForm::Form_Unload() {
  ForgetRequests();
  // A lost connection closes the screen while the menus are locked.
  if (polling_) SetPolling(false);
}

void PollingForm::Update() {
  AskPanel([this] { ReadStatus(); });
}

void PollingForm::SetPolling(bool on) {
  polling_ = on;
  Timer1->SetEnabled(on);
  on ? DisableMainMenus() : EnableMainMenus();
}

/// The timer rests while it reads, as a tick may come in the middle of a TCP wait.
void PollingForm::Timer1_Timer() {
  if (Connected == 0 || PanelBusy()) return;
  Timer1->SetEnabled(false);
  Update();
  Timer1->SetEnabled(polling_);
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
  auto* lines = new QVBoxLayout(updateControls_);
  lines->setContentsMargins(0, 0, 0, 0);
  auto* row = new QHBoxLayout;
  lines->addLayout(row);
  cmdUpdateStatus = Add<Button>(row, "cmdUpdateStatus", QStringLiteral("Update Status"));
  cmdUpdateStatus->Click = [this] { cmdUpdateStatus_Click(); };
  cmdAutoUpdate = Add<Button>(row, "cmdAutoUpdate", QString());
  cmdAutoUpdate->Click = [this] { cmdAutoUpdate_Click(); };
  lblAutoUpdate = Add<Label>(row, "lblAutoUpdate");
  lblAutoUpdate->SetWidthInChars(18);
  lblAutoUpdate->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  lblAutoUpdate->SetAlignment(Qt::AlignCenter);
  row->addStretch(1);
  lblMenusOff = AddLabel(lines, "lblMenusOff", QStringLiteral("The menus are off."));
  lblMenusOff->SetLook(Label::Look::Quiet);
  KeepRoomWhileHidden(*lblMenusOff);
  AddTimer();
  tmrFirstReading = new Timer(this, "tmrFirstReading", 0);
  tmrFirstReading->Tick = [this] {
    tmrFirstReading->SetEnabled(false);
    Update();
  };
  ShowPolling();
  return row;
}

void StatusForm::AddWalkButton(QHBoxLayout* row, Walk walk) {
  cmdWalkTest = Add<Button>(row, "cmdWalkTest", QStringLiteral("Walk Test..."));
  cmdWalkTest->Click = [walk] { OpenWalkTest(walk); };
}

void StatusForm::Form_Activate() {
  const bool connected = Connected != 0;
  updateControls_->setVisible(connected);
  LiveForm::Form_Activate();
  tmrFirstReading->SetEnabled(connected);
}

void StatusForm::Form_Unload() {
  tmrFirstReading->SetEnabled(false);
  PollingForm::Form_Unload();
}

void StatusForm::EnableForManual(bool enabled) {
  cmdUpdateStatus->setEnabled(enabled);
  if (cmdWalkTest) cmdWalkTest->setEnabled(enabled);
}

void StatusForm::cmdUpdateStatus_Click() {
  Update();
}

void StatusForm::cmdAutoUpdate_Click() {
  SetPolling(!Polling());
  ShowPolling();
}

void StatusForm::ShowPolling() {
  const bool on = Polling();
  cmdAutoUpdate->SetCaption(on ? QStringLiteral("Disable Auto Updates")
                               : QStringLiteral("Enable Auto Updates"));
  lblAutoUpdate->SetCaption(on ? QStringLiteral("Updates Enabled")
                               : QStringLiteral("Updates Disabled"));
  lblMenusOff->setVisible(on);
  lblAutoUpdate->SetBackColor(on ? Colors::LightGreen : Colors::Grey);
  EnableForManual(!on);
}

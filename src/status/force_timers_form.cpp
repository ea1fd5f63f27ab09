#include "status/force_timers_form.h"

#include <tuple>

#include "line/panel_commands.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/live_project.h"
#include "shell/controls/editor_rows.h"

frmT3ForceTimers::frmT3ForceTimers()
    : LiveForm(Screen::ForceTimers, QStringLiteral("Force Timers")) {}

void frmT3ForceTimers::Form_Load() {
  AddNoConnection();
  lblPleaseWait = AddLabel(nullptr, "lblPleaseWait", QStringLiteral("Please Wait"));
  lblPleaseWait->SetBackColor(Colors::Yellow);
  lblPleaseWait->SetAlignment(Qt::AlignCenter);
  AddWidget(lblPleaseWait);
  // A serial wait delivers no events, so that nothing would move to make room for the label.
  KeepRoomWhileHidden(*lblPleaseWait);

  grid = new RowGrid(ItemCount, QStringLiteral("Timer "));
  lblTimerName = grid->AddNames("lblTimerName", 13);
  AddButtons(*grid, "cmdForce", QStringLiteral("Force"), 8)
      .OnEach(&Button::Click, this, &frmT3ForceTimers::cmdForce_Click);
  AddWidget(grid);
}

void frmT3ForceTimers::Form_Unload() {
  ForgetRequests();
}

void frmT3ForceTimers::ShowConnected(bool connected) {
  ShowNamedRows(*grid, lblTimerName, PanelRecord.TimerName, connected ? ItemCount : 0);
  lblPleaseWait->setVisible(false);
}

void frmT3ForceTimers::cmdForce_Click(int index) {
  AskPanel([this, index] {
    lblPleaseWait->setVisible(true);
    lblPleaseWait->repaint();
    std::ignore = ForceTimer(index);
    const bool done = AwaitForcedTimer();
    lblPleaseWait->setVisible(false);
    if (!done) PanelConnectionLost();
  });
}

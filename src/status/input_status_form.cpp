#include "status/input_status_form.h"

#include "line/panel_commands.h"
#include "link/panel_link.h"
#include "panel/live_project.h"
#include "shell/controls/editor_rows.h"

namespace {

void ShowLamp(Label& lamp, bool lit) {
  lamp.SetBackColor(lit ? Colors::White : Colors::Grey);
  lamp.SetState(lit ? QStringLiteral("Closed") : QStringLiteral("Open"));
}

}  // namespace

frmT3InputStatus::frmT3InputStatus()
    : StatusForm(Screen::InputStatus, QStringLiteral("Input Status")) {}

void frmT3InputStatus::Form_Load() {
  AddWalkButton(AddUpdateControls(), Walk::Inputs);
  grid = new RowGrid(ItemCount, QStringLiteral("Input "));
  lblInputName = grid->AddNames("lblInputName", 13);
  const auto addLamps = [this](const char* name, const QString& contact) {
    auto lamps = grid->Add<Label>(name, {.Chars = 6, .HeaderText = contact});
    for (int i = 0; i < lamps.Count(); ++i) {
      lamps(i).SetCaption(contact);
      lamps(i).SetAlignment(Qt::AlignCenter);
      ShowLamp(lamps(i), false);
    }
    return lamps;
  };
  lblInputOnStatus = addLamps("lblInputOnStatus", QStringLiteral("On"));
  lblInputOffStatus = addLamps("lblInputOffStatus", QStringLiteral("Off"));
  AddWidget(grid);
}

void frmT3InputStatus::ShowConnected(bool connected) {
  shownRows = connected ? PanelIOCount() : 0;
  ShowNamedRows(*grid, lblInputName, PanelRecord.InputName, shownRows);
}

void frmT3InputStatus::ShowInputStatus() {
  const std::optional<InputStates> inputs = ReadInputs();
  if (!inputs) {
    PanelConnectionLost();
    return;
  }
  for (int i = 0; i < shownRows; ++i) {
    const InputState& input = (*inputs)(i);
    if (!input.Known) continue;
    ShowLamp(lblInputOnStatus(i), input.On);
    ShowLamp(lblInputOffStatus(i), input.Off);
  }
}

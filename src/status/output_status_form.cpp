#include "status/output_status_form.h"

#include <tuple>

#include "line/panel_commands.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/live_project.h"
#include "shell/controls/editor_rows.h"

/// Relays or groups: what is read, what switches one, and the names of the controls.
struct OutputStatusScreen {
  Screen Name;
  QString Caption;
  QString Word;  ///< In front of a row's number.
  const char* NameLabel;
  const char* StatusLabel;
  std::optional<OutputStates> (*Read)();
  bool (*Switch)(int index, bool on);
  NameArray PanelRecordType::*Names;
  bool InstalledOnly;  ///< As many rows as points are installed, and buttons for all at once.
};

namespace {

const auto OutputStatusScreens = std::to_array<OutputStatusScreen>({
    {Screen::RelayStatus, QStringLiteral("Relay Status"), QStringLiteral("Relay "), "lblRelayName",
     "lblRelayStatus", ReadRelays, SwitchRelay, &PanelRecordType::RelayName, true},
    {Screen::RelayGroupStatus, QStringLiteral("Group Status"), QStringLiteral("Group "),
     "lblGroupName", "lblGroupStatus", ReadGroups, SwitchGroup, &PanelRecordType::GroupName, false},
});

}  // namespace

OutputStatusForm::OutputStatusForm(Screen name)
    : StatusForm(name, ScreenRow(OutputStatusScreens, name).Caption),
      screen(ScreenRow(OutputStatusScreens, name)) {}

void OutputStatusForm::Form_Load() {
  QHBoxLayout* update = AddUpdateControls();
  if (screen.InstalledOnly) {
    cmdAllOn = Add<Button>(update, "cmdAllRelaysOn", QStringLiteral("All Relays On"));
    cmdAllOn->Click = [this] { SwitchAll(true); };
    cmdAllOff = Add<Button>(update, "cmdAllRelaysOff", QStringLiteral("All Relays Off"));
    cmdAllOff->Click = [this] { SwitchAll(false); };
    AddWalkButton(update, Walk::Relays);
  }
  grid = new RowGrid(ItemCount, screen.Word);
  lblName = grid->AddNames(screen.NameLabel);
  lblStatus =
      grid->Add<Label>(screen.StatusLabel, {.Chars = 4, .HeaderText = QStringLiteral("Status")});
  for (int i = 0; i < lblStatus.Count(); ++i) lblStatus(i).SetAlignment(Qt::AlignCenter);
  AddButtons(*grid, "cmdTurnOn", QStringLiteral("On"), 4)
      .OnEach(&Button::Click, this, &OutputStatusForm::cmdTurnOn_Click);
  AddButtons(*grid, "cmdTurnOff", QStringLiteral("Off"), 4)
      .OnEach(&Button::Click, this, &OutputStatusForm::cmdTurnOff_Click);
  AddWidget(grid);
  AddHint(QStringLiteral("What On and Off have done shows at the next update."));
}

void OutputStatusForm::ShowConnected(bool connected) {
  shownRows = !connected ? 0 : screen.InstalledOnly ? PanelIOCount() : ItemCount;
  ShowNamedRows(*grid, lblName, PanelRecord.*screen.Names, shownRows);
}

void OutputStatusForm::ReadStatus() {
  const std::optional<OutputStates> on = screen.Read();
  if (!on) {
    PanelConnectionLost();
    return;
  }
  for (int i = 0; i < shownRows; ++i) ShowOnOff(lblStatus(i), (*on)(i));
}

void OutputStatusForm::EnableForManual(bool enabled) {
  StatusForm::EnableForManual(enabled);
  if (!cmdAllOn) return;
  cmdAllOn->setEnabled(enabled);
  cmdAllOff->setEnabled(enabled);
}

void OutputStatusForm::cmdTurnOn_Click(int index) {
  Switch(index, true);
}

void OutputStatusForm::cmdTurnOff_Click(int index) {
  Switch(index, false);
}

/// The next update shows the effect.
void OutputStatusForm::Switch(int index, bool on) {
  AskPanel([this, index, on] { std::ignore = screen.Switch(index, on); });
}

void OutputStatusForm::SwitchAll(bool on) {
  QWidget* pressed = focusWidget();
  cmdAllOn->setEnabled(false);
  cmdAllOff->setEnabled(false);
  AskPanel([this, on, pressed] {
    std::ignore = SwitchAllRelays(on);
    EnableForManual(!Polling());
    if (pressed) pressed->setFocus();
  });
}

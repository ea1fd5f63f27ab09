#include "status/capture_presets_form.h"

#include <tuple>

#include "line/known_memory.h"
#include "line/panel_commands.h"
#include "line/session.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/controls/editor_rows.h"

frmT3CapturePresets::frmT3CapturePresets()
    : StatusForm(Screen::CapturePresets, QStringLiteral("Capture Presets")) {}

void frmT3CapturePresets::Form_Load() {
  AddUpdateControls();
  grid = new RowGrid(ItemCount, QStringLiteral("Preset "));
  lblPresetName = grid->AddNames("lblPresetName", 13);
  lblPresetStatus =
      grid->Add<Label>("lblPresetStatus", {.Chars = 3, .HeaderText = QStringLiteral("Status")});
  cmdSet = AddButtons(*grid, "cmdSet", QStringLiteral("Set"), 3);
  cmdSet.OnEach(&Button::Click, this, &frmT3CapturePresets::cmdSet_Click);
  AddButtons(*grid, "cmdCapture", QStringLiteral("Capture"), 8)
      .OnEach(&Button::Click, this, &frmT3CapturePresets::cmdCapture_Click);
  AddWidget(grid);
  AddHint(QStringLiteral("What Set and Capture have done shows at the next update."));
}

void frmT3CapturePresets::ShowConnected(bool connected) {
  ShowNamedRows(*grid, lblPresetName, PanelRecord.PresetName, connected ? ItemCount : 0);
}

void frmT3CapturePresets::ShowPresetStatus() {
  const std::optional<PresetStates> presets = ReadPresets();
  if (!presets) {
    PanelConnectionLost();
    return;
  }
  for (int i = 0; i < ItemCount; ++i) {
    const bool empty = (*presets)(i) == PresetState::Empty;
    const bool off = (*presets)(i) != PresetState::Set;
    cmdSet(i).setVisible(!empty);
    lblPresetStatus(i).SetCaption(empty ? QStringLiteral("---")
                                  : off ? QStringLiteral("Off")
                                        : QStringLiteral("Set"));
    lblPresetStatus(i).SetBackColor(off ? Colors::Grey : Colors::White);
  }
}

void frmT3CapturePresets::cmdSet_Click(int index) {
  AskPanel([index] { std::ignore = SetPreset(index); });
}

void frmT3CapturePresets::cmdCapture_Click(int index) {
  AskPanel([index] {
    ForgetMemory(OpenedPanel());
    std::ignore = CapturePreset(index);
    const std::optional<OutputStates> relays = ReadRelays();
    if (!relays) {
      PanelConnectionLost();
      return;
    }
    constexpr Int16 on = 1;
    constexpr Int16 off = 2;
    for (int relay = 0; relay < PanelIOCount(); ++relay) {
      PanelRecord.PresetRelayControl(index, relay) = (*relays)(relay) ? on : off;
    }
    DataChanged = -1;
  });
}

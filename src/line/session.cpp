#include "line/session.h"

#include "line/frame_log.h"
#include "line/known_memory.h"
#include "line/line_hooks.h"
#include "line/line_kinds.h"
#include "line/modem_transport.h"
#include "line/panel_commands.h"
#include "panel/panel_record.h"
#include "panel/program_state.h"

LineHooks Line;

namespace {

Int16 openedType = ConnectionUSB;
LineSettings openedSettings;

/// Nothing comes for as long as a panel may think about a command.
void AwaitQuiet(Transport& line) {
  constexpr int quietMs = 150;
  constexpr int mostParts = 20;
  for (int part = 0; part < mostParts; ++part) {
    line.Take();
    line.Wait(1, quietMs);
    if (line.Waiting() == 0) return;
  }
}

}  // namespace

std::string ConnectPanel(Int16 connectionType, const LineSettings& settings) {
  Connected = -1;
  ClearFrameLog();
  openedType = connectionType;
  openedSettings = settings;
  const LineKind& kind = LineKindOf(connectionType);
  kind.Open(settings);
  if (settings.AwaitQuiet) AwaitQuiet(kind.Line());
  const std::optional<std::string> firmware = ReadFirmware();
  if (!firmware) throw TransportFailure(kind.NoPanel(settings));
  return *firmware;
}

void DisconnectPanel() {
  HangUpModem();
  CloseTransports();
  Connected = 0;
}

Int16 OpenedType() {
  return openedType;
}

QString OpenedPanel() {
  return PanelKey(openedType, openedSettings);
}

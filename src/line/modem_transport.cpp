#include "line/modem_transport.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <string_view>
#include <tuple>

#include "line/com_port.h"
#include "line/line_hooks.h"
#include "line/line_kinds.h"
#include "line/panel_transact.h"
#include "panel/panel_record.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"

Int16 ModemHangUpRequired = 0;

namespace {

constexpr int ModemResetMs = 1000;

/// The port of a call that is up or being made; -1 for none.
volatile std::sig_atomic_t callPort = -1;

void TellStage(LineStage stage) {
  if (Line.Stage) Line.Stage(stage);
}

/// The modem takes a second without DTR for the end of whatever it is at.
void ResetModem() {
  comQZ().SetDTREnable(false);
  Pause(ModemResetMs);
  comQZ().SetDTREnable(true);
}

}  // namespace

void OpenModem(const LineSettings& settings) {
  constexpr int modemBaud = 9600;
  constexpr int callSettlesMs = 3000;
  TellStage(LineStage::ResetModem);
  LineSettings port = settings;
  if (port.Baud == 0) port.Baud = modemBaud;
  comQZ().Open(port);
  callPort = comQZ().Descriptor();
  comQZ().SetRTSEnable(true);
  ResetModem();
  // Longer than the echo and "OK", so that the time-out is the modem's time to settle.
  std::ignore = ModemTransact("ATZ\r", 20, 5);
  TellStage(LineStage::DialModem);
  if (!ModemTransact("ATDT " + settings.PhoneNumber + "\r", 30, 40)) {
    throw TransportFailure(
        QStringLiteral("The modem at %1 reached nobody. Check the telephone number, the modem and "
                       "the line.")
            .arg(PortText(settings.Port)));
  }
  TellStage(LineStage::ModemConnected);
  ModemHangUpRequired = -1;
  Pause(callSettlesMs);
  TellStage(LineStage::CallSettled);
}

QString NoPanelByModem(const LineSettings&) {
  return QStringLiteral("The call is answered, but not by a panel.");
}

void HangUpModem() {
  if (LineType() != ConnectionModem && ModemHangUpRequired != -1) return;
  // Without a line there is nothing to hang up.
  if (Connected != 0 || comQZ().IsOpen()) {
    TellStage(LineStage::HangUpModem);
    std::ignore = ModemTransact("[%%%%%", 50, 3);
    std::ignore = ModemTransact("ATZ", 50, 3);
    ResetModem();
  }
  ModemHangUpRequired = 0;
  callPort = -1;
  TellStage(LineStage::HungUp);
}

void HangUpAtOnce() {
  const int port = callPort;
  if (port < 0) return;
  constexpr int panelHangsUpMs = 200;
  constexpr int modemHangsUpMs = 600;
  const auto send = [port](std::string_view text) {
    std::ignore = write(port, text.data(), text.size());
  };
  const auto wait = [](int ms) { poll(nullptr, 0, ms); };
  send("[%%%%%");
  wait(panelHangsUpMs);
  send("ATZ\r");
  const int dtr = TIOCM_DTR;
  ioctl(port, TIOCMBIC, &dtr);
  wait(modemHangsUpMs);
}

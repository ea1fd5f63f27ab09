#include "link/transport.h"

#include <QCoreApplication>
#include <QLibrary>

#include "shell/shell.h"

namespace {

std::unique_ptr<SerialControl> serialControl;
std::unique_ptr<SocketControl> socketControl;

/// The toolkit's objects must not outlive the application.
void DropAtExit() {
  [[maybe_unused]] static const bool once = [] {
    qAddPostRoutine([] { ReplaceTransports(nullptr, nullptr); });
    return true;
  }();
}

/// Paints what is told to show while a wait runs.
void ShowBeforeLongWait() {
  if (BeforeLongWait) BeforeLongWait();
  PaintNow();
}

}  // namespace

std::function<void()> BeforeLongWait;

SerialControl& comQZ() {
  if (!serialControl) {
    DropAtExit();
    serialControl = NewSerialControl();
    serialControl->LongWait = ShowBeforeLongWait;
  }
  return *serialControl;
}

SocketControl& WinSockQZ() {
  if (!socketControl) {
    DropAtExit();
    socketControl = NewSocketControl();
    socketControl->LongWait = ShowBeforeLongWait;
  }
  return *socketControl;
}

std::unique_ptr<SocketControl> NewSocketControl() {
  QLibrary module(QStringLiteral("tamberloom3_tcp"));
  // A look-up of a name may still be under way when the program ends.
  module.setLoadHints(QLibrary::PreventUnloadHint);
  const auto make = reinterpret_cast<SocketControl* (*)()>(module.resolve("MakeSocketControl"));
  if (!make) {
    throw TransportFailure(QStringLiteral("The program's part for TCP connections cannot be "
                                          "loaded. Install the program again.\n%1")
                               .arg(module.errorString()));
  }
  return std::unique_ptr<SocketControl>(make());
}

void CloseSocket() {
  if (socketControl && socketControl->State() != SocketControl::Closed) socketControl->Close();
}

void ReplaceTransports(std::unique_ptr<SerialControl> serial,
                       std::unique_ptr<SocketControl> socket) {
  serialControl = std::move(serial);
  socketControl = std::move(socket);
  if (serialControl) serialControl->LongWait = ShowBeforeLongWait;
  if (socketControl) socketControl->LongWait = ShowBeforeLongWait;
}

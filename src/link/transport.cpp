#include "link/transport.h"

#include <QCoreApplication>

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

}  // namespace

SerialControl& comQZ() {
  if (!serialControl) {
    DropAtExit();
    serialControl = NewSerialControl();
  }
  return *serialControl;
}

SocketControl& WinSockQZ() {
  if (!socketControl) {
    DropAtExit();
    socketControl = NewSocketControl();
  }
  return *socketControl;
}

void ReplaceTransports(std::unique_ptr<SerialControl> serial,
                       std::unique_ptr<SocketControl> socket) {
  serialControl = std::move(serial);
  socketControl = std::move(socket);
}

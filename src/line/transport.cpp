#include "line/transport.h"

#include <QCoreApplication>
#include <QLibrary>

#include "line/line_hooks.h"

namespace {

std::unique_ptr<Transport> serialLine;
std::unique_ptr<Transport> socketLine;

/// The toolkit's objects must not outlive the application.
void DropAtExit() {
  [[maybe_unused]] static const bool once = [] {
    qAddPostRoutine([] { ReplaceTransports(nullptr, nullptr); });
    return true;
  }();
}

void TellLongWait() {
  if (Line.LongWait) Line.LongWait();
}

}  // namespace

Transport& comQZ() {
  if (!serialLine) {
    DropAtExit();
    serialLine = NewSerialTransport();
    serialLine->LongWait = TellLongWait;
  }
  return *serialLine;
}

Transport& WinSockQZ() {
  if (!socketLine) {
    DropAtExit();
    socketLine = NewTcpTransport();
    socketLine->LongWait = TellLongWait;
  }
  return *socketLine;
}

std::unique_ptr<Transport> NewTcpTransport() {
  QLibrary module(QStringLiteral("tamberloom3_tcp"));
  // A look-up of a name may still be under way when the program ends.
  module.setLoadHints(QLibrary::PreventUnloadHint);
  const auto make = reinterpret_cast<Transport* (*)()>(module.resolve("MakeTcpTransport"));
  if (!make) {
    throw TransportFailure(QStringLiteral("The program's part for TCP connections cannot be "
                                          "loaded. Install the program again.\n%1")
                               .arg(module.errorString()));
  }
  return std::unique_ptr<Transport>(make());
}

void CloseTransports() {
  comQZ().SetRTSEnable(false);
  if (comQZ().IsOpen()) comQZ().Close();
  if (socketLine) socketLine->Close();
}

void ReplaceTransports(std::unique_ptr<Transport> serial, std::unique_ptr<Transport> socket) {
  serialLine = std::move(serial);
  socketLine = std::move(socket);
  if (serialLine) serialLine->LongWait = TellLongWait;
  if (socketLine) socketLine->LongWait = TellLongWait;
}

#include "link/com_port.h"

#include <QFileInfo>
#include <array>

#include "panel/program_state.h"

namespace {

QString PortName(int port) {
  return QStringLiteral("COM%1").arg(port);
}

QString PortLink(int port) {
  return DataPath(QStringLiteral("Ports/") + PortName(port));
}

/// On-board ports, USB serial adapters, USB modem-class devices.
QString SystemDevice(int port) {
  struct Range {
    int First;
    const char* Device;
  };
  constexpr std::array ranges = {Range{13, "/dev/ttyACM"}, Range{5, "/dev/ttyUSB"},
                                 Range{1, "/dev/ttyS"}};
  for (const Range& range : ranges) {
    if (port >= range.First) {
      return QLatin1String(range.Device) + QString::number(port - range.First);
    }
  }
  return {};
}

bool MayUse(const QString& device) {
  const QFileInfo info(device);
  return info.isReadable() && info.isWritable();
}

}  // namespace

QString ComPortDevice(int port) {
  const QFileInfo link(PortLink(port));
  if (link.isSymLink() && !link.exists()) return link.symLinkTarget();
  return link.exists() ? link.canonicalFilePath() : SystemDevice(port);
}

bool ComPortExists(int port) {
  return QFileInfo::exists(ComPortDevice(port));
}

QString ComPortDescription(int port) {
  return PortName(port) + QStringLiteral(": ") + ComPortDevice(port) +
         (ComPortExists(port) ? QString() : QStringLiteral(", not there"));
}

QString ComPortTrouble(int port, bool inUse, const QString& reason) {
  const QString device = ComPortDevice(port);
  if (!ComPortExists(port)) {
    return QStringLiteral(
               "%1 is %2, which is not there. Plug the adapter in, choose another port, or link "
               "the right device as %3.")
        .arg(PortName(port), device, PortLink(port));
  }
  if (!MayUse(device)) {
    return QStringLiteral(
               "You may not use %1 (%2). Join its group with \"sudo adduser $USER %3\", then log "
               "out and in again.")
        .arg(device, PortName(port), QFileInfo(device).group());
  }
  if (inUse) {
    return QStringLiteral("%1 (%2) is in use by another program. Close that one and try again.")
        .arg(device, PortName(port));
  }
  return QStringLiteral("%1 (%2): %3").arg(device, PortName(port), reason);
}

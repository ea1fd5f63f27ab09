#include "line/com_port.h"

#include <QFileInfo>
#include <array>

#include "panel/program_state.h"

namespace {

/// 1 to 16; 0 for a device that is told by its path.
int ComPortNumber(const QString& port) {
  const int number = port.startsWith(u"COM") ? port.mid(3).toInt() : 0;
  return number >= 1 && number <= ComPortCount ? number : 0;
}

QString PortLink(const QString& port) {
  return DataPath(QStringLiteral("Ports/") + port);
}

/// On-board ports, USB serial adapters, USB modem-class devices.
QString SystemDevice(int number) {
  struct Range {
    int First;
    const char* Device;
  };
  constexpr std::array ranges = {Range{13, "/dev/ttyACM"}, Range{5, "/dev/ttyUSB"},
                                 Range{1, "/dev/ttyS"}};
  for (const Range& range : ranges) {
    if (number >= range.First) {
      return QLatin1String(range.Device) + QString::number(number - range.First);
    }
  }
  return {};
}

bool MayUse(const QString& device) {
  const QFileInfo info(device);
  return info.isReadable() && info.isWritable();
}

}  // namespace

QString ComPortName(int number) {
  return QStringLiteral("COM%1").arg(number);
}

QString PortDevice(const QString& port) {
  const int number = ComPortNumber(port);
  if (number == 0) return port;
  const QFileInfo link(PortLink(port));
  if (link.isSymLink() && !link.exists()) return link.symLinkTarget();
  return link.exists() ? link.canonicalFilePath() : SystemDevice(number);
}

bool PortExists(const QString& port) {
  return QFileInfo::exists(PortDevice(port));
}

bool PortForbidden(const QString& port) {
  return PortExists(port) && !MayUse(PortDevice(port));
}

QString PortDescription(const QString& port) {
  return port + QStringLiteral(": ") + PortDevice(port) +
         (PortExists(port) ? QString() : QStringLiteral(", not there"));
}

QString PortText(const QString& port) {
  const QString device = PortDevice(port);
  return device == port ? port : QStringLiteral("%1 (%2)").arg(port, device);
}

QString PortTrouble(const QString& port, bool inUse, const QString& reason) {
  const QString device = PortDevice(port);
  const bool named = device != port;
  if (!PortExists(port)) {
    return named ? QStringLiteral(
                       "%1 is %2, which is not there. Plug the adapter in, choose another port, or "
                       "link the right device as %3.")
                       .arg(port, device, PortLink(port))
                 : QStringLiteral("%1 is not there. Plug the adapter in or choose another port.")
                       .arg(device);
  }
  const QString which = named ? QStringLiteral("%1 (%2)").arg(device, port) : device;
  const QString group = QFileInfo(device).group();
  const bool groupMay = QFileInfo(device).permissions().testFlag(QFileDevice::WriteGroup);
  if (!MayUse(device) && !groupMay) {
    return QStringLiteral("You may not use %1: only its owner may.").arg(which);
  }
  if (!MayUse(device)) {
    return QStringLiteral(
               "You may not use %1. Join its group with \"sudo adduser $USER %2\", then log out "
               "and in again.")
        .arg(which, group);
  }
  if (inUse) {
    return QStringLiteral("%1 is in use by another program. Close that one and try again.")
        .arg(which);
  }
  return which + QStringLiteral(": ") + reason;
}

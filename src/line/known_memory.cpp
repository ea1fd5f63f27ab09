#include "line/known_memory.h"

#include <QDir>
#include <QFile>
#include <QUrl>
#include <algorithm>

#include "line/com_port.h"
#include "line/line_hooks.h"
#include "panel/panel_record.h"
#include "panel/program_state.h"

namespace {

QString FileOf(const QString& key) {
  return DataPath(QStringLiteral("Panels/")) + QString::fromLatin1(QUrl::toPercentEncoding(key));
}

void TellNotRemembered(const QFile& file) {
  if (Line.NotRemembered) Line.NotRemembered(file.fileName() + ": " + file.errorString());
}

bool IsByte(Int16 element) {
  return element >= 0 && element <= 255;
}

}  // namespace

QString PanelKey(Int16 connectionType, const LineSettings& settings) {
  switch (connectionType) {
    case ConnectionUSB:
      return QStringLiteral("serial:") + PortDevice(settings.Port);
    case ConnectionModem:
      return QStringLiteral("modem:") + QString::fromStdString(settings.PhoneNumber);
    default:
      return QStringLiteral("tcp:%1:%2").arg(settings.Host.trimmed()).arg(settings.TcpPort);
  }
}

void RememberMemory(const QString& key, const PanelImageType& image) {
  // An element that fits no byte was sent cut, and the sums agreed by chance.
  if (!std::all_of(image.elements.begin(), image.elements.end(), IsByte)) {
    ForgetMemory(key);
    return;
  }
  std::string memory(image.elements.begin(), image.elements.end());
  memory.replace(PasswordAddress, std::tuple_size_v<PasswordDigits>,
                 std::tuple_size_v<PasswordDigits>, '\0');
  // In place and unhurried by the disk: of half a file, the panel's sum tells.
  ForgetMemory(key);
  QDir().mkpath(DataPath(QStringLiteral("Panels")));
  QFile file(FileOf(key));
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                 QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
    TellNotRemembered(file);
    return;
  }
  if (file.write(memory.data(), static_cast<qint64>(memory.size())) != PanelImageSize ||
      !file.flush()) {
    TellNotRemembered(file);
    file.remove();
  }
}

void ForgetMemory(const QString& key) {
  QFile::remove(FileOf(key));
}

std::optional<PanelImageType> KnownMemory(const QString& key) {
  QFile file(FileOf(key));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray memory = file.read(PanelImageSize + 1);
  if (memory.size() != PanelImageSize) return std::nullopt;
  return ImageOf(memory.toStdString());
}

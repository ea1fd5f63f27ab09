#include "simulator/pty_server.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace simulator {

PtyServer::PtyServer(Shared& shared, Options options)
    : Common(shared),
      Setting(std::move(options)),
      FromHost(ByteTimeOf(Setting.Baud),
               [this](std::string_view bytes, LineTime time) { Process(bytes, time); }),
      ToHost(ByteTimeOf(Setting.Baud), [this](std::string_view bytes, LineTime) { Write(bytes); }) {
  OpenPort();
}

PtyServer::~PtyServer() {
  ClosePort();
}

void PtyServer::OpenPort() {
  Master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  std::array<char, 128> name{};
  if (Master < 0 || grantpt(Master) != 0 || unlockpt(Master) != 0 ||
      ptsname_r(Master, name.data(), name.size()) != 0) {
    throw std::runtime_error(std::string("No pseudo-terminal can be had: ") + std::strerror(errno));
  }
  PortPath = QString::fromLocal8Bit(name.data());
  Slave = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  termios mode{};
  if (Slave < 0 || tcgetattr(Slave, &mode) != 0) {
    throw std::runtime_error(std::string(name.data()) + " cannot be used: " + std::strerror(errno));
  }
  cfmakeraw(&mode);
  tcsetattr(Slave, TCSANOW, &mode);
  Talk.emplace(Common, "pty");
  TheModem.reset();
  if (Setting.WithModem) TheModem.emplace(*Setting.WithModem);
  Readable = std::make_unique<QSocketNotifier>(Master, QSocketNotifier::Read);
  QObject::connect(Readable.get(), &QSocketNotifier::activated, Readable.get(), [this] { Read(); });
  if (!Setting.Link.isEmpty()) MakePortLink(Setting.Link, PortPath);
}

void PtyServer::ClosePort() {
  if (!Setting.Link.isEmpty()) RemovePortLink(Setting.Link, PortPath);
  Readable.reset();
  FromHost.Clear();
  ToHost.Clear();
  if (Slave >= 0) close(Slave);
  if (Master >= 0) close(Master);
  Slave = Master = -1;
}

void PtyServer::Read() {
  std::array<char, 4096> bytes{};
  const ssize_t count = read(Master, bytes.data(), bytes.size());
  if (count <= 0) return;
  const LineTime arrival = std::chrono::steady_clock::now() - ToHost.TakeLateness();
  FromHost.Send({bytes.data(), static_cast<std::size_t>(count)}, arrival);
}

void PtyServer::Process(std::string_view bytes, LineTime time) {
  for (const char byte : bytes) {
    const bool inCall = !TheModem || TheModem->OnLine();
    if (TheModem) SendAll(TheModem->Receive(byte), time);
    if (!inCall) continue;
    const auto result = Talk->Receive(byte);
    if (!result) continue;
    SendAll(result->Reply.Pieces, time);
    if (result->Escape && TheModem) SendAll(TheModem->HangUp(), time);
    if (result->Reply.Drop) {
      if (TheModem) {
        SendAll(TheModem->HangUp(), time);
        continue;
      }
      Readable->setEnabled(false);
      FromHost.Clear();
      // The port must not close from inside its own callback.
      QTimer::singleShot(0, Readable.get(), [this] {
        ClosePort();
        OpenPort();
      });
      return;
    }
  }
}

void PtyServer::SendAll(const std::vector<TimedBytes>& pieces, LineTime time) {
  for (const TimedBytes& piece : pieces) ToHost.Send(piece.Bytes, time + piece.After);
}

void PtyServer::Write(std::string_view bytes) {
  // What does not fit is lost, as on a line that nobody reads.
  [[maybe_unused]] const ssize_t written = write(Master, bytes.data(), bytes.size());
}

void MakePortLink(const QString& link, const QString& target) {
  const QFileInfo info(link);
  if (info.isSymLink()) {
    const bool ours = info.symLinkTarget().startsWith("/dev/pts/") || !info.exists();
    if (!ours) {
      throw std::runtime_error(link.toStdString() + " is in use: it leads to " +
                               info.symLinkTarget().toStdString());
    }
  } else if (info.exists()) {
    throw std::runtime_error(link.toStdString() + " exists and is no link");
  }
  const QString fresh = link + ".new";
  QFile::remove(fresh);
  if (!QDir().mkpath(info.path()) || !QFile::link(target, fresh) ||
      std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(link).constData()) != 0) {
    throw std::runtime_error("The link " + link.toStdString() + " cannot be made");
  }
}

void RemovePortLink(const QString& link, const QString& target) {
  const QFileInfo info(link);
  if (info.isSymLink() && info.symLinkTarget() == target) QFile::remove(link);
}

}  // namespace simulator

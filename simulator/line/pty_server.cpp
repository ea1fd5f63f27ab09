#include "simulator/line/pty_server.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
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

Descriptor::~Descriptor() {
  if (Number >= 0) close(Number);
}

PtyServer::PtyServer(Shared& shared, Options options)
    : Common(shared),
      Setting(std::move(options)),
      FromHost(ByteTimeOf(Setting.Baud),
               [this](std::string_view bytes, LineTime time) { Process(bytes, time); }),
      ToHost(ByteTimeOf(Setting.Baud), [this](std::string_view bytes, LineTime) { Write(bytes); }) {
  OpenPort();
}

PtyServer::~PtyServer() {
  if (!Setting.Link.isEmpty()) RemovePortLink(Setting.Link, PortPath);
}

void PtyServer::OpenPort() {
  Master = Descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  std::array<char, 128> name{};
  if (Master.Get() < 0 || grantpt(Master.Get()) != 0 || unlockpt(Master.Get()) != 0 ||
      ptsname_r(Master.Get(), name.data(), name.size()) != 0) {
    throw std::runtime_error(std::string("No pseudo-terminal can be had: ") + std::strerror(errno));
  }
  PortPath = QString::fromLocal8Bit(name.data());
  Slave = Descriptor(open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios mode{};
  if (Slave.Get() < 0 || tcgetattr(Slave.Get(), &mode) != 0) {
    throw std::runtime_error(std::string(name.data()) + " cannot be used: " + std::strerror(errno));
  }
  flock(Slave.Get(), LOCK_EX | LOCK_NB);  // Tells that a panel answers here.
  cfmakeraw(&mode);
  tcsetattr(Slave.Get(), TCSANOW, &mode);
  Talk.emplace(Common, "pty");
  TheModem.reset();
  if (Setting.WithModem) TheModem.emplace(*Setting.WithModem);
  Readable = std::make_unique<QSocketNotifier>(Master.Get(), QSocketNotifier::Read);
  QObject::connect(Readable.get(), &QSocketNotifier::activated, Readable.get(), [this] { Read(); });
  if (!Setting.Link.isEmpty()) MakePortLink(Setting.Link, PortPath);
}

/// Closes the port under the host and opens another; the link always leads to one of the two.
void PtyServer::PullPlug() {
  const Descriptor oldMaster = std::move(Master);
  const Descriptor oldSlave = std::move(Slave);
  flock(oldSlave.Get(), LOCK_UN);
  Readable.reset();
  ToHost.Clear();
  try {
    OpenPort();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
  }
}

void PtyServer::Read() {
  // Commands of about five milliseconds, so that hosts on other lines are not held up.
  std::array<char, 512> bytes{};
  const ssize_t count = read(Master.Get(), bytes.data(), bytes.size());
  if (count <= 0) return;
  const LineTime arrival = ToHost.Punctual(std::chrono::steady_clock::now());
  FromHost.Send({bytes.data(), static_cast<std::size_t>(count)}, arrival);
}

void PtyServer::Process(std::string_view bytes, LineTime time) {
  for (const char byte : bytes) {
    const bool inCall = !TheModem || TheModem->OnLine();
    if (TheModem) {
      SendAll(TheModem->Receive(byte), time);
      if (inCall != TheModem->OnLine()) NoteCall();
    }
    if (!inCall) continue;
    const auto result = Talk->Receive(byte);
    if (!result) continue;
    SendAll(result->Reply.Pieces, time);
    if (TheModem && (result->Escape || result->Reply.Drop)) {
      SendAll(TheModem->HangUp(), time);
      NoteCall();
    } else if (result->Reply.Drop) {
      Readable->setEnabled(false);
      FromHost.Clear();
      // The port must not close from inside its own callback.
      QTimer::singleShot(0, Readable.get(), [this] { PullPlug(); });
      return;
    }
  }
}

void PtyServer::NoteCall() {
  Common.Log.Add("pty", FrameLog::Direction::Note,
                 TheModem->OnLine() ? "the modem's call is up" : "the modem's call has ended");
}

void PtyServer::SendAll(const std::vector<TimedBytes>& pieces, LineTime time) {
  for (const TimedBytes& piece : pieces) ToHost.Send(piece.Bytes, time + piece.After);
}

void PtyServer::Write(std::string_view bytes) {
  // What does not fit is lost, as on a line that nobody reads.
  [[maybe_unused]] const ssize_t written = write(Master.Get(), bytes.data(), bytes.size());
}

namespace {

/// Whether a panel holds the lock of a pseudo-terminal. After its end others may have the same one.
bool PanelAnswersAt(const QString& port) {
  const Descriptor open(
      ::open(QFile::encodeName(port).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (open.Get() < 0) return errno == EBUSY;
  return flock(open.Get(), LOCK_EX | LOCK_NB) != 0;
}

}  // namespace

void MakePortLink(const QString& link, const QString& target) {
  const QFileInfo info(link);
  if (info.isSymLink()) {
    const QString port = info.symLinkTarget();
    const bool free = port.startsWith("/dev/pts/") ? !PanelAnswersAt(port) : !info.exists();
    if (!free) {
      throw std::runtime_error(link.toStdString() + " is in use: it leads to " +
                               port.toStdString());
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

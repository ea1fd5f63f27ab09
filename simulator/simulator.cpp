#include "simulator/simulator.h"

#include <QFile>
#include <QSaveFile>
#include <cstdio>
#include <stdexcept>

namespace simulator {

PanelMemory StartMemory(const Options& options) {
  PanelMemory memory = options.Blank ? PanelMemory() : SmallInstallation();
  QFile file(options.MemoryFile);
  if (!options.MemoryFile.isEmpty() && file.exists()) {
    const std::string name = options.MemoryFile.toStdString();
    if (!file.open(QIODevice::ReadOnly)) {
      throw std::runtime_error("The memory file " + name +
                               " cannot be read: " + file.errorString().toStdString());
    }
    // One byte more than a memory tells that a file is too long without reading all of it.
    const QByteArray content = file.read(PanelMemory::Size + 1);
    if (content.size() != PanelMemory::Size) {
      throw std::runtime_error("The memory file " + name + " is not " +
                               std::to_string(PanelMemory::Size) + " bytes long");
    }
    memory.SetContent(content.toStdString());
  }
  for (std::size_t i = 0; i < options.Password.size() && i < map::PasswordLength; ++i) {
    memory.SetByte(map::Password + static_cast<int>(i), options.Password[i] - '0');
  }
  return memory;
}

Simulator::Simulator(Options options)
    : Setting(std::move(options)), Common{Panel(StartMemory(Setting), Setting.Now), {}, {}} {
  if (!Setting.LogFile.isEmpty()) Common.Log.Open(Setting.LogFile);
  for (const Fault& fault : Setting.Faults) Common.Faults.Add(fault);
  if (Setting.TcpPort) Tcp = std::make_unique<TcpServer>(Common, Setting.Host, *Setting.TcpPort);
  if (Setting.Pty) Pty = std::make_unique<PtyServer>(Common, *Setting.Pty);
  if (Setting.MemoryFile.isEmpty()) return;
  SaveMemory();
  connect(&Keeper, &QTimer::timeout, this, [this] { KeepMemory(); });
  Keeper.start(500);
}

Simulator::~Simulator() {
  if (!Setting.MemoryFile.isEmpty()) KeepMemory();
}

void Simulator::KeepMemory() {
  if (Common.ThePanel.Memory.Revision() == SavedRevision) return;
  try {
    SaveMemory();
    SaveFailed = false;
  } catch (const std::exception& failure) {
    if (!SaveFailed) std::fprintf(stderr, "%s\n", failure.what());
    SaveFailed = true;
  }
}

void Simulator::SaveMemory(const QString& path) {
  const QString name = path.isEmpty() ? Setting.MemoryFile : path;
  if (name.isEmpty()) throw std::runtime_error("No memory file has been named");
  const std::uint64_t revision = Common.ThePanel.Memory.Revision();
  const std::string content = Common.ThePanel.Memory.Content();
  QSaveFile file(name);
  // Unbuffered, because a commit does not say why a disk did not take what was buffered; one that
  // fills up takes a part first and tells its reason at the next attempt.
  bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
  for (qint64 at = 0; written && at < PanelMemory::Size;) {
    const qint64 taken = file.write(content.data() + at, PanelMemory::Size - at);
    written = taken > 0;
    at += taken;
  }
  if (!written || !file.commit()) {
    throw std::runtime_error("The memory file " + name.toStdString() +
                             " cannot be written: " + file.errorString().toStdString());
  }
  if (name == Setting.MemoryFile) SavedRevision = revision;
}

}  // namespace simulator

#include "simulator/program/simulator.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <stdexcept>

#include "simulator/memory/write_file.h"

namespace simulator {

namespace {

std::string MemoryContent(const QString& path) {
  QFile file(path);
  const std::string name = path.toStdString();
  const QFileInfo there(path);
  // Nothing may ever come out of a pipe.
  if (there.exists() && !there.isFile()) {
    throw std::runtime_error("The memory file " + name + " is no plain file");
  }
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
  return content.toStdString();
}

QDateTime WhenWritten(const QString& path) {
  return QFileInfo(path).lastModified();
}

}  // namespace

PanelMemory StartMemory(const Options& options) {
  PanelMemory memory = options.Blank ? PanelMemory() : SmallInstallation();
  if (!options.FollowedFile.isEmpty()) {
    memory.SetContent(MemoryContent(options.FollowedFile));
  } else if (!options.MemoryFile.isEmpty() && QFile::exists(options.MemoryFile)) {
    memory.SetContent(MemoryContent(options.MemoryFile));
  }
  if (!options.Password.empty()) memory.SetPassword(options.Password);
  return memory;
}

Simulator::Simulator(Options options)
    : Setting(std::move(options)),
      Common{Panel(StartMemory(Setting), Setting.Now), {}, FrameLog(Setting.Now)} {
  Common.ThePanel.Runner().FollowSun(Setting.Daylight);
  if (!Setting.LogFile.isEmpty()) Common.Log.Open(Setting.LogFile);
  for (const Fault& fault : Setting.Faults) Common.Faults.Add(fault);
  if (Setting.TcpPort) {
    Tcp = std::make_unique<TcpServer>(Common, Setting.Host, *Setting.TcpPort, Setting.Turn);
  }
  if (Setting.Pty) Pty = std::make_unique<PtyServer>(Common, *Setting.Pty);
  constexpr int keepMs = 500;
  if (!Setting.FollowedFile.isEmpty()) {
    FollowedState = WhenWritten(Setting.FollowedFile);
    connect(&Keeper, &QTimer::timeout, this, [this] { Follow(); });
  } else if (!Setting.MemoryFile.isEmpty()) {
    SaveMemory();
    connect(&Keeper, &QTimer::timeout, this, [this] { KeepMemory(); });
  }
  if (!Setting.FollowedFile.isEmpty() || !Setting.MemoryFile.isEmpty()) Keeper.start(keepMs);
}

Simulator::~Simulator() {
  if (!Setting.MemoryFile.isEmpty()) KeepMemory();
}

void Simulator::Follow() {
  const QDateTime written = WhenWritten(Setting.FollowedFile);
  if (written == FollowedState) return;
  FollowedState = written;
  try {
    Common.ThePanel.Memory.SetContent(MemoryContent(Setting.FollowedFile));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return;
  }
  if (TakenOver) TakenOver();
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
  WriteFile(name, Common.ThePanel.Memory.Content(), "The memory file", OwnersAlone);
  if (name == Setting.MemoryFile) SavedRevision = revision;
}

}  // namespace simulator

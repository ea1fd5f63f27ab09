#include <QDir>
#include <QFile>

#include "nonsense_panel.h"
#include "panel/defaults.h"
#include "panel/project_codec.h"

namespace {

bool Write(const QDir& folder, const char* name, std::string_view bytes) {
  QFile file(folder.filePath(QLatin1String(name)));
  const auto size = static_cast<qint64>(bytes.size());
  return file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size;
}

}  // namespace

/// Writes the seeds of the project fuzzer into the folder that is the one argument.
int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const QDir folder(QFile::decodeName(argv[1]));
  LoadDefaults();
  const std::string fresh = EncodeProject(LiveProject);
  FillWithNonsense(5, 13);
  const std::string full = EncodeProject(LiveProject);
  const std::string_view cut(fresh);
  const bool written = folder.mkpath(QStringLiteral(".")) && Write(folder, "fresh", fresh) &&
                       Write(folder, "full", full) && Write(folder, "empty", {}) &&
                       Write(folder, "in_names", cut.substr(0, 36'700)) &&
                       Write(folder, "in_devices", cut.substr(0, 41'500)) &&
                       Write(folder, "in_dimmers", cut.substr(0, 164'801)) &&
                       Write(folder, "with_tail", fresh + std::string(500, 'x'));
  return written ? 0 : 1;
}

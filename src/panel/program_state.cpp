#include "panel/program_state.h"

#include <pwd.h>
#include <unistd.h>

#include <QDir>

Int16 Connected = 0;
QString CurrentFileName = NoFileName;
bool FileNotInMemory = false;
Int16 DataChanged = 0;
QString DocumentFileName;
FixedArray<Int16, 12> DocumentSectionOff;
QString HostSoftwareVersion;

// The folder as users know it from Windows; elsewhere it lies in their home. No other place asks
// for the system.
void UseAccountHome() {
  if (!qEnvironmentVariableIsEmpty("HOME")) return;
  if (const passwd* account = getpwuid(getuid())) qputenv("HOME", account->pw_dir);
}

QString DataFolder() {
#ifdef Q_OS_WIN
  return QStringLiteral("C:\\Orv Tamberloom 3");
#else
  return QDir::homePath() + QStringLiteral("/Orv Tamberloom 3");
#endif
}

bool ProjectHasFile() {
  return CurrentFileName != NoFileName && !FileNotInMemory;
}

QString DataPath(const QString& name) {
  return QDir::toNativeSeparators(DataFolder() + u'/' + name);
}

QString DiagnosticsFileName() {
  return DataPath(QStringLiteral("Tamberloom 3 Diagnostics.T3"));
}

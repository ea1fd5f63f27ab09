#include "panel/beside_project.h"

#include <QFile>
#include <QFileInfo>

#include "panel/replace_file.h"

void CopyBeside(const QString& project, const QString& other) {
  for (const QString& ending : {AcceptedEnding, ReportEnding}) {
    QFile file(project + ending);
    if (!file.exists() || QFileInfo(file) == QFileInfo(other + ending)) continue;
    if (!file.open(QIODevice::ReadOnly)) {
      throw RunTimeFailure(QStringLiteral("%1 cannot be read, and is not copied: %2")
                               .arg(file.fileName(), file.errorString())
                               .toStdString());
    }
    ReplaceFile(other + ending, file.readAll().toStdString());
  }
}

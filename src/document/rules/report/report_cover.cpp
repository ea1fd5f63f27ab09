#include "document/rules/report/report_cover.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>
#include <QStringList>
#include <array>

#include "panel/beside_project.h"
#include "panel/replace_file.h"

namespace {

const QString CoverTitle = QStringLiteral("Tamberloom 3 report");

struct CoverLine {
  const char* Name;
  QString ReportCover::*Value;
};

constexpr auto CoverLines = std::to_array<CoverLine>({
    {"Client", &ReportCover::Client},
    {"Site", &ReportCover::Site},
    {"Engineer", &ReportCover::Engineer},
});

[[noreturn]] void FailToReadCover(const QString& name, const QString& reason) {
  throw RunTimeFailure(QStringLiteral("\"%1\" is to keep what a report's cover says: %2. It stays "
                                      "as it is. Correct it, or give it another name.")
                           .arg(QDir::toNativeSeparators(name), reason)
                           .toStdString());
}

/// False for a line that is none of a cover, or a second one.
bool TakeLine(const QString& line, QStringList& seen, ReportCover& cover) {
  const QString name = line.section(u':', 0, 0);
  for (const CoverLine& known : CoverLines) {
    if (name != QLatin1String(known.Name) || !line.contains(u':') || seen.contains(name)) continue;
    cover.*known.Value = line.section(u':', 1).trimmed();
    seen << name;
    return true;
  }
  return line.trimmed().isEmpty();
}

}  // namespace

QString CoverFileOf(const QString& projectFile) {
  return projectFile + ReportEnding;
}

ReportCover ReadCover(const QString& projectFile) {
  constexpr qint64 mostBytes = 65'536;
  const QString name = CoverFileOf(projectFile);
  if (!QFile::exists(name)) return {};
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) FailToReadCover(name, file.errorString());
  const QByteArray bytes = file.read(mostBytes + 1);
  if (file.error() != QFileDevice::NoError) FailToReadCover(name, file.errorString());
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString text = decoder.decode(bytes);
  if (bytes.size() > mostBytes || decoder.hasError()) {
    FailToReadCover(name, QStringLiteral("it is not such a text"));
  }
  const QStringList lines = text.split(u'\n');
  ReportCover cover;
  QStringList seen;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const bool good = i == 0 ? lines[i].trimmed() == CoverTitle : TakeLine(lines[i], seen, cover);
    if (!good) FailToReadCover(name, QStringLiteral("line %1 means nothing").arg(i + 1));
  }
  return cover;
}

void KeepCover(const QString& projectFile, const ReportCover& cover) {
  if (ReadCover(projectFile) == cover) return;
  QString text = CoverTitle + u'\n';
  for (const CoverLine& line : CoverLines) {
    text +=
        QLatin1String(line.Name) + QStringLiteral(": ") + (cover.*line.Value).simplified() + u'\n';
  }
  ReplaceFile(CoverFileOf(projectFile), text.toStdString());
}

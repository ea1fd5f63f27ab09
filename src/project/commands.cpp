#include "project/commands.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <filesystem>

#include "document/rules/check/check.h"
#include "document/rules/report/report_writer.h"
#include "document/rules/text/doc_file.h"
#include "panel/defaults.h"
#include "panel/difference.h"
#include "panel/panel_image.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "panel/replace_file.h"
#include "project/each_file.h"

namespace {

/// One row, tab-separated or as an object with the columns as keys.
void PrintRow(const CommandLine& line, const QStringList& columns, QStringList cells) {
  if (line.Json) {
    QJsonObject object;
    for (int i = 0; i < columns.size(); ++i) object[columns[i]] = cells[i];
    Print(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
    return;
  }
  // A name may hold what separates cells and rows.
  for (QString& cell : cells) {
    for (QChar& character : cell) {
      if (character < u' ') character = u' ';
    }
  }
  Print(cells.join(u'\t').toUtf8() + '\n');
}

/// A project as the host's Open reads it; what is missing in its file is as in a new panel.
ProjectRead Load(const QString& file) {
  return ReadProject(file, NewProject());
}

/// The file that a name leads to, be it there or not.
std::filesystem::path PlaceOf(const QString& file) {
  const std::filesystem::path path = QFile::encodeName(file).toStdString();
  return std::filesystem::weakly_canonical(std::filesystem::absolute(path));
}

/// What is to be written must not take the place of what is read or written beside it.
void RefuseOutput(const QString& output, const QString& other) {
  if (output.isEmpty() || other.isEmpty() || PlaceOf(output) != PlaceOf(other)) return;
  throw RunTimeFailure((output + ": is asked for twice; it would be overwritten").toStdString());
}

const QStringList CheckColumns = {"File", "Severity", "Rule", "Item", "Sentence"};
const QStringList CompareColumns = {"Area", "Item", "Field", "A", "B"};

ExitStatus Check(const CommandLine& line, const QStringList& files) {
  const ProjectRead read = Load(files[0]);
  ExitStatus status = StatusGood;
  for (const Finding& finding : CheckProject(read.Content, {.FileEndsEarly = !read.Whole})) {
    if (finding.Level == Severity::Error) status = StatusFound;
    PrintRow(line, CheckColumns,
             {files[0], SeverityWord(finding.Level), QString::fromLatin1(finding.Rule),
              ItemCode(finding.Where), finding.Sentence});
  }
  return status;
}

ExitStatus Compare(const CommandLine& line, const QStringList& files) {
  const auto differences =
      CompareProjects(Load(files[0]).Content, Load(files[1]).Content, line.Names);
  for (const Difference& difference : differences) {
    PrintRow(line, CompareColumns,
             {difference.Area, ItemCode(difference.Where), difference.Field, difference.This,
              difference.Other});
  }
  return differences.empty() ? StatusGood : StatusFound;
}

ExitStatus Document(const CommandLine& line, const QStringList& files) {
  HostSoftwareVersion = VersionText();
  DocumentChoice all;
  all.fill(true);
  Print(QByteArray::fromStdString(RenderDocument(Load(files[0]).Content,
                                                 line.FileName.isEmpty() ? files[0] : line.FileName,
                                                 DocumentTimeStamp(line.Date), all)));
  return StatusGood;
}

ExitStatus Report(const CommandLine& line, const QStringList& files) {
  RefuseOutput(line.Pdf, files[0]);
  RefuseOutput(line.Workbook, files[0]);
  RefuseOutput(line.Workbook, line.Pdf);
  const Project project = Load(files[0]).Content;
  HostSoftwareVersion = VersionText();
  const Paper paper = line.Paper.isEmpty()      ? UsualPaper()
                      : line.Paper == u"letter" ? Paper::Letter
                                                : Paper::A4;
  if (!line.Pdf.isEmpty()) WriteReportPdf(project, files[0], line.Pdf, paper, {});
  if (!line.Workbook.isEmpty()) WriteReportWorkbook(project, line.Workbook);
  return StatusGood;
}

ExitStatus Image(const CommandLine&, const QStringList& files) {
  RefuseOutput(files[1], files[0]);
  ReplaceFile(files[1], FreshPanelMemory(Load(files[0]).Content));
  return StatusGood;
}

ExitStatus FromMemory(const CommandLine& line, const QStringList& files) {
  RefuseOutput(files[1], files[0]);
  QFile memory(files[0]);
  if (!memory.open(QIODevice::ReadOnly)) {
    throw RunTimeFailure((files[0] + ": " + memory.errorString()).toStdString());
  }
  const QByteArray bytes = memory.read(PanelImageSize + 1);
  if (bytes.size() != PanelImageSize) {
    throw RunTimeFailure((files[0] + ": a panel's memory has 40,960 bytes").toStdString());
  }
  WriteProject(files[1], UploadedOver(NewProject(), ImageOf(bytes.toStdString()), line.Names));
  return StatusGood;
}

}  // namespace

const std::vector<Command>& Commands() {
  static const std::vector<Command> commands = {
      {"check", "FILE...", "A line a finding.", 1, 0, CheckColumns, Check, true},
      {"compare", "A B", "A line a setting that differs.", 2, 2, CompareColumns, Compare},
      {"document", "FILE", "The text document with all its sections.", 1, 1, {}, Document},
      {"report",
       "FILE --pdf OUT --xlsx OUT",
       "A report to print, a spreadsheet.",
       1,
       1,
       {},
       Report},
      {"image", "FILE OUT", "A panel's memory after a download.", 2, 2, {}, Image},
      {"project", "MEMORY OUT.T3", "The way back, as an upload makes it.", 2, 2, {}, FromMemory},
  };
  return commands;
}

int RunCommand(const CommandLine& line) {
  const auto& commands = Commands();
  const Command& command = *std::find_if(commands.begin(), commands.end(), [&](const Command& row) {
    return line.Command == QLatin1String(row.Name);
  });
  if (!command.Columns.isEmpty() && !line.Json) Print(command.Columns.join(u'\t').toUtf8() + '\n');
  if (!command.EachFile) return command.Run(line, line.Files);
  return ForEachFile(line.Files, [&](const QString& file) { return command.Run(line, {file}); });
}

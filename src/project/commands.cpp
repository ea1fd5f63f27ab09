#include "project/commands.h"

#include <algorithm>

#include "document/rules/report/report_writer.h"
#include "document/rules/text/doc_file.h"
#include "panel/code_page.h"
#include "panel/defaults.h"
#include "panel/difference.h"
#include "panel/panel_image.h"
#include "panel/program_state.h"
#include "project/check_commands.h"
#include "project/each_file.h"
#include "project/find_files.h"
#include "project/live_commands.h"
#include "project/merge_commands.h"
#include "project/places.h"
#include "project/rows.h"

namespace {

ExitStatus Compare(const CommandLine& line, const QStringList& files) {
  Project one = LoadContent(files[0]);
  Project other = LoadContent(files[1]);
  if (IsPanelMemory(files[0]) || IsPanelMemory(files[1])) {
    one = AsPanelKeeps(one);
    other = AsPanelKeeps(other);
  }
  const auto differences = CompareProjects(one, other, line.Names);
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
  const std::string text =
      RenderDocument(LoadContent(files[0]), line.FileName.isEmpty() ? files[0] : line.FileName,
                     DocumentTimeStamp(line.Date), all);
  Print(line.Utf8 ? ToUnicode(text).toUtf8() : QByteArray::fromStdString(text));
  return StatusGood;
}

ExitStatus Report(const CommandLine& line, const QStringList& files) {
  RefuseOutput(line.Pdf, files[0]);
  RefuseOutput(line.Workbook, files[0]);
  RefuseOutput(line.Workbook, line.Pdf);
  const ProjectRead read = LoadProject(files[0]);
  HostSoftwareVersion = VersionText();
  const Paper paper = line.Paper.isEmpty()      ? UsualPaper()
                      : line.Paper == u"letter" ? Paper::Letter
                                                : Paper::A4;
  ExitStatus status = StatusGood;
  if (!line.Pdf.isEmpty()) {
    ReportFacts facts{.FileName = files[0], .Date = line.Date};
    if (files[0] == u"-") {
      facts.FileName = QStringLiteral("standard input");
    } else if (!IsPanelMemory(files[0])) {
      facts = FactsOfFile(files[0], line.Date);
      facts.Cover = ReadBeside(ReadCover, files[0], status);
      facts.Accepted = ReadBeside(ReadAccepted, files[0], status);
      facts.Tested = ReadBeside(ReadTested, files[0], status);
    }
    facts.FileEndsEarly = !read.Whole;
    StoreBytes(line.Pdf, ReportPdf(read.Content, facts, line.Pdf, paper, {}));
  }
  if (!line.Workbook.isEmpty()) {
    StoreBytes(line.Workbook, ReportWorkbook(read.Content, line.Date, line.Workbook));
  }
  return status;
}

ExitStatus Image(const CommandLine&, const QStringList& files) {
  RefuseOutput(files[1], files[0]);
  StoreBytes(files[1], FreshPanelMemory(LoadWhole(files[0])));
  return StatusGood;
}

ExitStatus FromMemory(const CommandLine& line, const QStringList& files) {
  RefuseOutput(files[1], files[0]);
  StoreProject(files[1], UploadedOver(NewProject(), LoadMemory(files[0]), line.Names));
  return StatusGood;
}

}  // namespace

const std::vector<Command>& Commands() {
  // clang-format off
  static const std::vector<Command> commands = {
      {"check", "FILE...", "One line for each finding.", 1, AnyNumber, CheckColumns, Check, {"recursive", "files-from=LIST", "severity=LEVEL", "rule=NAME", "ignore=NAME", "warnings-as-errors", "all"}, true},
      {"rules", "", "One line for each rule of the check.", 0, 0, RuleColumns, ListRules},
      {"compare", "A B", "One line for each setting that differs.", 2, 2, CompareColumns, Compare, {"names"}},
      {"apply", "FILE DIFF.tsv", "Takes over what a comparison printed.", 2, 2, {}, ApplyRows},
      {"merge", "BASE OURS THEIRS", "One line for each setting that both sides changed differently.", 3, 3, MergeColumns, MergeFiles, {"output=OUT.T3", "path=NAME"}},
      {"document", "FILE", "The text document with all its sections.", 1, 1, {}, Document, {"date=TIME", "name=NAME", "utf8"}},
      {"report", "FILE --pdf OUT --xlsx OUT", "A report to print, a spreadsheet.", 1, 1, {}, Report, {"pdf=OUT.pdf", "xlsx=OUT.xlsx", "paper=PAPER", "date=TIME"}},
      {"image", "FILE OUT", "A panel's memory after a download.", 2, 2, {}, Image},
      {"project", "MEMORY OUT.T3", "The way back, as an upload makes it.", 2, 2, {}, FromMemory, {"names"}},
      {"read", "PANEL OUT.T3", "The panel's memory as a project.", 2, 2, {}, ReadPanel, {"no-names"}},
      {"send", "FILE PANEL", "A project into the panel.", 2, 2, {}, SendToPanel, {"changes", "password-file=FILE"}},
      {"clock", "PANEL", "Its time beside this computer's.", 1, 1, ClockColumns, ShowClock, {"set"}},
      {"status", "PANEL", "One line for the state of each item.", 1, 1, StatusColumns, ShowStatus, {"names=FILE"}},
      {"watch", "PANEL", "One line for each change, until interrupted.", 1, 1, WatchColumns, WatchPanel, {"names=FILE", "every=SECONDS"}},
      {"switch", "PANEL ITEM on|off", "A relay or group; - reads lines.", 2, 4, {}, SwitchItems},
  };
  // clang-format on
  return commands;
}

int RunCommand(const CommandLine& line) {
  const auto& commands = Commands();
  const Command& command = *std::find_if(commands.begin(), commands.end(), [&](const Command& row) {
    return line.Command == QLatin1String(row.Name);
  });
  if (!command.Columns.isEmpty()) PrintHeader(line, command.Columns);
  FlushOutput();  // A reader of a pipe may wait long for the first row.
  if (!command.EachFile) return command.Run(line, line.Files);
  const FoundFiles found = FindFiles(line);
  if (found.Files.count(StandardPlace) > 1) throw RunTimeFailure(StandardInputOnce);
  const int status =
      ForEachFile(found.Files, [&](const QString& file) { return command.Run(line, {file}); });
  return found.AllRead ? status : StatusFailed;
}

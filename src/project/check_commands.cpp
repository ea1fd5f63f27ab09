#include "project/check_commands.h"

#include <algorithm>

#include "project/places.h"
#include "project/rows.h"

ExitStatus Check(const CommandLine& line, const QStringList& files) {
  const ProjectRead read = LoadProject(files[0]);
  ExitStatus status = StatusGood;
  const CheckedFindings checked =
      PartAccepted(CheckProject(read.Content, {.FileEndsEarly = !read.Whole}),
                   ReadBeside(ReadAccepted, files[0], status));
  const auto print = [&](const Finding& finding, const QString& sentence) {
    if (!line.Findings.Tells(finding)) return;
    PrintRow(line, CheckColumns,
             {files[0], SeverityWord(finding.Level), QString::fromLatin1(finding.Rule),
              ItemCode(finding.Where), sentence});
  };
  for (const Finding& finding : checked.Open) {
    print(finding, finding.Sentence);
    const bool fails = line.Findings.Tells(finding) && line.Findings.Fails(finding);
    if (fails && status == StatusGood) status = StatusFound;
  }
  if (line.Findings.Accepted) {
    for (const AcceptedFinding& accepted : checked.Accepted)
      print(accepted.What, InWords(accepted));
  }
  return status;
}

ExitStatus ListRules(const CommandLine& line, const QStringList&) {
  std::vector<CheckRule> rules = AllRules();
  std::stable_sort(rules.begin(), rules.end(),
                   [](const CheckRule& a, const CheckRule& b) { return a.Level < b.Level; });
  for (const CheckRule& rule : rules) {
    PrintRow(line, RuleColumns,
             {QString::fromLatin1(rule.Name), SeverityWord(rule.Level),
              QString::fromLatin1(rule.About)});
  }
  return StatusGood;
}

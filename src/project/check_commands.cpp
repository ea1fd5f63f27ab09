#include "project/check_commands.h"

#include <algorithm>

#include "document/rules/check/check.h"
#include "project/places.h"
#include "project/rows.h"

ExitStatus Check(const CommandLine& line, const QStringList& files) {
  const ProjectRead read = LoadProject(files[0]);
  ExitStatus status = StatusGood;
  for (const Finding& finding : CheckProject(read.Content, {.FileEndsEarly = !read.Whole})) {
    if (!line.Findings.Tells(finding)) continue;
    if (line.Findings.Fails(finding)) status = StatusFound;
    PrintRow(line, CheckColumns,
             {files[0], SeverityWord(finding.Level), QString::fromLatin1(finding.Rule),
              ItemCode(finding.Where), finding.Sentence});
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

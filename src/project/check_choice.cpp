#include "project/check_choice.h"

#include <algorithm>
#include <stdexcept>

bool CheckChoice::Tells(const Finding& finding) const {
  const QString rule = QString::fromLatin1(finding.Rule);
  return finding.Level <= Least && (Only.isEmpty() || Only.contains(rule)) &&
         !Ignored.contains(rule);
}

bool CheckChoice::Fails(const Finding& finding) const {
  return finding.Level <= (WarningsAsErrors ? Severity::Warning : Severity::Error);
}

Severity SeverityOf(const QString& word) {
  for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
    if (SeverityWord(severity) == word) return severity;
  }
  throw std::invalid_argument("--severity takes error, warning or note");
}

QStringList RulesNamed(const QStringList& words) {
  const std::vector<CheckRule> rules = AllRules();
  QStringList names;
  for (const QString& word : words) names << word.split(u',');
  for (const QString& name : names) {
    const bool known = std::any_of(rules.begin(), rules.end(), [&](const CheckRule& rule) {
      return name == QString::fromLatin1(rule.Name);
    });
    if (known) continue;
    throw std::invalid_argument(
        QStringLiteral("there is no rule \"%1\"; rules lists them").arg(name).toStdString());
  }
  return names;
}

#pragma once

#include <QStringList>

#include "document/rules/check/check.h"

/// Which findings a check tells, and which of these fail it.
struct CheckChoice {
  Severity Least = Severity::Note;
  QStringList Only;  ///< Rules; all of them where none is named.
  QStringList Ignored;
  bool WarningsAsErrors = false;
  bool Accepted = false;  ///< Those that are accepted are told, too.

  bool Tells(const Finding& finding) const;
  bool Fails(const Finding& finding) const;
};

/// The severity of a word. Throws std::invalid_argument for any other word.
Severity SeverityOf(const QString& word);

/// Names of rules, each word of which may hold several with commas between. Throws
/// std::invalid_argument for a name that no rule has.
QStringList RulesNamed(const QStringList& words);

#pragma once

#include <QDateTime>
#include <QStringList>

#include "project/check_choice.h"

/// What the command line asks for.
struct CommandLine {
  QString Command;
  QStringList Files;
  bool Json = false;
  bool Names = false;
  QString NamesFrom;  ///< The project that names what a panel tells; empty for the panel itself.
  bool NoNames = false;
  bool Changes = false;     ///< Only these are sent.
  bool Set = false;         ///< The panel's clock.
  double EverySeconds = 2;  ///< Between two looks.
  QString PasswordFile;     ///< Empty: the environment or the terminal tells it.
  QDateTime Date;           ///< Now unless told.
  QString Output;           ///< What a merge is written to; empty for the file of OURS.
  QString Pdf;              ///< What a report is written to; empty for nothing.
  QString Workbook;
  bool Recursive = false;  ///< Folders in folders are looked into, too.
  QString FilesFrom;       ///< The list of further files; empty for none.
  CheckChoice Findings;    ///< Those that a check tells.
  bool Utf8 = false;       ///< Of the document.
  QString Path;            ///< What the merged file is called elsewhere; empty for its own name.
  QString Paper;           ///< "A4" or "letter"; that of the country unless told.
  QString FileName;        ///< What the document says; the file's own unless told.
  QString Say;             ///< A text to print in place of working, for --help and --version.
};

/// Throws std::invalid_argument with a text for the user. `arguments` begins with the program's
/// name.
CommandLine ParseCommandLine(const QStringList& arguments);

#include "project/command_line.h"

#include <QCommandLineParser>
#include <algorithm>
#include <stdexcept>

#include "panel/stopwatch.h"
#include "project/commands.h"

namespace {

constexpr const char* DateFormat = "yyyy-MM-dd hh:mm";

[[noreturn]] void Refuse(const QString& reason) {
  throw std::invalid_argument(reason.toStdString());
}

QString CommandHelp() {
  QString help = QStringLiteral("\nCommands:\n");
  for (const Command& command : Commands()) {
    const QString call =
        QStringLiteral("%1 %2").arg(QLatin1String(command.Name), QLatin1String(command.Files));
    help += QStringLiteral("  %1 %2\n").arg(call, -33).arg(QLatin1String(command.Summary));
  }
  return help +
         QStringLiteral(
             "\nExit status: 0 no error found, equal, or merged; 1 errors found, different, or "
             "both sides\nchanged the same; 2 what cannot be read, written or reached, or a "
             "wrong call.\n");
}

}  // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Works on Orv Tamberloom 3 projects and panels without a window."));
  parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("One of those below."));
  parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("What it works on."),
                               QStringLiteral("file..."));
  parser.addOptions({
      {{"h", "help"}, QStringLiteral("Show this text.")},
      {{"v", "version"}, QStringLiteral("Show the version.")},
      {"json", QStringLiteral("Print rows as JSON objects, one a line.")},
      {"date", QStringLiteral("document: when it says that it was created."),
       QStringLiteral("\"2026-11-25 10:00\"")},
      {"name", QStringLiteral("document: the file name that it says."), QStringLiteral("NAME")},
      {{"o", "output"},
       QStringLiteral("merge: the file to write, in place of OURS."),
       QStringLiteral("OUT.T3")},
      {"pdf", QStringLiteral("report: the file to print to."), QStringLiteral("OUT.pdf")},
      {"xlsx", QStringLiteral("report: the spreadsheet to write."), QStringLiteral("OUT.xlsx")},
      {"paper", QStringLiteral("report: letter or A4."), QStringLiteral("PAPER")},
      {"no-names", QStringLiteral("read: leave the names as in a new panel.")},
      {"changes", QStringLiteral("send: only what has changed since the last read or send.")},
      {"password-file",
       QStringLiteral("send: what holds the panel's password; else "
                      "TAMBERLOOM3_PASSWORD does, or it is asked for."),
       QStringLiteral("FILE")},
      {"set", QStringLiteral("clock: set it by this computer's.")},
      {"every", QStringLiteral("watch: how often to look, 2 unless told."),
       QStringLiteral("SECONDS")},
  });
  // Of a panel that is looked at, the names come from somewhere.
  const auto word = std::find_if(arguments.begin() + 1, arguments.end(),
                                 [](const QString& w) { return !w.startsWith(u'-'); });
  const bool namesFrom = word != arguments.end() && (*word == u"status" || *word == u"watch");
  QCommandLineOption names(
      {QStringLiteral("names")},
      QStringLiteral("compare: names count too. project: take the panel's names. status, watch: "
                     "the project that tells them, in place of the panel."));
  if (namesFrom) names.setValueName(QStringLiteral("FILE"));
  parser.addOption(names);
  const bool parsed = parser.parse(arguments);
  CommandLine line;
  if (parsed && parser.isSet(QStringLiteral("help"))) {
    line.Say = parser.helpText() + CommandHelp();
    return line;
  }
  if (parsed && parser.isSet(QStringLiteral("version"))) {
    line.Say = QStringLiteral("tamberloom3-project " TAMBERLOOM_VERSION "\n");
    return line;
  }
  if (!parsed) Refuse(parser.errorText());
  line.Files = parser.positionalArguments();
  if (line.Files.isEmpty()) Refuse(QStringLiteral("a command is missing; --help lists them"));
  line.Command = line.Files.takeFirst();
  const auto& commands = Commands();
  const auto command = std::find_if(commands.begin(), commands.end(), [&](const Command& row) {
    return line.Command == QLatin1String(row.Name);
  });
  if (command == commands.end()) {
    Refuse(QStringLiteral("there is no command \"%1\"; --help lists them").arg(line.Command));
  }
  const bool tooMany = command->MostFiles > 0 && line.Files.size() > command->MostFiles;
  if (line.Files.size() < command->LeastFiles || tooMany) {
    Refuse(QStringLiteral("%1 takes %2").arg(line.Command, QLatin1String(command->Files)));
  }
  line.Json = parser.isSet(QStringLiteral("json"));
  line.Names = parser.isSet(QStringLiteral("names"));
  if (namesFrom) line.NamesFrom = parser.value(names);
  line.NoNames = parser.isSet(QStringLiteral("no-names"));
  line.Changes = parser.isSet(QStringLiteral("changes"));
  line.Set = parser.isSet(QStringLiteral("set"));
  line.PasswordFile = parser.value(QStringLiteral("password-file"));
  if (parser.isSet(QStringLiteral("every"))) {
    bool isNumber = false;
    line.EverySeconds = parser.value(QStringLiteral("every")).toDouble(&isNumber);
    constexpr double longest = 86400;
    if (!isNumber || !(line.EverySeconds >= 0 && line.EverySeconds <= longest)) {
      Refuse(QStringLiteral("--every takes seconds, 0 to 86400"));
    }
  }
  line.FileName = parser.value(QStringLiteral("name"));
  line.Output = parser.value(QStringLiteral("output"));
  if (line.Output.isEmpty() && parser.isSet(QStringLiteral("output"))) {
    Refuse(QStringLiteral("the output has no name"));
  }
  line.Pdf = parser.value(QStringLiteral("pdf"));
  line.Workbook = parser.value(QStringLiteral("xlsx"));
  if (line.Command == u"report" && line.Pdf.isEmpty() && line.Workbook.isEmpty()) {
    Refuse(QStringLiteral("report takes --pdf, --xlsx or both"));
  }
  if (line.Pdf == u"-" && line.Workbook == u"-") {
    Refuse(QStringLiteral("only one of both can go to standard output"));
  }
  line.Paper = parser.value(QStringLiteral("paper")).toLower();
  if (!line.Paper.isEmpty() && line.Paper != u"letter" && line.Paper != u"a4") {
    Refuse(QStringLiteral("--paper takes letter or A4"));
  }
  line.Date = Now();
  if (parser.isSet(QStringLiteral("date"))) {
    const QString date = parser.value(QStringLiteral("date"));
    line.Date = QDateTime::fromString(date, QLatin1String(DateFormat));
    if (!line.Date.isValid()) {
      Refuse(
          QStringLiteral("--date takes a time such as \"2026-11-25 10:00\", not \"%1\"").arg(date));
    }
  }
  return line;
}

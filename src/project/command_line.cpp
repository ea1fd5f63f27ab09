#include "project/command_line.h"

#include <QCommandLineParser>
#include <algorithm>
#include <array>
#include <stdexcept>

#include "panel/stopwatch.h"
#include "project/commands.h"

namespace {

constexpr const char* DateFormat = "yyyy-MM-dd hh:mm";

/// An option of some commands.
struct Option {
  const char* Name;
  const char* Value;  ///< What stands behind it; empty for nothing.
  const char* About;
  const char* Letter = "";

  /// As the table of commands names it: "names", "names=FILE".
  QString Key() const {
    const QString name = QString::fromLatin1(Name);
    return *Value ? name + u'=' + QLatin1String(Value) : name;
  }
};

/// Of those of one name a command takes one at most.
constexpr auto Options = std::to_array<Option>({
    {"json", "", "Print rows as JSON objects, one a line."},
    {"recursive", "", "Look into folders in folders, too.", "r"},
    {"files-from", "LIST",
     "Take further files from the lines of a list, or of - for standard input."},
    {"severity", "LEVEL", "Leave out what is less serious: error, warning or note."},
    {"rule", "NAME",
     "Report the findings of this rule alone; separate several with commas, or give it again."},
    {"ignore", "NAME",
     "Leave out the findings of this rule; separate several with commas, or give it again."},
    {"warnings-as-errors", "", "Exit with 1 for warnings, too."},
    {"all", "", "Report accepted findings, too; they do not count."},
    {"date", "TIME", "When it says that it was created: \"2026-11-25 10:00\"."},
    {"name", "NAME", "The file name that it says."},
    {"utf8", "", "Print UTF-8 in place of Windows-1252."},
    {"output", "OUT.T3", "The file to write, in place of OURS.", "o"},
    {"path", "NAME",
     "What the file is called, where OURS is a copy of it; rows then begin with it."},
    {"pdf", "OUT.pdf", "The file to print to."},
    {"xlsx", "OUT.xlsx", "The spreadsheet to write."},
    {"paper", "PAPER", "letter or A4."},
    {"names", "", "The names, too."},
    {"names", "FILE", "The project that tells the names, in place of the panel."},
    {"no-names", "", "Leave the names as in a new panel."},
    {"changes", "", "Only what has changed since the last read or send."},
    {"password-file", "FILE",
     "What holds the panel's password; else TAMBERLOOM3_PASSWORD does, or it is asked for."},
    {"set", "", "Set it by this computer's."},
    {"every", "SECONDS", "How often to look, 2 unless told."},
});

[[noreturn]] void Refuse(const QString& reason) {
  throw std::invalid_argument(reason.toStdString());
}

const Command* CommandNamed(const QString& name) {
  const auto& commands = Commands();
  const auto found = std::find_if(commands.begin(), commands.end(), [&](const Command& row) {
    return name == QLatin1String(row.Name);
  });
  return found == commands.end() ? nullptr : &*found;
}

bool Takes(const Command& command, const Option& option) {
  const bool json = QLatin1String(option.Name) == "json" && !command.Columns.isEmpty();
  return json || command.Options.contains(option.Key());
}

/// The option that a command takes by a name; null for none.
const Option* OptionOf(const Command& command, QLatin1StringView name) {
  const auto* found = std::find_if(Options.begin(), Options.end(), [&](const Option& option) {
    return (name == option.Name || name == option.Letter) && Takes(command, option);
  });
  return found == Options.end() ? nullptr : found;
}

/// Of which commands, and what it says there: for the help on all of them.
QString AboutEverywhere(QLatin1StringView name) {
  QStringList abouts;
  for (const Option& option : Options) {
    if (name != option.Name) continue;
    QStringList takers;
    for (const Command& command : Commands()) {
      if (Takes(command, option)) takers << QString::fromLatin1(command.Name);
    }
    abouts << takers.join(QStringLiteral(", ")) + QStringLiteral(": ") +
                  QLatin1String(option.About);
  }
  return abouts.join(u' ');
}

void AddOption(QCommandLineParser& parser, const Option& option, const QString& about) {
  QStringList names{QString::fromLatin1(option.Name)};
  if (*option.Letter) names.prepend(QString::fromLatin1(option.Letter));
  parser.addOption({names, about, QString::fromLatin1(option.Value)});
}

void AddCommonOptions(QCommandLineParser& parser) {
  parser.addOptions({{{"h", "help"}, QStringLiteral("Show this text.")},
                     {{"v", "version"}, QStringLiteral("Show the version.")}});
}

/// Knows all options, as the command takes them.
void AddAllOptions(QCommandLineParser& parser, const Command* command) {
  AddCommonOptions(parser);
  QStringList names;
  for (const Option& option : Options) {
    const QLatin1StringView name(option.Name);
    const Option* taken = command ? OptionOf(*command, name) : nullptr;
    if (names.contains(name) || (taken && taken != &option)) continue;
    names << name;
    AddOption(parser, option, AboutEverywhere(name));
  }
}

QString HelpOnAll() {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Works on Orv Tamberloom 3 projects and panels without a window."));
  parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("One of those below."));
  parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("What it works on."),
                               QStringLiteral("file..."));
  AddAllOptions(parser, nullptr);
  QString help = parser.helpText() + QStringLiteral("\nCommands:\n");
  for (const Command& command : Commands()) {
    const QString call =
        QStringLiteral("%1 %2").arg(QLatin1String(command.Name), QLatin1String(command.Files));
    help += QStringLiteral("  %1 %2\n").arg(call, -33).arg(QLatin1String(command.Summary));
  }
  return help +
         QStringLiteral(
             "\nWith a command, --help shows its options alone.\n"
             "\nExit status: 0 no error found, equal, or merged; 1 errors found, different, or "
             "both sides\nchanged the same setting differently; 2 what cannot be read, written or "
             "reached, or a\nwrong call.\n");
}

QString HelpOn(const Command& command) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QString::fromLatin1(command.Summary));
  parser.addPositionalArgument(QString::fromLatin1(command.Name), {},
                               QLatin1String(command.Name) + u' ' + QLatin1String(command.Files));
  AddCommonOptions(parser);
  for (const Option& option : Options) {
    if (Takes(command, option)) AddOption(parser, option, QString::fromLatin1(option.About));
  }
  return parser.helpText();
}

CheckChoice FindingsOf(const QCommandLineParser& parser) {
  CheckChoice choice;
  const QString severity = QStringLiteral("severity");
  if (parser.isSet(severity)) choice.Least = SeverityOf(parser.value(severity));
  choice.Only = RulesNamed(parser.values(QStringLiteral("rule")));
  choice.Ignored = RulesNamed(parser.values(QStringLiteral("ignore")));
  choice.Accepted = parser.isSet(QStringLiteral("all"));
  choice.WarningsAsErrors = parser.isSet(QStringLiteral("warnings-as-errors"));
  return choice;
}

double SecondsIn(const QString& word) {
  bool isNumber = false;
  const double seconds = word.toDouble(&isNumber);
  constexpr double longest = 86400;
  if (!isNumber || !(seconds >= 0 && seconds <= longest)) {
    Refuse(QStringLiteral("--every takes seconds, 0 to 86400"));
  }
  return seconds;
}

QDateTime DateIn(const QString& word) {
  QDateTime date = QDateTime::fromString(word, QLatin1String(DateFormat));
  if (!date.isValid()) {
    Refuse(
        QStringLiteral("--date takes a time such as \"2026-11-25 10:00\", not \"%1\"").arg(word));
  }
  return date;
}

}  // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
  QCommandLineParser first;
  AddAllOptions(first, nullptr);
  first.parse(arguments);
  const QString name = first.positionalArguments().value(0);
  const Command* command = CommandNamed(name);

  QCommandLineParser parser;
  AddAllOptions(parser, command);
  const bool parsed = parser.parse(arguments);
  const auto isSet = [&](const char* option) { return parser.isSet(QLatin1String(option)); };
  const auto value = [&](const char* option) { return parser.value(QLatin1String(option)); };
  CommandLine line;
  if (isSet("help")) {
    line.Say = command ? HelpOn(*command) : HelpOnAll();
    return line;
  }
  if (isSet("version")) {
    line.Say = QStringLiteral("tamberloom3-project " TAMBERLOOM_VERSION "\n");
    return line;
  }
  if (!parsed) Refuse(parser.errorText());
  if (name.isEmpty()) Refuse(QStringLiteral("a command is missing; --help lists them"));
  if (!command) Refuse(QStringLiteral("there is no command \"%1\"; --help lists them").arg(name));
  for (const QString& option : parser.optionNames()) {
    if (OptionOf(*command, QLatin1StringView(option.toLatin1()))) continue;
    const QString dashes(option.size() > 1 ? 2 : 1, u'-');
    Refuse(QStringLiteral("%1 does not take %2").arg(name, dashes + option));
  }
  line.Command = name;
  line.Files = parser.positionalArguments().mid(1);
  line.FilesFrom = value("files-from");
  const bool tooFew = line.Files.size() < command->LeastFiles && line.FilesFrom.isEmpty();
  const bool tooMany = command->MostFiles != AnyNumber && line.Files.size() > command->MostFiles;
  if (tooFew || tooMany) {
    const QString files = QString::fromLatin1(*command->Files ? command->Files : "no file");
    Refuse(QStringLiteral("%1 takes %2").arg(line.Command, files));
  }
  line.Json = isSet("json");
  line.Recursive = isSet("recursive");
  if (line.FilesFrom == u"-" && line.Files.contains(u"-")) {
    Refuse(QStringLiteral("only one of both can come from standard input"));
  }
  line.Findings = FindingsOf(parser);
  line.Utf8 = isSet("utf8");
  line.Path = value("path");
  const Option* names = OptionOf(*command, QLatin1StringView("names"));
  const bool namesFrom = names && *names->Value;
  line.Names = isSet("names");
  if (namesFrom) line.NamesFrom = value("names");
  line.NoNames = isSet("no-names");
  line.Changes = isSet("changes");
  line.Set = isSet("set");
  line.PasswordFile = value("password-file");
  if (isSet("every")) line.EverySeconds = SecondsIn(value("every"));
  line.FileName = value("name");
  line.Output = value("output");
  if (line.Output.isEmpty() && isSet("output")) {
    Refuse(QStringLiteral("the output has no name"));
  }
  line.Pdf = value("pdf");
  line.Workbook = value("xlsx");
  if (line.Command == u"report" && line.Pdf.isEmpty() && line.Workbook.isEmpty()) {
    Refuse(QStringLiteral("report takes --pdf, --xlsx or both"));
  }
  if (line.Pdf == u"-" && line.Workbook == u"-") {
    Refuse(QStringLiteral("only one of both can go to standard output"));
  }
  line.Paper = value("paper").toLower();
  if (!line.Paper.isEmpty() && line.Paper != u"letter" && line.Paper != u"a4") {
    Refuse(QStringLiteral("--paper takes letter or A4"));
  }
  line.Date = isSet("date") ? DateIn(value("date")) : Now();
  return line;
}

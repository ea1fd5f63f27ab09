#include "simulator/program/command_line.h"

#include <pwd.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <climits>
#include <cstdlib>
#include <stdexcept>

#include "simulator/program/console.h"

namespace simulator {

namespace {

constexpr int DefaultPort = 10001;

int Number(const QCommandLineParser& parser, const QString& option, int last) {
  bool valid = false;
  const int value = parser.value(option).toInt(&valid);
  if (!valid || value < 0 || value > last) {
    throw std::invalid_argument("--" + option.toStdString() + " takes a number from 0 to " +
                                std::to_string(last));
  }
  return value;
}

/// Four numbers, as in "0,40,740,580".
std::array<int, 4> Place(const QString& text) {
  const QStringList parts = text.split(u',');
  std::array<int, 4> place{};
  bool valid = parts.size() == 4;
  for (std::size_t i = 0; valid && i < place.size(); ++i) {
    place[i] = parts[static_cast<qsizetype>(i)].toInt(&valid);
    valid = valid && std::abs(place[i]) <= SHRT_MAX;
  }
  if (!valid) throw std::invalid_argument("--beside takes four numbers, as in 0,40,740,580");
  return place;
}

/// Of the account, if nothing else is told.
QString HomePath() {
  const QByteArray told = qgetenv("HOME");
  const passwd* account = told.isEmpty() ? getpwuid(getuid()) : nullptr;
  return account ? QFile::decodeName(account->pw_dir) : QDir::homePath();
}

/// A bare COMn stands in the host program's data folder.
QString LinkPath(const QString& text) {
  static const QRegularExpression bare("^COM([1-9]|1[0-6])$");
  if (bare.match(text).hasMatch()) return HomePath() + "/Orv Tamberloom 3/Ports/" + text;
  return text.startsWith("~/") ? HomePath() + text.mid(1) : text;
}

}  // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Plays an Orv Tamberloom 3 panel: over TCP unless only a pseudo-terminal is asked for.\n"
      "Reads typed commands from standard input; \"help\" lists them.");
  parser.addOptions({
      {{"h", "help"}, "Show this text."},
      {{"v", "version"}, "Show the version."},
      {"tcp", "Serve TCP on this port, 10001 if nothing is said; 0 takes a free one.", "PORT"},
      {"host", "Serve TCP at this address of the computer.", "ADDRESS", "127.0.0.1"},
      {"pty", "Serve a pseudo-terminal, like a serial port."},
      {"link",
       "Serve a pseudo-terminal and link FILE to it, removed at the end; a bare COM1 to "
       "COM16 stands in the folder Ports of the host program's data folder.",
       "FILE"},
      {"modem", "Serve a pseudo-terminal with a modem in front of the panel."},
      {"modem-busy", "The same, with every call ending in NO CARRIER."},
      {"dial-ms", "Time from dialing to the modem's answer.", "MS", "1500"},
      {"baud", "Pace the pseudo-terminal like a line of N baud; 0: no pacing.", "N", "0"},
      {"memory", "Keep the panel's memory in FILE, 40,960 bytes.", "FILE"},
      {"window", "Show the panel in a window: relays, switches, front, clock, days as a picture."},
      {"beside", "Let the window stand beside another one on the screen.", "X,Y,WIDTH,HEIGHT"},
      {"until", "Ask whether the window is to end, too, when this process has ended.", "PROCESS"},
      {"follow",
       "Run the memory in FILE, which another program writes, and take it over whenever it has "
       "changed. Nothing is served unless a line is asked for.",
       "FILE"},
      {"blank", "Start with a memory of zeros in place of a small installation."},
      {"password", "Start with this password of six digits.", "DIGITS"},
      {"fault", "Spoil replies: KIND[:AMOUNT[:GAP]][@FIRST][xCOUNT]. May be given more than once.",
       "FAULT"},
      {"rehearse",
       "Run the days of the range as the memory says, print what happens as tab-separated text, "
       "and end.",
       "2026-01-01..2026-12-31"},
      {"inputs", "What is done meanwhile, as in \"2026-03-02 08:10 tap 3\", a line each.", "FILE"},
      {"plan", "Draw the rehearsed days into FILE as SVG.", "FILE"},
      {"plan-dimmers", "Give dimmer outputs rows in it, their level as height."},
      {"plan-pilots", "Give pilots rows in it."},
      {"burn-hours", "Print the hours that each relay was on instead."},
      {"daylight", "What light photocells get: hands (as they are told) or clear (a clear day's).",
       "LIGHT", "hands"},
      {"log", "Append a line for each frame to FILE; - is standard output.", "FILE"},
  });
  const bool parsed = parser.parse(arguments);
  CommandLine result;
  if (parsed && parser.isSet("help")) {
    result.Say = parser.helpText().toStdString() + "\nFaults:\n" + FaultHelp() +
                 "FIRST counts replies, 1 is the next; COUNT is how many, * for all from FIRST "
                 "on.\n\nTyped commands:\n" +
                 Console::CommandHelp() + "\n" + ScriptHelp();
    return result;
  }
  if (parsed && parser.isSet("version")) {
    result.Say = "tamberloom3-panel " TAMBERLOOM_VERSION "\n";
    return result;
  }
  if (!parsed) throw std::invalid_argument(parser.errorText().toStdString());
  if (!parser.positionalArguments().isEmpty()) {
    throw std::invalid_argument("unexpected: " + parser.positionalArguments()[0].toStdString());
  }

  Options& wanted = result.Wanted;
  wanted.Host = parser.value("host");
  const bool busy = parser.isSet("modem-busy");
  const bool modem = busy || parser.isSet("modem");
  if (parser.isSet("pty") || parser.isSet("link") || modem) {
    PtyServer::Options pty;
    if (parser.isSet("link")) pty.Link = LinkPath(parser.value("link"));
    if (modem) {
      pty.WithModem =
          Modem::Options{busy, std::chrono::milliseconds(Number(parser, "dial-ms", 60'000))};
    }
    pty.Baud = Number(parser, "baud", 4'000'000);
    wanted.Pty = pty;
  } else if (parser.isSet("baud")) {
    throw std::invalid_argument("--baud paces a pseudo-terminal: add --pty");
  }
  if (parser.isSet("dial-ms") && !modem) {
    throw std::invalid_argument("--dial-ms is of a modem: add --modem");
  }
  if (parser.isSet("tcp")) wanted.TcpPort = static_cast<quint16>(Number(parser, "tcp", 65535));
  result.Window = parser.isSet("window");
  if (parser.isSet("beside")) result.Beside = Place(parser.value("beside"));
  if (parser.isSet("until")) result.Until = Number(parser, "until", INT_MAX);
  wanted.FollowedFile = parser.value("follow");
  if (parser.isSet("follow") && parser.isSet("memory")) {
    throw std::invalid_argument("--follow and --memory cannot be combined");
  }
  const bool served = wanted.Pty || wanted.TcpPort || parser.isSet("follow");
  if (!served) wanted.TcpPort = DefaultPort;
  wanted.Blank = parser.isSet("blank");
  wanted.Password = parser.value("password").toStdString();
  if (parser.isSet("password") && !IsPassword(wanted.Password)) {
    throw std::invalid_argument("--password takes six digits");
  }
  const QString light = parser.value("daylight");
  wanted.Daylight = light == "clear";
  if (!wanted.Daylight && light != "hands") {
    throw std::invalid_argument("--daylight takes hands or clear");
  }
  if ((parser.isSet("plan-dimmers") || parser.isSet("plan-pilots")) && !parser.isSet("plan")) {
    throw std::invalid_argument("--plan-dimmers and --plan-pilots belong to --plan");
  }
  wanted.MemoryFile = parser.value("memory");
  wanted.LogFile = parser.value("log");
  if (parser.values("rehearse").size() > 1) {
    throw std::invalid_argument("--rehearse takes one range of dates");
  }
  if (parser.isSet("rehearse")) {
    result.Rehearsal.emplace();
    if (parser.isSet("inputs")) result.Rehearsal->Script = ReadScript(parser.value("inputs"));
    result.Rehearsal->PlanFile = parser.value("plan");
    result.Rehearsal->Rows = {parser.isSet("plan-dimmers"), parser.isSet("plan-pilots")};
    result.Rehearsal->Daylight = wanted.Daylight;
    result.Rehearsal->BurnHours = parser.isSet("burn-hours");
    const QString range = parser.value("rehearse");
    ParseRange(range, *result.Rehearsal);
    for (const int number : LinesOutside(*result.Rehearsal)) {
      result.Notes.push_back(parser.value("inputs").toStdString() + ", line " +
                             std::to_string(number) + ": left out, not in " + range.toStdString());
    }
  } else if (parser.isSet("inputs") || parser.isSet("plan") || parser.isSet("burn-hours")) {
    throw std::invalid_argument("--inputs, --plan and --burn-hours belong to --rehearse");
  }
  for (const QString& text : parser.values("fault")) {
    wanted.Faults.push_back(ParseFault(text.toStdString()));
  }
  return result;
}

}  // namespace simulator

#include "simulator/program/console.h"

#include <stdexcept>

namespace simulator {

const Console::Command Console::Commands[] = {
    {"help", "", "this list", &Console::Help},
    {"press", "N [off]", "close the contact of input N (its Off contact with \"off\")",
     &Console::Press},
    {"close", "N [off]", "the same", &Console::Press},
    {"release", "N [off]", "open it again", &Console::Release},
    {"open", "N [off]", "the same", &Console::Release},
    {"tap", "N [off]", "close it and open it again", &Console::Tap},
    {"device", "D present|dropped|auto", "Fennlink device D answers, does not, or as in memory",
     &Console::Device},
    {"button", "D N press|release|tap", "input N of Fennlink device D", &Console::DeviceInput},
    {"photocell", "D LEVEL", "analog level 0..255 of Fennlink device D", &Console::Photocell},
    {"relay", "N|all on|off", "switch a relay", &Console::Relay},
    {"group", "N on|off", "switch a group", &Console::Group},
    {"preset", "N", "set a preset", &Console::Preset},
    {"timer", "N", "force a timer", &Console::Timer},
    {"power", "on|off", "cut the panel's power, or let it come back", &Console::Power},
    {"key", "up|down|enter|exit|previous|next|chord", "press a key of the front", &Console::Key},
    {"show", "relays|groups|inputs|presets|devices|dimmers|display|time", "what is so now",
     &Console::Show},
    {"time", "YYYY-MM-DD HH:MM[:SS]", "set the panel's clock", &Console::Time},
    {"firmware", "TEXT", "set the firmware text, 40 characters", &Console::Firmware},
    {"io", "C...", "blocks of four points on the nodes, up to twelve counts", &Console::IO},
    {"card", "TYPE REVISION", "add-on card, 0..15 each", &Console::Card},
    {"password", "DIGITS", "set the six digits of the password", &Console::Password},
    {"fault", "FAULT|list|clear|help", "spoil replies, for example late:2500@3x2",
     &Console::SetFault},
    {"save", "[FILE]", "write the memory to its file or another", &Console::Save},
    {"log", "on|off", "go on or pause writing the log", &Console::Log},
    {"quit", "", "end the program", &Console::Quit},
};

namespace {

/// A line that does not fit its command; shown together with the usage.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

int Number(const QStringList& words, int at, int first, int last) {
  bool valid = false;
  const int value = words.value(at).toInt(&valid);
  if (!valid || value < first || value > last) {
    throw UsageError(words.value(at).toStdString() + " is not a number from " +
                     std::to_string(first) + " to " + std::to_string(last));
  }
  return value;
}

/// Which of the words stands at `at`.
int Choice(const QStringList& words, int at, const QStringList& choices) {
  const auto found = choices.indexOf(words.value(at));
  if (found < 0) throw UsageError("expected one of: " + choices.join(", ").toStdString());
  return static_cast<int>(found);
}

bool OnOff(const QStringList& words, int at) {
  return Choice(words, at, {"off", "on"}) == 1;
}

Contact ContactOf(const QStringList& words) {
  if (words.size() < 3) return Contact::On;
  return Choice(words, 2, {"on", "off"}) == 0 ? Contact::On : Contact::Off;
}

int Item(const QStringList& words, int at = 1) {
  return Number(words, at, 1, Items) - 1;
}

}  // namespace

Console::Console(Simulator& simulator, std::function<void()> quit)
    : Host(simulator), EndProgram(std::move(quit)) {}

std::string Console::Execute(const QString& line) {
  const QStringList words = line.simplified().split(' ', Qt::SkipEmptyParts);
  if (words.isEmpty()) return {};
  for (const Command& command : Commands) {
    if (words[0] != command.Name) continue;
    try {
      return (this->*command.Handler)(words);
    } catch (const UsageError& error) {
      return std::string(error.what()) + "\nusage: " + command.Name + " " + command.Usage + "\n";
    } catch (const std::exception& error) {
      return std::string(error.what()) + "\n";
    }
  }
  return "there is no command " + words[0].toStdString() + "; \"help\" lists them\n";
}

std::string Console::CommandHelp() {
  constexpr std::size_t column = 34;
  std::string text;
  for (const Command& command : Commands) {
    std::string row = std::string("  ") + command.Name + " " + command.Usage;
    if (row.size() >= column) {
      text += row + "\n";
      row.clear();
    }
    row.resize(column, ' ');
    text += row + command.Help + "\n";
  }
  return text;
}

std::string Console::Help(const QStringList&) {
  return CommandHelp();
}

std::string Console::Press(const QStringList& words) {
  ThePanel().SetContact(Item(words), ContactOf(words), true);
  return {};
}

std::string Console::Release(const QStringList& words) {
  ThePanel().SetContact(Item(words), ContactOf(words), false);
  return {};
}

std::string Console::Tap(const QStringList& words) {
  return Press(words) + Release(words);
}

std::string Console::Device(const QStringList& words) {
  using Presence = Panel::Presence;
  static constexpr Presence presences[]{Presence::Present, Presence::Dropped, Presence::ByMemory};
  const int choice = Choice(words, 2, {"present", "dropped", "auto"});
  ThePanel().SetPresence(Number(words, 1, 1, Devices), presences[choice]);
  return {};
}

std::string Console::DeviceInput(const QStringList& words) {
  const int device = Number(words, 1, 1, Devices);
  const int input = Number(words, 2, 1, DeviceInputs) - 1;
  const int choice = Choice(words, 3, {"press", "release", "tap"});
  if (choice != 1) ThePanel().SetDeviceInput(device, input, true);
  if (choice != 0) ThePanel().SetDeviceInput(device, input, false);
  return {};
}

std::string Console::Photocell(const QStringList& words) {
  ThePanel().SetDeviceLevel(Number(words, 1, 1, Devices), Number(words, 2, 0, FullLevel));
  return {};
}

std::string Console::Relay(const QStringList& words) {
  const bool on = OnOff(words, 2);
  if (words[1] == "all") {
    ThePanel().SetAllRelays(on);
  } else {
    ThePanel().SetRelay(Item(words), on);
  }
  return {};
}

std::string Console::Group(const QStringList& words) {
  ThePanel().SetGroup(Item(words), OnOff(words, 2));
  return {};
}

std::string Console::Preset(const QStringList& words) {
  ThePanel().SetPreset(Item(words));
  return {};
}

std::string Console::Timer(const QStringList& words) {
  ThePanel().ForceTimer(Item(words));
  return {};
}

std::string Console::Power(const QStringList& words) {
  ThePanel().SetPower(OnOff(words, 1));
  return {};
}

std::string Console::Key(const QStringList& words) {
  using enum PanelFront::Key;
  static constexpr int keys[]{Up, Down, Enter, Exit, Previous, Next, Chord};
  ThePanel().Front.Press(
      keys[Choice(words, 1, {"up", "down", "enter", "exit", "previous", "next", "chord"})]);
  return Describe(ThePanel(), "display").value();
}

std::string Console::Show(const QStringList& words) {
  const std::optional<std::string> text = Describe(ThePanel(), words.value(1));
  if (!text) throw UsageError("nothing to show by that name");
  return *text;
}

std::string Console::Time(const QStringList& words) {
  const QString clock = words.value(2).count(':') == 1 ? words.value(2) + ":00" : words.value(2);
  const QDateTime time = QDateTime::fromString(words.value(1) + " " + clock, "yyyy-MM-dd HH:mm:ss");
  if (!time.isValid()) throw UsageError("that is no date and time");
  ThePanel().SetTime(time);
  return Describe(ThePanel(), "time").value();
}

std::string Console::Firmware(const QStringList& words) {
  ThePanel().Firmware = words.mid(1).join(' ').toLatin1().toStdString();
  return {};
}

std::string Console::IO(const QStringList& words) {
  if (words.size() < 2 || words.size() > map::IONodes + 1) throw UsageError("1 to 12 counts");
  std::array<int, map::IONodes> counts{};
  for (int i = 1; i < words.size(); ++i) {
    counts[static_cast<std::size_t>(i - 1)] = Number(words, i, 0, 255);
  }
  for (int node = 0; node < map::IONodes; ++node) {
    ThePanel().Memory.SetByte(map::IOCount + node, counts[static_cast<std::size_t>(node)]);
  }
  return std::to_string(ThePanel().Points()) + " inputs and relays\n";
}

std::string Console::Card(const QStringList& words) {
  const int type = Number(words, 1, 0, 15);
  ThePanel().AddOnRevision = Number(words, 2, 0, 15);
  ThePanel().AddOnType = type;
  return {};
}

std::string Console::Password(const QStringList& words) {
  const std::string digits = words.value(1).toStdString();
  if (!IsPassword(digits)) throw UsageError("a password has six digits");
  ThePanel().Memory.SetPassword(digits);
  return {};
}

std::string Console::SetFault(const QStringList& words) {
  if (words.size() < 2) throw UsageError("which fault?");
  if (words[1] == "clear") {
    Host.Faults().Clear();
  } else if (words[1] == "help") {
    return FaultHelp();
  } else if (words[1] != "list") {
    Host.Faults().Add(ParseFault(words[1].toStdString()));
  }
  std::string text;
  for (const Fault& fault : Host.Faults().Pending()) text += FaultText(fault) + "\n";
  return text.empty() ? "no faults\n" : text;
}

std::string Console::Save(const QStringList& words) {
  Host.SaveMemory(words.mid(1).join(' '));
  return "saved\n";
}

std::string Console::Log(const QStringList& words) {
  Host.Log().SetEnabled(OnOff(words, 1));
  return {};
}

std::string Console::Quit(const QStringList&) {
  EndProgram();
  return {};
}

}  // namespace simulator

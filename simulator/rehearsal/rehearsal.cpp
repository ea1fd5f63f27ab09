#include "simulator/rehearsal/rehearsal.h"

#include <QDate>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QTime>
#include <algorithm>
#include <stdexcept>

#include "simulator/memory/digits.h"
#include "simulator/memory/write_file.h"
#include "simulator/rehearsal/plan.h"

namespace simulator {

namespace {

std::int64_t DayIn(const QString& text) {
  const QDate date = QDate::fromString(text, "yyyy-MM-dd");
  const bool known = date.isValid() && date.year() >= Calendar::FirstYear &&
                     date.year() < Calendar::FirstYear + Calendar::Years;
  if (!known)
    throw std::invalid_argument("\"" + text.toStdString() + "\" is no date of 2000 to 2099");
  return DayOf({date.year(), date.month(), date.day()});
}

/// The words behind the time of a line, taken one by one.
class Words {
 public:
  explicit Words(QStringList words) : List(std::move(words)) {}

  QString Next() { return At < List.size() ? List[At++] : QString(); }
  bool Done() const { return At >= List.size(); }
  int Number(int first, int last) {
    const QString word = Next();
    bool valid = false;
    const int value = word.toInt(&valid);
    if (!valid || value < first || value > last) {
      throw std::invalid_argument("expected a number from " + std::to_string(first) + " to " +
                                  std::to_string(last) + ", found \"" + word.toStdString() + "\"");
    }
    return value;
  }
  /// The index of the word in the list.
  int Choice(const QStringList& choices) {
    const QString word = Next();
    const auto index = choices.indexOf(word);
    if (index < 0) {
      throw std::invalid_argument("expected " + choices.join(" or ").toStdString() + ", found \"" +
                                  word.toStdString() + "\"");
    }
    return static_cast<int>(index);
  }

 private:
  QStringList List;
  qsizetype At = 0;
};

using Act = std::function<void(Engine&)>;
constexpr auto Hand = Subject::Kind::Hand;

/// A contact that is closed, opened, or both at once.
Act Contacts(int motion, const std::function<void(Engine&, bool)>& set) {
  return [motion, set](Engine& engine) {
    if (motion != 1) set(engine, true);
    if (motion != 0) set(engine, false);
  };
}

Act ContactAct(int motion, Words& words) {
  const int input = words.Number(1, Items) - 1;
  const Contact contact =
      !words.Done() && words.Choice({"on", "off"}) == 1 ? Contact::Off : Contact::On;
  return Contacts(motion, [input, contact](Engine& engine, bool closed) {
    engine.SetContact(input, contact, closed);
  });
}

Act ButtonAct(Words& words) {
  const int device = words.Number(1, Devices);
  const int input = words.Number(1, DeviceInputs) - 1;
  const int motion = words.Choice({"press", "release", "tap"});
  return Contacts(motion, [device, input](Engine& engine, bool closed) {
    engine.SetDeviceInput(device, input, closed);
  });
}

const QStringList& Verbs() {
  static const QStringList verbs{"press", "release", "tap",    "button", "photocell",
                                 "relay", "group",   "preset", "timer",  "power"};
  return verbs;
}

Act ParseAct(Words& words) {
  const int verb = words.Choice(Verbs());
  if (verb < 3) return ContactAct(verb, words);
  if (verb == 3) return ButtonAct(words);
  if (verb == 4) {
    const int device = words.Number(1, Devices);
    const int level = words.Number(0, FullLevel);
    return [device, level](Engine& engine) { engine.SetPhotocell(device, level); };
  }
  if (verb == 9) {
    const bool on = words.Choice({"on", "off"}) == 0;
    return [on](Engine& engine) { on ? engine.RestorePower() : engine.CutPower(); };
  }
  const int item = words.Number(1, Items) - 1;
  if (verb == 7) return [item](Engine& engine) { engine.SetPreset(item, Hand); };
  if (verb == 8) return [item](Engine& engine) { engine.ForceTimer(item, Hand); };
  const bool on = words.Choice({"on", "off"}) == 0;
  if (verb == 5) return [item, on](Engine& engine) { engine.SetRelay(item, on, Hand); };
  return [item, on](Engine& engine) { engine.SetGroup(item, on, Hand); };
}

ScriptedAct ParseLine(const QString& line) {
  static const QRegularExpression blanks("\\s+");
  QStringList list = line.split(blanks, Qt::SkipEmptyParts);
  const std::int64_t day = DayIn(list.takeFirst());
  const QString clock = list.isEmpty() ? QString() : list.takeFirst();
  QTime time = QTime::fromString(clock, "HH:mm");
  if (!time.isValid()) time = QTime::fromString(clock, "HH:mm:ss");
  if (!time.isValid()) throw std::invalid_argument("\"" + clock.toStdString() + "\" is no time");
  Words words(list);
  ScriptedAct act{day * DayMs + time.msecsSinceStartOfDay(), ParseAct(words), 0};
  if (!words.Done())
    throw std::invalid_argument("\"" + words.Next().toStdString() + "\" is too much");
  return act;
}

/// Buffers what is written, so that a year does not go out row by row.
class Output {
 public:
  explicit Output(const std::function<void(std::string_view)>& write) : Write(write) {}

  std::string Text;
  void FlushWhenFull() {
    constexpr std::size_t full = 1 << 16;
    if (Text.size() >= full) Flush();
  }
  void Flush() {
    Write(Text);
    Text.clear();
  }

 private:
  const std::function<void(std::string_view)>& Write;
};

}  // namespace

std::string BurnHours(const Configuration& settings, const std::vector<Bar>& bars) {
  std::array<std::int64_t, Items> on{};
  for (const Bar& bar : bars) {
    if (bar.Row < Items) on[static_cast<std::size_t>(bar.Row)] += bar.To - bar.From;
  }
  std::string text = "Item\tHours\tWords\n";
  for (int i = 0; i < Items; ++i) {
    constexpr std::int64_t hundredthMs = HourMs / 100;
    const std::int64_t hundredths =
        (on[static_cast<std::size_t>(i)] + hundredthMs / 2) / hundredthMs;
    const std::string fraction = TwoDigits(static_cast<int>(hundredths % 100));
    text += Text(Subject{Subject::Kind::Relay, i, 0}) + "\t" + std::to_string(hundredths / 100) +
            "." + fraction + "\t" + settings.Names.Relay[static_cast<std::size_t>(i)] + "\n";
  }
  return text;
}

void ParseRange(const QString& text, RehearsalOptions& options) {
  const QStringList ends = text.split("..");
  options.FirstDay = DayIn(ends.first());
  options.LastDay = DayIn(ends.last());
  if (ends.size() > 2 || options.LastDay < options.FirstDay) {
    throw std::invalid_argument("\"" + text.toStdString() +
                                "\" is no range of dates as in 2026-01-01..2026-12-31");
  }
}

std::vector<ScriptedAct> ParseScript(const QString& text) {
  std::vector<ScriptedAct> acts;
  const QStringList lines = text.split('\n');
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const QString line = lines[i].trimmed();
    if (line.isEmpty() || line.startsWith('#')) continue;
    try {
      acts.push_back(ParseLine(line));
      acts.back().Line = static_cast<int>(i) + 1;
    } catch (const std::invalid_argument& failure) {
      throw std::invalid_argument("line " + std::to_string(i + 1) + ": " + failure.what());
    }
  }
  std::stable_sort(acts.begin(), acts.end(),
                   [](const auto& a, const auto& b) { return a.Wall < b.Wall; });
  return acts;
}

std::string ScriptHelp() {
  return "A line of --inputs is a date, a time and a command, one of\n" +
         Verbs().join(", ").toStdString() + ".\nOne that begins with # is passed over.\n";
}

std::vector<int> LinesOutside(const RehearsalOptions& options) {
  std::vector<int> lines;
  for (const ScriptedAct& act : options.Script) {
    const std::int64_t day = act.Wall / DayMs;
    if (day < options.FirstDay || day > options.LastDay) lines.push_back(act.Line);
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

std::vector<ScriptedAct> ReadScript(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw std::invalid_argument("The file " + path.toStdString() +
                                " cannot be read: " + file.errorString().toStdString());
  }
  try {
    return ParseScript(QString::fromUtf8(file.readAll()));
  } catch (const std::invalid_argument& failure) {
    throw std::invalid_argument(path.toStdString() + ", " + failure.what());
  }
}

void Rehearse(const PanelMemory& memory, const RehearsalOptions& options,
              const std::function<void(std::string_view)>& write) {
  Engine engine(memory);
  const Calendar& days = engine.Days();
  const bool wantsBars = options.BurnHours || !options.PlanFile.isEmpty();
  Output output(write);
  RowWriter writer(days);
  BarKeeper keeper;
  if (!options.BurnHours) output.Text += RowWriter::Header;
  engine.SetSink([&](const Row& row) {
    if (wantsBars) keeper.Take(row, engine.Settings());
    if (options.BurnHours) return;
    writer.Append(output.Text, row);
    output.FlushWhenFull();
  });
  engine.SetScript(options.Script);
  engine.FollowSun(options.Daylight);
  engine.PowerOn(days.FromWall(options.FirstDay * DayMs));
  const Instant end = days.FromWall((options.LastDay + 1) * DayMs);
  engine.AdvanceTo(end - 1);
  if (options.BurnHours) output.Text += BurnHours(engine.Settings(), keeper.Until(end));
  output.Flush();
  if (options.PlanFile.isEmpty()) return;
  WriteFile(
      options.PlanFile,
      PlanSvg(engine, memory, keeper.Until(end), options.FirstDay, options.LastDay, options.Rows),
      "The file");
}

}  // namespace simulator

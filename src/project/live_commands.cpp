#include "project/live_commands.h"

#include <QRegularExpression>
#include <algorithm>
#include <iostream>
#include <map>

#include "line/panel_commands.h"
#include "panel/stopwatch.h"
#include "project/interrupt.h"
#include "project/panel_states.h"
#include "project/rows.h"

const QStringList ClockColumns = {"Time", "Panel", "Apart"};
const QStringList StatusColumns = {"Item", "State", "Name"};
const QStringList WatchColumns = {"Time", "Item", "Was", "Is", "Name"};

namespace {

/// With this computer's offset from UTC, which the panel does not know of.
QString IsoTime(const QDateTime& time) {
  return time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODate);
}

QDateTime PanelTime(const PanelAt& panel) {
  QDateTime time = panel.Answer(ReadPanelStatus()).Clock();
  if (!time.isValid()) panel.Fail(QStringLiteral("the panel's clock shows no valid time"));
  return time;
}

/// Those of a project, which may be another panel's: one is connected at a time.
std::optional<StateNames> NamesToldBy(const CommandLine& line) {
  if (line.NamesFrom.isEmpty()) return std::nullopt;
  return NamesOfProject(line.NamesFrom);
}

QString NameOf(const StateNames& names, const Item& item) {
  return OwnName(names.Names, item);
}

/// "RELAY 05 on", whatever the case.
bool SwitchItem(PanelAt& panel, const QString& words) {
  static const QRegularExpression form(
      QStringLiteral(R"(^\s*(RELAY|GROUP)\s+0*([1-9]\d?)\s+(on|off)\s*$)"),
      QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = form.match(words);
  const int number = match.captured(2).toInt();
  if (!match.hasMatch() || number > ItemCount) return false;
  const bool relay = match.captured(1).toUpper() == u"RELAY";
  const bool on = match.captured(3).toLower() == u"on";
  if (relay && number > panel.Points()) {
    throw RunTimeFailure(QStringLiteral("%1: has %2 relays, and none with the number %3")
                             .arg(panel.Address().Text)
                             .arg(panel.Points())
                             .arg(number)
                             .toStdString());
  }
  panel.Done(relay ? SwitchRelay(number - 1, on) : SwitchGroup(number - 1, on));
  return true;
}

void SwitchOrRefuse(PanelAt& panel, const QString& words) {
  if (SwitchItem(panel, words)) return;
  throw RunTimeFailure(
      QStringLiteral("\"%1\" is not such as \"RELAY 05 on\"").arg(words).toStdString());
}

/// Connects where there is no line, and once more where it was lost since the last words.
void SwitchOverLine(std::optional<PanelAt>& panel, const PanelAddress& address,
                    const QString& words) {
  for (const bool last : {false, true}) {
    try {
      if (!panel) panel.emplace(address);
      SwitchOrRefuse(*panel, words);
      return;
    } catch (const PanelFailure&) {
      panel.reset();
      if (last) throw;
    }
  }
}

/// Each line is done as it comes.
ExitStatus SwitchLines(const PanelAddress& address) {
  std::optional<PanelAt> panel(std::in_place, address);
  ExitStatus status = StatusGood;
  std::string text;
  for (int number = 1; std::getline(std::cin, text); ++number) {
    const QString words = QString::fromStdString(text);
    if (words.trimmed().isEmpty()) continue;
    try {
      SwitchOverLine(panel, address, words);
    } catch (const RunTimeFailure& failure) {
      status = StatusFailed;
      TellFailure(("line " + std::to_string(number) + ": " + failure.what()).c_str());
    }
  }
  return status;
}

using States = std::map<QString, StateRow>;

States ByCode(const std::vector<StateRow>& rows) {
  States states;
  for (const StateRow& row : rows) states[row.Code] = row;
  return states;
}

/// One whose type and name have not been read.
bool HasNewDevice(const States& states, const States& known) {
  return std::any_of(states.begin(), states.end(), [&](const auto& state) {
    return state.second.IsDevice() && !known.count(state.first);
  });
}

}  // namespace

ExitStatus ShowClock(const CommandLine& line, const QStringList& places) {
  const PanelAt panel(AddressOf(places[0]));
  if (line.Set) panel.Done(SetPanelClock(Now()));
  const QDateTime told = PanelTime(panel);
  const QDateTime now = Now();
  PrintRow(line, ClockColumns, {IsoTime(now), IsoTime(told), static_cast<int>(now.secsTo(told))});
  return StatusGood;
}

ExitStatus ShowStatus(const CommandLine& line, const QStringList& places) {
  const PanelAddress address = AddressOf(places[0]);
  const std::optional<StateNames> told = NamesToldBy(line);
  const PanelAt panel(address);
  const StateNames names = told ? *told : NamesOfPanel(panel);
  for (const StateRow& row : ReadStates(panel, names)) {
    PrintRowNow(line, StatusColumns, {row.Code, row.State, NameOf(names, row.Where)});
  }
  return StatusGood;
}

ExitStatus WatchPanel(const CommandLine& line, const QStringList& places) {
  const PanelAddress address = AddressOf(places[0]);
  const QString connected = QStringLiteral("connected");
  const QString lost = QStringLiteral("lost");
  const auto tell = [&](const QString& item, const QString& was, const QString& is,
                        const QString& name) {
    PrintRowNow(line, WatchColumns, {IsoTime(Now()), item, was, is, name});
  };
  ExitQuietlyOnInterrupt();
  const std::optional<StateNames> told = NamesToldBy(line);
  std::optional<PanelAt> panel(std::in_place, address);
  StateNames names = told ? *told : NamesOfPanel(*panel);
  States known = ByCode(ReadStates(*panel, names));
  for (;; Pause(static_cast<qint64>(line.EverySeconds * 1000))) {
    try {
      const bool back = !panel;
      if (back) panel.emplace(address);
      if (back && !told) names = NamesOfPanel(*panel);
      States states = ByCode(ReadStates(*panel, names));
      if (back) tell(QStringLiteral("PANEL"), lost, connected, {});
      if (!told && HasNewDevice(states, known)) {
        names = NamesOfPanel(*panel);
        states = ByCode(ReadStates(*panel, names));
      }
      for (const auto& [code, row] : known) {
        if (row.IsDevice() && !states.count(code)) states[code] = NoResponse(row);
      }
      for (const auto& [code, row] : states) {
        const auto before = known.find(code);
        const QString was = before == known.end() ? QString() : before->second.State;
        if (was != row.State) tell(code, was, row.State, NameOf(names, row.Where));
      }
      known = std::move(states);
    } catch (const PanelFailure&) {
      if (panel) tell(QStringLiteral("PANEL"), connected, lost, {});
      panel.reset();
    }
  }
}

ExitStatus SwitchItems(const CommandLine&, const QStringList& places) {
  const PanelAddress address = AddressOf(places[0]);
  const QString words = places.mid(1).join(u' ');
  if (words == u"-") return SwitchLines(address);
  PanelAt panel(address);
  SwitchOrRefuse(panel, words);
  return StatusGood;
}

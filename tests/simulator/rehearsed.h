#pragma once

#include <QStringList>
#include <string>

#include "simulator/rehearsal/rehearsal.h"

namespace simulator {

// What a memory is set up with: items from 0.

inline auto Byte(int address, int value) {
  return [=](PanelMemory& memory) { memory.SetByte(address, value); };
}
inline auto Word(int address, int value) {
  return [=](PanelMemory& memory) { memory.SetWord(address, value); };
}
inline auto Code(const PlaneSet& set, int row, int column, int code) {
  return [=](PanelMemory& memory) { memory.SetCode(set, row, column, code); };
}
inline auto Name(int address, const char* text) {
  return [=](PanelMemory& memory) { memory.SetText(address, map::NameLength, text); };
}
/// The time as it stands in memory, and what the timer does to a relay.
inline auto Timer(int timer, int type, int time, int relay = 0, int code = 0) {
  return [=](PanelMemory& memory) {
    memory.SetByte(map::TimerTimeType + timer, type);
    memory.SetByte(map::TimerTime + timer, time);
    memory.SetCode(map::TimerRelayControl, relay, timer, code);
  };
}

template <typename... Settings>
void Set(PanelMemory& memory, const Settings&... settings) {
  (settings(memory), ...);
}

/// A memory with 48 points, an office's hours and the sun of 45 N 90 W, and nothing else set up but
/// what is told.
template <typename... Settings>
PanelMemory EmptyInstallation(const Settings&... settings) {
  PanelMemory memory;
  memory.SetByte(map::IOCount, 12);
  for (int at = map::DateTimes; at < map::DateTimesEnd; ++at) memory.SetByte(at, NoEntry);
  for (int day = 0; day < 7; ++day) {
    memory.SetByte(map::NormalOpenTime + day, 32);   // 08:00
    memory.SetByte(map::NormalCloseTime + day, 84);  // 21:00
  }
  Set(memory, Byte(map::BlinkAlertMinutes, 10), Word(map::OverrideMinutes, 120),
      Byte(map::AlarmSeconds, 5), Byte(map::DSTEnabled, 1), Word(map::DSTStartWeek, 0x0203),
      Word(map::DSTStartWeek + 2, 0x010B), Byte(map::Latitude, 45), Byte(map::Longitude, 90),
      Byte(map::TimeZone, 1));
  // Pilots that follow nothing.
  for (int i = 0; i < Items; ++i) memory.SetByte(map::LocalPilot + i, 192);
  Set(memory, settings...);
  return memory;
}

/// Script lines of 2 March 2026, as in "08:30 press 1,09:00 release 1".
inline QString Script(QString acts) {
  return "2026-03-02 " + acts.replace(",", "\n2026-03-02 ");
}

/// The rows of some days behind those of POWER, each as "03-02 08:10:00 TIMER 03,RELAY 05,on;".
/// A text in `only` keeps the rows that hold it.
inline std::string Rehearsed(const PanelMemory& memory, const QString& range,
                             const QString& script = {}, const std::string& only = {}) {
  RehearsalOptions options;
  ParseRange(range, options);
  options.Script = ParseScript(script);
  std::string all;
  Rehearse(memory, options, [&all](std::string_view text) { all += text; });
  std::string result;
  for (const QString& line : QString::fromStdString(all).split('\n').mid(1)) {
    const QStringList fields = line.split('\t');
    if (fields.size() < 5 || fields[1] == "POWER" || !line.contains(only.c_str())) continue;
    result +=
        (fields[0].mid(5, 5) + " " + fields[0].mid(11, 8) + " " + fields.mid(1, 3).join(',') + ";")
            .toStdString();
  }
  return result;
}

/// As in "08:10 on 09:00 blinks " of what Rehearsed returns, without the causes that fire;
/// `digits` of the times.
inline std::string TimesAndChanges(const std::string& rows, int digits = 5) {
  std::string result;
  for (const QString& row : QString::fromStdString(rows).split(';', Qt::SkipEmptyParts)) {
    if (row.endsWith("fires")) continue;
    result += (row.mid(6, digits) + " " + row.section(',', -1) + " ").toStdString();
  }
  return result;
}

/// The same of relay 1 or other items on 2 March 2026.
inline std::string RowsOf(const PanelMemory& memory, const QString& acts,
                          const std::string& only = "\tRELAY 01\t", int digits = 5) {
  return TimesAndChanges(Rehearsed(memory, "2026-03-02", Script(acts), only), digits);
}

}  // namespace simulator

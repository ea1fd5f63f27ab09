#pragma once

#include <QStringList>
#include <string>

#include "simulator/rehearsal/rehearsal.h"

namespace simulator {

/// A memory with 48 points, an office's hours and the sun of 45 N 90 W, and nothing set up.
inline PanelMemory EmptyInstallation() {
  PanelMemory memory;
  memory.SetByte(map::IOCount, 12);
  for (int at = map::DateTimes; at < map::DateTimesEnd; ++at) memory.SetByte(at, NoEntry);
  for (int day = 0; day < 7; ++day) {
    memory.SetByte(map::NormalOpenTime + day, 32);   // 08:00
    memory.SetByte(map::NormalCloseTime + day, 84);  // 21:00
  }
  memory.SetByte(map::BlinkAlertMinutes, 10);
  memory.SetWord(map::OverrideMinutes, 120);
  memory.SetByte(map::AlarmSeconds, 5);
  memory.SetByte(map::DSTEnabled, 1);
  const int rule[]{2, 3, 1, 11};
  for (int i = 0; i < 4; ++i) memory.SetByte(map::DSTStartWeek + i, rule[i]);
  memory.SetByte(map::Latitude, 45);
  memory.SetByte(map::Longitude, 90);
  memory.SetByte(map::TimeZone, 1);
  // Pilots that follow nothing.
  for (int i = 0; i < Items; ++i) memory.SetByte(map::LocalPilot + i, 192);
  return memory;
}

/// Times and numbers of a timer as they stand in memory, the timer from 0.
inline void SetTimer(PanelMemory& memory, int timer, int type, int time) {
  memory.SetByte(map::TimerTimeType + timer, type);
  memory.SetByte(map::TimerTime + timer, time);
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

}  // namespace simulator

#pragma once

#include <functional>

#include "panel/defaults.h"
#include "panel/dimmer_words.h"
#include "panel/document_fixture.h"
#include "panel/input_actions.h"
#include "panel/live_dimmers.h"
#include "panel/panel_image.h"

// A project without a fault, and what is changed in it.

/// Four relays, each switched by its input; a group, a preset, a timer, a station and a sweep that
/// have nothing wrong.
inline void LoadSoundProject() {
  CurrentFileName = NoFileName;
  PanelImage = {};
  LoadDefaults();
  auto& p = PanelRecord;
  for (int i = 0; i < 4; ++i) {
    p.InputRelayControl(i, i) = 3;
    p.OffHoursSweepRelay(i) = -1;
    p.GroupRelayInclude(0, i) = -1;
  }
  p.InputRelayControl(3, 3) = 0;
  p.PresetRelayControl(0, 1) = 1;
  p.InputType(3) = 4;
  p.InputPreset(3) = 0;
  p.TimerGroupControl(0, 0) = 2;
  p.TimerTimeType(0) = 22;
  p.Latitude = 52;
  FennlinkRecord& station = FennlinkRecords(26);
  station.DeviceType = 2;
  station.DeviceRelayControl(0, 3) = 3;
  station.DeviceRelayControl(1, 2) = 1;
  FennlinkRecord& cell = FennlinkRecords(5);
  cell.DeviceType = 9;
  cell.DeviceOffLevel(0) = 20;
  cell.DeviceOnLevel(0) = 40;
  cell.DeviceRelayControl(0, 2) = 3;
  DimSetEnabled(0, 1);
  DimSetRelay(0, 0, 1, -1);
  DimSetOnLevel(0, 0, 100);
  DimSetCtlType(0, 0, 0, ControlInput);
}

using Act = std::function<void()>;

inline Act Sets() {
  return [] {};
}
/// Each field, followed by its value.
template <typename Field, typename Value, typename... More>
Act Sets(Field& field, Value value, More&&... more) {
  return [&field, value, rest = Sets(std::forward<More>(more)...)] {
    field = static_cast<Field>(value);
    rest();
  };
}
template <typename... Given>
Act Calls(void (*function)(Given...), std::common_type_t<Given>... given) {
  return [=] { function(given...); };
}
template <typename... Acts>
Act All(const Acts&... acts) {
  return [=] { (acts(), ...); };
}

/// Input 3 disables an input or timer.
inline Act Disables(InputKind kind, int item) {
  auto& p = PanelRecord;
  return Sets(p.InputType(2), static_cast<int>(kind), p.InputRelayControl(2, 2), 0,
              p.InputRelayControl(2, item), 1, p.InputRelayControl(1, 2), 3);
}
/// A dimmer follows a timer that does nothing else.
inline Act DimsByTimer(Int16 timer) {
  return All(Calls(DimSetCtlType, 0, 0, 1, ControlTimer), Calls(DimSetCtlNumber, 0, 0, 1, timer));
}

#include "schedule/rules/copy_timer.h"

#include <functional>
#include <vector>

#include "panel/items.h"
#include "panel/slot_words.h"

namespace {

/// The slots of an output that a timer works, and those that are free once `to` has given up its
/// own.
struct TimersSlots {
  std::vector<int> From;
  std::vector<int> Free;

  TimersSlots(const DimmerOutput& output, int from, int to) {
    for (int slot = 0; slot < ControlSlotCount; ++slot) {
      const Int16 type = output(dim::ControlType, slot);
      const Int16 number = output(dim::ControlNumber, slot);
      if (type == ControlTimer && number == from) From.push_back(slot);
      if (type == ControlUnused || (type == ControlTimer && number == to)) Free.push_back(slot);
    }
  }
};

void ForEachOutput(const std::function<void(OutputPlace)>& visit) {
  for (Int16 device = 0; device < DimmerDeviceCount; ++device) {
    for (Int16 output = 0; output < DimmerOutputCount; ++output) visit({device, output});
  }
}

void PutSlot(DimmerBlockType& dimmers, OutputPlace place, int slot, const ControlSlot& all) {
  for (const ControlSlotPart& part : ControlSlotParts) {
    SetDimmerValue(dimmers, *part.Field, place, all.*part.Member, slot);
  }
}

}  // namespace

QString WhyNotCopied(const Project& project, int from, int to) {
  QString why;
  if (from == to) return why;
  ForEachOutput([&](OutputPlace place) {
    const TimersSlots slots({project.Dimmers, place.Device, place.Output}, from, to);
    if (!why.isEmpty() || slots.From.size() <= slots.Free.size()) return;
    why = QStringLiteral("%1 has no free control slot for %2.")
              .arg(ItemCode({ItemKind::DimmerOutput, place.Device, place.Output}),
                   ItemCode({ItemKind::Timer, to}));
  });
  return why;
}

void CopyTimer(Project& project, int from, int to) {
  if (from == to) return;
  PanelRecordType& panel = project.Panel;
  for (ItemArray PanelRecordType::*const field :
       {&PanelRecordType::TimerTimeType, &PanelRecordType::TimerTime, &PanelRecordType::TimerDays,
        &PanelRecordType::TimerHolidayMonth, &PanelRecordType::TimerHolidayDate}) {
    (panel.*field)(to) = (panel.*field)(from);
  }
  for (ItemTable PanelRecordType::*const field :
       {&PanelRecordType::TimerRelayControl, &PanelRecordType::TimerGroupControl,
        &PanelRecordType::TimerPresetControl}) {
    for (int target = 0; target < ItemCount; ++target) {
      (panel.*field)(to, target) = (panel.*field)(from, target);
    }
  }
  ForEachOutput([&](OutputPlace place) {
    const DimmerOutput output(project.Dimmers, place.Device, place.Output);
    const TimersSlots slots(output, from, to);
    for (std::size_t i = 0; i < slots.Free.size(); ++i) {
      const int slot = slots.Free[i];
      ControlSlot copy;
      if (i < slots.From.size()) {
        copy = ControlSlotOf(output, slots.From[i]);
        copy.Number = static_cast<Int16>(to);
      } else if (output(dim::ControlType, slot) == ControlUnused) {
        continue;
      }
      PutSlot(project.Dimmers, place, slot, copy);
    }
  });
}

#include "project/panel_states.h"

#include <algorithm>

#include "line/panel_commands.h"
#include "panel/defaults.h"
#include "panel/fennlink_types.h"
#include "panel/field_facts.h"
#include "panel/packing.h"
#include "panel/panel_image.h"
#include "project/places.h"

namespace {

const QString OnWord = QStringLiteral("on");
const QString OffWord = QStringLiteral("off");
const QString NoResponseWord = QStringLiteral("no response");

void ReadBlocks(const PanelAt& panel, int address, int behind, PanelImageType& image) {
  for (int block = address / ImageBlockSize; block * ImageBlockSize < behind; ++block) {
    panel.Done(ReadBlock(block, image));
  }
}

QString OnOff(bool on) {
  return on ? OnWord : OffWord;
}

/// By the input's two lamps.
QString InputWord(const InputState& state) {
  if (state.On && state.Off) return QStringLiteral("both");
  return state.On ? OnWord : state.Off ? OffWord : QStringLiteral("none");
}

void AddDevice(std::vector<StateRow>& rows, int device, int type, bool present, Int16 inputs,
               Int16 level) {
  const auto add = [&](const Item& where, const QString& code, const QString& state) {
    rows.push_back({where, code, state});
  };
  const Item own{ItemKind::Device, device, 0};
  add(own, ItemCode(own), present ? QStringLiteral("connected") : NoResponseWord);
  if (!present) return;
  for (int input = 0; input < FennlinkDevice(type).InputCount; ++input) {
    const Item part{ItemKind::DeviceInput, device, input};
    add(part, ItemCode(part), OnOff((inputs >> input & 1) != 0));
  }
  if (type == DeviceTypePhotocell) {
    add(own, ItemCode(own) + QStringLiteral(" LEVEL"), QString::number(level));
  }
}

}  // namespace

StateRow NoResponse(StateRow row) {
  row.State = NoResponseWord;
  return row;
}

StateNames NamesOfProject(const QString& place) {
  return {LoadContent(place), true};
}

StateNames NamesOfPanel(const PanelAt& panel) {
  PanelImageType image;
  for (const auto names :
       {&PanelRecordType::RelayName, &PanelRecordType::GroupName, &PanelRecordType::InputName}) {
    const int address = FactsOf(names).Memory.Value.Address;
    ReadBlocks(panel, address, address + ItemCount * NameLength, image);
  }
  const DeviceBytes present = panel.Answer(ReadDevicesPresent());
  for (int device = 1; device <= DeviceCount; ++device) {
    const int address = DeviceBlock + device * DeviceBlockStride;
    if (present(device) != 0) ReadBlocks(panel, address, address + DeviceBlockStride, image);
  }
  return {UploadedOver(NewProject(), image, true), false};
}

std::vector<StateRow> ReadStates(const PanelAt& panel, const StateNames& names) {
  std::vector<StateRow> rows;
  const auto add = [&](ItemKind kind, int number, const QString& state) {
    const Item where{kind, number, 0};
    rows.push_back({where, ItemCode(where), state});
  };
  const int points = std::clamp<int>(panel.Answer(ReadPanelStatus()).Points, 0, ItemCount);
  const OutputStates relays = panel.Answer(ReadRelays());
  for (int i = 0; i < points; ++i) add(ItemKind::Relay, i, OnOff(relays(i)));
  const OutputStates groups = panel.Answer(ReadGroups());
  for (int i = 0; i < ItemCount; ++i) add(ItemKind::Group, i, OnOff(groups(i)));
  const InputStates inputs = panel.Answer(ReadInputs());
  for (int i = 0; i < points; ++i) add(ItemKind::Input, i, InputWord(inputs(i)));

  const DeviceBytes present = panel.Answer(ReadDevicesPresent());
  const DeviceBytes deviceInputs = panel.Answer(ReadDeviceInputs());
  const DeviceBytes levels = panel.Answer(ReadDeviceLevels());
  for (int device = 1; device <= DeviceCount; ++device) {
    const int type = names.Names.Devices(device).DeviceType;
    const bool told = present(device) != 0 || (names.AllDevices && FennlinkFamilyOf(type));
    if (!told) continue;
    AddDevice(rows, device, type, present(device) != 0, deviceInputs(device), levels(device));
  }
  return rows;
}

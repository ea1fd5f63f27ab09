#include <algorithm>
#include <memory>
#include <optional>

#include "document/rules/check.h"
#include "document/rules/doc_file.h"
#include "link/rules/panel_image.h"
#include "panel/dimmer_block.h"
#include "panel/fennlink_record.h"
#include "panel/panel_record.h"
#include "panel/project_file.h"
#include "panel/words.h"

// What the file lacks; what stops a download, fails its verification, or stops the document.

namespace {

/// Where the fields of an item that take a byte or a word stand in the panel's memory.
struct ImageFields {
  int Address;
  int Count;
  int Stride;
  ItemKind Kind;
  std::string_view Setting;
  std::string_view Screen;
};

constexpr auto FieldsOfImage = std::to_array<ImageFields>({
    {0x06C0, 48, 1, ItemKind::Input, "preset", "frmT3InputToRelayControl"},
    {0x06F0, 48, 1, ItemKind::Relay, "timer type", "frmT3RelayOutputOptions"},
    {0x0720, 48, 1, ItemKind::Relay, "power-on type", "frmT3RelayOutputOptions"},
    {0x0750, 48, 1, ItemKind::Input, "type", "frmT3InputOptions"},
    {0x0780, 48, 2, ItemKind::Input, "timed-on time", "frmT3InputOptions"},
    {0x0900, 48, 1, ItemKind::Input, "pilot", "frmT3LocalInputPilots"},
    {0x1110, 14, 1, ItemKind::Panel, "open or close time", "frmT3OpenAndCloseTimeNormalDays"},
    {0x111E, 744, 1, ItemKind::Panel, "open or close time of a date",
     "frmT3OpenAndCloseTimeSingleDates"},
    {0x1E00, 48, 1, ItemKind::Timer, "kind of time", "frmT3TimersConfigure"},
    {0x1E30, 48, 1, ItemKind::Timer, "time", "frmT3TimersConfigure"},
    {0x1E60, 48, 1, ItemKind::Timer, "days", "frmT3TimersConfigure"},
    {0x1E90, 48, 1, ItemKind::Timer, "month", "frmT3TimersConfigure"},
    {0x1EC0, 48, 1, ItemKind::Timer, "date", "frmT3TimersConfigure"},
    {0x1EF0, 48, 1, ItemKind::Input, "enable time", "frmT3InputActiveTimes"},
    {0x1F20, 48, 1, ItemKind::Input, "disable time", "frmT3InputActiveTimes"},
    {0x1F80, 48, 2, ItemKind::Relay, "DMX channel", "frmT3AddOnModuleDMX"},
    {0x1FE0, 1, 1, ItemKind::Panel, "DMX on level", "frmT3AddOnModuleDMX"},
    {0x1FE1, 1, 1, ItemKind::Panel, "DMX off level", "frmT3AddOnModuleDMX"},
    {0x2000, 65, 0x40, ItemKind::Device, "settings", "frmT3ConfigureFennlinkDevices"},
    {0x3200, 65, 0x140, ItemKind::Device, "presets", "frmT3FennlinkInputToRelayControl"},
});
constexpr int DimmersAddress = 0x8400;
constexpr int ElementsOfOutput = 128;

/// What stands at an address of the panel's memory.
struct ImagePlace {
  Item Where;
  std::string_view Setting = "settings";
  std::string_view Screen;
};

ImagePlace PlaceOf(int address) {
  const int output = (address - DimmersAddress) / ElementsOfOutput;
  if (address >= DimmersAddress && output < DimmerDeviceCount * DimmerOutputCount) {
    return {{ItemKind::DimmerOutput, output / DimmerOutputCount, output % DimmerOutputCount},
            "settings",
            "frmT3DimmerOutput"};
  }
  for (const ImageFields& fields : FieldsOfImage) {
    const int offset = address - fields.Address;
    if (offset < 0 || offset >= fields.Count * fields.Stride) continue;
    const bool panel = fields.Kind == ItemKind::Panel;
    return {{fields.Kind, panel ? 0 : offset / fields.Stride}, fields.Setting, fields.Screen};
  }
  return {};
}

/// Runs `look` once the project's image is built, or `failed` with the reason why it cannot be.
/// What an earlier transfer has left in the image stays.
template <typename Look, typename Failed>
void WithImage(Look look, Failed failed) {
  const auto before = std::make_unique<PanelImageType>(PanelImage);
  try {
    BuildPanelImage({});
    look();
  } catch (const RunTimeFailure& failure) {
    failed(QString::fromUtf8(failure.what()));
  }
  PanelImage = *before;
}

void LookAtFile(const CheckScope&, const TellFinding& tell) {
  if (!FileEndsEarly()) return;
  tell({},
       QStringLiteral("The project file ends early or is empty: what it lacks has not been read."),
       {});
}

void LookAtImage(const CheckScope&, const TellFinding& tell) {
  const auto look = [&] {
    std::optional<Item> last;
    for (int address = 0; address < PanelImageSize; ++address) {
      const Int16 element = PanelImage(address);
      if (element >= 0 && element <= 255) continue;
      const ImagePlace place = PlaceOf(address);
      if (place.Where == last) continue;
      last = place.Where;
      tell(place.Where,
           QStringLiteral("The %1 of %2 is %3 in the panel's memory, which holds 0 to 255: a "
                          "download fails with code 2.")
               .arg(QString::fromLatin1(place.Setting), ItemText(place.Where))
               .arg(element),
           place.Screen);
    }
  };
  WithImage(look, [](const QString&) {});
}

void LookAtDownload(const CheckScope&, const TellFinding& tell) {
  WithImage(
      [] {},
      [&](const QString& reason) { tell({}, QStringLiteral("A download stops: ") + reason, {}); });
}

void LookAtDocument(const CheckScope&, const TellFinding& tell) {
  try {
    DocumentChoice all;
    all.fill(true);
    RenderDocument({}, all);
  } catch (const RunTimeFailure& failure) {
    tell({}, QStringLiteral("The document stops: %1").arg(QString::fromUtf8(failure.what())), {});
  }
}

void LookAtIOCount(const CheckScope&, const TellFinding& tell) {
  constexpr int pointsOfBlock = 4;
  int total = 0;
  for (int node = 0; node < NodeCount; ++node) total += PanelRecord.IOCount(node) * pointsOfBlock;
  if (total >= 0 && total <= ItemCount) return;
  tell(
      {},
      QStringLiteral("%1 I/O points are set up; a panel has at most %2.").arg(total).arg(ItemCount),
      {});
}

/// A transfer adds the actions of these devices to those that an earlier one has left.
void LookAtLastDevices(const CheckScope& scope, const TellFinding& tell) {
  constexpr int first = 62;
  for (int device = first; device <= DeviceCount; ++device) {
    const auto acts = [&](const Use& use) {
      return use.User.Kind == ItemKind::DeviceInput && use.User.Number == device &&
             (use.Effect & EffectFollows) == 0;
    };
    if (std::none_of(scope.Uses.begin(), scope.Uses.end(), acts)) continue;
    const Item item{ItemKind::Device, device};
    tell(item,
         QStringLiteral(
             "Actions taken away from %1 stay in the panel when it is downloaded a second "
             "time in one run. Start the program anew before that download.")
             .arg(ItemText(item)),
         {});
  }
}

void LookAtModules(const CheckScope&, const TellFinding& tell) {
  const auto& panel = PanelRecord;
  const auto& channels = panel.DMXChannel.elements;
  const bool dmx = std::any_of(channels.begin(), channels.begin() + ItemCount,
                               [](Int16 channel) { return channel != 0; });
  if (dmx && panel.AddOnModuleType != AddOnModuleDMX) {
    tell({}, QStringLiteral("Relays have DMX channels, but the DMX module is not chosen."),
         "frmT3Setup");
  }
  const bool modBus = panel.ModBusMode != 0 || panel.ModBusBaud != 0 || panel.ModBusParity != 0;
  if (modBus && panel.AddOnModuleType != AddOnModuleModBus) {
    tell({}, QStringLiteral("ModBus settings are made, but the MODBUS module is not chosen."),
         "frmT3Setup");
  }
}

constexpr auto RulesOfTransfer = std::to_array<CheckRule>({
    {"file-ends-early", Severity::Error, "frmT3Setup", LookAtFile},
    {"image-element", Severity::Error, "", LookAtImage},
    {"download-stops", Severity::Error, "frmT3Setup", LookAtDownload},
    {"document-stops", Severity::Error, "frmT3Document", LookAtDocument},
    {"io-count", Severity::Error, "frmT3Setup", LookAtIOCount},
    {"stale-actions", Severity::Warning, "frmT3FennlinkInputToRelayControl", LookAtLastDevices},
    {"module-settings", Severity::Note, "frmT3Setup", LookAtModules},
});

}  // namespace

std::span<const CheckRule> TransferRules() {
  return RulesOfTransfer;
}

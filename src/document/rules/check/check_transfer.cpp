#include <algorithm>
#include <optional>

#include "document/rules/check/check.h"
#include "document/rules/text/doc_file.h"
#include "panel/panel_record.h"
#include "panel/words.h"

// What the file lacks; what stops a download, fails its verification, or stops the document.

namespace {

bool HasDMXChannels(const PanelRecordType& panel) {
  const auto& channels = panel.DMXChannel.elements;
  return std::any_of(channels.begin(), channels.begin() + ItemCount,
                     [](Int16 channel) { return channel != 0; });
}

void LookAtFile(const CheckScope& scope, const TellFinding& tell) {
  if (!scope.Facts.FileEndsEarly) return;
  tell({},
       QStringLiteral("The project file ends early or is empty: what it lacks has not been read."),
       {});
}

void LookAtImage(const CheckScope& scope, const TellFinding& tell) {
  if (scope.ImageTrouble) return;
  std::optional<Item> last;
  for (int address = 0; address < PanelImageSize; ++address) {
    const Int16 element = (*scope.Image)(address);
    if (element >= 0 && element <= 255) continue;
    const std::optional<SettingPlace> place = SettingAt(scope.Of, address);
    if (!place || place->Where == last) continue;
    last = place->Where;
    tell(place->Where,
         QStringLiteral("%1, %2: %3 does not fit the panel's memory, which holds 0 to 255; a "
                        "download fails with code 2.")
             .arg(scope.Text(place->Where), place->Setting)
             .arg(element),
         place->On);
  }
}

void LookAtDownload(const CheckScope& scope, const TellFinding& tell) {
  if (!scope.ImageTrouble) return;
  tell({}, QStringLiteral("A download stops: ") + *scope.ImageTrouble, {});
}

void LookAtDocument(const CheckScope& scope, const TellFinding& tell) {
  try {
    DocumentChoice all;
    all.fill(true);
    RenderDocument(scope.Of, {}, {}, all);
  } catch (const RunTimeFailure& failure) {
    tell({}, QStringLiteral("The document stops: %1").arg(QString::fromUtf8(failure.what())), {});
  }
}

void LookAtIOCount(const CheckScope& scope, const TellFinding& tell) {
  int total = 0;
  for (int node = 0; node < NodeCount; ++node)
    total += scope.Of.Panel.IOCount(node) * PointsOfBlock;
  if (total >= 0 && total <= ItemCount) return;
  tell(
      {},
      QStringLiteral("%1 I/O points are set up; a panel has at most %2.").arg(total).arg(ItemCount),
      {});
}

/// A transfer adds the actions of the last devices to those that an earlier one has left.
void LookAtLastDevices(const CheckScope& scope, const TellFinding& tell) {
  if (!scope.Facts.LastTransfer || scope.ImageTrouble) return;
  const auto image = std::make_unique<PanelImageType>(*scope.Facts.LastTransfer);
  BuildPanelImage(scope.Of, {}, *image);
  for (int device = FirstUnclearedDevice; device <= DeviceCount; ++device) {
    const int start = DeviceControlBlock + device * DeviceControlStride;
    const auto* fresh = &(*scope.Image)(start);
    if (std::equal(fresh, fresh + DeviceControlStride, &(*image)(start))) continue;
    const Item item{ItemKind::Device, device};
    tell(item,
         QStringLiteral(
             "Actions taken away from %1 stay in the panel when it is downloaded again in this "
             "run. Start the program anew before that download.")
             .arg(scope.Text(item)),
         {});
  }
}

void LookAtDMXLevels(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = scope.Of.Panel;
  if (!HasDMXChannels(panel) && panel.AddOnModuleType != AddOnModuleDMX) return;
  if (panel.DMXOffLevel < panel.DMXOnLevel) return;
  tell({},
       QStringLiteral("The DMX off level, %1%, is not below the DMX on level, %2%.")
           .arg(panel.DMXOffLevel)
           .arg(panel.DMXOnLevel),
       {});
}

void LookAtModules(const CheckScope& scope, const TellFinding& tell) {
  const auto& panel = scope.Of.Panel;
  if (HasDMXChannels(panel) && panel.AddOnModuleType != AddOnModuleDMX) {
    tell({}, QStringLiteral("Relays have DMX channels, but the DMX module is not chosen."),
         Screen::Setup);
  }
  const bool modBus = panel.ModBusMode != 0 || panel.ModBusBaud != 0 || panel.ModBusParity != 0;
  if (modBus && panel.AddOnModuleType != AddOnModuleModBus) {
    tell({}, QStringLiteral("ModBus settings are made, but the MODBUS module is not chosen."),
         Screen::Setup);
  }
}

constexpr auto RulesOfTransfer = std::to_array<CheckRule>({
    {"file-ends-early", Severity::Error, Screen::Setup, LookAtFile,
     "The project file ends early or is empty."},
    {"image-element", Severity::Error, Screen::None, LookAtImage,
     "A setting does not fit the panel's memory; a download fails with code 2."},
    {"download-stops", Severity::Error, Screen::Setup, LookAtDownload,
     "A damaged number stops a download."},
    {"document-stops", Severity::Error, Screen::Document, LookAtDocument,
     "A damaged number stops the document."},
    {"io-count", Severity::Error, Screen::Setup, LookAtIOCount,
     "More than 48 points are set up, or fewer than none."},
    {"dmx-levels", Severity::Error, Screen::AddOnModuleDMX, LookAtDMXLevels,
     "The DMX off level is not below the on level."},
    {"stale-actions", Severity::Warning, Screen::FennlinkInputToRelayControl, LookAtLastDevices,
     "Actions taken away from the devices 3E, 3F and 40 would stay in the panel, as this run has "
     "sent them before."},
    {"module-settings", Severity::Note, Screen::Setup, LookAtModules,
     "A module that is not chosen has settings."},
});

}  // namespace

std::span<const CheckRule> TransferRules() {
  return RulesOfTransfer;
}

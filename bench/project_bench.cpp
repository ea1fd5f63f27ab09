#include <cstdlib>
#include <cstring>
#include <new>

#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/panel_image.h"
#include "panel/project_codec.h"
#include "ratio.h"

namespace {

long long allocations = 0;

template <typename Work>
long long Allocations(Work work) {
  const long long before = allocations;
  work();
  return allocations - before;
}

/// Names too long to be held without an allocation of their own, and all tables in use.
void FillDocument() {
  LoadDefaults();
  auto& panel = PanelRecord;
  for (NameArray* names : {&panel.RelayName, &panel.GroupName, &panel.InputName, &panel.TimerName,
                           &panel.PresetName}) {
    names->elements.fill("A name of about thirty letters");
  }
  for (ItemTable* table :
       {&panel.InputRelayControl, &panel.InputGroupControl, &panel.GroupRelayInclude,
        &panel.TimerRelayControl, &panel.TimerGroupControl, &panel.PresetRelayControl}) {
    table->elements.fill(7);
  }
  for (FennlinkRecord& device : FennlinkRecords.elements) {
    device.DeviceName = "A device name of thirty letter";
    device.DeviceRelayControl.elements.fill(7);
    device.DeviceGroupControl.elements.fill(7);
  }
}

void CompareProject(RatioReport& report, const char* decodeName, const char* encodeName) {
  const std::string bytes = EncodeProject(LiveProject);
  std::string copy(bytes.size(), '\0');
  const double plain = BestMicroseconds([&] {
    std::memcpy(copy.data(), bytes.data(), bytes.size());
    Keep(copy.data());
  });
  const auto decode = [&bytes] {
    (void)DecodeProject(bytes, LiveProject);
    Keep(&PanelRecord);
  };
  const auto encode = [] { Keep(EncodeProject(LiveProject).data()); };
  report.Line(decodeName, BestMicroseconds(decode), "memory copy", plain, 20);
  report.Line(encodeName, BestMicroseconds(encode), "memory copy", plain, 20);
}

void CountAllocations(RatioReport& report) {
  const std::string bytes = EncodeProject(LiveProject);
  const auto decode = [&bytes] { (void)DecodeProject(bytes, LiveProject); };
  const auto encode = [] { Keep(EncodeProject(LiveProject).data()); };
  const double strings = 1 + 5 * 49 + 65;
  report.Line("allocations of a decode", static_cast<double>(Allocations(decode)),
              "strings and document", strings + 1, 1, "");
  report.Line("allocations of an encode", static_cast<double>(Allocations(encode)), "one buffer", 1,
              1, "");
}

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

int main() {
  RatioReport report;
  LoadDefaults();
  CompareProject(report, "decode, new panel", "encode, new panel");
  FillDocument();
  CompareProject(report, "decode, full panel", "encode, full panel");
  CountAllocations(report);
  const double image = BestMicroseconds([] {
    BuildPanelImage({1, 2, 3, 4, 5, 6});
    ImageSum sum;
    for (const Int16 element : PanelImage.elements) sum.Add(element);
    const Int32 value = sum.Value();
    Keep(&value);
  });
  report.Within("panel image and sum", image / 1000, 1);
  return report.ExitCode();
}

#include "panel/defaults.h"

#include "panel/dimmer_fields.h"
#include "panel/fields.h"
#include "panel/hex.h"
#include "panel/live_project.h"
#include "panel/program_state.h"

namespace {

class Loader {
 public:
  explicit Loader(int device = 0) : device_(device) {}

  void operator()(const FieldFacts& facts, std::string& text) const { Put(facts, text, 0); }
  void operator()(const FieldFacts& facts, Int16& value) const { Put(facts, value, 0); }

  template <typename T, int First, int Second>
  void operator()(const FieldFacts& facts, FixedArray<T, First, Second>& array) const {
    const Default& start = facts.Start.Value;
    if (start.Is == Default::Kind::Stays) return;
    const bool everywhere = start.Is == Default::Kind::Everywhere;
    const int first = everywhere ? First : facts.First.Value.Items;
    const int second = everywhere ? Second : facts.Second.Value.Items;
    for (int j = 0; j < second; ++j) {
      for (int i = 0; i < first; ++i) Put(facts, array(i, j), i);
    }
    if (facts.Spare) array(SpareItem) = {};
  }

 private:
  template <typename Number>
  static void Put(const FieldFacts& facts, Number& value, int index) {
    const Default& start = facts.Start.Value;
    switch (start.Is) {
      case Default::Kind::OwnIndex:
        value = static_cast<Number>(index);
        break;
      case Default::Kind::FirstOnly:
        value = static_cast<Number>(index == 0 ? start.Value : 0);
        break;
      default:
        value = static_cast<Number>(start.Value);
        break;
    }
  }

  void Put(const FieldFacts& facts, std::string& text, int index) const {
    switch (facts.Start.Value.Is) {
      case Default::Kind::ItemName:
        text = ItemCode({KindOf(facts.First.Value), index}).toStdString();
        break;
      case Default::Kind::DeviceName:
        text = "FLINK " + HexByte(device_);
        break;
      default:
        text.clear();
        break;
    }
  }

  int device_;
};

void LoadDimmers(DimmerBlockType& dimmers) {
  dimmers = {};
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      for (const DimmerField* field : dim::Fields) {
        if (field->Start == 0) continue;
        Int16& element = dimmers(DimmerElement(*field, {dev, out}));
        element = EncodeDimmer(*field, element, field->Start, 0);
      }
    }
  }
}

}  // namespace

void LoadDefaults(Project& project) {
  ForEachPanelField(project.Panel, Loader());
  for (int address = 0; address <= DeviceCount; ++address) {
    ForEachDeviceField(project.Devices(address), Loader(address));
  }
  LoadDimmers(project.Dimmers);
}

Project NewProject() {
  Project project;
  LoadDefaults(project);
  return project;
}

void LoadDefaults() {
  DocumentSectionOff = {};
  DocumentFileName = DataPath(QStringLiteral("Documentation/Tamberloom 3.txt"));
  LoadDefaults(LiveProject);
}

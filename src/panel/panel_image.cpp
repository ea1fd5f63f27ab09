#include "panel/panel_image.h"

#include <algorithm>

#include "panel/checked_arithmetic.h"
#include "panel/dimmer_block.h"
#include "panel/fields.h"
#include "panel/hex.h"
#include "panel/live_project.h"

PanelImageType PanelImage;
Int16 IncludeNamesInUpload = 0;

namespace {

/// Where one value stands: its address and, of a bit, its mask and the way to the next plane.
struct MemorySpot {
  int Address;
  int Mask = 0;
  int PlaneSize = 0;
};

/// What a word is, for a failure: "the timed-on time of input 3, ".
std::string SettingOf(const FieldFacts& facts, int first) {
  const std::string phrase = std::string("the ") + facts.Phrase.Value;
  if (facts.First.Value.Counts == Axis::Of::Nothing) return phrase + ", ";
  const bool relay = facts.First.Value.Counts == Axis::Of::Relay;
  return phrase + (relay ? " of relay " : " of input ") + std::to_string(first + 1) + ", ";
}

/// Walks the values of fields with their places in the memory.
template <typename Direction>
class Walker {
 public:
  explicit Walker(Direction& direction, int device = 0) : direction_(direction), device_(device) {}

  template <typename Field>
  void operator()(const FieldFacts& facts, Field& field) const {
    const Packing& memory = facts.Memory.Value;
    if (memory.Way == Packing::How::None) return;
    const int base = BaseOf(memory, device_);
    if constexpr (requires { field.elements; }) {
      IsBits(memory) ? Bits(facts, field, base) : Numbers(facts, field, base);
    } else {
      Put(facts, field, {base}, 0);
    }
  }

 private:
  template <typename Array>
  void Numbers(const FieldFacts& facts, Array& array, int base) const {
    const int size = SizeOf(facts.Memory.Value);
    for (int i = 0; i < facts.First.Value.Items; ++i) {
      for (int j = 0; j < facts.Second.Value.Items; ++j) {
        Put(facts, array(i, j), {base + (i * facts.Second.Value.Items + j) * size}, i);
      }
    }
  }

  /// Rows are the targets of a local table and its columns the sources; of a bus device it is the
  /// other way round. A single row has a bit for each element.
  template <typename Array>
  void Bits(const FieldFacts& facts, Array& array, int base) const {
    const int planeSize = PlaneSize(device_);
    const bool sourceIsRow = device_ > 0;
    for (int j = 0; j < facts.Second.Value.Items; ++j) {
      for (int i = 0; i < facts.First.Value.Items; ++i) {
        const int row = sourceIsRow ? i : j;
        const int column = sourceIsRow ? j : i;
        Put(facts, array(i, j), {base + row * BitRowSize + column / 8, 1 << column % 8, planeSize},
            i);
      }
    }
  }

  template <typename Value>
  void Put(const FieldFacts& facts, Value& value, const MemorySpot& spot, int first) const {
    if constexpr (std::is_convertible_v<Value, std::string_view>) {
      direction_.Text(spot.Address, facts.Memory.Value, value);
    } else {
      direction_.Number(spot, facts.Memory.Value, value,
                        [&facts, first] { return SettingOf(facts, first); });
    }
  }

  Direction& direction_;
  int device_;
};

/// Project to image.
class Packer {
 public:
  explicit Packer(PanelImageType& image) : image_(image) {}

  void Text(int address, const Packing& memory, std::string_view text) {
    const bool panel = memory.Way == Packing::How::PanelName;
    if (panel && text.empty()) text = NamelessPanel;
    for (int i = 0; i < SizeOf(memory); ++i) {
      const auto at = static_cast<std::size_t>(i);
      image_(address + i) = at < text.size() ? static_cast<unsigned char>(text[at]) : Int16{' '};
    }
  }

  template <typename Setting>
  void Number(const MemorySpot& spot, const Packing& memory, Int32 value, Setting) {
    Int16& element = image_(spot.Address);
    switch (memory.Way) {
      case Packing::How::Word:
        element = ToInt16(FloorDiv(value, 256));
        image_(spot.Address + 1) = static_cast<Int16>(value % 256);
        break;
      case Packing::How::Flag:
        if (value != 0) element = 1;
        break;
      case Packing::How::Bit:
        if (value != 0) SetBit(spot.Address, spot.Mask);
        break;
      case Packing::How::Planes:
        for (int plane = 0; value != 0 && plane < memory.Width; ++plane) {
          if ((value >> plane & 1) != 0) SetBit(spot.Address + plane * spot.PlaneSize, spot.Mask);
        }
        break;
      case Packing::How::Percent:
        element = ToInt16(FloorDiv(ToInt16(ToInt16(value * 255) + 128), 100));
        break;
      case Packing::How::PartOfByte:
        element = ToInt16(element + ToInt16(value * (1 << memory.Shift)));
        break;
      default:
        element = static_cast<Int16>(value);
        break;
    }
  }

  void Block(int address, const DimmerBlockType& block) {
    std::copy(block.elements.begin(), block.elements.end(), &image_(address));
  }

 private:
  void SetBit(int address, int mask) {
    image_(address) = static_cast<Int16>(image_(address) | mask);
  }

  PanelImageType& image_;
};

/// Image to project.
class Unpacker {
 public:
  Unpacker(const PanelImageType& image, bool names) : image_(image), names_(names) {}

  void Text(int address, const Packing& memory, std::string& text) const {
    if (!names_ && memory.Way == Packing::How::Name) return;
    text.clear();
    for (int i = 0; i < SizeOf(memory); ++i) text += static_cast<char>(image_(address + i));
  }

  template <typename Value, typename Setting>
  void Number(const MemorySpot& spot, const Packing& memory, Value& value, Setting setting) const {
    const Int16 element = image_(spot.Address);
    switch (memory.Way) {
      case Packing::How::Word:
        Word(element * 256 + image_(spot.Address + 1), value, setting);
        break;
      case Packing::How::Flag:
        value = static_cast<Value>(element == 1 ? -1 : 0);
        break;
      case Packing::How::Bit:
        value = static_cast<Value>((element & spot.Mask) != 0 ? -1 : 0);
        break;
      case Packing::How::Planes: {
        int code = 0;
        for (int plane = 0; plane < memory.Width; ++plane) {
          if ((image_(spot.Address + plane * spot.PlaneSize) & spot.Mask) != 0) code += 1 << plane;
        }
        value = static_cast<Value>(code);
        break;
      }
      case Packing::How::Percent:
        value = static_cast<Value>(FloorDiv(ToInt16(ToInt16(element * 100) + 50), 255));
        break;
      case Packing::How::PartOfByte:
        value = static_cast<Value>(element >> memory.Shift & ((1 << memory.Width) - 1));
        break;
      default:
        value = static_cast<Value>(element);
        break;
    }
  }

  void Block(int address, DimmerBlockType& block) const {
    std::copy_n(&image_(address), DimmerBlockType::Size, block.elements.begin());
  }

 private:
  template <typename Setting>
  static void Word(Int32 word, Int32& value, Setting) {
    value = word;
  }
  template <typename Setting>
  static void Word(Int32 word, Int16& value, Setting setting) {
    value = ToInt16(word, word > std::numeric_limits<Int16>::max() ? setting().c_str() : "");
  }
  // A byte that no row packs.
  template <typename Setting>
  static void Word(Int32, std::uint8_t&, Setting) {}

  const PanelImageType& image_;
  bool names_;
};

/// The one memory map, for both directions.
template <typename Direction, typename ProjectType>
void Map(Direction direction, ProjectType& project) {
  ForEachPanelField(project.Panel, Walker(direction));
  for (int n = 1; n <= DeviceCount; ++n) {
    try {
      ForEachDeviceField(project.Devices(n), Walker(direction, n));
    } catch (const RunTimeFailure& failure) {
      throw RunTimeFailure("Bus device " + HexByte(n) + ": " + failure.what());
    }
  }
  direction.Block(DimmerBlockAddress, project.Dimmers);
}

/// The bus device whose block an address is in; 0 for none.
int DeviceAt(int address) {
  const bool controls = address >= DeviceControlBlock;
  const int device = controls ? (address - DeviceControlBlock) / DeviceControlStride
                              : (address - DeviceBlock) / DeviceBlockStride;
  return device >= 1 && device <= DeviceCount ? device : 0;
}

}  // namespace

void BuildPanelImage(const Project& project, const PasswordDigits& password,
                     PanelImageType& image) {
  std::fill_n(image.elements.begin(), ClearedImageSize, Int16{0});
  std::copy(password.begin(), password.end(), &image(PasswordAddress));
  Map(Packer(image), project);
}

std::string FreshPanelMemory(const Project& project) {
  const auto image = std::make_unique<PanelImageType>();
  BuildPanelImage(project, {}, *image);
  std::string bytes;
  // The wire carries the low byte of an element.
  for (const Int16 element : image->elements) bytes += static_cast<char>(element & 0xFF);
  return bytes;
}

PanelImageType ImageOf(std::string_view memory) {
  PanelImageType image;
  std::transform(memory.begin(), memory.end(), image.elements.begin(),
                 [](char byte) { return static_cast<Int16>(static_cast<unsigned char>(byte)); });
  return image;
}

Project UploadedOver(const Project& project, const PanelImageType& image, bool names) {
  Project uploaded = project;
  Map(Unpacker(image, names), uploaded);
  return uploaded;
}

Project AsPanelKeeps(const Project& project) {
  return UploadedOver(project, ImageOf(FreshPanelMemory(project)), true);
}

std::optional<SettingPlace> SettingAt(const Project& project, int address) {
  std::optional<SettingPlace> found;
  const auto look = [&](int device) {
    return [&, device](const FieldFacts& facts, const auto&) {
      if (IsBits(facts.Memory.Value) || facts.Memory.Value.Way == Packing::How::None) return;
      const int size = SizeOf(facts.Memory.Value);
      for (int i = 0; i < facts.First.Value.Items; ++i) {
        const int width = size * facts.Second.Value.Items;
        const int offset = address - BaseOf(facts.Memory.Value, device) - i * width;
        if (offset < 0 || offset >= width) continue;
        const Place place{device, i, offset / size};
        found = {ItemOf(facts, place), PhraseOf(project, facts, place), facts.Where.Value.On};
      }
    };
  };
  const int device = DeviceAt(address);
  if (device > 0) {
    ForEachDeviceField(project.Devices(device), look(device));
  } else if (address < DeviceBlock) {
    ForEachPanelField(project.Panel, look(0));
  }
  const int element = address - DimmerBlockAddress;
  const int output = element / ElementsOfOutput;
  if (element >= DeviceEnabledElement && element < DimmerBlockType::Size) {
    found = {{ItemKind::DimmerOutput, element - DeviceEnabledElement},
             QStringLiteral("enabled mark"),
             Screen::DimmerOutput};
  } else if (element >= 0 && element < DeviceEnabledElement) {
    found = {{ItemKind::DimmerOutput, output / DimmerOutputCount, output % DimmerOutputCount},
             QStringLiteral("settings"),
             Screen::DimmerOutput};
  }
  return found;
}

void BuildPanelImage(const PasswordDigits& password) {
  BuildPanelImage(LiveProject, password, PanelImage);
}

void ApplyPanelImage() {
  LiveProject = UploadedOver(LiveProject, PanelImage, IncludeNamesInUpload != 0);
}

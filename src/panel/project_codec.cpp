#include "panel/project_codec.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "panel/fields.h"

static_assert(std::endian::native == std::endian::little,
              "the file is little-endian and is copied as it stands");

namespace {

class Encoder {
 public:
  explicit Encoder(std::string& bytes) : bytes_(bytes) {}

  template <typename FieldType>
  void operator()(const FieldFacts&, const FieldType& field) {
    Field(field);
  }

  void Field(Int16 value) { Raw(&value, sizeof value); }

  void Field(const std::string& text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<Int16>::max())) {
      throw RunTimeFailure("A name of " + std::to_string(text.size()) +
                           " characters is too long to be saved.");
    }
    Field(static_cast<Int16>(text.size()));
    Raw(text.data(), text.size());
  }

  template <typename T, int First, int Second>
  void Field(const FixedArray<T, First, Second>& table) {
    if constexpr (std::is_arithmetic_v<T>) {
      Raw(table.elements.data(), sizeof table.elements);
    } else {
      for (const auto& element : table.elements) Field(element);
    }
  }

 private:
  void Raw(const void* data, std::size_t size) {
    bytes_.append(static_cast<const char*>(data), size);
  }

  std::string& bytes_;
};

class Decoder {
 public:
  explicit Decoder(std::string_view rest) : rest_(rest) {}

  bool Whole = true;  ///< Nothing has been missing so far.

  template <typename FieldType>
  void operator()(const FieldFacts&, FieldType& field) {
    Field(field);
  }

  void Field(Int16& value) { Elements(&value, 1); }

  void Field(std::string& text) {
    Int16 length = 0;
    if (Elements(&length, 1) == 0) return;
    if (length < 0) {
      throw RunTimeFailure("a name in it has the length " + std::to_string(length) +
                           ", so it is damaged or not a project file");
    }
    const std::string_view there = rest_.substr(0, static_cast<std::size_t>(length));
    Whole = Whole && there.size() == static_cast<std::size_t>(length);
    text.assign(there);
    rest_.remove_prefix(there.size());
  }

  template <typename T, int First, int Second>
  void Field(FixedArray<T, First, Second>& table) {
    if constexpr (std::is_arithmetic_v<T>) {
      Elements(table.elements.data(), table.elements.size());
    } else {
      for (auto& element : table.elements) Field(element);
    }
  }

 private:
  /// Copies the whole elements that are there; a cut one ends the file.
  template <typename T>
  std::size_t Elements(T* elements, std::size_t count) {
    const std::size_t there = std::min(count, rest_.size() / sizeof(T));
    if (there > 0) std::memcpy(elements, rest_.data(), there * sizeof(T));
    Whole = Whole && there == count;
    rest_.remove_prefix(there < count ? rest_.size() : there * sizeof(T));
    return there;
  }

  std::string_view rest_;
};

/// The one order of the file, for both directions.
template <typename Archive, typename ProjectType>
void Walk(Archive& archive, ProjectType& project) {
  ForEachPanelField(project.Panel, archive);
  for (auto& device : project.Devices.elements) ForEachDeviceField(device, archive);
  archive.Field(project.Dimmers);
}

}  // namespace

std::string EncodeProject(const Project& project) {
  constexpr std::size_t roomForUsualNames = 200'000;
  std::string bytes;
  bytes.reserve(roomForUsualNames);
  Encoder encoder(bytes);
  Walk(encoder, project);
  return bytes;
}

bool DecodeProject(std::string_view bytes, Project& project) {
  Decoder decoder(bytes);
  Walk(decoder, project);
  return decoder.Whole;
}

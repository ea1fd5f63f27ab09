#pragma once

#include <random>

#include "panel/defaults.h"
#include "panel/setting.h"

/// All that a timer runs by.
inline std::vector<Setting> PartsOfTimer(int timer) {
  return PartsOf(*WholeOf({&FactsOf(&PanelRecordType::TimerTime), nullptr, {0, timer}}));
}
inline std::vector<Setting> PartsOfSlot(const Place& slot) {
  return PartsOf(*WholeOf({nullptr, &dim::ControlType, slot}));
}

/// Changes settings at random, the same ones for the same seed.
class RandomSettings {
 public:
  explicit RandomSettings(unsigned seed) : random_(seed) {
    ForEachSetting([this](const Setting& setting) {
      if (!setting.Whole) all_.push_back(setting);
    });
  }

  int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }
  const Setting& Any() {
    return all_[static_cast<std::size_t>(Below(static_cast<int>(all_.size())))];
  }

  /// A value that a damaged file may hold too.
  void Spoil(Project& project, const Setting& setting) {
    SettingValue value = ValueOf(project, setting);
    if (auto* text = std::get_if<std::string>(&value)) {
      text->clear();
      for (int length = Below(12); length > 0; --length) *text += static_cast<char>(Below(256));
    } else {
      value = Below(2) == 0 ? Below(14) : Below(65'536) - 32'768;
    }
    PutValue(project, setting, value);
  }

 private:
  std::minstd_rand random_;
  std::vector<Setting> all_;
};

#pragma once

#include "panel/fennlink_types.h"
#include "panel/words.h"
#include "shell/controls/controls.h"

/// Input 0 to 7 of a device on screen: "FLINK 01.1".
inline QString DeviceInputText(const QString& deviceName, int input) {
  return deviceName + u'.' + QString::number(input + 1);
}

/// The name of a family's control: FamilyControlName("cboInput", family, "Type") is
/// "cboInput16Type" for the first one.
inline QByteArray FamilyControlName(const char* before, const FennlinkFamily& family,
                                    const char* behind = "") {
  const auto& suffix = family.Suffix;
  return before + QByteArray(suffix.data(), static_cast<qsizetype>(suffix.size())) + behind;
}

/// The selector of a Fennlink device: item d is the device at bus address d, and item 0 stands for
/// none. In the open list the type of each configured device stands behind its name.
class DeviceList : public ComboBox {
  Q_OBJECT
 public:
  explicit DeviceList(QWidget* parent = nullptr);

  /// Replaces the items by the present names and leaves no selection; runs nothing.
  void Fill();
  /// A quiet line, to stand behind the list, that says what to do while no device is chosen and, on
  /// a screen that does not choose it, where a device without a type gets one.
  QWidget* ChooseHint(bool typeElsewhere = true);

  void showPopup() override;

 private:
  void ShowHint();

  bool typeElsewhere_ = false;
  Label* hint_;
};

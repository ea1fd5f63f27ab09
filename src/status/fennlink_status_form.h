#pragma once

#include "panel/fennlink_types.h"
#include "shell/controls/device_list.h"
#include "status/status_form.h"

/// The live state of one Fennlink device at a time, in the frame of its family.
class frmT3FennlinkStatus : public StatusForm {
 public:
  frmT3FennlinkStatus();
  void Form_Load() override;

  /// Reads the three status blocks; whether the panel has answered.
  bool GetDeviceStatus(int device);
  void ShowStatus(int device);
  void cboFLinkDevice_Click();

 protected:
  void ShowConnected(bool connected) override;
  void ReadStatus() override;

 private:
  /// The frame of a family; element f belongs to FennlinkFamilies[f].
  struct StatusFrame {
    QGroupBox* Frame = nullptr;
    Label* Present = nullptr;
    RowGrid* Grid = nullptr;
    ControlArray<Label> InputStatus;
  };

  void AddFamilyFrame(int family);
  void HideFrames();

  FixedArray<Int16, 8> InputFlags;
  Int16 DevicePresent = 0;
  Int16 AnalogLevel = 0;  ///< 0 to 255.

  QWidget* selector = nullptr;
  DeviceList* cboFLinkDevice = nullptr;
  Label* lblFLinkDeviceType = nullptr;
  Label* lblLightLevel = nullptr;
  std::array<StatusFrame, FennlinkFamilyCount> frames;
};

#pragma once

#include "panel/fennlink_types.h"
#include "panel/live_project.h"
#include "panel/words.h"
#include "shell/controls/device_list.h"
#include "shell/controls/list_column.h"

/// The type of each Fennlink device, and by its family the types of its inputs or the levels of its
/// photocell. A `family` is an index in FennlinkFamilies.
class frmT3ConfigureFennlinkDevices : public ChildForm {
 public:
  frmT3ConfigureFennlinkDevices();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowConfiguration();
  void cboFLinkDevice_Click();
  void cboFLinkType_Click();
  void cboInputType_Click(int family, int index);
  void hsInputFOffLevel_Change(int index);
  void hsInputFOnLevel_Change(int index);

 private:
  /// The frame of a family; the lists and times of its inputs unless it is that of photocells.
  struct FamilyFrame {
    QGroupBox* Frame = nullptr;
    RowGrid* Grid = nullptr;
    ControlArray<ComboBox> InputType;
    ListColumn TimedOn;
  };

  FennlinkRecord& Device() const { return FennlinkRecords(SelectedDevice); }
  RowGrid* AddFamilyFrame(int family);
  void AddInputRows(int family);
  void AddLevelRows(RowGrid* grid);
  void ShowInputs(const FamilyFrame& frame);
  void ShowLevels();

  int SelectedDevice = 0;  ///< Survives a reactivation.
  DeviceList* cboFLinkDevice = nullptr;
  Label* lblFLinkType = nullptr;
  ComboBox* cboFLinkType = nullptr;
  std::array<FamilyFrame, FennlinkFamilyCount> frames;
  ControlArray<ScrollBar> hsInputFOffLevel;
  ControlArray<Label> lblInputFOffLevel;
  ControlArray<ScrollBar> hsInputFOnLevel;
  ControlArray<Label> lblInputFOnLevel;
};

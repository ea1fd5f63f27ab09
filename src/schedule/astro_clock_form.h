#pragma once

#include "panel/fixed_array.h"
#include "shell/controls/child_form.h"

/// The site's position and time zone, from which the panel works out sunrise and sunset.
class frmT3AstroClockSettings : public ChildForm {
 public:
  frmT3AstroClockSettings();
  void Form_Load() override;
  void Form_Activate() override;

  void cmdFindLatLon_Click();
  void cmdAccept_Click();
  void cmdCancel_Click();
  void txtFindCity_Change();
  void RestoreControls();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildSettings();
  void BuildCityPicker();
  ComboBox* AddSetting(const char* name, const QString& caption, Int16& field, int first,
                       const QStringList& items);
  void SetPicking(bool picking);
  void ShowSun();

  QGroupBox* fraAstroSettings = nullptr;
  ComboBox* cboLatitude = nullptr;
  ComboBox* cboLongitude = nullptr;
  ComboBox* cboTimeZone = nullptr;
  ControlArray<Label> lblSun;     ///< Today, the shortest and the longest day.
  Label* lblZoneDoubt = nullptr;  ///< That the zone cannot be the place's.
  Button* cmdFindLatLon = nullptr;
  TextBox* txtFindCity = nullptr;
  Label* lblNoCity = nullptr;
  ComboBox* cboFindLatLon = nullptr;
  Button* cmdAccept = nullptr;
  Button* cmdCancel = nullptr;
};

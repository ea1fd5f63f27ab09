#pragma once

#include "line/panel_replies.h"
#include "shell/controls/accessible_controls.h"
#include "status/display_glyph.h"
#include "status/status_form.h"

/// The panel's front: its display of four lines of twenty, its six LEDs and its keys. Each poll
/// carries the key pressed since the last one and brings the front back.
class frmT3VirtualKeypad : public StatusForm {
 public:
  static constexpr int CellCount = PanelFront::CellCount;
  static constexpr int LedCount = 6;

  frmT3VirtualKeypad();
  void Form_Load() override;

  void ShowFromQZ();
  void cmdKey_Click(int index);

 protected:
  void ShowConnected(bool connected) override;
  void ReadStatus() override { ShowFromQZ(); }

 private:
  void BuildDisplay(QBoxLayout* layout);
  void BuildLeds(QBoxLayout* layout);
  void BuildKeys(QBoxLayout* layout);
  void ShowCell(int cell, Int16 code);

  Int16 PendingKey = 0;
  FixedArray<Int16, CellCount + 1> ScreenCache;  ///< -1: nothing shown yet.
  Int16 LedCache = 0;

  QWidget* front = nullptr;
  DescribedWidget* display = nullptr;
  ControlArray<Label> lblLCD;
  ControlArray<DisplayGlyph> imgCustomChar;
  ControlArray<DisplayGlyph> imgSourceChar;
  ControlArray<Label> lblLED;
  ControlArray<Button> cmdKey;
  Label* lblPendingKey = nullptr;
};

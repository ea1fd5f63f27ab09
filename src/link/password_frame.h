#pragma once

#include <QGridLayout>
#include <QGroupBox>

#include "panel/panel_image.h"
#include "shell/controls/controls.h"

/// Asks for the panel's password, and for a new one where the panel is to have another.
class PassWordFrame : public QGroupBox {
 public:
  PassWordFrame();

  /// The label and boxes of the new password, with the focus, or none.
  void ShowNewPassWord(bool shown);
  PasswordDigits Current() const;
  PasswordDigits New() const;
  /// The panel has the new password now.
  void AdoptNew();
  /// Zeros in all boxes.
  void Clear();

  ControlArray<TextBox> txtPassWord;
  ControlArray<TextBox> txtNewPassWord;
  CheckBox* chkChangePanelPassWord = nullptr;
  Button* cmdPassWordContinue = nullptr;
  Button* cmdPassWordCancel = nullptr;

 private:
  Label* AddRow(QGridLayout* grid, int row, const char* name, const QString& caption,
                ControlArray<TextBox>& boxes, const char* box, const QString& which);

  Label* lblNewPassWord = nullptr;
};

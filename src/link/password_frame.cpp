#include "link/password_frame.h"

#include <QShortcut>

#include "link/named_control.h"

namespace {

PasswordDigits DigitsOf(const ControlArray<TextBox>& boxes) {
  PasswordDigits digits{};
  for (int i = 0; i < boxes.Count(); ++i) {
    digits[static_cast<std::size_t>(i)] = static_cast<Int16>(boxes(i).Text().toInt());
  }
  return digits;
}

}  // namespace

PassWordFrame::PassWordFrame() : QGroupBox(QStringLiteral("Password")) {
  auto* grid = new QGridLayout(this);
  AddRow(grid, 0, "lblPassWord", QStringLiteral("Enter Current Password"), txtPassWord,
         "txtPassWord", QStringLiteral("Current password"));
  chkChangePanelPassWord = NamedControl<CheckBox>(nullptr, "chkChangePanelPassWord",
                                                  QStringLiteral("Change Panel Password"));
  grid->addWidget(chkChangePanelPassWord, 1, 0);
  lblNewPassWord = AddRow(grid, 2, "lblNewPassWord", QStringLiteral("Enter New Password"),
                          txtNewPassWord, "txtNewPassWord", QStringLiteral("New password"));
  auto* buttons = new QHBoxLayout;
  buttons->setAlignment(Qt::AlignRight);
  cmdPassWordContinue =
      NamedControl<Button>(buttons, "cmdPassWordContinue", QStringLiteral("Continue"));
  cmdPassWordCancel = NamedControl<Button>(buttons, "cmdPassWordCancel", QStringLiteral("Cancel"));
  grid->addLayout(buttons, 3, 0, 1, 2);
  for (const ControlArray<TextBox>* boxes : {&txtPassWord, &txtNewPassWord}) {
    for (int i = 0; i < boxes->Count(); ++i) {
      connect(&(*boxes)(i), &QLineEdit::returnPressed, cmdPassWordContinue, &QPushButton::click);
    }
  }
  auto* escape = new QShortcut(Qt::Key_Escape, this);
  escape->setContext(Qt::WidgetWithChildrenShortcut);
  connect(escape, &QShortcut::activated, cmdPassWordCancel, &QPushButton::click);
}

Label* PassWordFrame::AddRow(QGridLayout* grid, int row, const char* name, const QString& caption,
                             ControlArray<TextBox>& boxes, const char* box, const QString& which) {
  auto* label = NamedControl<Label>(nullptr, name);
  label->SetCaption(caption);
  grid->addWidget(label, row, 0);
  auto* line = new QHBoxLayout;
  line->setAlignment(Qt::AlignLeft);
  constexpr int digits = 6;
  for (int i = 0; i < digits; ++i) {
    auto* digit = new TextBox;
    digit->UndoesItself = true;
    digit->setText(QStringLiteral("0"));
    // Only the key handler writes: a box always holds one digit.
    digit->setReadOnly(true);
    digit->setAlignment(Qt::AlignCenter);
    digit->setFixedWidth(digit->fontMetrics().averageCharWidth() * 4);
    digit->setAccessibleName(QStringLiteral("%1, digit %2").arg(which).arg(i + 1));
    digit->KeyPress = [&boxes, i](char16_t key) {
      if (key >= u'0' && key <= u'9') {
        boxes(i).SetText(QString(QChar(key)));
        boxes((i + 1) % digits).setFocus();
      }
      return u'\0';
    };
    line->addWidget(digit);
    boxes.Add(digit, QString::fromLatin1(box));
  }
  grid->addLayout(line, row, 1);
  return label;
}

void PassWordFrame::ShowNewPassWord(bool shown) {
  lblNewPassWord->setVisible(shown);
  for (int i = 0; i < txtNewPassWord.Count(); ++i) txtNewPassWord(i).setVisible(shown);
  if (shown) txtNewPassWord(0).setFocus();
}

PasswordDigits PassWordFrame::Current() const {
  return DigitsOf(txtPassWord);
}

PasswordDigits PassWordFrame::New() const {
  return DigitsOf(txtNewPassWord);
}

void PassWordFrame::AdoptNew() {
  for (int i = 0; i < txtPassWord.Count(); ++i) txtPassWord(i).SetText(txtNewPassWord(i).Text());
}

void PassWordFrame::Clear() {
  for (int i = 0; i < txtPassWord.Count(); ++i) {
    txtPassWord(i).SetText(QStringLiteral("0"));
    txtNewPassWord(i).SetText(QStringLiteral("0"));
  }
}

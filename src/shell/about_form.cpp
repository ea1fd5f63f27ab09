#include "shell/about_form.h"

#include "panel/program_state.h"

frmT3About::frmT3About() : ChildForm(QStringLiteral("frmT3About"), QStringLiteral("About")) {}

void frmT3About::Form_Load() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(24, 64, 24, 24);
  column->setSpacing(6);
  auto addLine = [&](const char* name, const QString& caption) {
    Label* label = AddLabel(column, name, caption);
    label->SetAlignment(Qt::AlignCenter);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return label;
  };
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 2.4);
  large.setBold(true);
  addLine("lblTitle", ProgramTitle)->setFont(large);
  addLine("lblPurpose", QStringLiteral("Host software for the relay lighting control panel"));
  lblRevInfo = addLine("lblRevInfo", QStringLiteral("Version 1.02"));
  column->addSpacing(24);
  lblWebPageInfo = AddLabel(nullptr, "lblWebPageInfo", QStringLiteral(TAMBERLOOM_WEB_ADDRESS));
  lblWebPageInfo->SetAlignment(Qt::AlignCenter);
  lblWebPageInfo->SetLook(Label::Look::Link);
  lblWebPageInfo->setToolTip(QStringLiteral("Open in the web browser"));
  lblWebPageInfo->Click = [this] { lblWebPageInfo_Click(); };
  column->addWidget(lblWebPageInfo, 0, Qt::AlignHCenter);
  addLine("lblPhone", QStringLiteral(TAMBERLOOM_PHONE));
  column->addSpacing(40);
  addLine("lblStart", QStringLiteral("Open a project, say in Setup what the panel has, or connect "
                                     "to a panel."))
      ->SetLook(Label::Look::Quiet);
  AddWidget(page);
}

void frmT3About::Form_Activate() {
  HostSoftwareVersion = lblRevInfo->Caption();
}

void frmT3About::lblWebPageInfo_Click() {
  OpenUrl(lblWebPageInfo->Caption());
}

#include "shell/about_form.h"

#include <QFileInfo>

#include "panel/program_state.h"
#include "shell/guide_window.h"
#include "shell/shell.h"

frmT3About::frmT3About() : ChildForm(QString::fromLatin1(ScreenName), QStringLiteral("About")) {}

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
  lblRevInfo = addLine("lblRevInfo", VersionText());
  column->addSpacing(24);
  lblWebPageInfo = AddLabel(nullptr, "lblWebPageInfo", QStringLiteral(TAMBERLOOM_WEB_ADDRESS));
  lblWebPageInfo->SetAlignment(Qt::AlignCenter);
  lblWebPageInfo->SetLook(Label::Look::WebLink);
  lblWebPageInfo->setToolTip(QStringLiteral("Open in the web browser"));
  lblWebPageInfo->Click = [this] { lblWebPageInfo_Click(); };
  column->addWidget(lblWebPageInfo, 0, Qt::AlignHCenter);
  addLine("lblPhone", QStringLiteral(TAMBERLOOM_PHONE));
  column->addSpacing(40);
  addLine("lblStart", QStringLiteral("Open a project, say in Setup what the panel has, or connect "
                                     "to a panel."))
      ->SetLook(Label::Look::Quiet);
  Label* lblGuide = AddLabel(nullptr, "lblGuide", QStringLiteral("Guide: F1 explains each screen"));
  lblGuide->SetAlignment(Qt::AlignCenter);
  lblGuide->SetLook(Label::Look::WebLink);
  lblGuide->Click = [] { ShowGuide(GuidePage({})); };
  column->addWidget(lblGuide, 0, Qt::AlignHCenter);
  kept_ = new QWidget;
  auto* kept = new QHBoxLayout(kept_);
  kept->addStretch(1);
  lblKeptWork = AddLabel(kept, "lblKeptWork", {});
  lblKeptWork->SetLook(Label::Look::Quiet);
  const auto addLink = [&](const char* name, const char* caption, void (frmT3About::*click)()) {
    Label* link = AddLabel(kept, name, QString::fromLatin1(caption));
    link->SetLook(Label::Look::WebLink);
    link->Click = [this, click] { (this->*click)(); };
  };
  addLink("lblTakeUp", "Take Them Up", &frmT3About::lblTakeUp_Click);
  addLink("lblDelete", "Delete Them", &frmT3About::lblDelete_Click);
  kept->addStretch(1);
  column->addWidget(kept_);
  AddWidget(page);
}

void frmT3About::Form_Activate() {
  HostSoftwareVersion = lblRevInfo->Caption();
  ShowKeptWork();
}

/// The newest of what programs that ended could not save.
void frmT3About::ShowKeptWork() {
  const std::vector<KeptWork> found = FindKeptWork();
  kept_->setVisible(!found.empty());
  if (found.empty()) return;
  work_ = found.front();
  const QString name = work_.ProjectName == NoFileName ? QStringLiteral("a new project")
                                                       : QFileInfo(work_.ProjectName).fileName();
  lblKeptWork->SetCaption(QStringLiteral("Unsaved changes of %1 from %2 were kept.")
                              .arg(name, work_.Time.toString(TimeFormat)));
  lblKeptWork->setToolTip(work_.ProjectName);
}

void frmT3About::lblTakeUp_Click() {
  OpenKeptWork(work_);
}

void frmT3About::lblDelete_Click() {
  DeleteKeptWork(work_);
  ShowKeptWork();
}

void frmT3About::lblWebPageInfo_Click() {
  OpenUrl(lblWebPageInfo->Caption());
}

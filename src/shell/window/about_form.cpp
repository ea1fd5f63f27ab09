#include "shell/window/about_form.h"

#include <QFileInfo>

#include "panel/program_state.h"
#include "shell/shell.h"
#include "shell/window/guide_window.h"

namespace {

/// "Hall.T3 from 2026-11-25 14:05".
QString Told(const KeptWork& work) {
  return QStringLiteral("%1 from %2")
      .arg(work.ProjectName == NoFileName ? QStringLiteral("a new project")
                                          : QFileInfo(work.ProjectName).fileName().simplified(),
           work.Time.toString(TimeFormat));
}

}  // namespace

frmT3About::frmT3About() : ChildForm(Screen::About, QStringLiteral("About")) {}

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
  lblGuide->Click = [] { ShowGuide(GuidePage(Screen::None)); };
  column->addWidget(lblGuide, 0, Qt::AlignHCenter);
  lblTakenUp = addLine("lblTakenUp", {});
  lblTakenUp->SetLook(Label::Look::Quiet);
  kept_ = new QVBoxLayout;
  column->addLayout(kept_);
  AddWidget(page);
}

void frmT3About::Form_Activate() {
  HostSoftwareVersion = lblRevInfo->Caption();
  ShowKeptWork();
}

/// The first work that can be taken up; never a deletion, nor the link that leaves the program.
QWidget* frmT3About::FirstFocus() {
  for (std::size_t i = 0; i < work_.size(); ++i) {
    if (!work_[i].Damaged) return &lblTakeUp(static_cast<int>(i));
  }
  return findChild<QWidget*>(QStringLiteral("lblGuide"));
}

/// What programs that ended could not save, a row for each.
void frmT3About::ShowKeptWork() {
  lblTakenUp->setVisible(false);
  work_ = FindKeptWork();
  const int count = static_cast<int>(work_.size());
  while (lblKeptWork.Count() < count) AddKeptWork();
  for (int i = 0; i < lblKeptWork.Count(); ++i) {
    const bool there = i < count;
    for (Label* part : {&lblKeptWork(i), &lblTakeUp(i), &lblDelete(i)}) part->setVisible(there);
    if (!there) continue;
    const KeptWork& work = work_[static_cast<std::size_t>(i)];
    lblKeptWork(i).SetCaption(
        work.Damaged
            ? QStringLiteral("A kept copy from %1 is damaged.").arg(work.Time.toString(TimeFormat))
            : QStringLiteral("Unsaved changes of %1 were kept.").arg(Told(work)));
    lblKeptWork(i).setToolTip(work.Damaged ? work.Path : work.ProjectName);
    lblTakeUp(i).setVisible(!work.Damaged);
  }
}

void frmT3About::AddKeptWork() {
  const int index = lblKeptWork.Count();
  auto* row = new QHBoxLayout;
  kept_->addLayout(row);
  row->addStretch(1);
  const auto add = [&](ControlArray<Label>& labels, const char* name, const char* caption) {
    Label* label = AddLabel(row, name, QString::fromLatin1(caption));
    labels.Add(label, QString::fromLatin1(name));
    return label;
  };
  Label* told = add(lblKeptWork, "lblKeptWork", "");
  told->SetLook(Label::Look::Quiet);
  told->SetElideMode(Qt::ElideMiddle);
  Label* takeUp = add(lblTakeUp, "lblTakeUp", "Take Them Up");
  takeUp->Click = [this, index] { lblTakeUp_Click(index); };
  Label* remove = add(lblDelete, "lblDelete", "Delete Them");
  remove->Click = [this, index] { lblDelete_Click(index); };
  for (Label* link : {takeUp, remove}) {
    link->SetLook(Label::Look::WebLink);
    // However long the file's name is.
    link->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }
  row->addStretch(1);
}

void frmT3About::TellTakenUp(const KeptWork& work) {
  lblTakenUp->SetCaption(
      QStringLiteral("The changes of %1 are taken up. Save keeps them.").arg(Told(work)));
  lblTakenUp->setVisible(true);
}

void frmT3About::lblTakeUp_Click(int index) {
  OpenKeptWork(work_[static_cast<std::size_t>(index)]);
}

void frmT3About::lblDelete_Click(int index) {
  DeleteKeptWork(work_[static_cast<std::size_t>(index)]);
  ShowKeptWork();
}

void frmT3About::lblWebPageInfo_Click() {
  OpenUrl(lblWebPageInfo->Caption());
}

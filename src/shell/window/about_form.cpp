#include "shell/window/about_form.h"

#include <QFileInfo>
#include <QGridLayout>
#include <algorithm>

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

constexpr int MostRecent = 5;
constexpr int MostSteps = 6;

}  // namespace

frmT3About::frmT3About() : ChildForm(Screen::About, QStringLiteral("About")) {}

void frmT3About::Form_Load() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(24, 0, 24, 0);
  column->setSpacing(6);
  // What is free above and between gives way where a large text needs the room.
  const auto addRoom = [column](int pixels) {
    column->addItem(new QSpacerItem(0, pixels, QSizePolicy::Minimum, QSizePolicy::Maximum));
  };
  addRoom(64);
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
  addRoom(24);
  lblWebPageInfo = AddLabel(nullptr, "lblWebPageInfo", QStringLiteral(TAMBERLOOM_WEB_ADDRESS));
  lblWebPageInfo->SetAlignment(Qt::AlignCenter);
  lblWebPageInfo->SetLook(Label::Look::WebLink);
  lblWebPageInfo->setToolTip(QStringLiteral("Open in the web browser"));
  lblWebPageInfo->Click = [this] { lblWebPageInfo_Click(); };
  column->addWidget(lblWebPageInfo, 0, Qt::AlignHCenter);
  addLine("lblPhone", QStringLiteral(TAMBERLOOM_PHONE));
  addRoom(40);
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
  AddStart(column);
  AddWidget(page);
}

void frmT3About::Form_Activate() {
  HostSoftwareVersion = lblRevInfo->Caption();
  ShowKeptWork();
  tmrStart->SetEnabled(true);
}

/// Side by side the projects of before and the one in memory.
void frmT3About::AddStart(QVBoxLayout* column) {
  columns_ = new QHBoxLayout;
  columns_->setSpacing(24);
  column->addLayout(columns_);
  const auto addColumn = [this] {
    auto* lines = new QVBoxLayout;
    lines->setSpacing(1);
    columns_->addLayout(lines);
    return lines;
  };
  const auto addHeading = [this](QVBoxLayout* lines, const char* name) {
    Label* heading = AddLabel(lines, name, {});
    QFont bold = font();
    bold.setBold(true);
    heading->setFont(bold);
    heading->SetElideMode(Qt::ElideMiddle);
    return heading;
  };
  const auto addLink = [this](ControlArray<Label>& links, const char* name,
                              void (frmT3About::*click)(int)) {
    auto* link = new Label;
    link->SetLook(Label::Look::WebLink);
    link->Click = [this, click, index = links.Count()] { (this->*click)(index); };
    links.Add(link, QString::fromLatin1(name));
    return link;
  };
  const auto addQuiet = [](ControlArray<Label>& labels, const char* name) {
    auto* label = new Label;
    label->SetLook(Label::Look::Quiet);
    label->SetElideMode(Qt::ElideMiddle);
    labels.Add(label, QString::fromLatin1(name));
    return label;
  };
  QVBoxLayout* lines = addColumn();
  lblRecentProjects = addHeading(lines, "lblRecentProjects");
  lblRecentProjects->SetCaption(QStringLiteral("Recent Projects"));
  auto* recent = new QGridLayout;
  recent->setVerticalSpacing(1);
  recent->setColumnStretch(1, 1);
  lines->addLayout(recent);
  for (int i = 0; i < MostRecent; ++i) {
    recent->addWidget(addLink(lblRecent, "lblRecent", &frmT3About::lblRecent_Click), i, 0,
                      Qt::AlignLeft);
    recent->addWidget(addQuiet(lblRecentFolder, "lblRecentFolder"), i, 1);
    recent->addWidget(addQuiet(lblRecentWhen, "lblRecentWhen"), i, 2);
  }
  lines->addStretch(1);
  lines = addColumn();
  lblProject = addHeading(lines, "lblProject");
  lblProjectFile = addHeading(lines, "lblProjectFile");
  lblProjectFile->SetLook(Label::Look::WebLink);
  lblProjectFile->Click = [this] { lblProjectFile_Click(); };
  for (int i = 0; i < MostSteps; ++i) {
    auto* line = new QHBoxLayout;
    lines->addLayout(line);
    line->addWidget(addLink(lblStep, "lblStep", &frmT3About::lblStep_Click));
    line->addStretch(1);
  }
  lines->addStretch(1);
  tmrStart = new Timer(this, "tmrStart", 0);
  tmrStart->Tick = [this] {
    tmrStart->SetEnabled(false);
    ShowStart();
  };
  for (Label* heading : {lblRecentProjects, lblProject, lblProjectFile}) heading->setVisible(false);
  for (int i = 0; i < MostRecent; ++i) {
    for (const auto& part : {lblRecent, lblRecentFolder, lblRecentWhen}) part(i).setVisible(false);
  }
  for (int i = 0; i < MostSteps; ++i) lblStep(i).setVisible(false);
}

void frmT3About::ShowStart() {
  recent_ = RecentProjects();
  std::erase_if(recent_, [](const RecentProject& one) { return one.Path == CurrentFileName; });
  recent_.resize(std::min<std::size_t>(recent_.size(), MostRecent), {});
  lblRecentProjects->setVisible(!recent_.empty());
  columns_->setStretch(recent_.empty() ? 0 : 1, 0);
  columns_->setStretch(recent_.empty() ? 1 : 0, 1);
  for (int i = 0; i < MostRecent; ++i) {
    const bool there = i < static_cast<int>(recent_.size());
    for (const auto& part : {lblRecent, lblRecentFolder, lblRecentWhen}) part(i).setVisible(there);
    if (!there) continue;
    const RecentProject& project = recent_[static_cast<std::size_t>(i)];
    const QFileInfo file(project.Path);
    lblRecent(i).SetCaption(file.fileName().simplified());
    lblRecent(i).setToolTip(project.Path);
    lblRecentFolder(i).SetCaption(file.absolutePath());
    lblRecentWhen(i).SetCaption(project.When.toString(QStringLiteral("yyyy-MM-dd HH:mm")));
  }
  const bool open = CurrentFileName != NoFileName || DataChanged != 0;
  steps_ = open && ListWorkSteps ? ListWorkSteps() : std::vector<WorkStep>();
  steps_.resize(std::min<std::size_t>(steps_.size(), MostSteps), {});
  const bool saved = CurrentFileName != NoFileName;
  lblProject->setVisible(!steps_.empty() && !saved);
  lblProject->SetCaption(QStringLiteral("A new project, not saved yet"));
  lblProjectFile->setVisible(!steps_.empty() && saved);
  lblProjectFile->SetCaption(QFileInfo(CurrentFileName).fileName().simplified());
  lblProjectFile->setToolTip(QStringLiteral("Open the folder of %1").arg(CurrentFileName));
  for (int i = 0; i < MostSteps; ++i) {
    const bool there = i < static_cast<int>(steps_.size());
    lblStep(i).setVisible(there);
    if (there) lblStep(i).SetCaption(steps_[static_cast<std::size_t>(i)].Text);
  }
  // Where nothing of it has been touched yet, the focus goes to what is begun with.
  const QWidget* focus = window()->focusWidget();
  if (!focus || focus->objectName() == QLatin1String("lblGuide")) {
    if (QWidget* first = FirstFocus()) first->setFocus(Qt::OtherFocusReason);
  }
}

void frmT3About::lblRecent_Click(int index) {
  OpenProject(recent_[static_cast<std::size_t>(index)].Path);
}

void frmT3About::lblProjectFile_Click() {
  OpenUrl(QFileInfo(CurrentFileName).absolutePath());
}

void frmT3About::lblStep_Click(int index) {
  const auto open = steps_[static_cast<std::size_t>(index)].Open;
  open();
}

/// The first work that can be taken up, or what can be begun with; never a deletion, nor the link
/// that leaves the program.
QWidget* frmT3About::FirstFocus() {
  for (std::size_t i = 0; i < work_.size(); ++i) {
    if (!work_[i].Damaged) return &lblTakeUp(static_cast<int>(i));
  }
  if (!steps_.empty()) return &lblStep(0);
  if (!recent_.empty()) return &lblRecent(0);
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

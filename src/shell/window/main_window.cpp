#include "shell/window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFontInfo>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>

#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/shell.h"
#include "shell/window/about_form.h"
#include "shell/window/findings_count.h"
#include "shell/window/history.h"
#include "shell/window/main_menu.h"
#include "shell/window/program_keys.h"
#include "shell/window/saved_project.h"
#include "shell/window/screen_stack.h"
#include "shell/window/step_buttons.h"

namespace {

/// A menu bar lays itself out anew at each entry that goes on or off, unless it does not hear of
/// it.
class DeafToEntries : public QObject {
  bool eventFilter(QObject*, QEvent* event) override {
    return event->type() == QEvent::ActionChanged;
  }
};

/// 11055 by 8145 twips. A twip follows the desktop's text: at 9 points fifteen are a pixel.
QSize WindowSize() {
  constexpr double usualDpi = 96;
  const double dpi = QGuiApplication::primaryScreen()->logicalDotsPerInch();
  const double pixels = QFontInfo(QApplication::font()).pointSizeF() * dpi / usualDpi / 9 / 15;
  return QSizeF(11055 * pixels, 8145 * pixels).toSize();
}

frmT3MasterMDI* mainWindow = nullptr;

}  // namespace

LinkHooks Link;
std::function<std::vector<WorkStep>()> ListWorkSteps;

QWidget* MainWindow() {
  return mainWindow;
}
ChildForm* ShowForm(Screen screen) {
  return mainWindow ? mainWindow->ShowForm(screen) : nullptr;
}
void UnloadAllForms() {
  if (mainWindow) mainWindow->UnloadAllForms();
}
void UpdateStatusBar() {
  if (mainWindow) mainWindow->UpdateStatusBar();
}
void TellNews(const QString& news) {
  if (mainWindow) mainWindow->TellNews(news);
}
void TellRefusal(const QString& refusal) {
  if (mainWindow) mainWindow->TellNews(refusal, true);
}

void SetLinkStatus(const QString& text) {
  if (mainWindow) mainWindow->SetLinkStatus(text);
}
void PaintNow() {
  if (!mainWindow || !mainWindow->isVisible()) return;
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  QEvent update(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(mainWindow, &update);
}
void DisableMainMenus() {
  if (mainWindow) mainWindow->SetMainMenusEnabled(false);
}
void EnableMainMenus() {
  if (mainWindow) mainWindow->SetMainMenusEnabled(true);
}
void KeepUnsavedWork() {
  if (mainWindow && !mainWindow->Ending()) mainWindow->Recovery().Update(LiveProject);
}
void ForgetUnsavedWork() {
  if (mainWindow && !mainWindow->Ending()) mainWindow->Recovery().Settle(LiveProject);
}
void OpenProject(const QString& name) {
  if (mainWindow) mainWindow->OpenFile(name);
}
void OpenKeptWork(const KeptWork& work) {
  if (mainWindow) mainWindow->OpenKeptWork(work);
}
std::unique_ptr<Project> SavedProject() {
  return mainWindow ? SavedProject(mainWindow->Recovery()) : std::make_unique<Project>(LiveProject);
}
bool ProgramEnding() {
  return mainWindow && mainWindow->Ending();
}

Showing::Showing() {
  if (mainWindow) mainWindow->Steps().BeginShowing();
}
Showing::~Showing() {
  if (mainWindow) mainWindow->Steps().EndShowing();
}

Hourglass::Hourglass() {
  if (mainWindow) mainWindow->setCursor(Qt::WaitCursor);
}
Hourglass::~Hourglass() {
  if (mainWindow) mainWindow->unsetCursor();
}

frmT3MasterMDI::frmT3MasterMDI(const ProgramScreens& program) : program_(program) {
  mainWindow = this;
  setObjectName(QStringLiteral("frmT3MasterMDI"));
  setWindowTitle(ProgramTitle);
  const auto rests = [this] {
    return menuBar()->isEnabled()
               ? QString()
               : QStringLiteral("Undo is off while the program works with the panel.");
  };
  history_ = new History(
      this, {.Rests = rests,
             .ScreenCaption = [this] { return screens_->FrontCaption(); },
             .Show = [this](const auto& changes,
                            const auto& stillSame) { ShowChange(*screens_, changes, stillSame); }});
  tmrFix_ = new Timer(this, "tmrFix", 1000);
  tmrFix_->Tick = [this] { tmrFix_Timer(); };
  constexpr int recoveryMs = 3000;
  tmrRecovery_ = new Timer(this, "tmrRecovery", recoveryMs);
  tmrRecovery_->Tick = [this] { recovery_.Update(LiveProject); };
  HandlersDoneSeam = [this](bool handled) {
    if (screens_) screens_->DeleteRetired();
    if (handled) history_->Record();
    history_->RecordAfterDrag();
  };
}

frmT3MasterMDI::~frmT3MasterMDI() {
  HandlersDoneSeam = nullptr;
  mainWindow = nullptr;
}

void frmT3MasterMDI::MDIForm_Load() {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  const QSize size = WindowSize();
  resize(size.boundedTo(screen.size()));
  move(screen.center() - rect().center());
  // The window manager puts the window up while the program fills it.
  size.width() > screen.width() || size.height() > screen.height() ? showMaximized() : show();
  BuildMenu(*menuBar(), program_,
            {{"mnuNew", [this] { mnuNew_Click(); }},
             {"mnuOpen", [this] { mnuOpen_Click(); }},
             {"mnuSave", [this] { mnuSave_Click(); }},
             {"mnuSaveAs", [this] { mnuSaveAs_Click(); }},
             {"mnuExit", [this] { mnuExit_Click(); }},
             {"mnuAddOnModules", [this] { mnuAddOnModules_Click(); }}});
  BuildClient();
  QDir().mkpath(DataPath(QStringLiteral("Documentation")));
  if (Link.DisconnectQZ) Link.DisconnectQZ();
  CurrentFileName = NoFileName;
  LoadDefaults();
  UnloadAllForms();
  ShowForm(Screen::About);
  DataChanged = 0;
  UpdateStatusBar();
  // The file counts in any letter case.
  const QFileInfo diagnostics(DiagnosticsFileName());
  QDir folder = diagnostics.dir();
  for (const QString& name : folder.entryList({diagnostics.fileName()}, QDir::Files)) {
    folder.remove(name);
  }
  qApp->installEventFilter(new ProgramKeys(this, *screens_, *marks_, *history_));
  tmrFix_->SetEnabled(true);
  recovery_.Settle(LiveProject);
  history_->Begin();
  tmrRecovery_->SetEnabled(true);
  marks_->Begin();
}

void frmT3MasterMDI::BuildClient() {
  marks_ = new MarkLine(recovery_);
  screens_ = new ScreenStack(program_.Screens, marks_, *history_);
  setCentralWidget(screens_);

  auto* otherPart = new QShortcut(Qt::Key_F6, this);
  connect(otherPart, &QShortcut::activated, screens_, [this] { screens_->GoToOtherPart(); });
  for (const auto& [key, act] :
       {std::pair(QKeySequence(QKeySequence::Find), &program_.Find),
        std::pair(QKeySequence(Qt::CTRL | Qt::Key_T), &program_.ListTimers)}) {
    auto* shortcut = new QShortcut(key, this);
    connect(shortcut, &QShortcut::activated, this, [this, act = act] {
      if (menuBar()->isEnabled()) RunHandler(*act);
    });
  }
  for (const int step : {1, -1}) {
    auto* next = new QShortcut(step > 0 ? Qt::Key_F8 : Qt::SHIFT | Qt::Key_F8, this);
    connect(next, &QShortcut::activated, this, [this, step] {
      if (menuBar()->isEnabled()) RunHandler([=, this] { program_.StepFinding(step); });
    });
  }
  setAcceptDrops(true);

  statusFile_ = new Label;
  statusFile_->setObjectName(QStringLiteral("StatusBar1(1)"));
  statusFile_->SetElideMode(Qt::ElideMiddle);
  statusLink_ = new Label;
  statusLink_->setObjectName(QStringLiteral("StatusBar1(2)"));
  statusLink_->SetWidthInChars(16);
  statusBar()->addWidget(statusFile_, 1);
  statusBar()->addPermanentWidget(statusLink_);
  statusBar()->addPermanentWidget(new FindingsCount(program_.CountFindings, [this] {
    if (menuBar()->isEnabled()) program_.ListFindings();
  }));
  statusBar()->setSizeGripEnabled(false);
}

ChildForm* frmT3MasterMDI::ShowForm(Screen screen) {
  return screens_->Show(screen);
}

ChildForm* frmT3MasterMDI::LoadedForm(Screen screen) const {
  return screens_->Loaded(screen);
}

void frmT3MasterMDI::UnloadAllForms() {
  screens_->UnloadAll();
}

void frmT3MasterMDI::TellNews(const QString& news, bool stays) {
  marks_->Tell(news, stays);
}

void frmT3MasterMDI::ShowEmptyState() {
  screens_->ShowAbout();
  if (Link.DisconnectQZ) Link.DisconnectQZ();
}

void frmT3MasterMDI::UpdateStatusBar() {
  statusFile_->SetCaption(QStringLiteral(" File Name: ") +
                          QString(CurrentFileName).replace(u'\n', u' '));
  statusFile_->setToolTip(CurrentFileName);
  SetLinkStatus(Connected != 0 ? QStringLiteral("Connected") : QStringLiteral("Disconnected"));
  if (Link.ShowNetworkDiagnostics) {
    Link.ShowNetworkDiagnostics(CurrentFileName.toLower() == DiagnosticsFileName().toLower());
  }
}

void frmT3MasterMDI::SetLinkStatus(const QString& text) {
  statusLink_->SetCaption(text);
}

void frmT3MasterMDI::SetMainMenusEnabled(bool enabled) {
  DeafToEntries deaf;
  // A desktop's own bar has to hear of each entry.
  if (!menuBar()->isNativeMenuBar()) menuBar()->installEventFilter(&deaf);
  for (QAction* entry : menuBar()->actions()) entry->setEnabled(enabled);
  // Or its keys would still walk among entries that do nothing.
  menuBar()->setEnabled(enabled);
  screens_->SetCloseEnabled(enabled);
}

void frmT3MasterMDI::mnuAddOnModules_Click() {
  UnloadAllForms();
  if (!ShowForm(AddOnModuleOf(PanelRecord.AddOnModuleType).On)) ShowForm(Screen::About);
}

void frmT3MasterMDI::tmrFix_Timer() {
  tmrFix_->SetEnabled(false);
  DataChanged = 0;
}

void frmT3MasterMDI::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  MDIForm_Resize();
}

void frmT3MasterMDI::MDIForm_Resize() {
  const auto state = windowState();
  if (!(state & (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen)) &&
      size() != WindowSize()) {
    resize(WindowSize());
  }
}

void frmT3MasterMDI::EndKeepingWork() {
  recovery_.Update(LiveProject);
  keepsWork_ = true;
  ExitProgram();
  QCoreApplication::quit();
}

void frmT3MasterMDI::TearDown() {
  ending_ = true;
  tmrRecovery_->SetEnabled(false);
  if (DataChanged == 0) {
    recovery_.Update(LiveProject);  // nobody was asked
  } else if (!keepsWork_) {
    recovery_.Remove();
  }
  screens_->PutPanelBack();
  if (Link.DisconnectQZ) Link.DisconnectQZ();
  screens_->UnloadForGood();
}

void frmT3MasterMDI::ExitProgram() {
  TearDown();
  close();
}

void frmT3MasterMDI::mnuExit_Click() {
  if (!DiscardChanges()) return;
  exitRequested_ = -1;
  ExitProgram();
}

bool frmT3MasterMDI::MDIForm_QueryUnload() {
  if (exitRequested_ != 0 || ending_) return true;
  if (!DiscardChanges()) return false;
  if (Link.MayLeave && !Link.MayLeave()) return false;
  TearDown();
  return true;
}

void frmT3MasterMDI::MDIForm_Unload() {
  if (Link.DisconnectQZ) Link.DisconnectQZ();
}

void frmT3MasterMDI::closeEvent(QCloseEvent* event) {
  if (!ending_ && Link.PutsOffClose && Link.PutsOffClose()) {
    event->ignore();
    return;
  }
  const bool unload = MDIForm_QueryUnload();
  event->setAccepted(unload);
  if (unload) MDIForm_Unload();
}

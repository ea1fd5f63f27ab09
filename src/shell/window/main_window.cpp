#include "shell/window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFontInfo>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>

#include "panel/defaults.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"
#include "shell/shell.h"
#include "shell/window/about_form.h"
#include "shell/window/history.h"

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
  if (mainWindow && !mainWindow->Ending()) mainWindow->KeepUnsavedWork();
}
void ForgetUnsavedWork() {
  if (mainWindow && !mainWindow->Ending()) mainWindow->ForgetUnsavedWork();
}
void OpenKeptWork(const KeptWork& work) {
  if (mainWindow) mainWindow->OpenKeptWork(work);
}
std::unique_ptr<Project> SavedProject() {
  return mainWindow ? mainWindow->SavedProject() : std::make_unique<Project>(LiveProject);
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
  BuildHistory();
  tmrFix_ = new Timer(this, "tmrFix", 1000);
  tmrFix_->Tick = [this] { tmrFix_Timer(); };
  constexpr int recoveryMs = 3000;
  tmrRecovery_ = new Timer(this, "tmrRecovery", recoveryMs);
  constexpr int marksMs = 250;
  tmrMarks_ = new Timer(this, "tmrMarks", marksMs);
  tmrMarks_->Tick = [this] { ShowMarks(); };
  tmrRecovery_->Tick = [this] { recovery_.Update(LiveProject); };
  HandlersDoneSeam = [this](bool handled) {
    for (QWidget* page : retired_) page->deleteLater();
    retired_.clear();
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
  BuildMenu();
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
  qApp->installEventFilter(this);
  tmrFix_->SetEnabled(true);
  recovery_.Settle(LiveProject);
  history_->Begin();
  tmrRecovery_->SetEnabled(true);
  tmrMarks_->SetEnabled(true);
}

ChildForm* frmT3MasterMDI::ShowForm(Screen screen) {
  auto found = loaded_.find(screen);
  if (found == loaded_.end()) {
    const ScreenEntry& entry = program_.Screens[static_cast<std::size_t>(screen)];
    if (!entry.Create) return nullptr;
    ChildForm* form = entry.Create(screen);
    auto* page = new QScrollArea;
    page->setWidgetResizable(true);
    page->setFrameShape(QFrame::NoFrame);
    page->setFocusPolicy(Qt::NoFocus);
    found = loaded_.emplace(screen, LoadedScreen{form, page}).first;
    form->Form_Load();
    page->setWidget(form);
    pages_->addWidget(page);
  }
  front_ = screen;
  const LoadedScreen shown = found->second;
  lblTitle_->setText(shown.Form->Caption());
  captionLine_->setVisible(screen != Screen::About);
  const Showing showing;
  // A failure while the screen fills itself is told, and the screen shows what it has.
  RunHandler([&] { shown.Form->Form_Activate(); });
  if (front_ == screen) BringToFront(shown);
  return shown.Form;
}

void frmT3MasterMDI::BringToFront(const LoadedScreen& screen) {
  news_.clear();
  pages_->setCurrentWidget(screen.Page);
  if (QWidget* first = screen.Form->FirstFocus()) first->setFocus(Qt::OtherFocusReason);
}

ChildForm* frmT3MasterMDI::LoadedForm(Screen screen) const {
  const auto found = loaded_.find(screen);
  return found == loaded_.end() ? nullptr : found->second.Form;
}

void frmT3MasterMDI::Unload(Screen screen) {
  const auto found = loaded_.find(screen);
  if (found == loaded_.end()) return;
  const LoadedScreen unloaded = found->second;
  loaded_.erase(found);
  if (front_ == screen) front_ = Screen::None;
  try {
    unloaded.Form->Form_Unload();
  } catch (const std::exception&) {
    // Closing a screen goes on whatever its own tidying meets.
  }
  pages_->removeWidget(unloaded.Page);
  unloaded.Page->hide();
  unloaded.Page->setParent(nullptr);
  if (HandlerDepth() > 0) {
    retired_.push_back(unloaded.Page);
  } else {
    unloaded.Page->deleteLater();
  }
}

void frmT3MasterMDI::UnloadAllForms() {
  for (const ScreenEntry& entry : program_.Screens) {
    ChildForm* form = LoadedForm(entry.Name);
    if (form && form->StaysLoaded()) {
      form->Form_Hide();
    } else {
      Unload(entry.Name);
    }
  }
  front_ = Screen::None;
}

void frmT3MasterMDI::CloseFrontForm() {
  UnloadAllForms();
  ShowForm(Screen::About);
}

void frmT3MasterMDI::ShowEmptyState() {
  UnloadAllForms();
  ShowForm(Screen::About);
  if (Link.DisconnectQZ) Link.DisconnectQZ();
}

void frmT3MasterMDI::UpdateStatusBar() {
  statusFile_->SetCaption(QStringLiteral(" File Name: ") + CurrentFileName);
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
  for (QAction* entry : topEntries_) entry->setEnabled(enabled);
  // Or its keys would still walk among entries that do nothing.
  menuBar()->setEnabled(enabled);
  cmdClose_->setEnabled(enabled);
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
  if (Link.DisconnectQZ) Link.DisconnectQZ();
  for (const ScreenEntry& entry : program_.Screens) Unload(entry.Name);
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

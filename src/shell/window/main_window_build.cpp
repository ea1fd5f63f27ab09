#include <QCoreApplication>
#include <QMenuBar>
#include <QShortcut>
#include <QStatusBar>

#include "shell/window/main_window.h"

// What the main window is made of.

namespace {

QKeySequence Shortcut(const std::string& entry) {
  if (entry == "mnuNew") return QKeySequence::New;
  if (entry == "mnuOpen") return QKeySequence::Open;
  if (entry == "mnuSave") return QKeySequence::Save;
  if (entry == "mnuSaveAs") return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
  if (entry == "mnuExit") return QKeySequence(Qt::CTRL | Qt::Key_Q);
  return {};
}

/// The told captions have no letters marked: a letter goes to the next entry that begins with it,
/// and into its submenu if no other begins so.
class MenuLetters : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* menu = qobject_cast<QMenu*>(watched);
    if (!menu || event->type() != QEvent::KeyPress) return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.text().isEmpty() || !key.text()[0].isLetter() || key.modifiers() & ~Qt::ShiftModifier) {
      return false;
    }
    QList<QAction*> found;
    for (QAction* action : menu->actions()) {
      const bool begins = action->text().startsWith(key.text(), Qt::CaseInsensitive);
      if (begins && action->isEnabled()) found << action;
    }
    if (found.isEmpty()) return false;
    const auto next = found.indexOf(menu->activeAction()) + 1;
    // Made active from outside, an entry would open its submenu, which then takes the keys.
    for (int i = 0; i < menu->actions().size(); ++i) {
      if (menu->activeAction() == found[next % found.size()]) break;
      Press(*menu, Qt::Key_Down);
    }
    if (found.size() == 1 && found[0]->menu()) Press(*menu, Qt::Key_Right);
    return true;
  }

 private:
  static void Press(QMenu& menu, Qt::Key key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&menu, &press);
  }
};

}  // namespace

void frmT3MasterMDI::BuildMenu() {
  const auto& table = program_.Menu;
  auto* letters = new MenuLetters(this);
  std::vector<QMenu*> open;  // Submenus from level 1 down to the line before.
  for (std::size_t i = 0; i < table.size(); ++i) {
    const MenuEntry& entry = table[i];
    const QString caption = QString::fromLatin1(entry.Caption);
    open.resize(static_cast<std::size_t>(entry.Level) - 1);
    QAction* action = nullptr;
    if (i + 1 < table.size() && table[i + 1].Level > entry.Level) {
      auto* menu = new QMenu(caption, this);
      menu->installEventFilter(letters);
      action = menu->menuAction();
      (open.empty() ? static_cast<QWidget*>(menuBar()) : open.back())->addAction(action);
      open.push_back(menu);
    } else {
      action = AddLeaf(entry.Name, entry.Opens, caption);
      (open.empty() ? static_cast<QWidget*>(menuBar()) : open.back())->addAction(action);
    }
    action->setObjectName(QString::fromLatin1(entry.Name));
    if (entry.Level == 1) topEntries_.push_back(action);
  }
}

QAction* frmT3MasterMDI::AddLeaf(const char* name, Screen screen, const QString& caption) {
  auto* action = new QAction(caption, this);
  action->setSeparator(caption == QLatin1String("-"));
  action->setShortcut(Shortcut(name));
  if (screen != Screen::None) {
    const ScreenEntry& entry = program_.Screens[static_cast<std::size_t>(screen)];
    action->setEnabled(entry.Create && screen != Screen::RelayDrive);
    connect(action, &QAction::triggered, this, [this, screen] {
      RunHandler([&] {
        UnloadAllForms();
        ShowForm(screen);
      });
    });
    return action;
  }
  static const std::map<std::string, void (frmT3MasterMDI::*)()> commands = {
      {"mnuNew", &frmT3MasterMDI::mnuNew_Click},
      {"mnuOpen", &frmT3MasterMDI::mnuOpen_Click},
      {"mnuSave", &frmT3MasterMDI::mnuSave_Click},
      {"mnuSaveAs", &frmT3MasterMDI::mnuSaveAs_Click},
      {"mnuExit", &frmT3MasterMDI::mnuExit_Click},
      {"mnuAddOnModules", &frmT3MasterMDI::mnuAddOnModules_Click},
  };
  const auto command = commands.find(name);
  if (command != commands.end()) {
    connect(action, &QAction::triggered, this,
            [this, run = command->second] { RunHandler([&] { (this->*run)(); }); });
  }
  return action;
}

void frmT3MasterMDI::BuildClient() {
  auto* client = new QWidget;
  auto* column = new QVBoxLayout(client);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);

  captionLine_ = new QWidget;
  captionLine_->setAutoFillBackground(true);
  captionLine_->setBackgroundRole(QPalette::Midlight);
  captionLine_->hide();
  auto* line = new QHBoxLayout(captionLine_);
  line->setContentsMargins(12, 2, 4, 2);
  lblTitle_ = new QLabel;
  lblTitle_->setObjectName(QStringLiteral("lblTitle"));
  QFont bold = font();
  bold.setBold(true);
  lblTitle_->setFont(bold);
  line->addWidget(lblTitle_);
  lblMark_ = new Label;
  lblMark_->setObjectName(QStringLiteral("lblMark"));
  lblMark_->SetLook(Label::Look::Quiet);
  line->addWidget(lblMark_, 1);
  AddHistoryButtons(line);
  cmdClose_ = new QToolButton;
  cmdClose_->setObjectName(QStringLiteral("cmdClose"));
  cmdClose_->setText(QStringLiteral("\u00d7"));
  cmdClose_->setAutoRaise(true);
  cmdClose_->setToolTip(QStringLiteral("Close this screen (Ctrl+W)"));
  cmdClose_->setAccessibleName(QStringLiteral("Close this screen"));
  cmdClose_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
  connect(cmdClose_, &QToolButton::clicked, this,
          [this] { RunHandler([this] { CloseFrontForm(); }); });
  line->addWidget(cmdClose_);
  column->addWidget(captionLine_);

  auto* otherPart = new QShortcut(Qt::Key_F6, this);
  connect(otherPart, &QShortcut::activated, this, [this] { GoToOtherPart(); });
  auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, this, [this] {
    if (menuBar()->isEnabled()) RunHandler(program_.Find);
  });
  for (const int step : {1, -1}) {
    auto* next = new QShortcut(step > 0 ? Qt::Key_F8 : Qt::SHIFT | Qt::Key_F8, this);
    connect(next, &QShortcut::activated, this, [this, step] {
      if (menuBar()->isEnabled()) RunHandler([=, this] { program_.StepFinding(step); });
    });
  }
  setAcceptDrops(true);

  pages_ = new QStackedWidget;
  column->addWidget(pages_, 1);
  picBlockFlashing_ = new QWidget;
  picBlockFlashing_->setObjectName(QStringLiteral("picBlockFlashing"));
  auto* centre = new QVBoxLayout(picBlockFlashing_);
  auto* lblLoading = new QLabel(QStringLiteral("Loading Orv Tamberloom 3..."));
  lblLoading->setObjectName(QStringLiteral("lblLoading"));
  centre->addWidget(lblLoading, 0, Qt::AlignCenter);
  pages_->addWidget(picBlockFlashing_);
  setCentralWidget(client);

  statusFile_ = new Label;
  statusFile_->setObjectName(QStringLiteral("StatusBar1(1)"));
  statusFile_->SetElideMode(Qt::ElideMiddle);
  statusLink_ = new Label;
  statusLink_->setObjectName(QStringLiteral("StatusBar1(2)"));
  statusLink_->SetWidthInChars(16);
  statusBar()->addWidget(statusFile_, 1);
  statusBar()->addPermanentWidget(statusLink_);
  statusBar()->setSizeGripEnabled(false);
}

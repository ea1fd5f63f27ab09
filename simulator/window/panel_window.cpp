#include "simulator/window/panel_window.h"

#include <signal.h>

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "simulator/window/beside.h"
#include "simulator/window/clock_view.h"
#include "simulator/window/coming_view.h"
#include "simulator/window/day_view.h"
#include "simulator/window/front_view.h"
#include "simulator/window/help_window.h"
#include "simulator/window/log_view.h"
#include "simulator/window/menu_keys.h"
#include "simulator/window/relay_view.h"
#include "simulator/window/switch_view.h"
#include "simulator/window/watch_view.h"

namespace simulator {

namespace {

constexpr int TickMs = 1000 / 30;
constexpr int RestingTickMs = 100;  // at real time little moves

struct FaultEntry {
  const char* Caption;
  const char* Fault;
};
constexpr std::array FaultEntries{
    FaultEntry{"&Lose the Next Reply", "lost"},
    FaultEntry{"Lose &Every Reply", "lostx*"},
    FaultEntry{"Answer Three Seconds &Late", "late:3000"},
    FaultEntry{"Spoil the Next &Checksum", "checksum"},
    FaultEntry{"Give a Wrong Memory &Sum", "sum"},
    FaultEntry{"&Unplug at the Next Reply", "drop"},
};

/// Scrolls up and down only.
class TallArea : public QScrollArea {
 public:
  explicit TallArea(QWidget* view) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(view);
    viewport()->setAutoFillBackground(false);
    view->setAutoFillBackground(false);
  }
  QSize minimumSizeHint() const override {
    const int bar = verticalScrollBar()->sizeHint().width();
    return {widget()->minimumSizeHint().width() + bar, QScrollArea::minimumSizeHint().height()};
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(object, event);
  }
};

QGroupBox* Boxed(const QString& title, QWidget* view) {
  auto* box = new QGroupBox(title);
  auto* column = new QVBoxLayout(box);
  column->addWidget(view);
  column->addStretch(1);
  const int margin = box->fontMetrics().height() / 2;
  column->setContentsMargins(margin, margin / 2, margin, margin / 2);
  return box;
}

}  // namespace

PanelWindow::PanelWindow(Simulator& simulator)
    : Source(simulator), Story(simulator.ThePanel()), OwnFiles(simulator.ThePanel()) {
  ShowTitle();
  BuildViews();
  BuildMenus();
  Line = new QLabel;
  Line->setObjectName(QStringLiteral("line"));
  statusBar()->addPermanentWidget(Line);
  Source.ThePanel().Runner().SetSink([this](const Row& row) {
    Story.Take(row);
    Log->Take(row);
    Days->Take(row);
  });
  Source.TakenOver = [this] {
    ShowTitle();
    statusBar()->showMessage(QStringLiteral("The new settings are taken over."));
    show();
    raise();
    activateWindow();
  };
  Source.ThePanel().Pace().RunDaySoFar();
  SeenRevision = ShownRevision = Source.ThePanel().Memory.Revision();
  const Configuration settings(Source.ThePanel().Memory);
  for (PanelView* view : Views) view->ShowSettings(settings);
  LetMenuKeysThrough(*this);
  Fold(false);
  connect(&Ticks, &QTimer::timeout, this, [this] { Refresh(); });
  Ticks.start(RestingTickMs);
  Refresh();
}

PanelWindow::~PanelWindow() {
  Source.ThePanel().Runner().SetSink({});
  Source.TakenOver = {};
}

void PanelWindow::BuildViews() {
  Panel& panel = Source.ThePanel();
  auto* front = new FrontView(panel);
  Clock = new ClockView(panel);
  auto* relays = new RelayView(panel, Story);
  auto* switches = new SwitchView(panel, Story);
  Log = new LogView(panel);
  Days = new DayView(panel);
  Views = {front, Clock, relays, switches, Log, Days};

  Clock->GoTo = Days->GoTo = [this](const QDateTime& time) { GoTo(time); };
  Clock->Tell = Story.Tell =
      OwnFiles.Tell = [this](const QString& words) { statusBar()->showMessage(words); };
  Story.Moved = [this] { Refresh(); };
  Story.TellWhy = [this](const QString& words) {
    Why->setText(words.isEmpty()
                     ? QStringLiteral("Hover over a lamp, a switch or a bar, or walk to "
                                      "it: here stands why.")
                     : words);
  };
  Days->Tell = [this](auto&&... told) { Story.Follow(told...); };
  OwnFiles.Rows = [this] { return Story.Rows(); };
  OwnFiles.Plan = [this] { return Days->PlanFile(); };
  OwnFiles.BurnHours = [this] { return Days->BurnHoursFile(); };
  OwnFiles.TellFailure = [this](const QString& words) { TellFailure(words); };
  OwnFiles.AskPath = [this](const QString& title, const QString& suffix, bool toSave) {
    const QString all = QStringLiteral("All Files (*)");
    const QString own = QStringLiteral("*.") + suffix;
    return toSave ? QFileDialog::getSaveFileName(this, title, {}, own + QStringLiteral(";;") + all)
                  : QFileDialog::getOpenFileName(this, title, {}, all + QStringLiteral(";;") + own);
  };

  auto* top = new QHBoxLayout;
  top->addWidget(Boxed(QStringLiteral("Front"), front));
  top->addWidget(Boxed(QStringLiteral("Clock"), Clock), 1);
  auto* walls = new QSplitter;
  walls->addWidget(new TallArea(switches));
  walls->addWidget(new TallArea(relays));
  walls->setSizes({2, 5});
  walls->setChildrenCollapsible(false);
  Pages = new QTabWidget;
  Pages->setObjectName(QStringLiteral("pages"));
  Pages->setAccessibleName(QStringLiteral("Pages"));
  Pages->addTab(walls, QStringLiteral("&Switches And Relays"));
  Pages->addTab(Days, QStringLiteral("Days As A &Picture"));
  connect(Pages, &QTabWidget::currentChanged, this, [this] {
    Story.ForgetHidden();
    Refresh();
  });
  Why = new QLabel;
  Why->setObjectName(QStringLiteral("why"));
  Why->setTextFormat(Qt::PlainText);
  Why->setWordWrap(true);
  Why->setAlignment(Qt::AlignTop);
  Story.TellWhy({});
  Why->setMinimumHeight(2 * fontMetrics().lineSpacing());
  auto* left = new QWidget;
  auto* under = new QVBoxLayout(left);
  under->setContentsMargins(0, 0, 0, 0);
  under->addWidget(Pages, 1);
  under->addWidget(Why);
  auto* parts = new QSplitter;
  parts->addWidget(left);
  parts->addWidget(BuildEvents());
  parts->setSizes({7, 3});
  parts->setChildrenCollapsible(false);
  auto* center = new QWidget;
  auto* column = new QVBoxLayout(center);
  column->setContentsMargins(6, 0, 6, 0);
  column->addLayout(top);
  column->addWidget(parts, 1);
  setCentralWidget(center);
  Parts = parts;
  LeftOutFolded.insert(LeftOutFolded.end(), {top->itemAt(0)->widget(), walls->widget(0)});
  Pages->setFocus();
}

QWidget* PanelWindow::BuildEvents() {
  auto* watch = new WatchView(Source.ThePanel(), Story);
  auto* coming = new ComingView(Source.ThePanel(), Story);
  coming->GoTo = [this](const QDateTime& time) { GoTo(time); };
  Views.insert(Views.end(), {watch, coming});
  LeftOutFolded = {watch, Log};
  auto* events = new QSplitter(Qt::Vertical);
  for (PanelView* view : std::initializer_list<PanelView*>{watch, coming, Log}) {
    events->addWidget(view);
  }
  events->setSizes({3, 4, 5});
  events->setChildrenCollapsible(false);
  return events;
}

QAction* PanelWindow::AddEntry(QMenu* menu, const QString& caption, const QKeySequence& key,
                               std::function<void()> action) {
  auto* entry = menu->addAction(caption);
  entry->setShortcut(key);
  connect(entry, &QAction::triggered, this, [action = std::move(action)] { action(); });
  return entry;
}

void PanelWindow::BuildMenus() {
  QMenu* menu = menuBar()->addMenu(QStringLiteral("P&anel"));
  OwnFiles.AddEntries(*menu);
  menu->addSeparator();
  AddEntry(menu, QStringLiteral("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")),
           [this] { close(); });
  BuildClockMenu();
  BuildLineMenu();
  menu = menuBar()->addMenu(QStringLiteral("&View"));
  Folding = AddEntry(menu, QStringLiteral("&Folded"), QKeySequence(Qt::Key_F9), [this] {
    Fold(Folding->isChecked());
    if (Folded) Folded(Folding->isChecked());
  });
  Folding->setCheckable(true);
  menu = menuBar()->addMenu(QStringLiteral("&Help"));
  AddEntry(menu, QStringLiteral("&Guide"), QKeySequence(Qt::Key_F1), [this] { ShowHelp(this); });
  AddEntry(menu, QStringLiteral("&About"), {}, [this] { ShowAbout(this); });
}

void PanelWindow::BuildClockMenu() {
  QMenu* menu = menuBar()->addMenu(QStringLiteral("&Clock"));
  const auto add = [&](const char* caption, const char* key, std::function<void()> action) {
    AddEntry(menu, QString::fromLatin1(caption), QKeySequence(QString::fromLatin1(key)),
             [this, action = std::move(action)] {
               action();
               Refresh();
             });
  };
  int number = 0;
  for (const ClockSpeed& speed : ClockSpeeds) {
    const QByteArray key = "Ctrl+" + QByteArray::number(number++);
    add(speed.Caption, key.constData(), [this, speed] { Clock->SetSpeed(speed.Factor); });
  }
  menu->addSeparator();
  add("&Next Event", "Ctrl+N", [this] { Clock->NextEvent(); });
  add("&Go To...", "Ctrl+G", [this] { Clock->AskTime(); });
  add("The &Computer's Time", "Ctrl+T", [this] { GoTo(Source.ThePanel().Pace().Computer()); });
  menu->addSeparator();
  add("Power C&ut", "Ctrl+U", [this] { Clock->SetPower(false); });
  add("Power &On", "Ctrl+O", [this] { Clock->SetPower(true); });
  add("&Daylight Follows the Sun Or Not", "Ctrl+D",
      [this] { Clock->FollowSun(!Source.ThePanel().Runner().FollowsSun()); });
}

void PanelWindow::BuildLineMenu() {
  QMenu* menu = menuBar()->addMenu(QStringLiteral("&Line"));
  for (const FaultEntry& entry : FaultEntries) {
    AddEntry(menu, QString::fromLatin1(entry.Caption), {}, [this, entry] {
      Source.Faults().Add(ParseFault(entry.Fault));
      ShowLine();
    });
  }
  menu->addSeparator();
  AddEntry(menu, QStringLiteral("&No Faults"), {}, [this] {
    Source.Faults().Clear();
    ShowLine();
  });
}

void PanelWindow::TellFailure(const QString& words) {
  auto* box = new QMessageBox(QMessageBox::Warning, windowTitle(), words, QMessageBox::Ok, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setObjectName(QStringLiteral("failure"));
  box->open();
}

void PanelWindow::Fold(bool folded) {
  Folding->setChecked(folded);
  Parts->setOrientation(folded ? Qt::Vertical : Qt::Horizontal);
  for (QWidget* part : LeftOutFolded) part->setVisible(!folded);
  Pages->setTabVisible(Pages->indexOf(Days), !folded);
  // A page keeps its width although it is not on show.
  Days->setSizePolicy(folded ? QSizePolicy::Ignored : QSizePolicy::Preferred,
                      Days->sizePolicy().verticalPolicy());
  constexpr int columns = 210;
  constexpr int rows = 46;
  const int width = folded ? FoldedWidth : fontMetrics().averageCharWidth() * columns;
  const QSize wanted(width, fontMetrics().height() * rows);
  // Else the window would still be as wide as what has just left it, or as when it was maximized.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  layout()->activate();
  setMaximumWidth(folded ? std::max(FoldedWidth, minimumSizeHint().width()) : QWIDGETSIZE_MAX);
  setWindowState(Qt::WindowNoState);
  const bool fits = FitScreen(*this, wanted);
  if (!folded && !fits) setWindowState(Qt::WindowMaximized);
}

void PanelWindow::ShowTitle() {
  const QString& followed = Source.FollowedFile();
  if (!followed.isEmpty()) {
    QFile file(followed + QStringLiteral(".title"));
    const bool titled = file.open(QIODevice::ReadOnly);
    const QString project = titled ? QString::fromUtf8(file.readLine()).trimmed() : QString();
    const QString rehearsal = QStringLiteral("Rehearsal");
    setWindowTitle(project.isEmpty() ? rehearsal : project + QStringLiteral(" - ") + rehearsal);
    return;
  }
  QStringList title{QStringLiteral("Simulated Panel")};
  if (Source.TcpPort() != 0) title << QStringLiteral("TCP %1").arg(Source.TcpPort());
  if (!Source.PtyPath().isEmpty()) title << QStringLiteral("Serial ") + Source.PtyPath();
  setWindowTitle(title.join(QStringLiteral(", ")));
}

void PanelWindow::EndWith(pid_t program) {
  constexpr int lookMs = 500;
  auto* looks = new QTimer(this);
  connect(looks, &QTimer::timeout, this, [this, program, looks] {
    if (kill(program, 0) == 0 || errno != ESRCH) return;
    looks->stop();
    auto* box = new QMessageBox(QMessageBox::Question, windowTitle(),
                                QStringLiteral("The program has ended. End this window, too?"),
                                QMessageBox::Yes | QMessageBox::No, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::accepted, this, &QWidget::close);
    box->open();
  });
  looks->start(lookMs);
}

void PanelWindow::GoTo(const QDateTime& time) {
  statusBar()->clearMessage();
  if (Source.ThePanel().Pace().JumpTo(time)) {
    statusBar()->showMessage(
        QStringLiteral("That is past, or far away: power has come anew at its midnight."));
  }
  Refresh();
}

void PanelWindow::ShowLine() {
  QStringList parts;
  if (Source.TcpPort() != 0) parts << QStringLiteral("TCP port %1").arg(Source.TcpPort());
  if (!Source.PtyPath().isEmpty()) parts << QStringLiteral("Serial %1").arg(Source.PtyPath());
  if (parts.isEmpty()) parts << QStringLiteral("No line");
  QStringList faults;
  for (const Fault& fault : Source.Faults().Pending()) {
    faults << QString::fromStdString(FaultText(fault)).section(QLatin1Char(':'), 0, 0);
  }
  if (!faults.isEmpty()) parts << QStringLiteral("Faults: ") + faults.join(QLatin1String(", "));
  const QString text = parts.join(QStringLiteral("   "));
  if (text != Line->text()) Line->setText(text);
}

void PanelWindow::Refresh() {
  Panel& panel = Source.ThePanel();
  const std::uint64_t revision = panel.Memory.Revision();
  if (std::exchange(SeenRevision, revision) != revision) MemoryRests.start();
  constexpr qint64 restMs = 300;  // a download writes many blocks
  if (revision != ShownRevision && MemoryRests.elapsed() >= restMs) {
    ShownRevision = revision;
    const Configuration settings(panel.Memory);
    for (PanelView* view : Views) view->ShowSettings(settings);
    Story.SettingsChanged();
  }
  Story.Refresh();
  for (PanelView* view : Views) view->ShowStates();
  ShowLine();
  const int wanted = panel.Pace().Speed() > 1 ? TickMs : RestingTickMs;
  if (Ticks.interval() != wanted) Ticks.setInterval(wanted);
}

}  // namespace simulator

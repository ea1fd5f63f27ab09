#include "simulator/window/panel_window.h"

#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "simulator/window/clock_view.h"
#include "simulator/window/day_view.h"
#include "simulator/window/events_view.h"
#include "simulator/window/front_view.h"
#include "simulator/window/relay_view.h"
#include "simulator/window/switch_view.h"

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
  return box;
}

}  // namespace

PanelWindow::PanelWindow(Simulator& simulator) : Source(simulator) {
  setWindowTitle(QStringLiteral("Orv Tamberloom 3 Simulated Panel"));
  BuildViews();
  BuildMenus();
  Line = new QLabel;
  Line->setObjectName(QStringLiteral("line"));
  statusBar()->addPermanentWidget(Line);
  Source.ThePanel().Runner().SetSink([this](const Row& row) {
    Events->Take(row);
    Days->Take(row);
  });
  Source.TakenOver = [this] {
    statusBar()->showMessage(QStringLiteral("The new settings are taken over."));
    show();
    raise();
    activateWindow();
  };
  Source.ThePanel().Pace().RunDaySoFar();
  SeenRevision = ShownRevision = Source.ThePanel().Memory.Revision();
  const Configuration settings(Source.ThePanel().Memory);
  for (PanelView* view : Views) view->ShowSettings(settings);
  const int letter = fontMetrics().averageCharWidth();
  const int line = fontMetrics().height();
  constexpr int columns = 210;
  constexpr int rows = 46;
  resize(QSize(letter * columns, line * rows).boundedTo(screen()->availableSize()));
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
  auto* relays = new RelayView(panel);
  auto* switches = new SwitchView(panel);
  Events = new EventsView(panel);
  Days = new DayView(panel);
  Views = {front, Clock, relays, switches, Events, Days};

  Clock->GoTo = Events->GoTo = Days->GoTo = [this](const QDateTime& time) { GoTo(time); };
  Clock->Tell = [this](const QString& words) { statusBar()->showMessage(words); };

  auto* top = new QHBoxLayout;
  top->addWidget(Boxed(QStringLiteral("Front"), front));
  top->addWidget(Boxed(QStringLiteral("Clock"), Clock), 1);
  auto* walls = new QSplitter;
  walls->addWidget(new TallArea(switches));
  walls->addWidget(new TallArea(relays));
  walls->setSizes({1, 4});
  walls->setChildrenCollapsible(false);
  Pages = new QTabWidget;
  Pages->setObjectName(QStringLiteral("pages"));
  Pages->setAccessibleName(QStringLiteral("Pages"));
  Pages->addTab(walls, QStringLiteral("&Switches And Relays"));
  Pages->addTab(Days, QStringLiteral("Days As A &Picture"));
  connect(Pages, &QTabWidget::currentChanged, this, [this] { Refresh(); });
  auto* parts = new QSplitter;
  parts->addWidget(Pages);
  parts->addWidget(Events);
  parts->setSizes({7, 3});
  parts->setChildrenCollapsible(false);
  auto* center = new QWidget;
  auto* column = new QVBoxLayout(center);
  column->addLayout(top);
  column->addWidget(parts, 1);
  setCentralWidget(center);
  Pages->setFocus();
}

void PanelWindow::BuildMenus() {
  const auto add = [this](QMenu* menu, const QString& caption, const QKeySequence& key,
                          const auto& action) {
    auto* entry = menu->addAction(caption);
    entry->setShortcut(key);
    connect(entry, &QAction::triggered, this, action);
  };
  QMenu* menu = menuBar()->addMenu(QStringLiteral("P&anel"));
  add(menu, QStringLiteral("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")), [this] { close(); });
  menu = menuBar()->addMenu(QStringLiteral("&Clock"));
  int number = 0;
  for (const ClockSpeed& speed : ClockSpeeds) {
    add(menu, QString::fromLatin1(speed.Caption),
        QKeySequence(QStringLiteral("Ctrl+%1").arg(number++)), [this, speed] {
          Clock->SetSpeed(speed.Factor);
          Refresh();
        });
  }
  menu->addSeparator();
  add(menu, QStringLiteral("&Next Event"), QKeySequence(QStringLiteral("Ctrl+N")), [this] {
    Clock->NextEvent();
    Refresh();
  });
  add(menu, QStringLiteral("&Go To..."), QKeySequence(QStringLiteral("Ctrl+G")),
      [this] { Clock->AskTime(); });
  add(menu, QStringLiteral("The &Computer's Time"), QKeySequence(QStringLiteral("Ctrl+T")),
      [this] { GoTo(Source.ThePanel().Pace().Computer()); });
  menu = menuBar()->addMenu(QStringLiteral("&Line"));
  for (const FaultEntry& entry : FaultEntries) {
    add(menu, QString::fromLatin1(entry.Caption), {}, [this, entry] {
      Source.Faults().Add(ParseFault(entry.Fault));
      ShowLine();
    });
  }
  menu->addSeparator();
  add(menu, QStringLiteral("&No Faults"), {}, [this] {
    Source.Faults().Clear();
    ShowLine();
  });
}

void PanelWindow::GoTo(const QDateTime& time) {
  statusBar()->clearMessage();
  Source.ThePanel().Pace().JumpTo(time);
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
  }
  for (PanelView* view : Views) view->ShowStates();
  ShowLine();
  const int wanted = panel.Pace().Speed() > 1 ? TickMs : RestingTickMs;
  if (Ticks.interval() != wanted) Ticks.setInterval(wanted);
}

}  // namespace simulator

#include "simulator/window/help_window.h"

#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QShortcut>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace simulator {

namespace {

/// Other pages of the guide stand in the host program.
class Page : public QTextBrowser {
 public:
  explicit Page(QLabel* note) {
    setAccessibleName(QStringLiteral("Guide"));
    setObjectName(QStringLiteral("guide"));
    setOpenLinks(false);
    setSearchPaths({QStringLiteral(":/panel_guide")});
    QFile file(QStringLiteral(":/panel_guide/simulated_panel.md"));
    if (file.open(QIODevice::ReadOnly)) setMarkdown(QString::fromUtf8(file.readAll()));
    connect(this, &QTextBrowser::anchorClicked, this, [note](const QUrl& link) {
      note->setText(QStringLiteral("%1 is a page of the host program's guide: press F1 there.")
                        .arg(link.fileName()));
    });
  }
};

}  // namespace

void ShowHelp(QWidget* parent) {
  static QPointer<QWidget> shown;
  if (!shown) {
    shown = new QWidget(parent, Qt::Window);
    shown->setAttribute(Qt::WA_DeleteOnClose);
    shown->setObjectName(QStringLiteral("help"));
    shown->setWindowTitle(QStringLiteral("Orv Tamberloom 3 Simulated Panel - Guide"));
    auto* column = new QVBoxLayout(shown);
    auto* note = new QLabel;
    note->setObjectName(QStringLiteral("helpNote"));
    auto* page = new Page(note);
    column->addWidget(page, 1);
    column->addWidget(note);
    new QShortcut(Qt::Key_Escape, shown.data(), shown.data(), &QWidget::close);
    constexpr int columns = 90;
    constexpr int rows = 36;
    shown->resize(page->fontMetrics().averageCharWidth() * columns,
                  page->fontMetrics().height() * rows);
  }
  shown->show();
  shown->raise();
  shown->activateWindow();
}

void ShowAbout(QWidget* parent) {
  auto* box = new QMessageBox(
      QMessageBox::Information, QStringLiteral("About"),
      QStringLiteral("Orv Tamberloom 3 Simulated Panel\nVersion %1\n\nPlays a panel on this "
                     "computer, so that a project can be tried before it hangs on the wall.")
          .arg(QStringLiteral(TAMBERLOOM_VERSION)),
      QMessageBox::Ok, parent);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setObjectName(QStringLiteral("about"));
  box->open();
}

}  // namespace simulator

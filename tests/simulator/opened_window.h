#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDateTimeEdit>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QtTest/QTest>

#include "rehearsed.h"
#include "simulator/window/lamp_button.h"
#include "simulator/window/panel_window.h"

namespace simulator {

/// The window of the small installation at 12:00 on a Thursday of January, at a clock that stands
/// until it is moved.
class OpenedWindow : public testing::Test {
 protected:
  Options Started() {
    Options options;
    options.Now = [this] { return Present; };
    options.FollowedFile = Followed;
    return options;
  }

  void Open() {
    Source = std::make_unique<Simulator>(Started());
    Window = std::make_unique<PanelWindow>(*Source);
    Window->show();
  }
  void SetUp() override { Open(); }

  template <typename Widget>
  Widget& Of(const QString& name) {
    auto* widget = Window->findChild<Widget*>(name);
    if (!widget) throw std::invalid_argument(name.toStdString());
    return *widget;
  }
  void Click(const QString& name) { Of<QAbstractButton>(name).click(); }
  void GoTo(const QDate& date, const QTime& time) {
    Of<QDateTimeEdit>("wanted").setDateTime(QDateTime(date, time, Qt::UTC));
    Click("go");
  }
  bool Lit(const QString& name) {
    Window->Refresh();
    return Of<LampButton>(name).Lit();
  }
  std::string Log() {
    Window->Refresh();
    return Of<QPlainTextEdit>("log").toPlainText().toStdString();
  }
  /// Whether it comes to this: views look ahead, and settings are taken over, now and then only.
  bool Comes(const std::function<bool()>& wanted) {
    return QTest::qWaitFor([&] {
      Window->Refresh();
      return wanted();
    });
  }
  std::string Caption(const char* name) { return Of<QLabel>(name).text().toStdString(); }
  std::string Time() { return Caption("time"); }
  void Trigger(const QString& caption) {
    for (QAction* menu : Window->menuBar()->actions()) {
      for (QAction* action : menu->menu()->actions()) {
        if (action->text().remove('&') == caption) return action->trigger();
      }
    }
    ADD_FAILURE() << caption.toStdString();
  }

  QDateTime Present{QDate(2026, 1, 15), QTime(12, 0)};
  QString Followed;
  std::unique_ptr<Simulator> Source;
  std::unique_ptr<PanelWindow> Window;
};

}  // namespace simulator

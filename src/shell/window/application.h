#pragma once

#include <QApplication>

/// The Qt application, in which a failure that escapes an event handler is shown as a message.
class Application : public QApplication {
  Q_OBJECT
 public:
  Application(int& argc, char** argv);
  bool notify(QObject* receiver, QEvent* event) override;

 protected:
  bool event(QEvent* event) override;
};

#pragma once

#include <QString>

/// Has the main window show what the line tells, and the line ask the project for its kind.
void AttachLine();

/// What every caller does whose command has failed: ends the session, closes the screens, shows the
/// connection screen and tells the user. Does nothing when the session has been ended while that
/// command was waiting, by the user or by another failed command, who has been told by then.
/// `left`: in what state the panel was left, told in a quiet line of the connection screen.
void PanelConnectionLost(const QString& left = {});

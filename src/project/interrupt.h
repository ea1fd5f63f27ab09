#pragma once

#include <QString>

/// Ctrl+C, or the end of the session, ends the program at once with StatusGood: what it has printed
/// is complete.
void ExitQuietlyOnInterrupt();

/// It ends the program with StatusFailed and the text on standard error.
void TellOnInterrupt(const QString& text);

/// It hangs a modem up, and ends the program as was said, or like TellOnInterrupt.
void HangUpOnInterrupt(const QString& text);

/// It leaves a terminal as it is now, whatever is set there later.
void KeepTerminalOnInterrupt(int terminal);

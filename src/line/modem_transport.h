#pragma once

#include <string>

#include "panel/numbers.h"

/// -1 once a call is up: it is hung up then, whatever the connection type has become.
extern Int16 ModemHangUpRequired;

/// Hangs up if the connection type is a modem's or a call is up.
void HangUpModem();

/// Ends a call that is up or being made within a second, and nothing else. For the handler of a
/// signal that ends the program.
void HangUpAtOnce();

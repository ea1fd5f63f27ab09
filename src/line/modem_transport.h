#pragma once

#include <string>

#include "panel/numbers.h"

/// -1 once a call is up: it is hung up then, whatever the connection type has become.
extern Int16 ModemHangUpRequired;

/// Hangs up if the connection type is a modem's or a call is up.
void HangUpModem();

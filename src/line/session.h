#pragma once

#include <string>

#include "line/transport.h"

/// Brings a line of the type up and asks for the panel's firmware, a text of forty characters.
/// Connected is -1 from the start on, as no command goes without. Throws TransportFailure, which
/// says what to do; DisconnectPanel has to follow then, as it ends every session.
std::string ConnectPanel(Int16 connectionType, const LineSettings& settings);

/// Ends the session, if there is one: hangs up, closes the line, Connected is 0.
void DisconnectPanel();

/// The connection type that was opened last.
Int16 OpenedType();

/// By what the panel that was opened last is remembered.
QString OpenedPanel();

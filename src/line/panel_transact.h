#pragma once

#include <string>
#include <string_view>

#include "panel/fixed_array.h"

/// All that came in reply to the last command, whatever stands around its brackets included.
extern std::string ReplyText;
extern Int16 ReplyLength;

/// Up to `length` characters of ReplyText from the 1-based `position` on; data starts at 2. Less or
/// nothing where the reply ends before that.
std::string_view ReplyMid(int position, int length);

/// The number in two hexadecimal digits of ReplyText, 0 to 255; what is no digit ends it.
Int32 ReplyByte(int position);

/// The code of the character at the 1-based `position` of ReplyText, 0 to 255; -1 behind its end.
Int16 ReplyCode(int position);

/// The frame of a command: "05" gives "[0005D7]".
std::string PanelFrame(std::string_view command);

/// Sends a command, in hexadecimal digits without frame, up to three times until a reply of at
/// least `expectedLength` characters with a right checksum has come; -1 then, else 0. The time-out
/// counts for each attempt, threefold on a modem; a line that breaks ends an attempt at once. On
/// TCP events are delivered meanwhile: handlers call this from a request of AskPanel, so that no
/// other command runs inside it. Throws RunTimeFailure for a time-out whose milliseconds overflow.
[[nodiscard]] Int16 PanelTransact(const std::string& command, Int16 expectedLength,
                                  Int32 timeoutSeconds);

/// Sends a text as it stands over the serial line; whether `expectedLength` characters came in
/// time. ReplyText holds what came in both cases.
[[nodiscard]] bool ModemTransact(const std::string& text, Int16 expectedLength,
                                 Int32 timeoutSeconds);

/// The connection type by which commands travel now.
Int16 LineType();

/// Whether the last command failed because the session was ended while it was waiting, by the user
/// or after another failed command: somebody has been told of it then. Tells so once.
bool EndedWhileWaiting();

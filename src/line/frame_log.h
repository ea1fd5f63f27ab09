#pragma once

#include <QByteArray>
#include <string>
#include <string_view>

// What has been said on the line since it was connected, to be looked at when something goes wrong.
// Of the password only stars are kept.

/// A new session begins.
void ClearFrameLog();

/// `command` is that of the frame, or the one that the reply answers. A reply may be empty: nothing
/// came in time.
void LogSent(std::string_view command, std::string_view frame);
void LogReply(std::string_view command, std::string_view reply);

bool FrameLogEmpty();
/// A line for each frame with its time, the last 4,000.
QByteArray FrameLogText();

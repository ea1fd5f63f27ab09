#pragma once

#include <QString>

constexpr int ComPortCount = 16;

/// The device behind COMn, n from 1 to 16: what a link COMn in the data folder's Ports leads to, or
/// the system's own port of that number. The device need not exist.
QString ComPortDevice(int port);

/// Whether the device is there; on Windows only opening it tells.
bool ComPortExists(int port);

/// What COMn is, in one line, for example "COM5: /dev/ttyUSB0, not there".
QString ComPortDescription(int port);

/// Why COMn could not be opened and what to do about it. `reason` is the system's own word, used
/// when the device is there and free to use.
QString ComPortTrouble(int port, bool inUse, const QString& reason);

#pragma once

#include <QString>

// A serial port is told by its name, "COM1" to "COM16", or by its device's path.

constexpr int ComPortCount = 16;

/// "COM7".
QString ComPortName(int number);

/// The device behind a port: of COMn what a link COMn in the data folder's Ports leads to, or the
/// system's own port of that number. The device need not exist.
QString PortDevice(const QString& port);

/// Whether the device is there; on Windows only opening it tells.
bool PortExists(const QString& port);

/// Whether the device is there and its rights keep the user out.
bool PortForbidden(const QString& port);

/// What the port is, in one line, for example "COM5: /dev/ttyUSB0, not there".
QString PortDescription(const QString& port);

/// The port for a sentence: "COM5 (/dev/ttyUSB0)", or the device that was told alone.
QString PortText(const QString& port);

/// Why the port could not be opened and what to do about it. `reason` is the system's own word,
/// used when the device is there and free to use.
QString PortTrouble(const QString& port, bool inUse, const QString& reason);

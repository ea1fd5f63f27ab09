#pragma once

#include "panel/project.h"

// The project that the program has open. Editors read and write its parts; nothing that computes
// knows of it.

extern Project LiveProject;

inline PanelRecordType& PanelRecord = LiveProject.Panel;
inline FennlinkRecordsType& FennlinkRecords = LiveProject.Devices;
inline DimmerBlockType& DimmerBlock = LiveProject.Dimmers;

/// InstalledPoints of the live project.
Int16 PanelIOCount();

inline Int16& ConnectionType() {
  return ConnectionType(PanelRecord);
}
inline std::string& PhoneNumber() {
  return PhoneNumber(PanelRecord);
}
inline std::string& TcpAddress() {
  return TcpAddress(PanelRecord);
}

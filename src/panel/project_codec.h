#pragma once

#include <string>
#include <string_view>

#include "panel/project_document.h"

/// The bytes of a project file. Throws RunTimeFailure for a name above 32,767 bytes, which the
/// format cannot hold.
std::string EncodeProject(const PanelRecordType& panel, const FennlinkRecordsType& devices,
                          const DimmerBlockType& dimmers);

/// Lays the bytes of a project file over `document`. Bytes that end early leave the rest of the
/// document as it was, and give false; bytes behind the end are not looked at. No value is checked.
/// Throws RunTimeFailure for a string of negative length; the document is then half overwritten.
bool DecodeProject(std::string_view bytes, ProjectDocument& document);

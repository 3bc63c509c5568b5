// PluginKitRecords: the check of the two records the plug-in kit puts into every plug-in
// library (see HFnPlugin.h): HApiVersion, eight digits and a NUL, whose major version (the
// first six digits) must be the host's; and NRVN_PLUGIN_SIGNATURE, 32 bytes that must equal
// the host's own signature, derived from the interface version and headers.
//
// A failed check gives kFailure with the reason as a sentence fragment ("it has no HApiVersion
// record; ..."), which the loader puts after the plug-in's name.
#pragma once

#include "HStatus.h"

#include <string>

namespace runtime {

class PluginLibrary;

// On success apiVersion receives the plug-in's interface version.
HStatus checkPluginKitRecords(const PluginLibrary& library, std::string& apiVersion);

// The host's interface version, and whether a version's major part is the host's.
const char* hostApiVersion();
bool isValidApiVersion(const std::string& version);
bool sameMajorApiVersion(const std::string& version);

} // namespace runtime

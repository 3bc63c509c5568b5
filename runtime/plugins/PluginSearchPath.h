// PluginSearchPath: where loadPlugin finds a plug-in.
//
// A text holding a '/' is a path to the library (relative ones from the working directory).
// Any other text is a plug-in name, looked up, as given and with ".so" appended, in each
// directory of the plug-in path: first those of the environment variable VOREL_PLUGIN_PATH
// (separated by ':'), then the "plugins" folder beside the folder of the application's
// executable (where the build puts the Vorel plug-in: build/bin/vorel-host finds
// build/plugins/vorel.so). The path is read again on every look-up.
//
// A look-up that finds nothing fails with kNotFound and the reason as a sentence fragment.
#pragma once

#include "HStatus.h"

#include <string>
#include <vector>

namespace runtime {

extern const char* const kPluginPathVariable;

std::vector<std::string> pluginDirectories();
// On success path receives the library's absolute path.
HStatus locatePlugin(const std::string& nameOrPath, std::string& path);
// The plug-in name of a library path or a name: the file name without its directory and a
// trailing ".so" ("build/plugins/vorel.so", "vorel.so" and "vorel" all give "vorel").
std::string pluginNameOf(const std::string& nameOrPath);

} // namespace runtime

#include "plugins/PluginKitRecords.h"

#include "HFnPlugin.h"
#include "HPluginKitSignature.h"
#include "plugins/PluginLibrary.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace runtime {

namespace {

const unsigned char kHostSignature[32] = {H_PLUGIN_KIT_SIGNATURE_BYTES};
constexpr std::size_t kVersionDigits = 8;
constexpr std::size_t kMajorDigits = 6;

HStatus refuse(const std::string& reason) {
    return HStatus(HS::kFailure, reason);
}

std::string missingRecord(const char* record) {
    return std::string("it has no ") + record +
           " record; build it with the host's plug-in kit (HFnPlugin.h included in one of its "
           "source files).";
}

} // namespace

const char* hostApiVersion() {
    return H_API_VERSION;
}

bool isValidApiVersion(const std::string& version) {
    return version.size() == kVersionDigits &&
           std::all_of(version.begin(), version.end(),
                       [](unsigned char c) { return std::isdigit(c) != 0; });
}

bool sameMajorApiVersion(const std::string& version) {
    return isValidApiVersion(version) &&
           version.compare(0, kMajorDigits, hostApiVersion(), kMajorDigits) == 0;
}

HStatus checkPluginKitRecords(const PluginLibrary& library, std::string& apiVersion) {
    std::size_t versionSize = 0, signatureSize = 0;
    const char* version = static_cast<const char*>(library.record("HApiVersion", versionSize));
    if (!version)
        return refuse(missingRecord("HApiVersion"));
    const void* signature = library.record("NRVN_PLUGIN_SIGNATURE", signatureSize);
    if (!signature)
        return refuse(missingRecord("NRVN_PLUGIN_SIGNATURE"));

    // Only the bytes the library declares are read: a record of another shape is refused,
    // never read past.
    std::string text;
    if (versionSize == kVersionDigits + 1 && version[kVersionDigits] == '\0')
        text.assign(version, kVersionDigits);
    if (!isValidApiVersion(text))
        return refuse("its HApiVersion record is not an interface version of eight digits.");
    if (!sameMajorApiVersion(text))
        return refuse("it was built for interface version " + text +
                      ", and this host has interface version " + hostApiVersion() + ".");
    if (signatureSize != sizeof kHostSignature ||
        std::memcmp(signature, kHostSignature, sizeof kHostSignature) != 0)
        return refuse("its plug-in kit signature does not match this host's; rebuild it against "
                      "this host's interface headers.");
    apiVersion = text;
    return HS::kSuccess;
}

} // namespace runtime

// One source for the plug-ins whose kit records are wrong, built once per variant:
//   KIT_NO_RECORDS       exports neither record
//   KIT_OTHER_MAJOR      an interface version of another major version (the right signature)
//   KIT_WRONG_SIGNATURE  the right version, a signature of zeros
//   KIT_NO_ENTRY_POINTS  right records, but no initializePlugin
// Each would otherwise work, and says so if the host ever initializes it.
#define H_PLUGIN_KIT_NO_RECORDS
#include "HFnPlugin.h"
#include "HGlobal.h"

#if defined(KIT_OTHER_MAJOR)
H_PLUGIN_EXPORT __attribute__((used)) const char HApiVersion[] = "20250100";
H_PLUGIN_EXPORT __attribute__((used))
const unsigned char NRVN_PLUGIN_SIGNATURE[32] = {H_PLUGIN_KIT_SIGNATURE_BYTES};
#elif defined(KIT_WRONG_SIGNATURE)
H_PLUGIN_EXPORT __attribute__((used)) const char HApiVersion[] = H_API_VERSION;
H_PLUGIN_EXPORT __attribute__((used)) const unsigned char NRVN_PLUGIN_SIGNATURE[32] = {};
#elif defined(KIT_NO_ENTRY_POINTS)
H_PLUGIN_EXPORT __attribute__((used)) const char HApiVersion[] = H_API_VERSION;
H_PLUGIN_EXPORT __attribute__((used))
const unsigned char NRVN_PLUGIN_SIGNATURE[32] = {H_PLUGIN_KIT_SIGNATURE_BYTES};
#endif

#if !defined(KIT_NO_ENTRY_POINTS)
H_PLUGIN_EXPORT HStatus initializePlugin(HObject) {
    HGlobal::displayInfo("a refused plug-in was initialized");
    return HS::kSuccess;
}
#endif

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject) {
    return HS::kSuccess;
}

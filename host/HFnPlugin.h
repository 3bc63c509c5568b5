// HFnPlugin: what a plug-in uses, from its initializePlugin and uninitializePlugin, to add
// commands to the host and take them away again. Also the plug-in kit.
//
// The kit: including this header in exactly one source file of a plug-in library defines the
// two records the host reads when it loads the library: HApiVersion (the interface version the
// plug-in was built against, eight digits) and NRVN_PLUGIN_SIGNATURE (32 bytes computed at
// build time from that version and the interface headers). loadPlugin refuses a library that
// lacks either record, was built for another major version (the first six digits), or whose
// signature does not match. The host's own sources define H_PLUGIN_KIT_NO_RECORDS before
// including this header.
//
// The plug-in library exports:
//   H_PLUGIN_EXPORT HStatus initializePlugin(HObject plugin);
//   H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject plugin);
//
// registerCommand fails with kInvalidParameter, and registers nothing, when the name is empty
// or already a command (built in or of any plug-in), or the creator is null.
#pragma once

#include "HFnBase.h"
#include "HObject.h"
#include "HPluginKitSignature.h"
#include "HPxCommand.h"
#include "HStatus.h"
#include "HString.h"
#include "HSyntax.h"

#define H_API_VERSION "20260100"
#define H_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

typedef HPxCommand* (*HCreatorFunction)();
typedef HSyntax (*HCreateSyntaxFunction)();

class HFnPlugin : public HFnBase {
public:
    HFnPlugin();
    explicit HFnPlugin(const HObject& plugin, const char* vendor = "Unknown",
                       const char* version = "Unknown", const char* requiredApiVersion = "Any",
                       HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& plugin) override;

    HStatus registerCommand(const HString& commandName, HCreatorFunction creator,
                            HCreateSyntaxFunction createSyntax = nullptr);
    HStatus deregisterCommand(const HString& commandName);

    // The plug-in's name: its library's file name without directory and extension.
    HString name(HStatus* status = nullptr) const;
    HString vendor(HStatus* status = nullptr) const;
    HString version(HStatus* status = nullptr) const;
    HString apiVersion(HStatus* status = nullptr) const;
    HString loadPath(HStatus* status = nullptr) const;
};

#ifndef H_PLUGIN_KIT_NO_RECORDS
H_PLUGIN_EXPORT __attribute__((used)) const char HApiVersion[] = H_API_VERSION;
H_PLUGIN_EXPORT __attribute__((used))
const unsigned char NRVN_PLUGIN_SIGNATURE[32] = {H_PLUGIN_KIT_SIGNATURE_BYTES};
#endif

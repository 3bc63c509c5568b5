// The commands of the plug-in loader: loadPlugin, unloadPlugin and pluginInfo. None of them is
// recorded for undo: loading and unloading are not edits of the scene.
#include "HArgParser.h"
#include "lang/BuiltInCommand.h"
#include "plugins/PluginData.h"
#include "plugins/PluginLoader.h"

namespace {

runtime::PluginLoader& loader() {
    return runtime::host().get<runtime::PluginLoader>();
}

HSyntax noFlags() {
    return HSyntax();
}

// loadPlugin PATH|NAME ...: loads each in turn, stopping at the first failure; the result is
// the names of the plug-ins loaded.
class LoadPluginCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        if (args.length() == 0)
            return runtime::commandError("loadPlugin: Give the path or the name of a plug-in.");
        HStringArray names;
        for (unsigned i = 0; i < args.length(); ++i) {
            std::string name;
            HStatus status = loader().load(args.asString(i).str(), &name);
            if (!status)
                return runtime::commandError(status.errorString(), status.statusCode());
            names.append(HString(name));
        }
        setResult(names);
        return HS::kSuccess;
    }
};

// unloadPlugin NAME ...
class UnloadPluginCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        if (args.length() == 0)
            return runtime::commandError("unloadPlugin: Give the name of a loaded plug-in.");
        for (unsigned i = 0; i < args.length(); ++i) {
            HStatus status = loader().unload(args.asString(i).str());
            if (!status)
                return runtime::commandError(status.errorString(), status.statusCode());
        }
        return HS::kSuccess;
    }
};

// pluginInfo -q -listPlugins, or -q with one of the other flags and a plug-in's name.
class PluginInfoCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-l", "-listPlugins");
        syntax.addFlag("-ld", "-loaded");
        syntax.addFlag("-p", "-path");
        syntax.addFlag("-v", "-version");
        syntax.addFlag("-vd", "-vendor");
        syntax.addFlag("-c", "-command");
        syntax.enableQuery(true);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        // -q counts as a flag used: one more besides it.
        if (!parser.isQuery() || parser.numberOfFlagsUsed() != 2)
            return runtime::commandError(
                "pluginInfo: Query one of -listPlugins, -loaded, -path, -version, -vendor or "
                "-command with -q.");
        if (parser.isFlagSet("listPlugins")) {
            HStringArray names;
            for (const auto& plugin : loader().plugins())
                names.append(HString(plugin->name()));
            setResult(names);
            return HS::kSuccess;
        }
        if (parser.numberOfCommandArguments() != 1)
            return runtime::commandError("pluginInfo: Give the name of one plug-in.");
        const HString name = parser.commandArgumentString(0);
        std::shared_ptr<const runtime::PluginData> plugin = loader().find(name.str());
        if (parser.isFlagSet("loaded")) {
            setResult(plugin != nullptr);
            return HS::kSuccess;
        }
        if (!plugin)
            return runtime::commandError("pluginInfo: The plug-in \"" + name + "\" is not loaded.",
                                         HS::kNotFound);
        if (parser.isFlagSet("path"))
            setResult(HString(plugin->path()));
        else if (parser.isFlagSet("version"))
            setResult(HString(plugin->version()));
        else if (parser.isFlagSet("vendor"))
            setResult(HString(plugin->vendor()));
        else
            setResult(runtime::host().get<runtime::CommandRegistry>().names(plugin->name()));
        return HS::kSuccess;
    }
};

const bool registered =
    runtime::registerBuiltInCommand("loadPlugin", runtime::createCommand<LoadPluginCommand>,
                                    noFlags) &&
    runtime::registerBuiltInCommand("unloadPlugin", runtime::createCommand<UnloadPluginCommand>,
                                    noFlags) &&
    runtime::registerBuiltInCommand("pluginInfo", runtime::createCommand<PluginInfoCommand>,
                                    &PluginInfoCommand::createSyntax);

} // namespace

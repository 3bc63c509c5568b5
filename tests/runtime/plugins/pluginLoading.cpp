// Loading and unloading plug-ins: every way a plug-in is refused, each with its exact message
// and nothing of the plug-in left behind (no command registered, the library closed); finding
// plug-ins by name; what pluginInfo tells; unloading, reloading and the host's shut-down.
#include "HGlobal.h"
#include "HLibrary.h"
#include "OutputRecorder.h"
#include "core/HostContext.h"
#include "lang/CommandRegistry.h"
#include "plugins/PluginLoader.h"
#include "plugins/PluginSearchPath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using Texts = std::vector<std::string>;

std::string pluginFile(const std::string& name) {
    return std::string(TEST_PLUGIN_DIR) + "/" + name + ".so";
}

// Whether the process still has the library open (without opening it).
bool libraryIsOpen(const std::string& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

bool isCommand(const char* name) {
    return runtime::host().get<runtime::CommandRegistry>().find(name) != nullptr;
}

Texts loadedPlugins() {
    HStringArray names;
    EXPECT_TRUE(HGlobal::executeCommand("pluginInfo -q -listPlugins", names));
    Texts texts;
    for (const HString& name : names)
        texts.push_back(name.str());
    return texts;
}

class PluginLoading : public testing::Test {
protected:
    void TearDown() override {
        for (const std::string& name : loadedPlugins())
            HGlobal::executeCommand(HString("unloadPlugin ") + name.c_str());
    }

    // Runs the statement, which must fail, and gives the errors it printed.
    Texts failingErrors(const std::string& statement) {
        OutputRecorder output;
        EXPECT_FALSE(HGlobal::executeCommand(statement.c_str())) << statement;
        return output.texts(HCommandMessage::kError);
    }
};

using PluginRefusal = PluginLoading;

struct Refusal {
    const char* plugin;
    const char* reason;
};

TEST_F(PluginRefusal, EveryFaultOfTheLibraryIsNamedAndLeavesNothingLoaded) {
    const std::string kitHint = "build it with the host's plug-in kit (HFnPlugin.h included in "
                                "one of its source files).";
    const std::vector<Refusal> refusals = {
        {"noKitRecords", "it has no HApiVersion record; "},
        {"otherMajorVersion", "it was built for interface version 20250100, and this host has "
                              "interface version 20260100."},
        {"wrongSignature", "its plug-in kit signature does not match this host's; rebuild it "
                           "against this host's interface headers."},
        {"noEntryPoints", "it does not export initializePlugin."},
    };
    for (const Refusal& refusal : refusals) {
        const std::string path = pluginFile(refusal.plugin);
        OutputRecorder output;
        EXPECT_FALSE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
        std::string expected = "Cannot load plug-in \"" + path + "\": " + refusal.reason;
        if (std::string(refusal.plugin) == "noKitRecords")
            expected += kitHint;
        EXPECT_THAT(output.texts(HCommandMessage::kError), ElementsAre(expected));
        EXPECT_THAT(output.texts(HCommandMessage::kInfo), IsEmpty()) << "never initialized";
        EXPECT_FALSE(libraryIsOpen(path)) << refusal.plugin;
    }
    EXPECT_THAT(loadedPlugins(), IsEmpty());
}

TEST_F(PluginRefusal, MissingFileAndNonLibraryAreTold) {
    const std::string missing = std::string(TEST_PLUGIN_DIR) + "/absent.so";
    EXPECT_THAT(failingErrors("loadPlugin " + missing),
                ElementsAre("Cannot load plug-in \"" + missing + "\": the file does not exist."));

    QTemporaryDir directory;
    const QString text = directory.filePath("notes.so");
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(256, 'x'));
    file.close();
    Texts errors = failingErrors("loadPlugin " + text.toStdString());
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_THAT(errors[0], StartsWith("Cannot load plug-in \"" + text.toStdString() +
                                      "\": it is not a library the host can load ("));
    EXPECT_THAT(errors[0], HasSubstr("invalid ELF header"));
    EXPECT_THAT(loadedPlugins(), IsEmpty());
}

TEST_F(PluginRefusal, FailedInitializationTakesBackWhatItRegistered) {
    const std::string path = pluginFile("failingInitialize");
    OutputRecorder output;
    EXPECT_FALSE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
    EXPECT_THAT(output.texts(HCommandMessage::kError),
                ElementsAre("Cannot load plug-in \"" + path +
                            "\": initializePlugin failed: its settings file is missing"));
    EXPECT_THAT(output.texts(HCommandMessage::kInfo), IsEmpty())
        << "a plug-in that did not start is not asked to stop";
    EXPECT_FALSE(isCommand("failingInitializeCommand"));
    EXPECT_FALSE(libraryIsOpen(path));
    EXPECT_THAT(loadedPlugins(), IsEmpty());
}

TEST_F(PluginRefusal, TakenCommandNameFailsTheLoadEvenWhenThePluginIgnoresIt) {
    const std::string path = pluginFile("takenCommandName");
    OutputRecorder output;
    EXPECT_FALSE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
    EXPECT_THAT(output.texts(HCommandMessage::kError),
                ElementsAre("Cannot load plug-in \"" + path +
                            "\": the command \"print\" is a built-in command of the host."));
    EXPECT_THAT(output.texts(HCommandMessage::kInfo),
                ElementsAre("takenCommandName uninitialized"));
    EXPECT_FALSE(isCommand("takenCommandNameOwn"));
    EXPECT_TRUE(HGlobal::executeCommand("print still the built-in")) << "print untouched";
    EXPECT_FALSE(libraryIsOpen(path));
}

TEST_F(PluginRefusal, SecondLoadAndACopyUnderAnotherNameAreRefused) {
    const std::string path = pluginFile("sampleCommands");
    ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
    EXPECT_THAT(failingErrors("loadPlugin sampleCommands"),
                ElementsAre("Cannot load plug-in \"sampleCommands\": a plug-in named "
                            "\"sampleCommands\" is already loaded (from " +
                            path + ")."));

    QTemporaryDir directory;
    const std::string copy = directory.filePath("sampleCopy.so").toStdString();
    ASSERT_TRUE(QFile::copy(QString::fromStdString(path), QString::fromStdString(copy)));
    EXPECT_THAT(failingErrors("loadPlugin " + copy),
                ElementsAre("Cannot load plug-in \"" + copy +
                            "\": the command \"sampleStore\" "
                            "belongs to the plug-in \"sampleCommands\"."));
    EXPECT_FALSE(libraryIsOpen(copy));
    EXPECT_THAT(loadedPlugins(), ElementsAre("sampleCommands"));
    EXPECT_TRUE(isCommand("sampleStore")) << "the first plug-in keeps its commands";
}

TEST(PluginSearchPath, NamesAreLookedUpInTheVariableThenBesideTheApplication) {
    const std::string beside =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../plugins").toStdString();
    qputenv(runtime::kPluginPathVariable, QByteArray("/nowhere:") + TEST_PLUGIN_DIR);
    EXPECT_THAT(runtime::pluginDirectories(), ElementsAre("/nowhere", TEST_PLUGIN_DIR, beside));

    HStringArray loaded;
    EXPECT_TRUE(HGlobal::executeCommand("loadPlugin sampleCommands", loaded));
    EXPECT_EQ(loaded.length(), 1u);
    EXPECT_STREQ(loaded[0].asChar(), "sampleCommands");
    HString path;
    EXPECT_TRUE(HGlobal::executeCommand("pluginInfo -q -path sampleCommands", path));
    EXPECT_EQ(path.str(), pluginFile("sampleCommands"));
    EXPECT_TRUE(HGlobal::executeCommand("unloadPlugin sampleCommands.so"));

    OutputRecorder output;
    EXPECT_FALSE(HGlobal::executeCommand("loadPlugin elsewhere"));
    EXPECT_THAT(output.texts(HCommandMessage::kError),
                ElementsAre("Cannot load plug-in \"elsewhere\": there is no such plug-in in the "
                            "plug-in path (/nowhere:" +
                            std::string(TEST_PLUGIN_DIR) + ":" + beside + ")."));
    qunsetenv(runtime::kPluginPathVariable);
}

TEST_F(PluginLoading, PluginInfoDescribesALoadedPlugin) {
    const std::string path = pluginFile("sampleCommands");
    HStringArray loaded;
    ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + path).c_str(), loaded));
    EXPECT_STREQ(loaded[0].asChar(), "sampleCommands");
    EXPECT_THAT(loadedPlugins(), ElementsAre("sampleCommands"));

    HString text;
    EXPECT_TRUE(HGlobal::executeCommand("pluginInfo -q -version sampleCommands", text));
    EXPECT_STREQ(text.asChar(), "1.2");
    EXPECT_TRUE(HGlobal::executeCommand("pluginInfo -q -vendor sampleCommands", text));
    EXPECT_STREQ(text.asChar(), "Vorel tests");
    HStringArray commands;
    EXPECT_TRUE(HGlobal::executeCommand("pluginInfo -q -command sampleCommands", commands));
    Texts names;
    for (const HString& name : commands)
        names.push_back(name.str());
    EXPECT_THAT(names, ElementsAre("sampleGuarded", "sampleNest", "sampleStore", "sampleUnload"));
    int loadedFlag = -1;
    EXPECT_TRUE(HGlobal::executeCommand("pluginInfo -q -loaded sampleCommands", loadedFlag));
    EXPECT_EQ(loadedFlag, 1);
    EXPECT_TRUE(HGlobal::executeCommand("pluginInfo -q -loaded absent", loadedFlag));
    EXPECT_EQ(loadedFlag, 0);

    EXPECT_THAT(failingErrors("pluginInfo -q -version absent"),
                ElementsAre("pluginInfo: The plug-in \"absent\" is not loaded."));
    EXPECT_THAT(failingErrors("pluginInfo -version sampleCommands"),
                ElementsAre("pluginInfo: Query one of -listPlugins, -loaded, -path, -version, "
                            "-vendor or -command with -q."));
}

TEST_F(PluginLoading, UnloadTakesEveryCommandAwayAndAReloadBringsThemBack) {
    const std::string path = pluginFile("sampleCommands");
    ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
    {
        OutputRecorder output;
        ASSERT_TRUE(HGlobal::executeCommand("unloadPlugin sampleCommands"));
        EXPECT_THAT(output.texts(HCommandMessage::kInfo),
                    ElementsAre("sampleCommands uninitialized"));
    }
    // uninitializePlugin took sampleStore away itself; the host removed the rest.
    for (const char* command : {"sampleStore", "sampleNest", "sampleGuarded", "sampleUnload"})
        EXPECT_FALSE(isCommand(command)) << command;
    EXPECT_FALSE(libraryIsOpen(path));
    EXPECT_THAT(loadedPlugins(), IsEmpty());

    ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
    OutputRecorder output;
    EXPECT_TRUE(HGlobal::executeCommand("sampleGuarded"));
    EXPECT_THAT(output.texts(HCommandMessage::kInfo), ElementsAre("sampleGuarded ran"));
}

TEST_F(PluginLoading, UnloadIsRefusedForAnUnknownPluginAndWhileItsCommandRuns) {
    EXPECT_THAT(failingErrors("unloadPlugin absent"),
                ElementsAre("Cannot unload plug-in \"absent\": it is not loaded."));

    ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + pluginFile("sampleCommands")).c_str()));
    EXPECT_THAT(
        failingErrors("sampleUnload"),
        ElementsAre("Cannot unload plug-in \"sampleCommands\": one of its commands is running."));
    EXPECT_THAT(loadedPlugins(), ElementsAre("sampleCommands"));
    EXPECT_TRUE(isCommand("sampleStore"));
}

TEST_F(PluginLoading, PluginThatRefusesToStopStaysUntilTheHostStops) {
    const std::string path = pluginFile("failingUninitialize");
    ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
    EXPECT_THAT(failingErrors("unloadPlugin failingUninitialize"),
                ElementsAre("Cannot unload plug-in \"failingUninitialize\": uninitializePlugin "
                            "failed: its window is busy; the plug-in stays loaded."));
    EXPECT_THAT(loadedPlugins(), ElementsAre("failingUninitialize"));
    EXPECT_TRUE(isCommand("failingUninitializeCommand"));

    OutputRecorder output;
    runtime::host().get<runtime::PluginLoader>().shutDown();
    EXPECT_THAT(output.texts(HCommandMessage::kError),
                ElementsAre("Cannot unload plug-in \"failingUninitialize\": uninitializePlugin "
                            "failed: its window is busy; the plug-in is closed anyway."));
    EXPECT_FALSE(isCommand("failingUninitializeCommand"));
    EXPECT_FALSE(libraryIsOpen(path));
}

TEST_F(PluginLoading, HostShutDownUnloadsPluginsWhileTheMainWindowExists) {
    const std::string path = pluginFile("sampleCommands");
    ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + path).c_str()));
    OutputRecorder output;
    HLibrary::cleanup();
    EXPECT_THAT(output.texts(HCommandMessage::kInfo), ElementsAre("sampleCommands uninitialized"));
    EXPECT_FALSE(libraryIsOpen(path));
    ASSERT_TRUE(HLibrary::initialize("vorel-tests"));
}

} // namespace

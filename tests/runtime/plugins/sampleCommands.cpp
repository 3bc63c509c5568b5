// sampleCommands: a well-built plug-in for the loader's tests. Its commands change plug values
// through the host interface, run recorded work of their own from inside doIt, and say when
// the host deletes them, so the tests can follow every command object's life.
//
//   sampleStore NODE.ATTRIBUTE VALUE  sets a double plug (undoable)
//   sampleNest NODE VALUE             runs "sampleStore NODE.translateX VALUE" recorded, then
//                                     sets NODE.translateY itself (undoable, as one edit)
//   sampleGuarded [-v]                no query or edit mode; prints "sampleGuarded ran"
//   sampleUnload                      tries to unload this plug-in from inside its own doIt
//
// uninitializePlugin says whether the host's main window still exists, and takes only
// sampleStore away, leaving the others for the host to remove.
#include "HArgParser.h"
#include "HFnDependencyNode.h"
#include "HFnPlugin.h"
#include "HGlobal.h"
#include "HPlug.h"
#include "HQtUtil.h"
#include "HSelectionList.h"

namespace {

HPlug plugNamed(const HString& text) {
    HStringArray parts;
    text.split('.', parts);
    HSelectionList list;
    HObject node;
    if (parts.length() != 2 || !list.add(parts[0]) || !list.getDependNode(0, node))
        return HPlug();
    return HFnDependencyNode(node).findPlug(parts[1]);
}

class PlugWrite {
public:
    HStatus open(const HString& plugName, double value) {
        m_plug = plugNamed(plugName);
        m_value = value;
        if (m_plug.isNull())
            return HStatus(HS::kInvalidParameter, "No plug named " + plugName + ".");
        return m_plug.getValue(m_old);
    }
    HStatus write() { return m_plug.setDouble(m_value); }
    HStatus revert() { return m_plug.setDouble(m_old); }

private:
    HPlug m_plug;
    double m_value = 0.0;
    double m_old = 0.0;
};

class StoreCommand : public HPxCommand {
public:
    ~StoreCommand() override { HGlobal::displayInfo("sampleStore deleted"); }
    HStatus doIt(const HArgList& args) override {
        HStatus status = m_write.open(args.asString(0), args.asDouble(1));
        return status ? redoIt() : status;
    }
    HStatus undoIt() override { return m_write.revert(); }
    HStatus redoIt() override { return m_write.write(); }
    bool isUndoable() const override { return true; }

private:
    PlugWrite m_write;
};

class NestCommand : public HPxCommand {
public:
    ~NestCommand() override { HGlobal::displayInfo("sampleNest deleted"); }
    HStatus doIt(const HArgList& args) override {
        m_node = args.asString(0);
        m_value = args.asDouble(1);
        HStatus status = m_own.open(m_node + ".translateY", m_value);
        return status ? redoIt() : status;
    }
    // The nested store is recorded when doIt runs it; when redo runs it, it is not.
    HStatus redoIt() override {
        HString nested = "sampleStore " + m_node + ".translateX " + HString().set(m_value);
        HStatus status = HGlobal::executeCommand(nested, false, true);
        return status ? m_own.write() : status;
    }
    HStatus undoIt() override { return m_own.revert(); }
    bool isUndoable() const override { return true; }

private:
    HString m_node;
    double m_value = 0.0;
    PlugWrite m_own;
};

class GuardedCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-v", "-verbose");
        syntax.enableQuery(false);
        syntax.enableEdit(false);
        return syntax;
    }
    HStatus doIt(const HArgList&) override {
        HGlobal::displayInfo("sampleGuarded ran");
        return HS::kSuccess;
    }
};

class UnloadCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        return HGlobal::executeCommand("unloadPlugin sampleCommands");
    }
};

template <typename Command> HPxCommand* create() {
    return new Command;
}

} // namespace

H_PLUGIN_EXPORT HStatus initializePlugin(HObject plugin) {
    HFnPlugin fn(plugin, "Vorel tests", "1.2", "Any");
    HStatus status = fn.registerCommand("sampleStore", create<StoreCommand>);
    if (status)
        status = fn.registerCommand("sampleNest", create<NestCommand>);
    if (status)
        status = fn.registerCommand("sampleGuarded", create<GuardedCommand>,
                                    &GuardedCommand::createSyntax);
    if (status)
        status = fn.registerCommand("sampleUnload", create<UnloadCommand>);
    return status;
}

H_PLUGIN_EXPORT HStatus uninitializePlugin(HObject plugin) {
    HFnPlugin fn(plugin);
    HGlobal::displayInfo(HQtUtil::mainWindow() ? "sampleCommands uninitialized"
                                               : "sampleCommands uninitialized without a window");
    return fn.deregisterCommand("sampleStore");
}

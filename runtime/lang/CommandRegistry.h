// CommandRegistry: the commands of the command language by name: how to create one, its
// syntax, and who added it (the built-ins, or a plug-in, so that a plug-in's commands can be
// found and removed together).
//
// The registry owns its entries; the syntax function is called once, at registration, and its
// syntax is shared by every invocation. Adding a name that is taken, an empty name or a null
// creator is refused with kInvalidParameter. The registry also counts the commands of each
// owner that are running (in doIt, undoIt or redoIt), so that a plug-in is not unloaded from
// under one of its own commands.
//
// The built-in commands register themselves at static initialisation with
// registerBuiltInCommand (BuiltInCommand.h); the registry adds them when the host starts.
#pragma once

#include "HPxCommand.h"
#include "HString.h"
#include "HStringArray.h"
#include "HSyntax.h"
#include "core/HostContext.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_map>

namespace runtime {

// The same types as HFnPlugin's HCreatorFunction and HCreateSyntaxFunction. That header is not
// included here: outside a plug-in it would define the plug-in records.
using CommandCreator = HPxCommand* (*)();
using SyntaxCreator = HSyntax (*)();

// Who added a command: the built-ins (the empty owner) or a plug-in, by its name.
using CommandOwner = HString;
extern const char* const kBuiltInOwner;

struct CommandEntry {
    HString name;
    CommandCreator creator = nullptr;
    // Null when the command was registered without a syntax: its arguments are not checked.
    std::shared_ptr<const HSyntax> syntax;
    CommandOwner owner;
};

class CommandRegistry : public HostModule {
public:
    CommandRegistry();

    HStatus add(const HString& name, CommandCreator creator, SyntaxCreator syntax,
                const CommandOwner& owner);
    HStatus add(const CommandEntry& entry);
    // Takes the command away and gives back its entry; null when there is no such command.
    std::shared_ptr<const CommandEntry> remove(const HString& name);
    // Removes every command of the owner.
    void removeAll(const CommandOwner& owner);

    // Null when there is no such command. The entry stays valid for its holder even when the
    // command is removed meanwhile (a command may deregister itself while it runs).
    std::shared_ptr<const CommandEntry> find(const HString& name) const;
    HStringArray names(const CommandOwner& owner) const;

    // While a Running object lives, a command of its owner counts as running.
    class Running {
    public:
        Running(CommandRegistry& registry, const CommandOwner& owner);
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        CommandRegistry& m_registry;
        CommandOwner m_owner;
    };
    bool isRunning(const CommandOwner& owner) const;

private:
    std::unordered_map<std::string, std::shared_ptr<const CommandEntry>> m_entries;
    // Owners stay listed at zero: no allocation for each run.
    std::map<std::string, unsigned> m_running;
};

} // namespace runtime

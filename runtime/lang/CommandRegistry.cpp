#include "lang/CommandRegistry.h"

#include "lang/BuiltInCommand.h"

#include <cassert>
#include <set>

namespace runtime {

const char* const kBuiltInOwner = "";

namespace {

const bool registered = registerHostModule(
    kLanguageRank, [](HostContext&) { return std::unique_ptr<HostModule>(new CommandRegistry); });

} // namespace

CommandRegistry::CommandRegistry() {
    for (const BuiltInRegistration& command : builtInCommands()) {
        HStatus status = add(command.name, command.creator, command.syntax, kBuiltInOwner);
        assert(status && "two built-in commands have the same name");
        (void)status;
    }
}

HStatus CommandRegistry::add(const HString& name, CommandCreator creator, SyntaxCreator syntax,
                             const CommandOwner& owner) {
    CommandEntry entry;
    entry.name = name;
    entry.creator = creator;
    if (syntax)
        entry.syntax = std::make_shared<const HSyntax>(syntax());
    entry.owner = owner;
    return add(entry);
}

HStatus CommandRegistry::add(const CommandEntry& entry) {
    if (entry.name.isEmpty())
        return HStatus(HS::kInvalidParameter, "A command needs a name.");
    if (!entry.creator)
        return HStatus(HS::kInvalidParameter,
                       "The command " + entry.name + " has no creator function.");
    if (m_entries.count(entry.name.str()))
        return HStatus(HS::kInvalidParameter,
                       "A command named \"" + entry.name + "\" already exists.");
    m_entries.emplace(entry.name.str(), std::make_shared<const CommandEntry>(entry));
    return HS::kSuccess;
}

std::shared_ptr<const CommandEntry> CommandRegistry::remove(const HString& name) {
    auto it = m_entries.find(name.str());
    if (it == m_entries.end())
        return nullptr;
    std::shared_ptr<const CommandEntry> entry = std::move(it->second);
    m_entries.erase(it);
    return entry;
}

void CommandRegistry::removeAll(const CommandOwner& owner) {
    for (auto it = m_entries.begin(); it != m_entries.end();) {
        if (it->second->owner == owner)
            it = m_entries.erase(it);
        else
            ++it;
    }
}

std::shared_ptr<const CommandEntry> CommandRegistry::find(const HString& name) const {
    auto it = m_entries.find(name.str());
    return it == m_entries.end() ? nullptr : it->second;
}

HStringArray CommandRegistry::names(const CommandOwner& owner) const {
    std::set<std::string> sorted;
    for (const auto& entry : m_entries)
        if (entry.second->owner == owner)
            sorted.insert(entry.first);
    HStringArray names;
    for (const std::string& name : sorted)
        names.append(HString(name));
    return names;
}

CommandRegistry::Running::Running(CommandRegistry& registry, const CommandOwner& owner)
    : m_registry(registry), m_owner(owner) {
    ++m_registry.m_running[m_owner.str()];
}

CommandRegistry::Running::~Running() {
    auto it = m_registry.m_running.find(m_owner.str());
    assert(it != m_registry.m_running.end() && it->second > 0);
    --it->second;
}

bool CommandRegistry::isRunning(const CommandOwner& owner) const {
    auto it = m_running.find(owner.str());
    return it != m_running.end() && it->second > 0;
}

} // namespace runtime

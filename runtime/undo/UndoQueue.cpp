#include "undo/UndoQueue.h"

#include "HGlobal.h"
#include "core/EventBus.h"

#include <algorithm>
#include <cassert>
#include <set>
#include <string>

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kUndoRank, [](HostContext&) { return std::unique_ptr<HostModule>(new UndoQueue); });

} // namespace

struct UndoQueue::Record {
    std::unique_ptr<HPxCommand> command;
    CommandOwner owner;
    HString name;
    RecordList inner;

    ~Record() {
        // Latest first: the reverse of the order the commands were created in.
        while (!inner.empty())
            inner.pop_back();
        command.reset();
    }

    // The statuses are the commands' own business: they print what went wrong, and the queue
    // moves on either way so that it always matches what was asked for.
    void undo() {
        for (auto it = inner.rbegin(); it != inner.rend(); ++it)
            (*it)->undo();
        if (command)
            command->undoIt();
    }

    void redo() {
        if (command) {
            command->redoIt();
            return;
        }
        for (const std::unique_ptr<Record>& record : inner)
            record->redo();
    }

    bool holds(const CommandOwner& commandOwner) const {
        if (command && owner == commandOwner)
            return true;
        return std::any_of(inner.begin(), inner.end(), [&](const std::unique_ptr<Record>& r) {
            return r->holds(commandOwner);
        });
    }

    void collectOwners(std::set<std::string>& owners) const {
        if (command)
            owners.insert(owner.str());
        for (const std::unique_ptr<Record>& record : inner)
            record->collectOwners(owners);
    }
};

UndoQueue::UndoQueue() = default;

UndoQueue::~UndoQueue() {
    assert(m_frames.empty() && "the host stops while a command runs");
    while (!m_entries.empty())
        m_entries.pop_back();
}

void UndoQueue::beginCommand() {
    bool discarding = m_replaying > 0 || (!m_frames.empty() && m_frames.back().discarding);
    m_frames.push_back(Frame{RecordList(), discarding});
}

void UndoQueue::endCommand(std::unique_ptr<HPxCommand> command, const CommandOwner& owner,
                           const HString& text) {
    assert(!m_frames.empty() && "endCommand without beginCommand");
    Frame frame = std::move(m_frames.back());
    m_frames.pop_back();
    if (frame.discarding || (!command && frame.records.empty()))
        return;
    auto record = std::make_unique<Record>();
    record->command = std::move(command);
    record->owner = owner;
    record->name = text;
    record->inner = std::move(frame.records);
    if (m_frames.empty())
        push(std::move(record));
    else
        m_frames.back().records.push_back(std::move(record));
}

void UndoQueue::push(std::unique_ptr<Record> entry) {
    while (m_entries.size() > m_next)
        m_entries.pop_back();
    m_entries.push_back(std::move(entry));
    if (m_entries.size() > kLimit)
        m_entries.pop_front();
    m_next = static_cast<unsigned>(m_entries.size());
}

bool UndoQueue::undo() {
    if (m_next == 0) {
        HGlobal::displayWarning("There are no more commands to undo.");
        return false;
    }
    replayAt(m_next - 1, Replay::kUndo);
    host().get<EventBus>().fire(events::kUndo);
    return true;
}

bool UndoQueue::redo() {
    if (m_next == m_entries.size()) {
        HGlobal::displayWarning("There are no more commands to redo.");
        return false;
    }
    replayAt(m_next, Replay::kRedo);
    host().get<EventBus>().fire(events::kRedo);
    return true;
}

void UndoQueue::replayAt(unsigned index, Replay direction) {
    std::unique_ptr<Record> entry = std::move(m_entries[index]);
    m_entries.erase(m_entries.begin() + index);
    m_next = index;
    unsigned generation = m_generation;
    replay(*entry, direction);
    if (generation != m_generation)
        return;
    m_entries.insert(m_entries.begin() + index, std::move(entry));
    if (direction == Replay::kRedo)
        m_next = index + 1;
}

void UndoQueue::replay(Record& entry, Replay direction) {
    // Every plug-in with a command in the entry stays loaded until the replay is over.
    std::set<std::string> owners;
    entry.collectOwners(owners);
    CommandRegistry& registry = host().get<CommandRegistry>();
    std::vector<std::unique_ptr<CommandRegistry::Running>> running;
    for (const std::string& owner : owners)
        running.push_back(std::make_unique<CommandRegistry::Running>(registry, HString(owner)));

    ++m_replaying;
    if (direction == Replay::kUndo)
        entry.undo();
    else
        entry.redo();
    --m_replaying;
}

void UndoQueue::flush() {
    while (!m_entries.empty())
        m_entries.pop_back();
    m_next = 0;
    ++m_generation;
    // What the running commands did so far belongs to the time before the flush.
    for (Frame& frame : m_frames) {
        frame.records.clear();
        frame.discarding = true;
    }
}

void UndoQueue::dropOwner(const CommandOwner& owner) {
    auto holds = [&](const std::unique_ptr<Record>& r) { return r->holds(owner); };
    unsigned droppedBeforeNext =
        static_cast<unsigned>(std::count_if(m_entries.begin(), m_entries.begin() + m_next, holds));
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), holds), m_entries.end());
    m_next -= droppedBeforeNext;
    ++m_generation;
    for (Frame& frame : m_frames)
        frame.records.erase(std::remove_if(frame.records.begin(), frame.records.end(), holds),
                            frame.records.end());
}

unsigned UndoQueue::undoCount() const {
    return m_next;
}

unsigned UndoQueue::redoCount() const {
    return static_cast<unsigned>(m_entries.size()) - m_next;
}

HString UndoQueue::undoName() const {
    return m_next > 0 ? m_entries[m_next - 1]->name : HString();
}

HString UndoQueue::redoName() const {
    return m_next < m_entries.size() ? m_entries[m_next]->name : HString();
}

} // namespace runtime

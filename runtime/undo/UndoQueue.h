// UndoQueue: what the commands run with undo on have done, so that it can be undone and redone.
//
// Every invocation of a command is bracketed by beginCommand() and endCommand(). While it runs,
// the commands it runs itself are recorded into its own frame; when it ends, the queue keeps a
// record of it (the command object, when it is to be kept, and the records of its frame) in the
// enclosing frame, or, at the top, as a new entry of the queue. So one undo reverts a whole
// edit: undo() undoes the entry's inner records in reverse order, then calls the command's
// undoIt(); redo() calls the command's redoIt() only, which runs its inner commands again
// (commands run during an undo or a redo are never recorded, and the entry keeps its first
// inner records). A record without a command object (its command was not kept, but it ran
// recorded commands) undoes and redoes its inner records.
//
// The queue owns the command objects it keeps and deletes each exactly once: when its entry
// falls off the queue's end (it holds kLimit entries), when a new entry discards what could be
// redone, when the queue is flushed (flushUndo, a new or opened scene) and when the commands of
// a plug-in are dropped before it unloads. A flush also forgets the commands that are running
// and what they recorded so far: nothing from before it can be undone. Undo and redo fire
// "Undo" and "Redo" afterwards; with nothing to undo or redo they print a warning and change
// nothing. While an entry is undone or redone, the owners of its commands count as running
// (CommandRegistry), so their plug-ins cannot unload under it.
#pragma once

#include "HPxCommand.h"
#include "HString.h"
#include "core/HostContext.h"
#include "lang/CommandRegistry.h"

#include <deque>
#include <memory>
#include <vector>

namespace runtime {

class UndoQueue : public HostModule {
public:
    static constexpr unsigned kLimit = 50;

    UndoQueue();
    ~UndoQueue() override;

    void beginCommand();
    // command is the object to keep for undo, or null when the invocation is not to be
    // recorded (run with undo off, or not undoable); text names the entry.
    void endCommand(std::unique_ptr<HPxCommand> command, const CommandOwner& owner,
                    const HString& text);

    // False, after the warning, when there is nothing to undo or redo.
    bool undo();
    bool redo();
    void flush();
    // Drops every entry that holds a command of the owner, and its pending records.
    void dropOwner(const CommandOwner& owner);

    unsigned undoCount() const;
    unsigned redoCount() const;
    // The statement text of the entry that undo() or redo() would take, or empty.
    HString undoName() const;
    HString redoName() const;

private:
    struct Record;
    using RecordList = std::vector<std::unique_ptr<Record>>;
    struct Frame {
        RecordList records;
        // Set for commands run during an undo or redo, and after a flush: nothing is kept.
        bool discarding;
    };
    enum class Replay { kUndo, kRedo };

    void push(std::unique_ptr<Record> entry);
    void replay(Record& entry, Replay direction);
    // Takes the entry at index out of the queue, replays it and puts it back unless the queue
    // was flushed or dropped from meanwhile.
    void replayAt(unsigned index, Replay direction);

    std::deque<std::unique_ptr<Record>> m_entries;
    // Entries before m_next can be undone, the others redone.
    unsigned m_next = 0;
    std::vector<Frame> m_frames;
    unsigned m_replaying = 0;
    unsigned m_generation = 0;
};

} // namespace runtime

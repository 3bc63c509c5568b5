// HPxCommand: the base of commands that plug-ins add to the command language.
//
// The host creates a new command object for every invocation (with the creator registered
// through HFnPlugin) and calls doIt() once. If the invocation ran with undo on and
// isUndoable() is true, the host keeps the object in its undo queue: undo calls undoIt(),
// redo calls redoIt(); the host deletes the object when the queue drops it, is flushed, or
// the plug-in is unloaded. Otherwise the host deletes it right after doIt(). Commands that
// doIt() runs with undo on are recorded into this command's own undo entry.
//
// setResult() sets the result of the invocation that is running; display...() write to the
// script output like HGlobal's.
#pragma once

#include "HArgList.h"
#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HStatus.h"
#include "HString.h"
#include "HStringArray.h"
#include "HSyntax.h"

class HPxCommand {
public:
    HPxCommand();
    virtual ~HPxCommand();
    virtual HStatus doIt(const HArgList& args) = 0;
    virtual HStatus undoIt();
    virtual HStatus redoIt();
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;

    // The syntax registered for this command (empty when it has none).
    HSyntax syntax() const;

    static void clearResult();
    static void setResult(bool result);
    static void setResult(int result);
    static void setResult(double result);
    static void setResult(const HString& result);
    static void setResult(const char* result);
    static void setResult(const HIntArray& result);
    static void setResult(const HDoubleArray& result);
    static void setResult(const HStringArray& result);

    static void displayInfo(const HString& text);
    static void displayWarning(const HString& text);
    static void displayError(const HString& text);

private:
    friend struct HCommandAccess;
    HSyntax m_syntax;
};

// HGlobal: the host's global services: the active selection and the hilite list, running
// command strings in the command language, and writing messages to the script output.
//
// Setting the active selection fires "SelectionChanged" once, synchronously, before
// returning; the hilite list never fires it. executeCommand runs every statement of the text
// in order and stops at the first failing one; its status is that statement's failure (its
// message already written to the script output). Results convert where they can (an int
// where a double is asked for); a result of another type fails with kInvalidParameter.
#pragma once

#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HSelectionList.h"
#include "HStatus.h"
#include "HString.h"
#include "HStringArray.h"

class HGlobal {
public:
    enum ListAdjustment { kReplaceList, kAddToList, kRemoveFromList, kXORWithList };

    static HStatus getActiveSelectionList(HSelectionList& list);
    static HStatus setActiveSelectionList(const HSelectionList& list,
                                          ListAdjustment mode = kReplaceList);
    static HStatus clearSelectionList();
    static HStatus getHiliteList(HSelectionList& list);
    static HStatus setHiliteList(const HSelectionList& list);
    // Fills list with the items named by a name or pattern, as the select command reads them.
    static HStatus getSelectionListByName(const HString& name, HSelectionList& list);

    // displayEnabled echoes the text to the script output before it runs; undoEnabled records
    // what it changes in the undo queue.
    static HStatus executeCommand(const HString& command, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static HStatus executeCommand(const HString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static HStatus executeCommand(const HString& command, HIntArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static HStatus executeCommand(const HString& command, double& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static HStatus executeCommand(const HString& command, HDoubleArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static HStatus executeCommand(const HString& command, HString& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static HStatus executeCommand(const HString& command, HStringArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    // The last statement's result as text (numbers as HString::set(double) writes them, array
    // elements separated by spaces).
    static HString executeCommandStringResult(const HString& command, bool displayEnabled = false,
                                              bool undoEnabled = false, HStatus* status = nullptr);

    // Script output: "TEXT", "// Warning: TEXT", "// Error: TEXT".
    static void displayInfo(const HString& text);
    static void displayWarning(const HString& text);
    static void displayError(const HString& text);
};

// BuiltInCommand: how the host's own commands are written and registered. A built-in is an
// HPxCommand like any plug-in command and takes the same road through the interpreter: its
// syntax is checked before doIt, its result is set with setResult, and it enters the undo queue
// when it runs with undo on and isUndoable() is true.
//
// A built-in lives in one source file of its module:
//
//     class RenameCommand : public HPxCommand {
//     public:
//         static HSyntax createSyntax() {
//             HSyntax syntax;
//             syntax.addFlag("-f", "-force");
//             return syntax;
//         }
//         HStatus doIt(const HArgList& args) override {
//             HArgParser parser(syntax(), args); // checked before doIt: cannot fail here
//             ...                                // find the objects, keep what undo needs
//             if (notFound)
//                 return runtime::noObjectMatches(name);
//             setResult(newName);
//             return redoIt();
//         }
//         HStatus undoIt() override;
//         HStatus redoIt() override;
//         bool isUndoable() const override { return m_changed; }
//     };
//     const bool registered = runtime::registerBuiltInCommand(
//         "rename", runtime::createCommand<RenameCommand>, &RenameCommand::createSyntax);
//
// A built-in runs other statements with runtime::host().get<Interpreter>().run(...) (or
// HGlobal::executeCommand); with undo on they are recorded into its own undo entry.
//
// Errors are reported with commandError and noObjectMatches, which print the message and give
// the failed status the command returns; the interpreter then adds nothing of its own. Two
// built-ins of the same name are a programming error and assert when the host starts.
#pragma once

#include "HPxCommand.h"
#include "HStatus.h"
#include "HString.h"
#include "lang/CommandRegistry.h"

#include <vector>

namespace runtime {

// Call from a static initialiser of the command's source file.
bool registerBuiltInCommand(const char* name, CommandCreator creator,
                            SyntaxCreator syntax = nullptr);

template <typename Command> HPxCommand* createCommand() {
    return new Command;
}

struct BuiltInRegistration {
    const char* name;
    CommandCreator creator;
    SyntaxCreator syntax;
};
// Every built-in registered so far, in registration order.
const std::vector<BuiltInRegistration>& builtInCommands();

// Prints the error and gives it as a failed status.
HStatus commandError(const HString& message, HS::StatusCode code = HS::kFailure);
// "No object matches name: NAME", printed, with kInvalidParameter.
HStatus noObjectMatches(const HString& name);

} // namespace runtime

// CommandSupport: what the built-in scene commands share: reporting failures in the host's
// words, finding the nodes they name, fresh default names, and the undo of commands that
// change the scene.
//
// A failure is printed once, by the function that reports it, and handed back as the status
// the command returns. SceneEditCommand owns its journal; the undo queue owns the command.
#pragma once

#include "HArgParser.h"
#include "HPxCommand.h"
#include "HSelectionList.h"
#include "HStatus.h"
#include "HStringArray.h"
#include "scene/Node.h"
#include "scene/Scene.h"
#include "undo/SceneJournal.h"

#include <string>
#include <vector>

namespace runtime {

// Prints the failure and returns it: the host's look-up messages ("No object matches name:
// X", "More than one object matches name: X") as they are, any other as "COMMAND: TEXT".
HStatus reportFailure(const char* command, const HStatus& status);
HStatus reportFailure(const char* command, const std::string& message);

// A node by name or path; null after reporting the failure in status.
NodePtr findNodeFor(const char* command, const std::string& name, HStatus& status);
// A skin cluster named directly or through the mesh it deforms (or that mesh's transform);
// null after reporting the failure in status.
NodePtr findSkinClusterFor(const char* command, const std::string& name, HStatus& status);
// The same look-up for callers outside the command language: null with the failure in status,
// printing nothing.
NodePtr skinClusterNamed(const std::string& name, HStatus& status);
// The objects a command was given after its flags.
HStringArray commandObjects(const HArgParser& parser);

// A selection list holding the whole node.
HSelectionList selectionOf(const NodePtr& node);

// The first of stem + "1", stem + "2", ... that no node is called.
std::string freshName(const Scene& scene, const std::string& stem);

// The base of the built-ins that change the scene. doIt makes its changes through m_journal;
// undoIt and redoIt replay it; the command is kept for undo when it changed something.
class SceneEditCommand : public HPxCommand {
public:
    SceneEditCommand();
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

protected:
    Scene& m_scene;
    SceneJournal m_journal;
};

} // namespace runtime

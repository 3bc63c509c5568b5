#include "commands/CommandSupport.h"

#include "api/HApiAccess.h"
#include "lang/BuiltInCommand.h"
#include "scene/SelectionItems.h"
#include "scene/SkinBinding.h"
#include "scene/SkinLinks.h"

namespace runtime {

namespace {

bool isLookupMessage(const std::string& message) {
    for (const char* start : {"No object matches name: ", "More than one object matches name: "})
        if (message.rfind(start, 0) == 0)
            return true;
    return false;
}

} // namespace

HStatus reportFailure(const char* command, const HStatus& status) {
    std::string message = status.errorString().str();
    if (isLookupMessage(message))
        return commandError(message, status.statusCode());
    return commandError(std::string(command) + ": " + message, status.statusCode());
}

HStatus reportFailure(const char* command, const std::string& message) {
    return reportFailure(command, HStatus(HS::kInvalidParameter, message));
}

NodePtr findNodeFor(const char* command, const std::string& name, HStatus& status) {
    NodePtr node = scene().findNode(name, &status);
    if (!node)
        status = reportFailure(command, status);
    return node;
}

NodePtr findSkinClusterFor(const char* command, const std::string& name, HStatus& status) {
    NodePtr cluster = skinClusterNamed(name, status);
    if (!cluster)
        status = reportFailure(command, status);
    return cluster;
}

NodePtr skinClusterNamed(const std::string& name, HStatus& status) {
    NodePtr node = scene().findNode(name, &status);
    if (!node || node->hasFn(HFn::kSkinClusterFilter))
        return node;
    NodePtr mesh = meshShapeOf(*node);
    NodePtr cluster = mesh ? skinClusterOfGeometry(*mesh) : nullptr;
    if (!cluster)
        status = HStatus(HS::kInvalidParameter, name + " is not a skin cluster or a skinned mesh.");
    return cluster;
}

HStringArray commandObjects(const HArgParser& parser) {
    HStringArray objects;
    parser.getObjects(objects);
    return objects;
}

HSelectionList selectionOf(const NodePtr& node) {
    HSelectionList list;
    HApiAccess::items(list).push_back(itemForNode(node));
    return list;
}

std::string freshName(const Scene& scene, const std::string& stem) {
    for (unsigned long long number = 1;; ++number) {
        std::string candidate = stem + std::to_string(number);
        if (scene.matchNodes(candidate).empty())
            return candidate;
    }
}

SceneEditCommand::SceneEditCommand() : m_scene(scene()), m_journal(m_scene) {}

HStatus SceneEditCommand::undoIt() {
    m_journal.undo();
    return HS::kSuccess;
}

HStatus SceneEditCommand::redoIt() {
    m_journal.redo();
    return HS::kSuccess;
}

bool SceneEditCommand::isUndoable() const {
    return !m_journal.empty();
}

} // namespace runtime

// SceneJournal: what one command did to the scene, step by step, so that the command's
// undoIt and redoIt can take the scene back and forth exactly.
//
// A command makes its changes through the journal, which changes the scene and records a
// step only when the change succeeded; a change made by other code is recorded with the
// keep... and ...Created calls around it. undo() takes the steps back in reverse order and
// redo() makes them again in order. Both bring back the very same node objects, values,
// connections and weights (bit for bit), so handles held elsewhere stay valid.
//
// Each step sets an absolute state rather than toggling: undo() writes the state from before
// the step, redo() the one after it. That matters when the journal belongs to a command that
// ran inside another one: the undo queue then may undo it, let the outer command redo by
// running its commands anew, and undo it again. Values, weights, the selection, names and
// places come back right in that case; nodes and attributes that the new run created are
// new objects this journal does not know, and stay. A step that finds the scene otherwise
// than it left it changes what it can and goes on.
//
// Steps on the active selection fire "SelectionChanged" once when they change it, and not at
// all when it is already as it should be.
#pragma once

#include "HGlobal.h"
#include "HSelectionList.h"
#include "HStatus.h"
#include "scene/Node.h"
#include "scene/Plug.h"
#include "scene/Value.h"

#include <memory>
#include <string>
#include <vector>

namespace runtime {

class Scene;
class VertexWeightRecord;

class SceneJournal {
public:
    explicit SceneJournal(Scene& scene);
    ~SceneJournal();
    SceneJournal(const SceneJournal&) = delete;
    SceneJournal& operator=(const SceneJournal&) = delete;

    // Whether the recorded steps change nothing (there are none, or only empty ones).
    bool empty() const;

    HStatus setValue(const Plug& plug, const Value& value);
    // Records the values stored at plug and below it, to be put back by undo: call it before
    // other code writes there. A plug that holds nothing yet is recorded at the outermost
    // level that does not exist, so that undo removes the elements the change creates.
    void keepValues(const Plug& plug);
    // replace: take the place of the destination's current source (recorded as well).
    HStatus connect(const Plug& source, const Plug& destination, bool replace = false);
    HStatus disconnect(const Plug& source, const Plug& destination);

    NodePtr createNode(const std::string& typeName, const std::string& name, Node* parent,
                       HStatus* status);
    // Records nodes other code just created: undo deletes them (with what goes with them).
    void nodesCreated(const std::vector<NodePtr>& nodes);
    // Deletes the nodes as Scene::deleteNodes does; undo also puts back the selection that the
    // deletion changed.
    HStatus deleteNodes(const std::vector<NodePtr>& nodes);
    std::string rename(Node& node, const std::string& name, HStatus* status);
    HStatus reparent(Node& node, Node* parent);
    HStatus addAttribute(Node& node, const AttributePtr& attribute);

    // Changes the active selection as Selection::setActive does.
    void setSelection(const HSelectionList& list,
                      HGlobal::ListAdjustment mode = HGlobal::kReplaceList);
    // Records the active selection, for changes other code makes to it.
    void keepSelection();

    // The record that keeps the cluster's vertices before they change: call keep() on it
    // before each change. The journal restores it on undo and redo, and notifies the scene.
    VertexWeightRecord& keepWeights(Node& cluster);

    void undo();
    void redo();

private:
    struct Step;
    struct ValueStep;
    struct ConnectionStep;
    struct NodesStep;
    struct RenameStep;
    struct ReparentStep;
    struct AttributeStep;
    struct SelectionStep;
    struct WeightsStep;

    void add(std::unique_ptr<Step> step);

    Scene& m_scene;
    std::vector<std::unique_ptr<Step>> m_steps;
};

} // namespace runtime

// createNode, delete, rename and parent: editing the scene's nodes.
//
//   createNode TYPE [-n NAME] [-p PARENT] [-ss]   a new node, selected unless -ss
//                                                 (-skipSelect); gives its name
//   delete [OBJECT...]                            the objects (the selected ones when none is
//                                                 named) with what goes with them
//   rename [OBJECT] NEWNAME                       the object (the first selected one when only
//                                                 the new name is given); gives the name it got
//   parent [-w] [-r] CHILD... PARENT              moves DAG nodes under PARENT, or to the world
//                                                 with -w (-world); they keep their place in the
//                                                 world unless -r (-relative) keeps their own
//                                                 values; the selection serves when nothing is
//                                                 named (its last object is the parent); gives
//                                                 the children's names
//
// Default names are the type name with the first number no node uses ("transform1"). Each
// command is undone exactly.
#include "api/HApiAccess.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/Transforms.h"

#include <string>
#include <vector>

namespace {

using runtime::NodePtr;
using runtime::reportFailure;

// The whole objects named by the texts (patterns allowed), or the selected ones when there
// are no texts. Components are refused.
HStatus objectsFor(const char* command, const HStringArray& texts, std::vector<NodePtr>& nodes) {
    runtime::SelectionItems items;
    if (texts.length() == 0)
        items = HApiAccess::items(runtime::selection().active());
    for (const HString& text : texts) {
        HStatus status = runtime::itemsFromText(runtime::scene(), text.str(), true, items);
        if (!status)
            return reportFailure(command, status);
    }
    for (const runtime::SelectionItem& item : items) {
        if (runtime::itemComponent(item))
            return reportFailure(command, "Components cannot be used here, only objects.");
        nodes.push_back(runtime::itemNode(item));
    }
    return HS::kSuccess;
}

class CreateNodeCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-n", "-name", HSyntax::kString);
        syntax.addFlag("-p", "-parent", HSyntax::kString);
        syntax.addFlag("-ss", "-skipSelect");
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HStringArray objects = runtime::commandObjects(parser);
        if (objects.length() != 1)
            return reportFailure("createNode", "Give one node type.");
        std::string type = objects[0].str();
        HStatus status;
        NodePtr parent;
        if (parser.isFlagSet("parent")) {
            parent = runtime::findNodeFor("createNode",
                                          parser.flagArgumentString("parent", 0).str(), status);
            if (!parent)
                return status;
        }
        std::string name = parser.isFlagSet("name") ? parser.flagArgumentString("name", 0).str()
                                                    : runtime::freshName(m_scene, type);
        NodePtr node = m_journal.createNode(type, name, parent.get(), &status);
        if (!node)
            return reportFailure("createNode", status);
        if (!parser.isFlagSet("skipSelect"))
            m_journal.setSelection(runtime::selectionOf(
                node->isShape() && !parent ? node->parent()->shared_from_this() : node));
        setResult(HString(node->name()));
        return HS::kSuccess;
    }
};

class DeleteCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() { return HSyntax(); }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        std::vector<NodePtr> nodes;
        HStatus status = objectsFor("delete", runtime::commandObjects(parser), nodes);
        if (!status)
            return status;
        if (nodes.empty())
            return reportFailure("delete", "Nothing to delete: name the objects or select them.");
        status = m_journal.deleteNodes(nodes);
        return status ? status : reportFailure("delete", status);
    }
};

class RenameCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() { return HSyntax(); }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HStringArray objects = runtime::commandObjects(parser);
        if (objects.length() < 1 || objects.length() > 2)
            return reportFailure("rename", "Give the object and its new name.");
        HStringArray named;
        if (objects.length() == 2)
            named.append(objects[0]);
        std::vector<NodePtr> nodes;
        HStatus status = objectsFor("rename", named, nodes);
        if (!status)
            return status;
        if (nodes.empty())
            return reportFailure("rename", "Name the object or select it.");
        std::string given =
            m_journal.rename(*nodes.front(), objects[objects.length() - 1].str(), &status);
        if (!status)
            return reportFailure("rename", status);
        setResult(HString(given));
        return HS::kSuccess;
    }
};

class ParentCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-w", "-world");
        syntax.addFlag("-r", "-relative");
        syntax.addFlag("-a", "-absolute");
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        std::vector<NodePtr> children;
        HStatus status = objectsFor("parent", runtime::commandObjects(parser), children);
        if (!status)
            return status;
        bool toWorld = parser.isFlagSet("world");
        NodePtr parent;
        if (!toWorld && !children.empty()) {
            parent = children.back();
            children.pop_back();
        }
        if (children.empty())
            return reportFailure("parent", toWorld ? "Give the objects to move to the world."
                                                   : "Give the objects and then their parent.");
        HStringArray names;
        for (const NodePtr& child : children) {
            status = move(*child, parent.get(), !parser.isFlagSet("relative"));
            if (!status)
                return reportFailure("parent", status);
            names.append(HString(m_scene.partialPathName(*child)));
        }
        setResult(names);
        return HS::kSuccess;
    }

private:
    HStatus move(runtime::Node& child, runtime::Node* parent, bool keepWorldPlace) {
        // Already there: it keeps its place among its siblings.
        if (child.isAlive() && child.isDag() && child.parent() == parent)
            return HS::kSuccess;
        runtime::Matrix before =
            child.parent() ? runtime::worldMatrix(*child.parent()) : runtime::Matrix::identity();
        runtime::Matrix world = runtime::worldMatrix(child);
        HStatus status = m_journal.reparent(child, parent);
        runtime::Matrix after =
            parent ? runtime::worldMatrix(*parent) : runtime::Matrix::identity();
        if (!status || !keepWorldPlace || !child.hasFn(HFn::kTransform) || after == before)
            return status;
        runtime::Matrix inverse;
        runtime::TransformValues values;
        if (!after.inverse(inverse) || !runtime::transformValuesFor(child, inverse * world, values))
            return HS::kSuccess;
        const std::pair<const char*, HPoint> triples[] = {
            {"translate", values.translate}, {"rotate", values.rotate}, {"scale", values.scale}};
        for (const auto& triple : triples) {
            runtime::Plug plug = child.plug(triple.first);
            const double xyz[3] = {triple.second.x, triple.second.y, triple.second.z};
            for (size_t i = 0; i < 3 && status; ++i)
                status = m_journal.setValue(plug.child(i), xyz[i]);
        }
        return status;
    }
};

const bool createRegistered = runtime::registerBuiltInCommand(
    "createNode", runtime::createCommand<CreateNodeCommand>, &CreateNodeCommand::createSyntax);
const bool deleteRegistered = runtime::registerBuiltInCommand(
    "delete", runtime::createCommand<DeleteCommand>, &DeleteCommand::createSyntax);
const bool renameRegistered = runtime::registerBuiltInCommand(
    "rename", runtime::createCommand<RenameCommand>, &RenameCommand::createSyntax);
const bool parentRegistered = runtime::registerBuiltInCommand(
    "parent", runtime::createCommand<ParentCommand>, &ParentCommand::createSyntax);

} // namespace

// ls: names of nodes as a string array. Without objects every node in creation order; with
// objects (names, paths, patterns, components) the ones they name; -sl (-selection) the active
// selection in its order, components as "bodyShape.vtx[3:5]". -type NAME (repeatable) keeps
// nodes of that type (an abstract type such as "dagNode" or "shape" keeps every node derived
// from it). Nodes are named by their shortest unique path, or by their full path with -l
// (-long).
#include "api/HApiAccess.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"

#include <vector>

namespace {

using runtime::reportFailure;

class ListCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-sl", "-selection");
        syntax.addFlag("-typ", "-type", HSyntax::kString);
        syntax.addFlag("-l", "-long");
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        runtime::Scene& scene = runtime::scene();
        std::vector<const runtime::NodeType*> types;
        for (unsigned use = 0; use < parser.numberOfFlagUses("type"); ++use) {
            HArgList value;
            parser.getFlagArgumentList("type", use, value);
            const runtime::NodeType* type = scene.nodeType(value.asString(0).str());
            if (!type)
                return reportFailure("ls", "Unknown node type: " + value.asString(0).str() + ".");
            types.push_back(type);
        }

        runtime::SelectionItems items;
        HStringArray objects = runtime::commandObjects(parser);
        if (parser.isFlagSet("selection")) {
            items = HApiAccess::items(runtime::selection().active());
        } else if (objects.length() == 0) {
            for (const runtime::NodePtr& node : scene.nodes())
                items.push_back(runtime::itemForNode(node));
        }
        for (const HString& text : objects) {
            HStatus status = runtime::itemsFromText(scene, text.str(), true, items);
            if (!status)
                return reportFailure("ls", status);
        }
        if (!types.empty())
            keepTypes(items, types);

        HStringArray names;
        for (const std::string& name : runtime::itemTexts(scene, items, parser.isFlagSet("long")))
            names.append(HString(name));
        setResult(names);
        return HS::kSuccess;
    }

private:
    static bool isOfType(const runtime::Node& node, const runtime::NodeType& type) {
        return type.isAbstract() ? node.hasFn(type.apiType()) : &node.type() == &type;
    }

    static void keepTypes(runtime::SelectionItems& items,
                          const std::vector<const runtime::NodeType*>& types) {
        runtime::SelectionItems kept;
        for (const runtime::SelectionItem& item : items) {
            runtime::NodePtr node = runtime::itemNode(item);
            for (const runtime::NodeType* type : types) {
                if (node && isOfType(*node, *type)) {
                    kept.push_back(item);
                    break;
                }
            }
        }
        items = std::move(kept);
    }
};

const bool registered = runtime::registerBuiltInCommand("ls", runtime::createCommand<ListCommand>,
                                                        &ListCommand::createSyntax);

} // namespace

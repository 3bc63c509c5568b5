// addAttr, connectAttr and disconnectAttr: building scenes in scripts.
//
//   addAttr -ln NAME [-sn SHORT] [-at bool|long|int|short|double|float|message]
//           [-dt string|stringArray] [-dv DEFAULT] [-m] [NODE...]
//       adds a dynamic attribute to each node (the selected objects when none is named);
//       a number (double) when no type is given, -m (-multi) makes it a sparse array.
//   connectAttr [-f] SOURCE DESTINATION
//       -f (-force) replaces the destination's current source.
//   disconnectAttr SOURCE DESTINATION
//
// Each is undone exactly.
#include "api/HApiAccess.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/PlugPath.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"

#include <string>
#include <vector>

namespace {

using runtime::AttributePtr;
using runtime::reportFailure;
using runtime::ValueType;

struct AttributeRequest {
    std::string longName, shortName;
    bool message = false;
    bool typed = false;
    ValueType type = ValueType::kDouble;
    double defaultValue = 0.0;
    bool array = false;

    AttributePtr make() const {
        AttributePtr def;
        if (message)
            def = runtime::AttributeDef::message(longName, shortName);
        else if (typed)
            def = runtime::AttributeDef::typed(longName, shortName, type);
        else
            def = runtime::AttributeDef::numeric(longName, shortName, type, defaultValue);
        def->setArray(array);
        return def;
    }
};

HStatus readRequest(const HArgParser& parser, AttributeRequest& request) {
    if (!parser.isFlagSet("longName"))
        return reportFailure("addAttr", "Give the attribute's name with -ln (-longName).");
    request.longName = parser.flagArgumentString("longName", 0).str();
    request.shortName = parser.isFlagSet("shortName")
                            ? parser.flagArgumentString("shortName", 0).str()
                            : request.longName;
    request.array = parser.isFlagSet("multi");
    if (parser.isFlagSet("attributeType") && parser.isFlagSet("dataType"))
        return reportFailure("addAttr", "Give either -at or -dt, not both.");
    if (parser.isFlagSet("dataType")) {
        std::string name = parser.flagArgumentString("dataType", 0).str();
        request.typed = true;
        if (name == "string")
            request.type = ValueType::kString;
        else if (name == "stringArray")
            request.type = ValueType::kStringArray;
        else
            return reportFailure("addAttr", "Unknown data type: " + name + ".");
    } else if (parser.isFlagSet("attributeType")) {
        std::string name = parser.flagArgumentString("attributeType", 0).str();
        if (name == "bool")
            request.type = ValueType::kBool;
        else if (name == "long" || name == "int" || name == "short")
            request.type = ValueType::kInt;
        else if (name == "double" || name == "float")
            request.type = ValueType::kDouble;
        else if (name == "message")
            request.message = true;
        else
            return reportFailure("addAttr", "Unknown attribute type: " + name + ".");
    }
    if (parser.isFlagSet("defaultValue")) {
        if (request.typed || request.message)
            return reportFailure("addAttr", "-dv (-defaultValue) is for numeric attributes.");
        request.defaultValue = parser.flagArgumentDouble("defaultValue", 0);
    }
    return HS::kSuccess;
}

class AddAttrCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-ln", "-longName", HSyntax::kString);
        syntax.addFlag("-sn", "-shortName", HSyntax::kString);
        syntax.addFlag("-at", "-attributeType", HSyntax::kString);
        syntax.addFlag("-dt", "-dataType", HSyntax::kString);
        syntax.addFlag("-dv", "-defaultValue", HSyntax::kDouble);
        syntax.addFlag("-m", "-multi");
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        AttributeRequest request;
        HStatus status = readRequest(parser, request);
        if (!status)
            return status;
        std::vector<runtime::NodePtr> nodes;
        for (const HString& name : runtime::commandObjects(parser)) {
            nodes.push_back(runtime::findNodeFor("addAttr", name.str(), status));
            if (!status)
                return status;
        }
        if (nodes.empty())
            for (const runtime::SelectionItem& item :
                 HApiAccess::items(runtime::selection().active()))
                if (!runtime::itemComponent(item))
                    nodes.push_back(runtime::itemNode(item));
        if (nodes.empty())
            return reportFailure("addAttr", "Name the nodes or select them.");
        for (const runtime::NodePtr& node : nodes) {
            status = m_journal.addAttribute(*node, request.make());
            if (!status)
                return reportFailure("addAttr", status);
        }
        return HS::kSuccess;
    }
};

// The two plugs of connectAttr and disconnectAttr.
HStatus findEnds(const char* command, const HArgParser& parser, runtime::Plug& source,
                 runtime::Plug& destination) {
    HStringArray objects = runtime::commandObjects(parser);
    if (objects.length() != 2)
        return reportFailure(command, "Give the source and the destination attribute.");
    HStatus status;
    source = runtime::findPlug(runtime::scene(), objects[0].str(), &status);
    if (status)
        destination = runtime::findPlug(runtime::scene(), objects[1].str(), &status);
    return status ? status : reportFailure(command, status);
}

HStatus connect(runtime::SceneJournal& journal, const HArgParser& parser,
                const runtime::Plug& source, const runtime::Plug& destination) {
    return journal.connect(source, destination, parser.isFlagSet("force"));
}

HStatus disconnect(runtime::SceneJournal& journal, const HArgParser&, const runtime::Plug& source,
                   const runtime::Plug& destination) {
    return journal.disconnect(source, destination);
}

using ConnectionChange = HStatus (*)(runtime::SceneJournal&, const HArgParser&,
                                     const runtime::Plug&, const runtime::Plug&);

// connectAttr (with -f) and disconnectAttr: the same two plugs, another change.
template <const char* Name, ConnectionChange Change>
class ConnectionCommand : public runtime::SceneEditCommand {
public:
    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        runtime::Plug source, destination;
        HStatus status = findEnds(Name, parser, source, destination);
        if (!status)
            return status;
        status = Change(m_journal, parser, source, destination);
        return status ? status : reportFailure(Name, status);
    }
};

HSyntax connectSyntax() {
    HSyntax syntax;
    syntax.addFlag("-f", "-force");
    return syntax;
}

HSyntax disconnectSyntax() {
    return HSyntax();
}

constexpr char kConnectAttr[] = "connectAttr";
constexpr char kDisconnectAttr[] = "disconnectAttr";

const bool addRegistered = runtime::registerBuiltInCommand(
    "addAttr", runtime::createCommand<AddAttrCommand>, &AddAttrCommand::createSyntax);
const bool connectRegistered = runtime::registerBuiltInCommand(
    kConnectAttr, runtime::createCommand<ConnectionCommand<kConnectAttr, connect>>, connectSyntax);
const bool disconnectRegistered = runtime::registerBuiltInCommand(
    kDisconnectAttr, runtime::createCommand<ConnectionCommand<kDisconnectAttr, disconnect>>,
    disconnectSyntax);

} // namespace

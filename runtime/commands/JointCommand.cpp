// joint: a new joint at a world position (-p -position X Y Z, the origin by default) named by
// -n (-name) or "joint1", "joint2", ... It goes under the first selected joint (at the root
// when no joint is selected) and then becomes the selection, so that a run of joint commands
// builds a chain. Gives the joint's name; undone exactly.
#include "api/HApiAccess.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/Transforms.h"

namespace {

runtime::NodePtr selectedJoint() {
    for (const runtime::SelectionItem& item : HApiAccess::items(runtime::selection().active())) {
        runtime::NodePtr node = runtime::itemNode(item);
        if (node && !runtime::itemComponent(item) && node->hasFn(HFn::kJoint))
            return node;
    }
    return nullptr;
}

class JointCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-p", "-position", HSyntax::kDouble, HSyntax::kDouble, HSyntax::kDouble);
        syntax.addFlag("-n", "-name", HSyntax::kString);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        if (runtime::commandObjects(parser).length() > 0)
            return runtime::reportFailure("joint", "It takes no objects, only its flags.");
        HPoint position;
        if (parser.isFlagSet("position"))
            position = HPoint(parser.flagArgumentDouble("position", 0),
                              parser.flagArgumentDouble("position", 1),
                              parser.flagArgumentDouble("position", 2));
        std::string name = parser.isFlagSet("name") ? parser.flagArgumentString("name", 0).str()
                                                    : runtime::freshName(m_scene, "joint");
        runtime::NodePtr parent = selectedJoint();
        HStatus status;
        runtime::NodePtr joint = m_journal.createNode("joint", name, parent.get(), &status);
        if (joint)
            status = runtime::setWorldPosition(m_scene, *joint, position);
        if (!status)
            return runtime::reportFailure("joint", status);
        m_journal.setSelection(runtime::selectionOf(joint));
        setResult(HString(joint->name()));
        return HS::kSuccess;
    }
};

const bool registered = runtime::registerBuiltInCommand(
    "joint", runtime::createCommand<JointCommand>, &JointCommand::createSyntax);

} // namespace

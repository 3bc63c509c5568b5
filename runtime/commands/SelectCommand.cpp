// select: changes the active selection: objects by name, path or pattern, and components
// ("body.vtx[3]", "body.vtx[2:5]", "body.e[4]", "body.f[0:3]"). -r (-replace, the default)
// makes the objects the selection, -add adds them, -d (-deselect) takes them out, -tgl
// (-toggle) does either for each, -cl (-clear) empties the selection. Without objects the
// replace mode empties it too. Each run changes the selection once ("SelectionChanged" fires
// once) and can be undone.
#include "api/HApiAccess.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/SelectionItems.h"

namespace {

using runtime::reportFailure;

class SelectCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-r", "-replace");
        syntax.addFlag("-add", "-add");
        syntax.addFlag("-d", "-deselect");
        syntax.addFlag("-tgl", "-toggle");
        syntax.addFlag("-cl", "-clear");
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HGlobal::ListAdjustment mode = HGlobal::kReplaceList;
        unsigned modes = 0;
        const std::pair<const char*, HGlobal::ListAdjustment> flags[] = {
            {"replace", HGlobal::kReplaceList},
            {"add", HGlobal::kAddToList},
            {"deselect", HGlobal::kRemoveFromList},
            {"toggle", HGlobal::kXORWithList}};
        for (const auto& flag : flags) {
            if (parser.isFlagSet(flag.first)) {
                mode = flag.second;
                ++modes;
            }
        }
        if (modes > 1)
            return reportFailure("select", "Use only one of -r, -add, -d and -tgl.");
        if (parser.isFlagSet("clear")) {
            m_journal.setSelection(HSelectionList());
            return HS::kSuccess;
        }
        HSelectionList list;
        for (const HString& text : runtime::commandObjects(parser)) {
            HStatus status =
                runtime::itemsFromText(m_scene, text.str(), true, HApiAccess::items(list));
            if (!status)
                return reportFailure("select", status);
        }
        if (list.isEmpty() && mode != HGlobal::kReplaceList)
            return reportFailure("select", "Give the objects to add, deselect or toggle.");
        m_journal.setSelection(list, mode);
        return HS::kSuccess;
    }
};

const bool registered = runtime::registerBuiltInCommand(
    "select", runtime::createCommand<SelectCommand>, &SelectCommand::createSyntax);

} // namespace

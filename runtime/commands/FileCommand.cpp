// file: the scene as a file. One action per run:
//   -new                       an empty scene
//   -o -open PATH              the file's scene in place of the open one
//   -s -save                   writes the scene under its name
//   -rn -rename PATH           gives the scene a new name to save under (writes nothing)
//   -i -import PATH            adds the file's scene to the open one (undone in one step)
//   -ea -exportAll PATH        writes the whole scene to PATH, keeping its name
//   -q -sn -sceneName          gives the scene's name ("" when it has none)
// -new and -open refuse to throw away unsaved changes ("The scene has unsaved changes.") unless
// -f (-force) is given. Formats go by the path's extension (document/SceneDocument.h). A file
// that cannot be read or written is reported with the file's name and the problem, and leaves
// the scene as it was. -open, -save, -rename, -import and -exportAll give the path.
//
// Opening, importing, saving and exporting report their progress to the host's progress
// monitor (MonitoredProgress.h), so that the application shows it and the user can cancel: a
// cancelled read leaves the scene as it was, a cancelled write the file as it was, and the
// command fails with an error that says so, so that a script does not go on as if it had not.
#include "commands/CommandSupport.h"
#include "document/SceneDocument.h"
#include "files/MonitoredProgress.h"
#include "lang/BuiltInCommand.h"

#include <QFileInfo>

namespace {

const char* const kActions[] = {"new", "open", "save", "rename", "import", "exportAll"};

// What the progress display calls the work: "Opening body.glb".
std::string progressTitle(const std::string& action, const std::string& path) {
    const char* verb = action == "open"     ? "Opening "
                       : action == "import" ? "Importing "
                       : action == "save"   ? "Saving "
                                            : "Exporting ";
    return verb + QFileInfo(QString::fromStdString(path)).fileName().toStdString();
}

class FileCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-new", "-new");
        syntax.addFlag("-o", "-open", HSyntax::kString);
        syntax.addFlag("-s", "-save");
        syntax.addFlag("-rn", "-rename", HSyntax::kString);
        syntax.addFlag("-i", "-import", HSyntax::kString);
        syntax.addFlag("-ea", "-exportAll", HSyntax::kString);
        syntax.addFlag("-sn", "-sceneName");
        syntax.addFlag("-f", "-force");
        syntax.enableQuery();
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        runtime::SceneDocument& document = runtime::sceneDocument();
        if (parser.isQuery()) {
            if (!parser.isFlagSet("sceneName"))
                return runtime::reportFailure("file", "Query -sceneName.");
            setResult(HString(document.name()));
            return HS::kSuccess;
        }
        std::string action;
        for (const char* flag : kActions) {
            if (!parser.isFlagSet(flag))
                continue;
            if (!action.empty())
                return runtime::reportFailure("file", "Give one of -" + action + " and -" + flag +
                                                          ", not both.");
            action = flag;
        }
        if (action.empty())
            return runtime::reportFailure(
                "file", "Give one of -new, -open, -save, -rename, -import and -exportAll.");
        if (runtime::commandObjects(parser).length() > 0)
            return runtime::reportFailure("file", "It takes no objects, only its flags.");
        const std::string path = action == "new" || action == "save"
                                     ? std::string()
                                     : parser.flagArgumentString(action.c_str(), 0).str();
        if ((action == "new" || action == "open") && m_scene.isModified() &&
            !parser.isFlagSet("force"))
            return runtime::commandError("The scene has unsaved changes.");
        return run(action, path, document);
    }

private:
    HStatus run(const std::string& action, const std::string& path,
                runtime::SceneDocument& document) {
        if (action == "new") {
            document.newScene();
            return HS::kSuccess;
        }
        if (action == "rename") {
            document.rename(path);
            setResult(HString(path));
            return HS::kSuccess;
        }
        if (action == "save" && document.name().empty())
            return runtime::reportFailure(
                "file", "The scene has no name to save under; give it one with -rename.");
        const std::string file = action == "save" ? document.name() : path;
        runtime::MonitoredProgress progress(progressTitle(action, file));
        runtime::FileResult result;
        if (action == "open") {
            result = document.open(path, progress);
        } else if (action == "save") {
            result = document.save(progress);
        } else if (action == "exportAll") {
            result = document.exportAll(path, progress);
        } else {
            std::vector<runtime::NodePtr> added;
            result = document.import(path, added, progress);
            m_journal.nodesCreated(added);
        }
        return finish(result, file);
    }

    HStatus finish(const runtime::FileResult& result, const std::string& path) {
        for (const std::string& warning : result.warnings)
            HGlobal::displayWarning(HString(warning));
        if (!result.ok())
            return runtime::commandError(result.message);
        setResult(HString(path));
        return HS::kSuccess;
    }
};

const bool registered = runtime::registerBuiltInCommand("file", runtime::createCommand<FileCommand>,
                                                        &FileCommand::createSyntax);

} // namespace

#include "fileCommandStandIn.h"

#include "HGlobal.h"
#include "HPxCommand.h"
#include "HQtUtil.h"
#include "lang/BuiltInCommand.h"
#include "scene/Scene.h"

#include <QFileInfo>

namespace appfixture {

namespace {

FileCommandState g_state;

class FileStandIn : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        QStringList words;
        for (unsigned i = 0; i < args.length(); ++i)
            words.append(HQtUtil::toQString(args.asString(i)));
        if (words == QStringList{"-q", "-sceneName"}) {
            setResult(HQtUtil::toHString(g_state.sceneName));
            return HS::kSuccess;
        }
        g_state.calls.append(words.join(' '));
        bool force = words.contains("-force");
        runtime::Scene& scene = runtime::scene();
        if (words.contains("-save")) {
            if (g_state.failSave)
                return runtime::commandError("file: cannot save.");
            scene.setModified(false);
        } else if (words.contains("-rename")) {
            g_state.sceneName = words.last();
        } else if (words.contains("-new") || words.contains("-open")) {
            if (scene.isModified() && !force)
                return runtime::commandError("The scene has unsaved changes.");
            if (words.contains("-open") && !QFileInfo::exists(words.last()))
                return runtime::commandError("file: cannot open " +
                                             args.asString(args.length() - 1));
            scene.reset();
            g_state.sceneName = words.contains("-open") ? words.last() : QString();
        }
        return HS::kSuccess;
    }
};

} // namespace

FileCommandStandIn::FileCommandStandIn() : m_command("file", runtime::createCommand<FileStandIn>) {
    g_state = FileCommandState();
}

FileCommandStandIn::~FileCommandStandIn() {
    g_state = FileCommandState();
}

FileCommandState& FileCommandStandIn::state() {
    return g_state;
}

} // namespace appfixture

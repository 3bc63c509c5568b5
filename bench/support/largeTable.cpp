#include "largeTable.h"

#include "HGlobal.h"
#include "HQtUtil.h"
#include "sceneFixture.h"

#include <QAbstractItemModel>
#include <QMainWindow>
#include <QTableView>
#include <cstdio>

namespace {

bool run(const HString& command) {
    return static_cast<bool>(HGlobal::executeCommand(command));
}

} // namespace

LargeTable openLargeTable(const char* pluginPath, LargeTableSize size) {
    fixture::SkinnedMeshOptions options;
    options.vertices = size.vertices;
    options.joints = size.influences;
    options.weightsPerVertex = 8;
    options.seed = 11;
    fixture::makeSkinnedMesh(options);
    LargeTable large;
    if (!run(HString("loadPlugin \"") + pluginPath + "\"") || !run("vorelCmd") ||
        !run("select -r body")) {
        std::fprintf(stderr, "cannot load the plug-in and select the mesh\n");
        return large;
    }
    for (QMainWindow* window : HQtUtil::mainWindow()->findChildren<QMainWindow*>()) {
        if (!window->inherits("vorelWindow"))
            continue;
        large.window = window;
        for (QAbstractItemModel* model : window->findChildren<QAbstractItemModel*>())
            if (model->inherits("weightTableModel"))
                large.model = model;
        large.table = window->findChild<QTableView*>();
    }
    if (large.model)
        QMetaObject::invokeMethod(large.model, "refreshSkinClusterData");
    return large;
}

// bench-weight-loading: loading a large mesh into the Vorel table, as "Load Component" does:
// 100,000 vertices, 64 influences, 8 weights per vertex, with the rounding of every row, the
// reading of stored locks (two locked joints, 1,000 locked vertices, 100 locked cells) and the
// column filter on. Target: under 1 s per load. The counters give the memory the first load
// adds to the model ("model_MB") against the size of the table's doubles ("doubles_MB"); the
// target is a ratio under 2.
#include "HFnDependencyNode.h"
#include "HFnStringArrayData.h"
#include "HGlobal.h"
#include "HPlug.h"
#include "HQtUtil.h"
#include "benchHostMain.h"
#include "sceneFixture.h"

#include <QAbstractItemModel>
#include <QMainWindow>
#include <QPushButton>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <malloc.h>

namespace {

constexpr unsigned kVertices = 100000;
constexpr unsigned kInfluences = 64;

QAbstractItemModel* tableModel = nullptr;
double modelMegabytes = 0.0;

double heapMegabytes() {
    return static_cast<double>(mallinfo2().uordblks) / (1024.0 * 1024.0);
}

void storeLocks(const fixture::SkinnedMesh& mesh) {
    HFnDependencyNode cluster(mesh.clusterObject());
    HStringArray joints;
    joints.append(mesh.jointPath(3).fullPathName());
    joints.append(mesh.jointPath(40).fullPathName());
    cluster.findPlug("lockedJointNames").setValue(HFnStringArrayData().create(joints));
    HPlug vertices = cluster.findPlug("lockedVertexIndices");
    for (unsigned vertex = 0; vertex < kVertices; vertex += kVertices / 1000)
        vertices.elementByLogicalIndex(vertex).setBool(true);
    HPlug cells = cluster.findPlug("lockedLocalJoints");
    for (unsigned vertex = 7; vertex < kVertices; vertex += kVertices / 100) {
        cells.selectAncestorLogicalIndex(vertex, cluster.attribute("lockedCellIndices"));
        cells.elementByLogicalIndex(0).setString(
            mesh.jointPath(vertex % kInfluences).fullPathName());
    }
}

bool run(const char* command) {
    return static_cast<bool>(HGlobal::executeCommand(command));
}

// Opens the Vorel window with the filter on; returns its model, null when that failed.
QAbstractItemModel* openFilteredWindow() {
    if (!run("loadPlugin \"" VOREL_PLUGIN_PATH "\"") || !run("vorelCmd"))
        return nullptr;
    QAbstractItemModel* found = nullptr;
    for (QMainWindow* window : HQtUtil::mainWindow()->findChildren<QMainWindow*>()) {
        for (QAbstractItemModel* model : window->findChildren<QAbstractItemModel*>())
            if (model->inherits("weightTableModel"))
                found = model;
        for (QPushButton* button : window->findChildren<QPushButton*>())
            if (button->text() == "Filter")
                button->click();
    }
    return found;
}

// Builds the mesh, stores the locks (a first load creates the lock attributes), then measures
// what a load adds to the model of a fresh window.
void prepare() {
    fixture::SkinnedMeshOptions options;
    options.vertices = kVertices;
    options.joints = kInfluences;
    options.weightsPerVertex = 8;
    options.seed = 11;
    const fixture::SkinnedMesh mesh = fixture::makeSkinnedMesh(options);
    QAbstractItemModel* first = openFilteredWindow();
    if (!first || !run("select -r body")) {
        std::fprintf(stderr, "cannot load the plug-in and select the mesh\n");
        return;
    }
    QMetaObject::invokeMethod(first, "refreshSkinClusterData");
    storeLocks(mesh);
    run("unloadPlugin vorel");

    tableModel = openFilteredWindow();
    const double before = heapMegabytes();
    QMetaObject::invokeMethod(tableModel, "refreshSkinClusterData");
    modelMegabytes = heapMegabytes() - before;
}

void loadWeights(benchmark::State& state) {
    if (!tableModel) {
        state.SkipWithError("the plug-in did not load");
        return;
    }
    for (auto _ : state)
        QMetaObject::invokeMethod(tableModel, "refreshSkinClusterData");
    const double doubles = static_cast<double>(tableModel->rowCount()) * (kInfluences + 1) *
                           sizeof(double) / (1024.0 * 1024.0);
    state.counters["rows"] = tableModel->rowCount();
    state.counters["model_MB"] = modelMegabytes;
    state.counters["doubles_MB"] = doubles;
    state.counters["ratio"] = modelMegabytes / doubles;
}
BENCHMARK(loadWeights)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

int main(int argc, char** argv) {
    return runBenchmarksInHost(argc, argv, "bench-weight-loading", prepare);
}

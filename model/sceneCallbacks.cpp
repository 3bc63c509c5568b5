// Following the scene: a selection change reloads the table (automatic updating) or selects
// the matching rows; an opened scene drops the table, whose host objects belong to the old
// scene. The program's own selection changes pass through setSceneSelection, which keeps them
// from coming back as reloads.
#include "HFnSingleIndexedComponent.h"
#include "HGlobal.h"
#include "HIntArray.h"
#include "HItSelectionList.h"
#include "weightTableModel.h"

#include <QHash>
#include <QItemSelection>
#include <QItemSelectionModel>

void weightTableModel::selectionChangedCallback(void* model) {
    static_cast<weightTableModel*>(model)->onSelectionChanged();
}

void weightTableModel::sceneOpenedCallback(void* model) {
    static_cast<weightTableModel*>(model)->onSceneOpened();
}

void weightTableModel::setSceneSelection(const HSelectionList& list) {
    if (list.isEmpty())
        return;
    const bool savedAutoUpdate = autoUpdate;
    autoUpdate = false;
    selectionGuard = true;
    HGlobal::setActiveSelectionList(list, HGlobal::kReplaceList);
    selectionGuard = false;
    autoUpdate = savedAutoUpdate;
}

void weightTableModel::onSceneOpened() {
    emit layoutAboutToBeChanged();
    skinClusters.clear();
    shapePaths.clear();
    shapeComponents.clear();
    influencePaths.clear();
    influenceNames.clear();
    weightRows.clear();
    rowsFollowScene = false;
    // Everything kept of the old scene's tables names objects that are gone.
    rowNames.clear();
    influenceColors.clear();
    influenceColumns.clear();
    updateRowNamesKey();
    forgetTableCopies();
    forgetUndoCopies();
    lockedColumns.clear();
    lockedRows.clear();
    clearLockedCells();
    writtenJointLocks.clear();
    finishLayoutChange();
    sceneJustOpened = true;
}

void weightTableModel::undoRedoCallback(void* model) {
    static_cast<weightTableModel*>(model)->followHostLocks();
}

void weightTableModel::weightsChangedCallback(void* model) {
    weightTableModel* table = static_cast<weightTableModel*>(model);
    // Weights changed by anything but the table's own edit: the next refresh reads everything.
    if (!table->writingScene)
        table->rowsFollowScene = false;
}

void weightTableModel::onSelectionChanged() {
    // Opening a scene empties the selection; the change that follows is not the user's.
    if (sceneJustOpened) {
        sceneJustOpened = false;
        return;
    }
    if (skinPaintSmoothMode || selectionGuard)
        return;
    if (autoUpdate)
        refreshSkinClusterData();
    else
        mirrorSceneSelection();
    HGlobal::executeCommand("refresh");
}

void weightTableModel::mirrorSceneSelection() {
    if (!tableSelection)
        return;
    QItemSelectionModel* selection = tableSelection;
    selection->clearSelection();
    HSelectionList scene;
    HGlobal::getActiveSelectionList(scene);
    for (HItSelectionList it(scene); !it.isDone(); it.next()) {
        HDagPath path;
        HObject component;
        it.getDagPath(path, component);
        if (!path.node().hasFn(HFn::kMesh) || component.isNull())
            continue;
        HIntArray vertices;
        HFnSingleIndexedComponent(component).getElements(vertices);
        const int shape = shapeIndexOfNode(path);
        int firstRow = -1;
        for (int row = 0; shape >= 0 && row < weightRows.size(); ++row)
            if (weightRows[row][0] == shape) {
                firstRow = row;
                break;
            }
        if (firstRow == -1)
            continue;

        // Position of each vertex among the shape's rows: its index for a whole shape, its
        // places in the loaded component otherwise.
        QMultiHash<int, int> positions;
        const HObject& loaded = shapeComponents[static_cast<unsigned>(shape)];
        if (!loaded.isNull()) {
            HIntArray loadedVertices;
            HFnSingleIndexedComponent(loaded).getElements(loadedVertices);
            for (unsigned p = 0; p < loadedVertices.length(); ++p)
                positions.insert(loadedVertices[p], static_cast<int>(p));
        }
        // Consecutive rows go into one range, so that selecting a large part of a mesh stays
        // cheap; the ranges keep the order of the scene's selection.
        QItemSelection rows;
        int runStart = -1, runEnd = -1;
        auto flush = [&]() {
            if (runStart != -1)
                rows.select(index(runStart, 0), index(runEnd, 0));
        };
        auto selectRow = [&](int row) {
            if (row >= weightRows.size() || weightRows[row][0] != shape)
                return;
            if (runStart != -1 && row == runEnd + 1) {
                runEnd = row;
                return;
            }
            flush();
            runStart = runEnd = row;
        };
        for (int vertex : vertices) {
            if (loaded.isNull())
                selectRow(firstRow + vertex);
            else
                for (int position : positions.values(vertex))
                    selectRow(firstRow + position);
        }
        flush();
        selection->select(rows, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        if (selection->hasSelection())
            selection->setCurrentIndex(selection->selection().first().topLeft(),
                                       QItemSelectionModel::Select);
    }
}

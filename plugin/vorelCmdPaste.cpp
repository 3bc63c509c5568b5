// The paste edit: every pasted row is one write of its pasted influences, the row's other
// unlocked influences sharing the remainder, so that each row keeps exactly the values pasted
// into it; its undo writes the row's weights back as they were.
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "commandModelAccess.h"
#include "editorPointers.h"
#include "vorelCmd.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QHash>

using namespace commandModelAccess;
using weightWriting::InfluenceLockGuard;
using weightWriting::NormalisationGuard;

bool vorelCmd::preparePaste() {
    const QModelIndexList pasted = editorModel->getPendingCells();
    const QList<double> values = editorModel->getPendingValues();
    editShapes.clear();
    editComponents.clear();
    influenceCounts.clear();
    pasteInfluences.clear();
    pasteValues.clear();
    pasteLockColumns.clear();
    QHash<int, int> entryOfRow;
    // The columns of each row's locked cells, which keep their weights while a row is written.
    QHash<int, QList<int>> lockedCellColumns;
    for (const QList<int>& cell : qAsConst(lockedCells))
        if (cell.size() == 2)
            lockedCellColumns[cell[0]].append(cell[1]);
    for (int i = 0; i < pasted.size() && i < values.size(); ++i) {
        const int r = pasted[i].row();
        const int shape = r >= 0 && r < weightRows.size()
                              ? weightRows::shapeOfRow(weightRows.at(r), shapePaths.length())
                              : -1;
        int vertex = 0;
        if (shape == -1 || !vertexOfRow(*editorModel, r, vertex)) {
            HGlobal::displayInfo("This is not a valid cell to edit.");
            return false;
        }
        const HObject& cluster = skinClusters[static_cast<unsigned>(shape)];
        const int influence = editorModel->influenceIndexByName(
            cluster, columnName(*editorModel, pasted[i].column()));
        if (influence == -1) {
            HGlobal::displayInfo("There is something wrong getting the joint index.");
            return false;
        }
        int entry = entryOfRow.value(r, -1);
        if (entry == -1) {
            entry = entryOfRow.size();
            entryOfRow.insert(r, entry);
            editShapes.append(shape);
            editComponents.append(weightWriting::singleVertexComponent(vertex));
            influenceCounts.append(static_cast<int>(influenceCount(cluster)));
            pasteInfluences.append(HIntArray());
            pasteValues.append(HDoubleArray());
            pasteLockColumns.append(lockedCellColumns.value(r));
        }
        pasteInfluences[entry].append(influence);
        pasteValues[entry].append(values[i]);
    }
    return !entryOfRow.isEmpty();
}

HStatus vorelCmd::writePaste() {
    oldWeights.clear();
    HStatus status;
    for (int i = 0; i < pasteInfluences.size(); ++i) {
        const unsigned shape = static_cast<unsigned>(editShapes[i]);
        HDoubleArray old;
        {
            InfluenceLockGuard locks(influencePathNames(influencePaths, pasteLockColumns[i]),
                                     false);
            NormalisationGuard normalisation(skinClusters[shape]);
            status = HFnSkinCluster(skinClusters[shape])
                         .setWeights(shapePaths[shape], editComponents[i], pasteInfluences[i],
                                     pasteValues[i], true, &old);
        }
        oldWeights.append(old);
    }
    return status;
}

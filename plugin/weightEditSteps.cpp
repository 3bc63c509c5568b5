#include "weightEditSteps.h"

#include "HFnDagNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HItMeshVertex.h"
#include "HQtUtil.h"
#include "normalisationGuard.h"
#include "weightTableModel.h"

#include <optional>
#include <vector>

using namespace weightRows;

namespace {

const char* const kNotSetUp = "Data was not set up properly before executing this command. "
                              "Please reload data into vorel.";

HObject singleVertex(int vertex) {
    HFnSingleIndexedComponent single;
    HObject component = single.create(HFn::kMeshVertComponent);
    single.addElement(vertex);
    return component;
}

HIntArray everyInfluence(int count) {
    HIntArray indices;
    for (int k = 0; k < count; ++k)
        indices.append(k);
    return indices;
}

unsigned influenceCountOf(const HObject& cluster) {
    HDagPathArray influences;
    return HFnSkinCluster(cluster).influenceObjects(influences);
}

bool vertexOfRow(const weightTableModel& model, int row, int& vertex) {
    return vertexIndexOfRowName(model.headerData(row, Qt::Vertical, Qt::DisplayRole).toString(),
                                vertex);
}

HString columnText(const weightTableModel& model, int column) {
    return HQtUtil::toHString(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
}

double clampWeight(double value) {
    return value < 0.0 ? 0.0 : (value > 1.0 ? 1.0 : value);
}

} // namespace

void weightEditSteps::copyModel(weightTableModel& model) {
    skinClusters = model.getSkinClusters();
    shapePaths = model.getShapePaths();
    weightRows = model.getWeightRows();
    influencePaths = model.getInfluencePaths();
    shapeComponents = model.getShapeComponents();
    lockedCells = model.getLockedCells();
    lockedColumns = model.getLockedColumns();
}

bool weightEditSteps::listsReady(std::initializer_list<bool> filled) {
    oldWeights.clear();
    for (bool isFilled : filled) {
        if (!isFilled) {
            HGlobal::displayInfo(kNotSetUp);
            return false;
        }
    }
    return true;
}

HObject weightEditSteps::wholeShapeComponent(unsigned shape) const {
    if (!shapeComponents[shape].isNull())
        return shapeComponents[shape];
    HFnSingleIndexedComponent vertices;
    HObject component = vertices.create(HFn::kMeshVertComponent);
    for (HItMeshVertex it(shapePaths[shape]); !it.isDone(); it.next())
        vertices.addElement(it.index());
    return component;
}

bool weightEditSteps::prepareLimit(const weightTableModel& model) {
    editShapes.clear();
    influenceCounts.clear();
    editComponents.clear();
    overLimitRows.clear();
    nonZeroCounts.clear();
    maxInfluences = model.getMaxInfluences();
    for (int r : model.getPendingRows()) {
        const WeightRow& row = weightRows[r];
        const int shape = static_cast<int>(row[0]);
        if (shape < 0) {
            HGlobal::displayError("There is an error accessing shape index.");
            return false;
        }
        const unsigned influenceCount =
            influenceCountOf(skinClusters[static_cast<unsigned>(shape)]);
        int vertex = 0;
        if (!vertexOfRow(model, r, vertex)) {
            HGlobal::displayError("There is some error with parsing the vertex index value.");
            return false;
        }
        int count = 0;
        for (int i = 1; i < row.size(); ++i)
            if (row[i] > 0.0)
                ++count;
        if (count >= 2 && count > maxInfluences) {
            overLimitRows.append(r);
            editShapes.append(shape);
            influenceCounts.append(static_cast<int>(influenceCount));
            editComponents.append(singleVertex(vertex));
            nonZeroCounts.append(count);
        }
    }
    return true;
}

bool weightEditSteps::prepareRound(const weightTableModel& model) {
    newWeights.clear();
    setComponents.clear();
    influenceCounts.clear();
    targetPaths.clear();
    clusterNodes.clear();
    for (unsigned shape = 0; shape < shapePaths.length(); ++shape) {
        HObject component = wholeShapeComponent(shape);
        HDagPathArray influences;
        const unsigned count = HFnSkinCluster(skinClusters[shape]).influenceObjects(influences);
        std::vector<int> elementOf;
        for (unsigned k = 0; k < count; ++k)
            elementOf.push_back(model.columnOfInfluence(influences[k]) + 1);
        const int firstRow = model.rowOfShape(shapePaths[shape]) + 1;
        const unsigned elements = HFnSingleIndexedComponent(component).elementCount();
        HDoubleArray values;
        values.setLength(elements * count);
        for (unsigned j = 0; j < elements; ++j) {
            const int r = firstRow + static_cast<int>(j);
            if (r < 1 || r >= weightRows.size())
                return false;
            const WeightRow& row = weightRows[r];
            for (unsigned k = 0; k < count; ++k)
                values[j * count + k] = row[elementOf[k]];
        }
        newWeights.append(values);
        setComponents.append(component);
        influenceCounts.append(static_cast<int>(count));
        targetPaths.append(shapePaths[shape]);
        clusterNodes.append(skinClusters[shape]);
    }
    return true;
}

bool weightEditSteps::prepareReplace(const weightTableModel& model) {
    floodValue = model.getFloodValue();
    targetColumn = model.getPendingColumn();
    const QList<int> floodShapes = model.getPendingShapes();
    clusterNodes.clear();
    targetPaths.clear();
    influenceIndices.clear();
    influenceCounts.clear();
    setComponents.clear();
    for (int s : floodShapes) {
        const unsigned shape = static_cast<unsigned>(s);
        if (s < 0 || shape >= shapePaths.length())
            return false;
        targetPaths.append(shapePaths[shape]);
        clusterNodes.append(skinClusters[shape]);
        influenceCounts.append(static_cast<int>(influenceCountOf(skinClusters[shape])));
        influenceIndices.append(
            model.influenceIndexByName(skinClusters[shape], columnText(model, targetColumn)));
        setComponents.append(wholeShapeComponent(shape));
    }
    return !floodShapes.isEmpty();
}

bool weightEditSteps::prepareCells(const weightTableModel& model,
                                   const QModelIndexList& editedCells, const QList<double>& values,
                                   bool checkRows) {
    cellValues = values;
    cells = editedCells;
    editShapes.clear();
    editComponents.clear();
    influenceIndices.clear();
    influenceCounts.clear();
    for (const QModelIndex& cell : cells) {
        const int r = cell.row();
        if (r < 0 && checkRows) {
            HGlobal::displayInfo("There is an error getting row number");
            return false;
        }
        const int shape = r < 0 || r >= weightRows.size() ? -1 : static_cast<int>(weightRows[r][0]);
        if (shape < 0) {
            HGlobal::displayInfo("This is not a valid cell to edit.");
            return false;
        }
        int vertex = 0;
        if (!vertexOfRow(model, r, vertex)) {
            HGlobal::displayInfo("There is something wrong accessing the vertex number.");
            return false;
        }
        editShapes.append(shape);
        editComponents.append(singleVertex(vertex));
        const HObject& cluster = skinClusters[static_cast<unsigned>(shape)];
        const int influence = model.influenceIndexByName(cluster, columnText(model, cell.column()));
        if (influence == -1) {
            HGlobal::displayInfo("There is something wrong getting the joint index.");
            return false;
        }
        influenceIndices.append(influence);
        influenceCounts.append(static_cast<int>(influenceCountOf(cluster)));
    }
    return !cells.isEmpty();
}

HStatus weightEditSteps::prepareColumnDrag(const weightTableModel& model) {
    targetPaths.clear();
    clusterNodes.clear();
    setComponents.clear();
    targetColumn = model.getPendingColumn();
    const double sliderValue = model.getSliderValue();
    const double sliderDelta = model.getSliderDelta();
    const bool sliderAbsolute = model.getSliderAbsolute();
    HStatus status = HS::kFailure;
    HFnDagNode influenceNode(influencePaths[static_cast<unsigned>(targetColumn)], &status);
    const HString influenceName = influenceNode.name();
    columnInfluences.clear();
    influenceCounts.clear();
    newWeights.clear();
    for (unsigned shape = 0; shape < shapePaths.length(); ++shape) {
        const int influence = model.influenceIndexByName(skinClusters[shape], influenceName);
        if (influence == -1)
            continue;
        HIntArray influenceArray;
        influenceArray.append(influence);
        columnInfluences.append(influenceArray);
        clusterNodes.append(skinClusters[shape]);
        targetPaths.append(shapePaths[shape]);
        influenceCounts.append(static_cast<int>(influenceCountOf(skinClusters[shape])));

        HObject component = wholeShapeComponent(shape);
        HFnSingleIndexedComponent elements(component, &status);
        const int firstRow = model.rowOfShape(shapePaths[shape]) + 1;
        const unsigned count = elements.elementCount();
        HDoubleArray values;
        values.setLength(count);
        for (unsigned j = 0; j < count; ++j) {
            const int r = firstRow + static_cast<int>(j);
            const double current =
                r >= 1 && r < weightRows.size() ? weightRows[r][targetColumn + 1] : 0.0;
            values[j] = clampWeight(sliderAbsolute ? sliderValue : current + sliderDelta);
        }
        newWeights.append(values);
        setComponents.append(component);
    }
    return status;
}

HStatus weightEditSteps::writeLimit(weightTableModel& model, bool refreshEachWrite) {
    if (!listsReady({!overLimitRows.isEmpty(), !editShapes.isEmpty(), !influenceCounts.isEmpty(),
                     !editComponents.isEmpty(), !nonZeroCounts.isEmpty()}))
        return HS::kFailure;
    HStatus status;
    for (int i = 0; i < overLimitRows.size(); ++i) {
        const int r = overLimitRows[i];
        const unsigned shape = static_cast<unsigned>(editShapes[i]);
        HFnSkinCluster cluster(skinClusters[shape]);
        HDagPathArray influences;
        cluster.influenceObjects(influences);
        WeightRow working = weightRows[r];
        const int excess = nonZeroCounts[i] - maxInfluences;
        for (int round = 0; round < excess; ++round) {
            // The smallest positive weight; the leftmost of equal ones.
            int position = 0;
            for (int j = 1; j < working.size(); ++j)
                if (working[j] > 0.0 && (position == 0 || working[j] < working[position]))
                    position = j;
            const int column = position - 1;
            const int influence =
                model.influenceIndexByName(skinClusters[shape], columnText(model, column));
            if (influence == -1) {
                HGlobal::displayInfo("Could not find the influence.");
                return HS::kFailure;
            }
            HDoubleArray old;
            {
                normalisationGuard guard(skinClusters[shape]);
                status = cluster.setWeights(shapePaths[shape], editComponents[i],
                                            static_cast<unsigned>(influence), 0.0, true, &old);
            }
            // Undo puts the row back as it was before the first of its writes.
            if (round == 0)
                oldWeights.append(old);

            HDoubleArray weights;
            unsigned count = 0;
            cluster.getWeights(shapePaths[shape], editComponents[i], weights, count);
            for (unsigned k = 0; k < count && k < influences.length(); ++k) {
                const int element = model.columnOfInfluence(influences[k]) + 1;
                if (element > 0 && element < weightRows[r].size())
                    weightRows[r][element] = weights[k];
            }
            working = weightRows[r];
            if (refreshEachWrite) {
                const QModelIndex changed = model.index(r, column);
                if (changed.isValid())
                    model.updateWeightListAtIndex(changed);
                else
                    HGlobal::displayInfo("There is an error getting the mode index.");
            }
        }
    }
    return status;
}

HStatus weightEditSteps::writeRound() {
    if (!listsReady({!newWeights.isEmpty(), !setComponents.isEmpty(), !influenceCounts.isEmpty()}))
        return HS::kFailure;
    HStatus status;
    for (int i = 0; i < setComponents.size(); ++i) {
        HDoubleArray old;
        status = HFnSkinCluster(clusterNodes[i])
                     .setWeights(targetPaths[i], setComponents[i],
                                 everyInfluence(influenceCounts[i]), newWeights[i], true, &old);
        oldWeights.append(old);
    }
    return status;
}

HStatus weightEditSteps::writeFlood() {
    if (!listsReady({!clusterNodes.isEmpty(), !targetPaths.isEmpty(), !influenceIndices.isEmpty(),
                     !influenceCounts.isEmpty(), !setComponents.isEmpty()}))
        return HS::kFailure;
    HStatus status;
    for (int i = 0; i < setComponents.size(); ++i) {
        normalisationGuard guard(clusterNodes[i]);
        HDoubleArray old;
        status =
            HFnSkinCluster(clusterNodes[i])
                .setWeights(targetPaths[i], setComponents[i],
                            static_cast<unsigned>(influenceIndices[i]), floodValue, true, &old);
        oldWeights.append(old);
    }
    return status;
}

HStatus weightEditSteps::writeCells(bool undoLocks) {
    if (cells.isEmpty())
        return HS::kFailure;
    if (!listsReady({!editShapes.isEmpty(), !editComponents.isEmpty(), !influenceIndices.isEmpty(),
                     !influenceCounts.isEmpty()}))
        return HS::kFailure;
    HStatus status;
    for (int i = 0; i < editComponents.size() && i < cells.size(); ++i) {
        // The row's other locked cells keep their weights through this write.
        QList<HString> lockedInfluences;
        for (const QList<int>& locked : lockedCells)
            if (locked.size() == 2 && locked[0] == cells[i].row() && locked[1] != cells[i].column())
                lockedInfluences.append(
                    influencePaths[static_cast<unsigned>(locked[1])].fullPathName());
        for (const HString& influence : lockedInfluences)
            HGlobal::executeCommand("setAttr " + influence + ".lockInfluenceWeights 1", false,
                                    undoLocks);
        const unsigned shape = static_cast<unsigned>(editShapes[i]);
        HDoubleArray old;
        {
            normalisationGuard guard(skinClusters[shape]);
            status = HFnSkinCluster(skinClusters[shape])
                         .setWeights(shapePaths[shape], editComponents[i],
                                     static_cast<unsigned>(influenceIndices[i]),
                                     cellValues.value(i), true, &old);
        }
        oldWeights.append(old);
        for (const HString& influence : lockedInfluences)
            HGlobal::executeCommand("setAttr " + influence + ".lockInfluenceWeights 0", false,
                                    undoLocks);
    }
    return status;
}

HStatus weightEditSteps::writeColumn() {
    if (!listsReady({!targetPaths.isEmpty(), !clusterNodes.isEmpty(), !columnInfluences.isEmpty(),
                     !influenceCounts.isEmpty(), !newWeights.isEmpty(), !setComponents.isEmpty()}))
        return HS::kFailure;
    HStatus status;
    for (int i = 0; i < setComponents.size(); ++i) {
        // Locked influences keep their weights; these lock commands are not undo steps.
        for (int column : lockedColumns)
            HGlobal::executeCommand(
                "setAttr " + influencePaths[static_cast<unsigned>(column)].fullPathName() +
                    ".lockInfluenceWeights 1",
                false, false);
        HDoubleArray old;
        {
            normalisationGuard guard(clusterNodes[i]);
            status = HFnSkinCluster(clusterNodes[i])
                         .setWeights(targetPaths[i], setComponents[i], columnInfluences[i],
                                     newWeights[i], true, &old);
        }
        oldWeights.append(old);
        for (int column : lockedColumns)
            HGlobal::executeCommand(
                "setAttr " + influencePaths[static_cast<unsigned>(column)].fullPathName() +
                    ".lockInfluenceWeights 0",
                false, false);
    }
    return status;
}

HStatus weightEditSteps::restoreShapes(bool guarded) {
    HStatus status = HS::kFailure;
    for (int i = 0; i < targetPaths.size() && i < oldWeights.size(); ++i) {
        std::optional<normalisationGuard> guard;
        if (guarded)
            guard.emplace(clusterNodes[i]);
        status = HFnSkinCluster(clusterNodes[i])
                     .setWeights(targetPaths[i], setComponents[i],
                                 everyInfluence(influenceCounts[i]), oldWeights[i], true);
    }
    return status;
}

HStatus weightEditSteps::restoreVertices() {
    HStatus status = HS::kFailure;
    // In write order, not in reverse: a vertex written twice ends as its first write left it.
    for (int i = 0; i < editComponents.size() && i < oldWeights.size(); ++i) {
        const unsigned shape = static_cast<unsigned>(editShapes[i]);
        normalisationGuard guard(skinClusters[shape]);
        status = HFnSkinCluster(skinClusters[shape])
                     .setWeights(shapePaths[shape], editComponents[i],
                                 everyInfluence(influenceCounts[i]), oldWeights[i], true);
    }
    return status;
}

bool weightEditSteps::suspendAutoUpdate(weightTableModel& model) {
    const bool autoUpdate = weightTableModel::getAutoUpdate();
    model.setAutoUpdate(false);
    return autoUpdate;
}

void weightEditSteps::refreshAfterRedo(weightTableModel& model, bool autoUpdate) {
    model.rebuildWeightRows();
    model.setUpColumn();
    model.setAutoUpdate(autoUpdate);
}

void weightEditSteps::refreshAfterUndo(weightTableModel& model, bool updateColumns) {
    model.rebuildWeightRows();
    if (updateColumns)
        model.setUpColumn();
    weightRows = model.getWeightRows();
}

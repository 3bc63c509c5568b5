// Reading the locks stored on the skin clusters into the table's lock lists. Locks are kept by
// influence full path name and vertex index ("lockedJointNames", "lockedVertexIndices",
// "lockedCellIndices" with its child "lockedLocalJoints"), so they survive saving the scene and
// loading a different part of the mesh. A cluster loaded for the first time gets the
// attributes, empty.
#include "HFnAttribute.h"
#include "HFnCompoundAttribute.h"
#include "HFnDependencyNode.h"
#include "HFnNumericAttribute.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnStringArrayData.h"
#include "HFnTypedAttribute.h"
#include "HGlobal.h"
#include "HStringArray.h"
#include "weightTableModel.h"
#include "weightWriting.h"

namespace {

// The attribute `name` of the node, or null when the node does not have it.
HObject lockAttribute(const HFnDependencyNode& node, const char* name) {
    HStatus status;
    HObject attribute = node.attribute(name, &status);
    return status.statusCode() == HS::kInvalidParameter ? HObject() : attribute;
}

void addJointLockAttribute(HFnDependencyNode& node) {
    HFnTypedAttribute names;
    node.addAttribute(names.create("lockedJointNames", "lockedJointNames", HFnData::kStringArray));
}

void addVertexLockAttribute(HFnDependencyNode& node) {
    HFnNumericAttribute vertices;
    HObject attribute =
        vertices.create("lockedVertexIndices", "lockedVertexIndices", HFnNumericData::kBoolean, 0);
    vertices.setArray(true);
    node.addAttribute(attribute);
}

void addCellLockAttribute(HFnDependencyNode& node) {
    HFnTypedAttribute joints;
    HObject jointsAttribute =
        joints.create("lockedLocalJoints", "lockedLocalJoints", HFnData::kString);
    joints.setArray(true);
    HFnCompoundAttribute cells;
    HObject cellsAttribute = cells.create("lockedCellIndices", "lockedCellIndices");
    cells.addChild(jointsAttribute);
    cells.setArray(true);
    node.addAttribute(cellsAttribute);
}

} // namespace

void weightTableModel::checkLockAttr() {
    lockedColumns.clear();
    lockedRows.clear();
    clearLockedCells();
    for (unsigned shape = 0; shape < skinClusters.length(); ++shape) {
        const HObject& cluster = skinClusters[shape];
        readJointLocks(cluster);
        if (!readVertexLocks(cluster, shape))
            return;
        readCellLocks(cluster, shape);
    }
}

void weightTableModel::readJointLocks(const HObject& cluster) {
    HFnDependencyNode node(cluster);
    if (lockAttribute(node, "lockedJointNames").isNull()) {
        addJointLockAttribute(node);
        return;
    }
    HObject data;
    node.findPlug("lockedJointNames", true).getValue(data);
    const HStringArray names = HFnStringArrayData(data).array();
    // A name that is no column of this table gives -1, which matches no column. A stored lock
    // whose influence the host no longer holds locked (unlocked while this cluster was not
    // loaded, or by the host's undo) locks nothing: the column follows the host.
    for (unsigned i = 0; i < names.length(); ++i) {
        const int column = columnOfInfluenceName(names[i]);
        if (column == -1 ||
            weightWriting::influenceLockedInHost(influencePaths[static_cast<unsigned>(column)]))
            lockedColumns.append(column);
    }
}

bool weightTableModel::readVertexLocks(const HObject& cluster, unsigned shape) {
    HFnDependencyNode node(cluster);
    if (lockAttribute(node, "lockedVertexIndices").isNull()) {
        addVertexLockAttribute(node);
        return true;
    }
    const HPlug vertices = node.findPlug("lockedVertexIndices", true);
    const unsigned count = vertices.numElements();
    if (count == 0)
        return true;
    const int headerRow = rowOfShape(shapePaths[shape]);
    if (headerRow == -1) {
        HGlobal::displayError("There is something wrong finding the shape in the weightList.");
        return false;
    }
    const QHash<int, int> rows = loadedVertexRows(shape, headerRow);
    for (unsigned i = 0; i < count; ++i) {
        const HPlug element = vertices[i];
        bool locked = false;
        element.getValue(locked);
        const int row = rows.value(static_cast<int>(element.logicalIndex()), -1);
        if (locked && row != -1)
            lockedRows.append(row);
    }
    return true;
}

void weightTableModel::readCellLocks(const HObject& cluster, unsigned shape) {
    HFnDependencyNode node(cluster);
    const HObject cellsAttribute = lockAttribute(node, "lockedCellIndices");
    if (cellsAttribute.isNull()) {
        addCellLockAttribute(node);
        return;
    }
    const HPlug cells = node.findPlug("lockedCellIndices", true);
    const unsigned count = cells.numElements();
    if (count == 0)
        return;
    const QHash<int, int> rows = loadedVertexRows(shape, rowOfShape(shapePaths[shape]));
    for (unsigned i = 0; i < count; ++i) {
        const unsigned vertex = cells[i].logicalIndex();
        HPlug joints = node.findPlug("lockedLocalJoints", true);
        joints.selectAncestorLogicalIndex(vertex, cellsAttribute);
        for (unsigned j = 0; j < joints.numElements(); ++j) {
            HString name;
            joints[j].getValue(name);
            const int column = columnOfInfluenceName(name);
            const int row = rows.value(static_cast<int>(vertex), -1);
            if (column != -1 && row != -1)
                addLockedCell(row, column);
        }
    }
}

// The table rows of the shape's loaded vertices, by vertex index: in vertex order after the
// header row for a whole shape, in the loaded component's order otherwise.
QHash<int, int> weightTableModel::loadedVertexRows(unsigned shape, int headerRow) const {
    QHash<int, int> rows;
    if (headerRow == -1)
        return rows;
    const double marker = static_cast<double>(shape);
    const HObject& component = shapeComponents[shape];
    if (component.isNull()) {
        for (int row = headerRow + 1; row < weightRows.size() && weightRows[row][0] == marker;
             ++row)
            rows.insert(row - headerRow - 1, row);
        return rows;
    }
    HFnSingleIndexedComponent loaded(component);
    const unsigned elements = loaded.elementCount();
    for (unsigned e = 0; e < elements; ++e) {
        const int row = headerRow + 1 + static_cast<int>(e);
        if (row >= weightRows.size() || weightRows[row][0] != marker)
            break;
        rows.insert(loaded.element(e), row);
    }
    return rows;
}

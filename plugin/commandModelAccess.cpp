// Reading the model and the skin clusters for the commands; see commandModelAccess.h.
#include "commandModelAccess.h"

#include "HFnDagNode.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "weightTableModel.h"

#include <QHash>

namespace commandModelAccess {

HString columnName(const weightTableModel& model, int column) {
    return HQtUtil::toHString(model.headerData(column, Qt::Horizontal).toString());
}

bool vertexOfRow(const weightTableModel& model, int row, int& vertex) {
    return weightRows::vertexIndexOfRowName(model.headerData(row, Qt::Vertical).toString(), vertex);
}

unsigned influenceCount(const HObject& skinCluster) {
    HDagPathArray influences;
    return HFnSkinCluster(skinCluster).influenceObjects(influences);
}

HIntArray allInfluences(unsigned count) {
    HIntArray indices;
    indices.setLength(count);
    for (unsigned i = 0; i < count; ++i)
        indices[i] = static_cast<int>(i);
    return indices;
}

QList<HString> influencePathNames(const HDagPathArray& influences, const QList<int>& columns) {
    QList<HString> names;
    for (int column : columns)
        if (column >= 0 && static_cast<unsigned>(column) < influences.length())
            names.append(influences[static_cast<unsigned>(column)].fullPathName());
    return names;
}

InfluenceColumns clusterColumns(const weightTableModel& model, const HObject& cluster) {
    InfluenceColumns lookups;
    HDagPathArray influences;
    HFnSkinCluster(cluster).influenceObjects(influences);
    // A column names its influence by the node's name; the first influence of that name wins.
    QHash<QString, int> firstOfName;
    for (unsigned k = 0; k < influences.length(); ++k) {
        lookups.columnOfInfluence.append(model.columnOfInfluence(influences[k]));
        const QString name = HQtUtil::toQString(HFnDagNode(influences[k]).name());
        if (!firstOfName.contains(name))
            firstOfName.insert(name, static_cast<int>(k));
    }
    for (int column = 0; column < model.columnCount(); ++column)
        lookups.influenceOfColumn.append(
            firstOfName.value(HQtUtil::toQString(columnName(model, column)), -1));
    return lookups;
}

void reportNotSetUp() {
    HGlobal::displayInfo("Data was not set up properly before executing this command. Please "
                         "reload data into vorel.");
}

} // namespace commandModelAccess

// commandModelAccess: what the edit commands read from the window's model and the skin
// clusters while they prepare and write: header texts, vertex numbers of rows, influence
// counts and paths. Shared by vorelCmd and the window's edit command classes.
//
// Every function takes the model it reads; a row or column outside the table gives an empty
// text (which names no influence) or false.
#pragma once

#include "HDagPathArray.h"
#include "HIntArray.h"
#include "HObject.h"
#include "HString.h"

#include <QList>
#include <QVector>

class weightTableModel;

namespace commandModelAccess {

// The influence name shown over `column`.
HString columnName(const weightTableModel& model, int column);
// The vertex number in the header "vtx[N]" of `row`; false when it holds no number.
bool vertexOfRow(const weightTableModel& model, int row, int& vertex);
unsigned influenceCount(const HObject& skinCluster);
// 0, 1, ..., count - 1.
HIntArray allInfluences(unsigned count);
// The full path names of the influences of the given table columns, in that order; columns
// outside the table are left out.
QList<HString> influencePathNames(const HDagPathArray& influences, const QList<int>& columns);
// The table's columns of one skin cluster's influences, and the reverse, as the model has them.
struct InfluenceColumns {
    QVector<int> columnOfInfluence; // per influence index, its column (-1: none)
    QVector<int> influenceOfColumn; // per column, the first influence of its name (-1: none)
};
InfluenceColumns clusterColumns(const weightTableModel& model, const HObject& cluster);

// What an edit says when what it was handed does not fit what it must write: the user is asked
// to load the table again.
void reportNotSetUp();

} // namespace commandModelAccess

// largeTable: the table the editing benchmarks start from: a mesh "body" of 100,000 vertices
// (or the size given) bound to 64 joints with 8 random weights per vertex, the Vorel plug-in
// loaded from `pluginPath`, its window open and the whole mesh loaded into the table.
//
// When the plug-in cannot be loaded or the mesh selected, the members are null after a
// message on stderr; the benchmarks then skip with an error.
#pragma once

class QAbstractItemModel;
class QMainWindow;
class QTableView;

constexpr unsigned kLargeTableVertices = 100000;
constexpr unsigned kLargeTableInfluences = 64;

struct LargeTableSize {
    unsigned vertices = kLargeTableVertices;
    unsigned influences = kLargeTableInfluences;
};

struct LargeTable {
    QMainWindow* window = nullptr;
    QAbstractItemModel* model = nullptr;
    QTableView* table = nullptr;
};

LargeTable openLargeTable(const char* pluginPath, LargeTableSize size = LargeTableSize());

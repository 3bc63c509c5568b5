// weightTableModel: the Qt table model behind the Vorel spreadsheet. It holds one snapshot of
// the skin weights of the shapes that were selected when the table was last loaded (shape
// header rows, vertex rows, one column per influence; see weightRows.h), presents it to the
// views, follows the scene through two host event callbacks, keeps the lock lists in step with
// the lock attributes stored on the skin clusters, and prepares the hand-over members that
// each "vorelCmd -flag" edit reads.
//
// One model exists per window; the window owns it (Qt parent) and hands it the table view it
// shows (not owned). Host objects are value handles. The constructor registers the
// "SelectionChanged", "SceneOpened", "Undo" and "Redo" callbacks and the destructor removes
// them, so the model must be destroyed before the plug-in is unloaded.
//
// The table's own undo and redo copies, its unrounded weights and the rounded list of the last
// "Round" belong to the table they were taken from: opening a scene or loading anew empties
// them, and a list whose rows no longer match the table's row names is refused.
//
// Nothing throws: a request outside the table gives an invalid QVariant, and every failed
// check reports a fixed sentence through HGlobal::displayError / displayWarning / displayInfo
// and abandons the operation.
//
// The operations are implemented one concern per source file: weightTableModel.cpp (members,
// lookups, accessors), weightLoading.cpp, weightPresentation.cpp, sceneCallbacks.cpp,
// lockPersistence.cpp, weightCache.cpp, weightUpdate.cpp, cellEntry.cpp, sliderDrag.cpp,
// maximumInfluences.cpp, precisionRounding.cpp, floodReplace.cpp, smoothing.cpp,
// vertexRefresh.cpp, lockOperations.cpp and rowSelection.cpp (row queries and copying).
#pragma once

#include "HCommandMessage.h"
#include "HDagPath.h"
#include "HDagPathArray.h"
#include "HObject.h"
#include "HObjectArray.h"
#include "HSelectionList.h"
#include "HString.h"
#include "HStringArray.h"
#include "editRequests.h"
#include "pastedText.h"
#include "weightRounding.h"
#include "weightRows.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QItemSelection>
#include <QList>
#include <QModelIndexList>
#include <QPair>
#include <QSet>
#include <climits>
#include <functional>
#include <vector>

class QItemSelectionModel;

// A whole table as the table's own undo and redo keep it: the headers, the loaded shapes, the
// weight list, and the row names' key (updateRowNamesKey) of the table it was taken from. The
// shown table is held in the model's members of the same names.
struct TableCopy {
    HStringArray rowNames;
    HStringArray influenceNames;
    QList<QColor> influenceColors;
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HObjectArray shapeComponents;
    HDagPathArray influencePaths;
    QHash<QString, int> influenceColumns;
    WeightRows weightRows;
    quint64 rowsKey = 0;
};

class weightTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit weightTableModel(QObject* parent = nullptr);
    ~weightTableModel() override;

    // Qt table model (presentation; setData is the cell value entry).
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Lookups; each gives -1 when nothing matches.
    int columnOfInfluence(const HDagPath& influence) const;
    int columnOfInfluenceName(const HString& fullPathName) const;
    // The header row of the first loaded shape with this path, found by the rows' markers (the
    // n-th shape header row is the n-th loaded shape's), never by the shape's name.
    int rowOfShape(const HDagPath& shape) const;
    // By node name; when several loaded shapes match, the last one.
    int shapeIndexOfNode(const HDagPath& shape) const;
    // The first position in the cluster's influence list whose node name is `name`.
    int influenceIndexByName(const HObject& skinCluster, const HString& name) const;
    // Appends an influence as a new column unless one with its full path is there.
    void addInfluence(const HDagPath& influence);

    // Writes every vertex row of `rows` (laid out like the table, and taken from the table
    // whose row names give `rowsKey`) into its skin cluster; refuses, with a message, rows of
    // another table.
    void writeWeightRowsToScene(const WeightRows& rows, quint64 rowsKey);

    // Sets the scene's active selection without reloading the table; an empty list changes
    // nothing.
    void setSceneSelection(const HSelectionList& list);
    // Makes `list` the hilite list and, when it is not empty, the active selection.
    void hiliteSelection(const HSelectionList& list);
    // The topmost cell of the rightmost column among the selected editable cells with text.
    QModelIndex topRightUnlockedIndex() const;

    // Weight update and normalisation.
    bool writeNormalisedWeight(int row, int column, double value);
    void updateWeightListAtIndex(const QModelIndex& index);
    void roundRowToPrecision(int precision, int row, int editedColumn);
    void roundAllRowsToPrecision();
    int findShapeRow(int row);

    // Slider drag.
    void dragCells(double value, bool absolute);
    void dragColumn(double value, bool absolute);

    // Maximum influences: refuses locked rows (editing the list in place), runs the command.
    void limitRows(QList<int>& rows);

    // Weight cache and restore.
    void snapshotWeightRows();
    void cacheFullPrecisionWeights();
    void restoreRedoRows();
    void restoreRedoRowsAndRefresh();
    void restoreUndoRows();
    void restoreUndoRowsAndRefresh();
    // The table undo and redo of a load: headers, shapes and rows together, with the lock
    // lists read again for the table that comes back.
    void restoreUndoLoad();
    void restoreRedoLoad();
    void rebuildWeightRows();
    // After an edit (writtenRowRefresh.cpp): the written vertex rows, and the rows changed since
    // the table last followed the scene, read again as rebuildWeightRows reads every row, so the
    // table ends as a rebuild would leave it; the whole table is rebuilt when the rows cannot
    // give that result.
    void refreshWrittenRows(const QVector<WrittenRow>& written);
    // While the table's own edit writes, the scene's weight changes are that edit's, which
    // refreshWrittenRows follows; any other change of weights leaves the table to be read whole.
    void setWritingScene(bool writing) { writingScene = writing; }

    // Row queries (rowQuery.h): `shown` becomes, per row, whether the query keeps it shown
    // (matching vertex rows and the header rows of their shapes). False, after an error
    // naming the word, when the text is not a query.
    bool rowsMatchingQuery(const QString& text, QVector<bool>& shown) const;
    // The tab-separated text, in UTF-8, of a copy of the selection's bounding range: a line of
    // influence names, then per vertex row its "SHAPE.vtx[N]" and the values shown in its selected
    // cells (blank elsewhere). Shape header rows and the rows and columns marked hidden are left
    // out.
    QByteArray copiedText(const QItemSelection& selection, const QVector<bool>& hiddenRows,
                          const QVector<bool>& hiddenColumns) const;

    // The targets of a host weight command for the selection: the vertices of its vertex rows
    // ("|body|bodyShape.vtx[2:5]"), or every loaded shape when it holds none. Empty when the
    // table is.
    QString weightTargets(const QItemSelection& selection) const;

    // Ctrl+V (pasteEntry.cpp): pastes tab- or comma-separated text at `current`, or by the
    // text's joint and row names, as one "vorelCmd -paste" run. Each row keeps the values
    // pasted into it (scaled down when they leave its locks less than nothing) and its other
    // unlocked weights share the rest; locked cells are skipped and counted; a value that is
    // not a number from 0 to 1 changes nothing.
    void pasteText(const QString& text, const QModelIndex& current);

    // Locks every lock that the last newUnlockAll released.
    void relockReleased();

    // Plain accessors for the window and the commands.
    HObjectArray getSkinClusters() const { return skinClusters; }
    HDagPathArray getShapePaths() const { return shapePaths; }
    HObjectArray getShapeComponents() const { return shapeComponents; }
    HDagPathArray getInfluencePaths() const { return influencePaths; }
    WeightRows getWeightRows() const { return weightRows; }
    const QList<int>& getLockedColumns() const { return lockedColumns; }
    const QList<int>& getLockedRows() const { return lockedRows; }
    const QList<QList<int>>& getLockedCells() const { return lockedCells; }
    int getPrecision() const { return precision; }
    int getMaxInfluences() const { return maxInfluences; }
    // The request of values for cells, each cell named by identity (cellEntry.cpp).
    CellValuesRequest cellValuesRequest(const QModelIndexList& cells,
                                        const QList<double>& values) const;
    // The rows the next "vorelCmd -numMax" limits.
    const LimitRequest& getPendingLimit() const { return pendingLimit; }
    // The typed values or cell drag the next "vorelCmd -setData" or "-dragSlider" performs.
    const CellValuesRequest& getPendingCellValues() const { return pendingCellValues; }
    // What the next "vorelCmd" run of each kind performs.
    const FloodRequest& getPendingFlood() const { return pendingFlood; }
    const ColumnDragRequest& getPendingColumnDrag() const { return pendingColumnDrag; }
    const PaintSmoothingRequest& getPendingPaintSmoothing() const { return pendingPaintSmoothing; }
    const WeightSmoothingRequest& getPendingWeightSmoothing() const {
        return pendingWeightSmoothing;
    }
    const CellValuesRequest& getPendingPaste() const { return pendingPaste; }
    // The value where a slider drag starts: the selected cell's, or the top-right cell's of a
    // selection; relative drags move by the slider's offset from it.
    double getTopRightValue() const { return topRightValue; }
    void setTopRightValue(double value) { topRightValue = value; }
    // The selection of the view that shows this model (not owned): the cells the edits work on.
    QItemSelectionModel* getTableSelection() const { return tableSelection; }
    void setTableSelection(QItemSelectionModel* selection) { tableSelection = selection; }
    static bool getAutoUpdate() { return autoUpdate; }

signals:
    void topRightCellDataChanged(double newValue, double lastValue, double origValue);
    // After setUpColumn: the columns without any weight, and whether the filter hides them
    // (the others are shown at the default width).
    void emptyColumnsChanged(const QList<int>& emptyColumns, bool hide);

public slots:
    void refreshSkinClusterData();
    void cellSelected(const QModelIndex& index);
    void multiCellSelected();
    void columnHeaderSelected(int logicalIndex);
    void rowHeaderSelected();
    void setPrecision(int precisionNum);
    void applyPrecision();
    void undoApplyPrecision();
    void redoApplyPrecision();
    void undoPrecision();
    void setMaxValue(int maxNum);
    void applyMaxInfluence();
    void undoMaxInfluence();
    void applySmoothSkinWeights(double value, int numIter);
    void applySkinPaintSmooth(double value);
    void replaceValue(double value);
    void toggleFilter(bool checked);
    void toggleHilight(bool checked);
    void setAutoUpdate(bool autoUpdateVal);
    void lockSelected();
    void unlockSelected();
    void unlockAll();
    void newLockSelected();
    void newUnlockSelected();
    void newUnlockAll();
    void lockCell();
    void unlockCell();
    void checkLockAttr();
    void setUpColumn();
    void setSkinPaintSmoothMode(bool mode);
    bool getSkinPaintSmoothMode();
    void setSmoothSkinWeightsMode(bool mode);
    bool getSmoothSkinWeightsMode();

private:
    // Loading.
    void takeLoadUndoCopies();
    void collectSelectedShapes(const HSelectionList& selection);
    void appendShapeRows(unsigned shape, bool& correcting);
    void rebuildColumnLabels();

    // Reading rows from the scene (weight cache): rounded and corrected for display, or
    // unrounded with the shape rows marked. Rows equal to those of `reuse` at the same
    // position are taken from it.
    // kLoaded: rounded for display, the shape rows marked from the unrounded sums (a load).
    enum class SceneRows { kRoundedForDisplay, kMarkedFullPrecision, kLoaded };
    WeightRows readSceneRows(const WeightRows& reuse, SceneRows kind);
    // The vertex number in the row's name; false when the name holds none.
    bool vertexOfRow(int row, int& vertex) const;
    // The shape of a vertex row, when its marker names a loaded shape; -1 otherwise.
    int loadedShapeOfRow(int row) const;
    // The row names as one number, kept with every list taken from the table so that a list is
    // never used with another table's rows.
    void updateRowNamesKey();
    bool matchesTable(const WeightRows& rows, quint64 rowsKey) const;
    // Drops the redo copies, the unrounded weights, the rounded list and the locks released by
    // "UnLock All": they belong to a table that is no longer shown. The undo copies, which a
    // load fills with the table it replaces, go only with the scene they belong to.
    void forgetTableCopies();
    void forgetUndoCopies();
    // A table copy (TableCopy below), taken of the shown table or shown again. Undo and redo
    // are the same steps with the two copies' roles exchanged: what is shown goes into one
    // copy, the other copy is shown.
    void keepRows(TableCopy& copy) const;
    void keepTable(TableCopy& copy) const;
    void restoreRows(const TableCopy& restored, TableCopy& kept);
    void restoreRowsAndRefresh(const TableCopy& restored, TableCopy& kept);
    void restoreRowsLaidOut(const TableCopy& restored, TableCopy& kept);
    void restoreLoad(const TableCopy& restored, TableCopy& kept);
    void appendSceneRows(WeightRows& rows, unsigned shape, const HObject& vertices,
                         const WeightRows& reuse, SceneRows kind, bool& correcting);
    // Where a loaded shape's influences sit in a row, and its vertex rows' template.
    struct ShapeColumns {
        std::vector<int> elementOf; // per influence index, its element (0: no column)
        bool ordered = false;       // the elements increase with the influence index
        WeightRow rowTemplate;
    };
    ShapeColumns shapeColumns(unsigned shape) const;
    // Fills a vertex row (holding the shape's row template) from one vertex's weights as a load
    // or rebuild shows it: rounded, and, when `correct`, the last positive weight taking the
    // remainder. What the correction found.
    weightRounding::Correction fillDisplayRow(WeightRow& row, const ShapeColumns& columns,
                                              const double* weights, unsigned count,
                                              bool correct) const;
    // Says what a load's correction found; false when the pass must stop there.
    bool reportCorrection(weightRounding::Correction result) const;
    // The rows now show what a rebuild would (writtenRowRefresh.cpp); a row changed otherwise is
    // read again by the next refresh.
    void followScene();
    void markForReread(int row);
    // Whether the row still shows the written vertex; `shapeHolds` keeps, per loaded shape,
    // whether it is the shape written (0: not looked at yet, 1: it is, 2: it is not).
    bool writtenRowHolds(const WrittenRow& written, std::vector<char>& shapeHolds) const;
    // Reads the vertices of `rows` from their skin clusters, a slice of vertices at a time per
    // shape (a vertex listed twice is read once); `visit` gets each position in `rows` with the
    // vertex's weights in influence order. False when a row is no vertex row of a loaded shape
    // or a read failed; rows may then have been visited.
    using RowWeightVisitor =
        std::function<void(int position, const double* weights, unsigned count)>;
    bool readRowWeights(const QVector<int>& rows, const RowWeightVisitor& visit) const;
    // Header rows: all of them in table order, the n-th loaded shape's, the one above a row.
    const QVector<int>& listHeaderRows() const;
    int rowOfShapeIndex(int shape) const;
    int headerRowAbove(int row) const;
    void markShapeRows();
    void refreshRestoredRows(int previousRows);
    void notifyWholeTable(int previousRows);
    // Emits layoutChanged after the table took another shape.
    void finishLayoutChange();

    // Paste placement and values (pasteEntry.cpp); false after a message when the text cannot
    // be placed.
    bool pasteColumns(const pastedText::Block& block, int currentColumn, QList<int>& columns) const;
    bool pasteRows(const pastedText::Block& block, const QModelIndex& current,
                   QList<int>& rows) const;
    int influenceColumnOfName(const QString& name) const;
    QHash<QString, int> rowsByPastedName() const;
    // Scales the row's pasted values (values[first...]) down to what its locks leave; true when
    // it had to.
    bool fitPastedRow(int row, const QModelIndexList& rowCells, QList<double>& values,
                      int first) const;

    // Presentation.
    bool hasLocks() const;
    bool isLockedCell(int row, int column) const;
    // lockedCells changes only through these, which keep its hash in step.
    void addLockedCell(int row, int column);
    void removeLockedCell(int row, int column);
    void clearLockedCells();
    // Whether a typed entry writes this selected cell (cellEntry.cpp).
    bool isEntryTarget(const QModelIndex& cell) const;
    QVariant cellBackground(int row, int column, double value) const;
    QVariant cellForeground(int row, int column, double value) const;
    QVariant verticalHeaderColor(int section, int role) const;
    int positiveCount(int row) const;
    HSelectionList vertexSelection(const QList<int>& rows) const;
    QModelIndexList selectedIndexes() const;
    // The table view's fully selected columns and rows (their cells in row or column 0).
    QModelIndexList selectedColumns() const;
    QModelIndexList selectedRows() const;
    void storeTopRightValue();

    // Editing operations.
    // Reads the vertices of many cells back, as updateWeightListAtIndex does one by one.
    void refreshVertexCells(const QModelIndexList& cells);
    // The one shape whose selected vertices are smoothed, or -1 after reporting why none.
    int smoothedShape(const QModelIndexList& cells, const QModelIndexList& rows) const;

    // Lock operations: the selection split into whole columns, whole rows and the other cells;
    // locking and unlocking one column, row or cell in the list, the scene and the display.
    // The row forms return false when the row is a shape header row and the operation stops.
public:
    struct SelectionSplit {
        QList<int> columns;
        QList<int> rows;
        QModelIndexList cells;
    };

private:
    SelectionSplit splitSelection() const;
    bool isShapeRow(int row) const;
    bool vertexOfLockRow(int row, HObject& cluster, int& vertex) const;
    HString influencePathOfColumn(int column) const;
    HString vertexLockPlugName(int row) const;
    void notifyColumnLock(int column);
    void notifyRowLock(int row);
    void lockColumn(int column, bool storeName);
    void unlockColumn(int column);
    bool lockRow(int row);
    void unlockRow(int row);
    bool lockCellAt(int row, int column);
    // Stores the cell's lock on its vertex (the influence's full path given) and lists it,
    // without repainting.
    void storeCellLock(int row, int column, const HString& path);
    void unlockCellAt(int row, int column);
    // Takes the cell's influence out of the locks stored for its vertex, and repaints it.
    void releaseStoredCellLock(int row, int column);
    // False when the cell is not locked in any way.
    bool unlockOneCell(int row, int column);

    // Lock persistence.
    // After the host's undo or redo of the table's own influence lock commands, the stored
    // joint locks follow the host's lock, and the lock lists are read again.
    void followHostLocks();
    void recordJointLockCommand(int column, bool locked);
    void readJointLocks(const HObject& cluster);
    bool readVertexLocks(const HObject& cluster, unsigned shape);
    void readCellLocks(const HObject& cluster, unsigned shape);
    QHash<int, int> loadedVertexRows(unsigned shape, int headerRow) const;

    // Scene callbacks.
    static void selectionChangedCallback(void* model);
    static void sceneOpenedCallback(void* model);
    static void undoRedoCallback(void* model);
    static void weightsChangedCallback(void* model);
    void onSelectionChanged();
    void onSceneOpened();
    void mirrorSceneSelection();

    // Loaded scene objects.
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HObjectArray shapeComponents;
    HDagPathArray influencePaths;
    HStringArray rowNames;
    HStringArray influenceNames;
    QList<QColor> influenceColors;
    QHash<QString, int> influenceColumns;
    WeightRows weightRows;

    // The current row names as one number (updateRowNamesKey), and the table each list below
    // was taken from.
    quint64 rowNamesKey = 0;
    quint64 fullPrecisionKey = 0;
    quint64 pendingRoundedKey = 0;

    // The undo and redo copies of the table, and the unrounded weights.
    TableCopy undoTable;
    TableCopy redoTable;
    WeightRows fullPrecisionRows;

    // What the next vorelCmd run of each kind performs (editRequests.h); the rows limited last.
    QList<int> pendingRows;
    WeightRows pendingRoundedRows;
    CellValuesRequest pendingCellValues;
    LimitRequest pendingLimit;
    FloodRequest pendingFlood;
    ColumnDragRequest pendingColumnDrag;
    PaintSmoothingRequest pendingPaintSmoothing;
    WeightSmoothingRequest pendingWeightSmoothing;
    CellValuesRequest pendingPaste;

    // Whether every vertex row shows what rebuildWeightRows would, but those listed to be read
    // again; the row at which the rebuild's correction stops (a vertex without weight).
    static constexpr int kCorrectedThroughout = INT_MAX;
    bool rowsFollowScene = false;
    bool writingScene = false;
    std::vector<int> rowsToReread;
    int uncorrectedFrom = kCorrectedThroughout;
    mutable QVector<int> headerRows;
    mutable quint64 headerRowsLayout = 0;

    // Settings and modes.
    int precision;
    int lastPrecision;
    int maxInfluences;
    int lastMaxInfluences;
    bool filterOn;
    bool hilightOn;
    bool skinPaintSmoothMode;
    bool smoothSkinWeightsMode;
    double topRightValue;
    QItemSelectionModel* tableSelection;

    // Lock state.
    QList<int> lockedColumns;
    QList<int> lockedRows;
    QList<QList<int>> lockedCells;
    // The pairs of lockedCells, for lookups that do not walk the list.
    QSet<QPair<int, int>> lockedCellSet;
    QList<int> zeroColumns;
    QList<int> releasedColumns;
    QList<int> releasedRows;
    QList<QList<int>> releasedCells;

    // Scene callbacks.
    HCallbackId selectionChangedCallbackId;
    HCallbackId sceneOpenedCallbackId;
    HCallbackId undoCallbackId;
    HCallbackId redoCallbackId;
    HCallbackId weightsChangedCallbackId;
    bool sceneJustOpened;

    // The influence locks the table's own commands last set in the host (by full path), with
    // the skin clusters whose stored joint locks they changed: the host's undo and redo of those
    // commands are followed.
    struct WrittenJointLock {
        HDagPath influence;
        HObjectArray clusters;
        bool locked = false;
    };
    QHash<QString, WrittenJointLock> writtenJointLocks;

    // Process-wide: reload on every selection change; the program is setting the selection.
    static bool autoUpdate;
    static bool selectionGuard;
};

// vorelWindow: the Vorel editor window. Its constructor builds everything the editor needs:
// the table with its rotated column header, the weight table model, the "Options" menu, the
// rows of controls, and the seven undoable command objects; it connects every control to its
// slot. Each slot reads its control, checks the input (a bad input gives one fixed message
// through the host and changes nothing), calls one model operation and records itself as the
// control last used, which the keyboard undo and redo (Ctrl+Z, Ctrl+Y) of the window follow.
//
// The window is the child of the host's main window; the plug-in deletes it when it unloads.
// The window owns the model, the views, the widgets and the command objects, and deletes them
// in its destructor. Construction has no failure of its own.
//
// Construction is in vorelWindowConstruction.cpp, the control slots in vorelWindowActions.cpp,
// the table's selection, context menu and key handling in vorelWindowTable.cpp, and the sizes
// that grow to fit the texts in vorelWindowSizes.cpp; the spreadsheet additions (copy, row
// queries) in vorelWindowSpreadsheet.cpp and the "Weights" menu in vorelWindowWeightsMenu.cpp.
#pragma once

#include "weightsDialog.h"

#include <QItemSelection>
#include <QMainWindow>
#include <QModelIndex>
#include <QModelIndexList>
#include <QPoint>

class QAction;
class QComboBox;
class QFrame;
class QGroupBox;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QSlider;
class QVBoxLayout;
class applyButtonCmd;
class dragSliderCmd;
class dragSliderColCmd;
class replaceButtonCmd;
class roundButtonCmd;
class setCellDataCmd;
class smoothCmd;
class weightColumnHeaderView;
class weightTableModel;
class weightTableView;

class vorelWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit vorelWindow(QWidget* parent = nullptr);
    ~vorelWindow() override;

    weightTableModel* model() const { return tableModel; }
    bool eventFilter(QObject* watched, QEvent* event) override;

    // The controls last acted on and last undone by the keyboard, shared by every window.
    static QObject* lastUsedControl;
    static QObject* lastUndoneControl;

public slots:
    void setPrecisionEdit();
    void applyPrecision();
    void setMaxValue();
    void applyMaxInfluence();
    void setAbsoluteMode(bool absMode);
    void tableCellSelected(const QModelIndex& index);
    void sliderChanged(int value);
    void sliderReleased();
    void valueEditChanged();
    void opacityEditChanged();
    void opacitySliderChanged();
    void floodEditChanged();
    void floodSliderChanged();
    void requiredWeightDifferenceEditChanged();
    void requiredWeightDifferenceSliderChanged();
    void smoothingIterationsEditChanged();
    void smoothingIterationsSliderChanged();
    void floodOperationBoxChanged(int index);
    void updateSliderValue(double newValue, double lastValue, double origValue);
    void applyFlood();
    void applySmoothSkinWeights();
    void applySkinPaintSmooth();
    void replaceValue();
    void toggleFilter(bool checked);
    void toggleHilight(bool checked);
    void showContextMenu(const QPoint& pos);
    void columnHeaderClicked(int section);
    void rowHeaderClicked(int section);
    void loadWeightData();
    void lockSelected();
    void unlockSelected();
    void unlockAll();
    void tableSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    // Hides the columns without weight when `hide` is set; shows every other column at the
    // default width.
    void showEmptyColumns(const QList<int>& emptyColumns, bool hide);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    // A new font fits the controls again.
    void changeEvent(QEvent* event) override;

private:
    // The sizes the window is built with, in pixels. Each is a minimum: a control grows when
    // its text needs more room in the font it is drawn with (fitControlsToText).
    static constexpr int kButtonWidth = 140;
    static constexpr int kOperationBoxHeight = 24;
    static constexpr int kMaxInfluenceEditWidth = 30;
    static constexpr int kPrecisionEditWidth = 50;
    static constexpr int kValueEditWidth = 70;
    static constexpr int kLineLabelWidth = 160;
    static constexpr int kLineEditWidth = 70;
    // The columns' width at three decimal places; each place more adds 7 pixels.
    static constexpr int kColumnWidth = 40;
    static constexpr int kRowHeight = 21;
    static int minimumColumnWidth(int places);

    // One label, edit box and slider line of the flood and smoothing row.
    struct ValueLine {
        QLabel* label = nullptr;
        QLineEdit* edit = nullptr;
        QSlider* slider = nullptr;
        void setEnabled(bool enabled) const;
    };

    void createTable();
    void connectViews();
    void createMenu();
    QHBoxLayout* createMaxInfluenceRow();
    QVBoxLayout* createLoadAndLockRows();
    QHBoxLayout* createPrecisionRow();
    QHBoxLayout* createValueRow();
    QHBoxLayout* createFloodRow();
    ValueLine createValueLine(const QString& label, const QString& text, int minimum, int maximum,
                              int value);
    QFrame* createSeparator();
    QPushButton* createButton(const QString& text, const char* objectName = nullptr);
    void assembleCentralWidget(QHBoxLayout* maxInfluenceRow, QHBoxLayout* precisionRow,
                               QHBoxLayout* floodRow, QVBoxLayout* loadAndLockRows,
                               QHBoxLayout* valueRow);
    void createCommands();
    // Sets the value slider's range and ticks for the mode and the decimal places, and the
    // value controls for the selection.
    void resetValueControls();
    // The value controls for one cell's value (empty when the cell has no text), or cleared.
    void showValue(double value, bool hasText);
    void clearValue();

    // Keyboard undo and redo of the last control (vorelWindowKeys.cpp); false when the control
    // has none.
    bool undoLastControl();
    bool redoLastControl();
    bool isLineControl(const ValueLine& line) const;
    void restoreLine(const ValueLine& line, int position, double scale, int& redo);
    void redoLine(const ValueLine& line, int position, double scale, int sliderPosition);
    static void setToggleQuietly(QPushButton* button, bool checked);
    // After the precision changed by the keyboard: columns, header size and value controls.
    void finishPrecisionChange();
    // Grows the columns, labels, buttons and boxes to fit the widest texts they show at the
    // current decimal places in their fonts, and shrinks them back to no less than their
    // built sizes (vorelWindowSizes.cpp). Runs at construction, on every change of the
    // places and of the font.
    void fitControlsToText();
    // The value box and slider as the keyboard undo and redo of a value edit leave them.
    void showValueForStep();

    // The spreadsheet additions (vorelWindowSpreadsheet.cpp): the row query box above the
    // table, copying, and selecting the rows a query shows.
    QHBoxLayout* createRowQueryRow();
    void applyRowQuery();
    void reapplyRowQuery();
    // Ctrl+C, Ctrl+V and Ctrl+A in the table; false when the key is not theirs.
    bool handleSpreadsheetKey(QObject* watched, const QKeyEvent* key);
    void copySelection();
    void selectShownRows();

    // The "Weights" menu (vorelWindowWeightsMenu.cpp): the host's skinWeights command on the
    // loaded meshes or the selected rows' vertices, asking for its values in a weightsDialog.
    void createWeightsMenu();
    void askAndRunWeightsCommand(weightsDialog::Kind kind);
    void limitInfluences();
    void runWeightsCommand(const QString& flags, bool changesWeights);

    // Control slot helpers.
    // The maximum box's number; false after the box's error when it is not one of 1 or more.
    bool readMaxInfluenceBox(int& maximum) const;
    // Value slider units per 1.0: 10^decimalPlaces.
    int valueScale() const;
    // Fixed notation with decimalPlaces decimals.
    QString formatValue(double value) const;
    QModelIndexList selectedCells() const;
    bool anySelectedCellHasText() const;
    // Warns and gives false when no cell, or no cell with a weight, is selected for a drag.
    bool checkValueTargets();
    void editToSlider(const ValueLine& line, int scale, int& savedValue);
    void sliderToEdit(const ValueLine& line, int scale, int& savedValue);
    // The flood value times the opacity; false after an error when they are not usable.
    bool floodStrength(double& strength) const;

    // Views and model.
    weightTableView* tableView = nullptr;
    weightTableModel* tableModel = nullptr;
    weightColumnHeaderView* columnHeader = nullptr;

    // Menu.
    QMenu* optionsMenu = nullptr;
    QAction* autoUpdateAction = nullptr;
    QAction* savePresetAction = nullptr;
    QAction* loadPresetAction = nullptr;
    QMenu* weightsMenu = nullptr;

    // Control rows.
    QLabel* maxInfluenceLabel = nullptr;
    QLineEdit* maxInfluenceEdit = nullptr;
    QPushButton* applyInfluenceButton = nullptr;
    QPushButton* loadComponentButton = nullptr;
    QPushButton* filterButton = nullptr;
    QPushButton* highlightButton = nullptr;
    QPushButton* lockButton = nullptr;
    QPushButton* unlockButton = nullptr;
    QPushButton* unlockAllButton = nullptr;
    QLabel* precisionLabel = nullptr;
    QLineEdit* precisionEdit = nullptr;
    QPushButton* roundButton = nullptr;
    QGroupBox* valueGroup = nullptr;
    QRadioButton* absoluteRadio = nullptr;
    QRadioButton* relativeRadio = nullptr;
    QLineEdit* valueEdit = nullptr;
    QSlider* valueSlider = nullptr;
    ValueLine opacityLine;
    ValueLine floodValueLine;
    ValueLine requiredWeightDifferenceLine;
    ValueLine smoothingIterationsLine;
    QComboBox* floodOperationBox = nullptr;
    QPushButton* applyFloodButton = nullptr;
    QLineEdit* rowQueryEdit = nullptr;
    // The query whose rows the table shows; empty when every row is shown.
    QString appliedRowQuery;

    // Frame and layouts.
    QFrame* separators[3] = {nullptr, nullptr, nullptr};
    QFrame* centralFrame = nullptr;
    QVBoxLayout* mainLayout = nullptr;
    QVBoxLayout* tableLayout = nullptr;

    // The undoable command objects of the edits, in the order they are created.
    replaceButtonCmd* replaceCommand = nullptr;
    roundButtonCmd* roundCommand = nullptr;
    applyButtonCmd* applyCommand = nullptr;
    dragSliderCmd* dragSliderCommand = nullptr;
    dragSliderColCmd* dragSliderColumnCommand = nullptr;
    setCellDataCmd* setCellDataCommand = nullptr;
    smoothCmd* smoothCommand = nullptr;

    QMenu* contextMenu = nullptr;

    // State of the controls, and the values the keyboard undo and redo put back.
    int decimalPlaces = 3;
    int previousDecimalPlaces = 3;
    int redoDecimalPlaces = 3;
    int previousMaxInfluence = 4;
    int redoMaxInfluence = 4;
    bool absoluteMode = false;
    bool previousAbsoluteMode = false;
    double shownValue = 0.0;
    double lastSliderValue = 0.0;
    int opacitySavedValue = 10000;
    int opacityRedoValue = 10000;
    int floodSavedValue = 10000;
    int floodRedoValue = 10000;
    int requiredWeightDifferenceSavedValue = 0;
    int requiredWeightDifferenceRedoValue = 0;
    int smoothingIterationsSavedValue = 5;
    int smoothingIterationsRedoValue = 5;
    bool filterChecked = false;
    bool filterRedo = false;
    bool highlightChecked = false;
    bool highlightRedo = false;
};

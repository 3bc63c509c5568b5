// Building the Vorel window: the table and its model, the menu, the rows of controls with
// their texts, sizes, ranges and defaults, the central layout, every connection, and the
// command objects. The order of construction is the order the controls appear to Qt (focus
// chain, meta-object connections), so it is kept as written.
#include "HGlobal.h"
#include "vorelWindow.h"
#include "weightColumnHeaderView.h"
#include "weightTableModel.h"
#include "weightTableView.h"
#include "windowEditCommands.h"

#include <QAction>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>
#include <initializer_list>

namespace {

const char* const kCheckedButtonStyle =
    "QPushButton:checked { background-color: lightGray; color: black}";

// A label with its edit box, then, after a gap, the button that applies the box.
QHBoxLayout* editRow(QLabel* label, QLineEdit* edit, int gap, QPushButton* button) {
    QHBoxLayout* row = new QHBoxLayout();
    row->addWidget(label);
    row->addWidget(edit);
    row->addSpacing(gap);
    row->addWidget(button);
    return row;
}

QHBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons) {
    QHBoxLayout* row = new QHBoxLayout();
    for (QPushButton* button : buttons)
        row->addWidget(button);
    row->addStretch(1);
    return row;
}

} // namespace

QObject* vorelWindow::lastUsedControl = nullptr;
QObject* vorelWindow::lastUndoneControl = nullptr;

vorelWindow::vorelWindow(QWidget* parent) : QMainWindow(parent) {
    createTable();
    connectViews();
    createMenu();
    QHBoxLayout* maxInfluenceRow = createMaxInfluenceRow();
    QVBoxLayout* loadAndLockRows = createLoadAndLockRows();
    QHBoxLayout* precisionRow = createPrecisionRow();
    QHBoxLayout* valueRow = createValueRow();
    connect(tableView, SIGNAL(clicked(const QModelIndex&)), this,
            SLOT(tableCellSelected(const QModelIndex&)));
    connect(tableModel, SIGNAL(topRightCellDataChanged(double, double, double)), this,
            SLOT(updateSliderValue(double, double, double)));
    QHBoxLayout* floodRow = createFloodRow();
    connect(applyFloodButton, SIGNAL(clicked()), this, SLOT(applyFlood()));
    assembleCentralWidget(maxInfluenceRow, precisionRow, floodRow, loadAndLockRows, valueRow);
    setWindowTitle("Vorel");
    setGeometry(200, 200, 500, 700);
    createCommands();
    fitControlsToText();
}

vorelWindow::~vorelWindow() {
    // The controls go with the window; a later window must not find them as the last used.
    lastUsedControl = nullptr;
    lastUndoneControl = nullptr;
    tableModel->hiliteSelection(HSelectionList());
    HGlobal::executeCommand("refresh");
    delete columnHeader;
    delete tableView;
    delete tableModel;
    delete replaceCommand;
    delete roundCommand;
    delete applyCommand;
    delete dragSliderCommand;
    delete dragSliderColumnCommand;
    delete setCellDataCommand;
    delete smoothCommand;
    delete contextMenu;
}

void vorelWindow::createTable() {
    tableView = new weightTableView();
    tableView->installEventFilter(this);
    tableModel = new weightTableModel(this);
    tableView->setModel(tableModel);
    tableModel->setTableSelection(tableView->selectionModel());
    tableView->verticalHeader()->setDefaultSectionSize(kRowHeight);

    columnHeader = new weightColumnHeaderView(Qt::Horizontal);
    tableView->setHorizontalHeader(columnHeader);
    columnHeader->setDefaultSectionSize(minimumColumnWidth(decimalPlaces));
    columnHeader->setSectionsClickable(true);
    columnHeader->setSelectionMode(QAbstractItemView::ExtendedSelection);
    columnHeader->setHighlightSections(true);
    QMetaObject::invokeMethod(tableView, "updateGeometries", Qt::DirectConnection);
}

void vorelWindow::connectViews() {
    connect(columnHeader, SIGNAL(sectionClicked(int)), this, SLOT(columnHeaderClicked(int)));
    connect(tableView->verticalHeader(), SIGNAL(sectionClicked(int)), this,
            SLOT(rowHeaderClicked(int)));
    tableView->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tableView, SIGNAL(customContextMenuRequested(const QPoint&)), this,
            SLOT(showContextMenu(const QPoint&)));
    connect(tableView->selectionModel(),
            SIGNAL(selectionChanged(const QItemSelection&, const QItemSelection&)), this,
            SLOT(tableSelectionChanged(const QItemSelection&, const QItemSelection&)));
    connect(tableModel, SIGNAL(emptyColumnsChanged(const QList<int>&, bool)), this,
            SLOT(showEmptyColumns(const QList<int>&, bool)));
    connect(tableModel, SIGNAL(modelReset()), tableModel, SLOT(setUpColumn()));
    connect(tableModel, SIGNAL(modelReset()), tableModel, SLOT(checkLockAttr()));
}

void vorelWindow::createMenu() {
    optionsMenu = menuBar()->addMenu("Options");
    autoUpdateAction = optionsMenu->addAction("Auto Update");
    autoUpdateAction->setCheckable(true);
    autoUpdateAction->setChecked(false);
    // The presets are placeholders: present in the menu, doing nothing.
    savePresetAction = optionsMenu->addAction("Save Preset");
    loadPresetAction = optionsMenu->addAction("Load Preset");
    connect(autoUpdateAction, SIGNAL(triggered(bool)), tableModel, SLOT(setAutoUpdate(bool)));
    createWeightsMenu();
}

QPushButton* vorelWindow::createButton(const QString& text, const char* objectName) {
    QPushButton* button = new QPushButton(text);
    if (objectName)
        button->setObjectName(objectName);
    button->setFixedWidth(kButtonWidth);
    return button;
}

QHBoxLayout* vorelWindow::createMaxInfluenceRow() {
    maxInfluenceLabel = new QLabel("Max influences: ");
    maxInfluenceEdit = new QLineEdit("4");
    maxInfluenceEdit->setObjectName("maxInfluenceEdit");
    maxInfluenceEdit->setMaximumWidth(kMaxInfluenceEditWidth);
    maxInfluenceEdit->installEventFilter(this);
    applyInfluenceButton = createButton("Apply", "ApplyInfluence");

    QHBoxLayout* row = editRow(maxInfluenceLabel, maxInfluenceEdit, 18, applyInfluenceButton);
    row->addStretch(1);
    connect(maxInfluenceEdit, SIGNAL(returnPressed()), this, SLOT(setMaxValue()));
    connect(applyInfluenceButton, SIGNAL(clicked()), this, SLOT(applyMaxInfluence()));
    return row;
}

QVBoxLayout* vorelWindow::createLoadAndLockRows() {
    loadComponentButton = createButton("Load Component", "LoadComponent");
    filterButton = createButton("Filter");
    filterButton->setCheckable(true);
    filterButton->setStyleSheet(kCheckedButtonStyle);
    highlightButton = createButton("Highlight");
    highlightButton->setCheckable(true);
    highlightButton->setStyleSheet(kCheckedButtonStyle);
    lockButton = createButton("Lock");
    unlockButton = createButton("UnLock");
    unlockAllButton = createButton("UnLock All");

    QVBoxLayout* rows = new QVBoxLayout();
    rows->addLayout(buttonRow({loadComponentButton, filterButton, highlightButton}));
    rows->addLayout(buttonRow({lockButton, unlockButton, unlockAllButton}));
    if (tableModel)
        connect(loadComponentButton, SIGNAL(clicked()), this, SLOT(loadWeightData()));
    connect(filterButton, SIGNAL(toggled(bool)), this, SLOT(toggleFilter(bool)));
    connect(highlightButton, SIGNAL(toggled(bool)), this, SLOT(toggleHilight(bool)));
    connect(lockButton, SIGNAL(clicked()), this, SLOT(lockSelected()));
    connect(unlockButton, SIGNAL(clicked()), this, SLOT(unlockSelected()));
    connect(unlockAllButton, SIGNAL(clicked()), this, SLOT(unlockAll()));
    return rows;
}

QHBoxLayout* vorelWindow::createPrecisionRow() {
    precisionLabel = new QLabel("Enter number of decimal places: ");
    precisionEdit = new QLineEdit("0.001");
    precisionEdit->setFixedWidth(kPrecisionEditWidth);
    precisionEdit->installEventFilter(this);
    roundButton = createButton("Round", "RoundPrecision");

    QHBoxLayout* row = editRow(precisionLabel, precisionEdit, 50, roundButton);
    row->setAlignment(Qt::AlignLeft);
    row->addStretch(1);
    connect(roundButton, SIGNAL(clicked()), this, SLOT(applyPrecision()));
    connect(precisionEdit, SIGNAL(returnPressed()), this, SLOT(setPrecisionEdit()));
    return row;
}

QHBoxLayout* vorelWindow::createValueRow() {
    valueGroup = new QGroupBox();
    absoluteRadio = new QRadioButton("absolute");
    relativeRadio = new QRadioButton("relative");
    relativeRadio->setChecked(true);
    QVBoxLayout* modes = new QVBoxLayout();
    modes->setContentsMargins(5, 5, 5, 5);
    modes->addWidget(absoluteRadio);
    modes->addWidget(relativeRadio);
    valueGroup->setLayout(modes);
    valueGroup->installEventFilter(this);

    valueEdit = new QLineEdit();
    valueEdit->setFixedWidth(kValueEditWidth);
    valueEdit->installEventFilter(this);

    valueSlider = new QSlider(Qt::Horizontal);
    valueSlider->setFixedWidth(400);
    valueSlider->setMinimum(-1000);
    valueSlider->setMaximum(1000);
    valueSlider->setValue(0);
    valueSlider->setTickPosition(QSlider::TicksBothSides);
    valueSlider->setTickInterval(1000);

    QHBoxLayout* row = new QHBoxLayout();
    row->addWidget(valueGroup);
    row->addWidget(valueEdit);
    row->addWidget(valueSlider);
    row->addStretch(1);
    connect(absoluteRadio, SIGNAL(toggled(bool)), this, SLOT(setAbsoluteMode(bool)));
    connect(valueSlider, SIGNAL(valueChanged(int)), this, SLOT(sliderChanged(int)));
    connect(valueSlider, SIGNAL(sliderReleased()), this, SLOT(sliderReleased()));
    connect(valueEdit, SIGNAL(returnPressed()), this, SLOT(valueEditChanged()));
    return row;
}

vorelWindow::ValueLine vorelWindow::createValueLine(const QString& label, const QString& text,
                                                    int minimum, int maximum, int value) {
    ValueLine line;
    line.label = new QLabel(label);
    line.label->setFixedWidth(kLineLabelWidth);
    line.label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    line.edit = new QLineEdit(text);
    line.edit->setFixedWidth(kLineEditWidth);
    line.edit->installEventFilter(this);
    line.slider = new QSlider(Qt::Horizontal);
    line.slider->setFixedWidth(110);
    line.slider->setMinimum(minimum);
    line.slider->setMaximum(maximum);
    line.slider->setValue(value);
    return line;
}

void vorelWindow::ValueLine::setEnabled(bool enabled) const {
    label->setEnabled(enabled);
    edit->setEnabled(enabled);
    slider->setEnabled(enabled);
}

QHBoxLayout* vorelWindow::createFloodRow() {
    opacityLine = createValueLine("Opacity:", "1.000", 0, 10000, 10000);
    floodValueLine = createValueLine("Value:", "1.000", 0, 10000, 10000);
    requiredWeightDifferenceLine =
        createValueLine("Required Weight Difference:", "0.000", 0, 100000, 0);
    smoothingIterationsLine = createValueLine("Smoothing Iterations:", "5", 0, 100, 5);

    QVBoxLayout* lines = new QVBoxLayout();
    for (const ValueLine* line :
         {&requiredWeightDifferenceLine, &smoothingIterationsLine, &opacityLine, &floodValueLine}) {
        QHBoxLayout* layout = new QHBoxLayout();
        layout->addWidget(line->label);
        layout->addWidget(line->edit);
        layout->addWidget(line->slider);
        lines->addLayout(layout);
    }

    floodOperationBox = new QComboBox();
    floodOperationBox->setFixedHeight(kOperationBoxHeight);
    floodOperationBox->setFixedWidth(kButtonWidth);
    floodOperationBox->addItems(
        {"Smooth Skin Weight", "Smooth(Per Influence)", "Replace(Per Influence)"});
    applyFloodButton = createButton("Apply", "Apply");

    QHBoxLayout* row = new QHBoxLayout();
    row->addLayout(lines);
    row->addSpacing(10);
    row->addWidget(floodOperationBox);
    row->addWidget(applyFloodButton);
    row->addStretch(1);

    connect(opacityLine.edit, SIGNAL(returnPressed()), this, SLOT(opacityEditChanged()));
    connect(opacityLine.slider, SIGNAL(sliderReleased()), this, SLOT(opacitySliderChanged()));
    connect(floodValueLine.edit, SIGNAL(returnPressed()), this, SLOT(floodEditChanged()));
    connect(floodValueLine.slider, SIGNAL(sliderReleased()), this, SLOT(floodSliderChanged()));
    connect(requiredWeightDifferenceLine.edit, SIGNAL(returnPressed()), this,
            SLOT(requiredWeightDifferenceEditChanged()));
    connect(requiredWeightDifferenceLine.slider, SIGNAL(sliderReleased()), this,
            SLOT(requiredWeightDifferenceSliderChanged()));
    connect(smoothingIterationsLine.edit, SIGNAL(returnPressed()), this,
            SLOT(smoothingIterationsEditChanged()));
    connect(smoothingIterationsLine.slider, SIGNAL(sliderReleased()), this,
            SLOT(smoothingIterationsSliderChanged()));
    connect(floodOperationBox, SIGNAL(currentIndexChanged(int)), this,
            SLOT(floodOperationBoxChanged(int)));

    // The controls match the first operation, "Smooth Skin Weight".
    opacityLine.setEnabled(false);
    floodValueLine.setEnabled(false);
    requiredWeightDifferenceLine.setEnabled(true);
    smoothingIterationsLine.setEnabled(true);
    return row;
}

QFrame* vorelWindow::createSeparator() {
    QFrame* line = new QFrame();
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    line->setLineWidth(1);
    line->setFixedHeight(3);
    return line;
}

void vorelWindow::assembleCentralWidget(QHBoxLayout* maxInfluenceRow, QHBoxLayout* precisionRow,
                                        QHBoxLayout* floodRow, QVBoxLayout* loadAndLockRows,
                                        QHBoxLayout* valueRow) {
    for (QFrame*& separator : separators)
        separator = createSeparator();
    centralFrame = new QFrame();
    mainLayout = new QVBoxLayout(centralFrame);
    mainLayout->setContentsMargins(15, 15, 15, 15);
    mainLayout->setSpacing(5);
    mainLayout->addLayout(maxInfluenceRow);
    mainLayout->addWidget(separators[0]);
    mainLayout->addLayout(precisionRow);
    mainLayout->addWidget(separators[1]);
    mainLayout->addLayout(floodRow);
    mainLayout->addWidget(separators[2]);
    mainLayout->addLayout(loadAndLockRows);
    mainLayout->addLayout(valueRow);
    tableLayout = new QVBoxLayout();
    tableLayout->addLayout(createRowQueryRow());
    tableLayout->addWidget(tableView);
    mainLayout->addLayout(tableLayout);
    setCentralWidget(centralFrame);
}

void vorelWindow::createCommands() {
    replaceCommand = new replaceButtonCmd(this, tableModel);
    roundCommand = new roundButtonCmd(this, tableModel);
    applyCommand = new applyButtonCmd(this, tableModel);
    dragSliderCommand = new dragSliderCmd(this, tableModel);
    dragSliderColumnCommand = new dragSliderColCmd(this, tableModel);
    setCellDataCommand = new setCellDataCmd(this, tableModel);
    smoothCommand = new smoothCmd(this, tableModel);
}

// vorelSession: test bases that drive the Vorel plug-in as a user does: loaded into the running
// host with loadPlugin, its window opened with vorelCmd, its controls found by their texts and
// object names, the scene changed with the host's commands and read back through the host.
//
// VorelSession gives each test a fresh scene and unloads the plug-in after the test if the
// test loaded it. VorelWindowTest also loads the plug-in and opens the window before the test.
// Failures to load or to find the window fail the running test.
#pragma once

#include "HString.h"
#include "sceneFixture.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <string>
#include <vector>

class QAbstractItemModel;
class QMainWindow;
class QPushButton;
class QTableView;

namespace vorel {

// Runs a command as a script would (no echo, no undo); true when it succeeded.
bool run(const std::string& command);

// A skinned grid mesh NAME of `vertices` vertices on a chain of `joints` joints, each vertex
// with `weightsPerVertex` weights (see fixture::makeSkinnedMesh).
fixture::SkinnedMesh makeMesh(unsigned vertices, unsigned joints, unsigned weightsPerVertex = 1,
                              const std::string& name = "body");
// Gives every vertex of the mesh the weights of its row (one value per joint, in the cluster's
// influence order) exactly as given, sums that are not one included.
void setWeights(const fixture::SkinnedMesh& mesh, const std::vector<std::vector<double>>& rows);
// A mesh NAME (shape NAME + "Shape") with one vertex per row, bound to `joints` with exactly
// these weights.
fixture::SkinnedMesh bindMesh(const std::string& name, const std::vector<runtime::NodePtr>& joints,
                              const std::vector<std::vector<double>>& rows);
// The weights of one vertex as the skin cluster holds them, in influence order.
std::vector<double> weightsOf(const fixture::SkinnedMesh& mesh, int vertex);
// Joint locks as a saved scene holds them: the paths stored on the mesh's skin cluster, and
// each path that names a joint locked in the host.
void storeJointLocks(const fixture::SkinnedMesh& mesh, const std::vector<HString>& paths);
// The host's own lock of one of the mesh's joints.
bool hostLocked(const fixture::SkinnedMesh& mesh, size_t joint);

class VorelSession : public fixture::FreshScene {
protected:
    void TearDown() override;

    bool loadPlugin();
    bool unloadPlugin();
    // Runs vorelCmd without flags and finds the window, its model and its table.
    void openWindow();
    // The Vorel windows under the host's main window.
    static QList<QMainWindow*> vorelWindows();

    QMainWindow* window = nullptr;
    QAbstractItemModel* model = nullptr;
    QTableView* table = nullptr;

private:
    bool loaded = false;
};

class VorelWindowTest : public VorelSession {
protected:
    void SetUp() override;

    // The window's push button with this object name or, failing that, this text.
    QPushButton* button(const QString& name) const;
    // Clicks "Load Component" with the scene's selection replaced by `items` ("body",
    // "body.vtx[3] body.vtx[7]").
    void selectAndLoad(const std::string& items);
    void clickButton(const QString& name);

    QString cellText(int row, int column) const;
    // The texts of every cell of a row.
    QStringList rowTexts(int row) const;
    bool editable(int row, int column) const;
    QVariant cellData(int row, int column, int role) const;
    QVariant rowHeader(int row, int role) const;
    QVariant columnHeader(int column, int role) const;
    QStringList rowNames() const;
    QStringList columnNames() const;
    // Selects cells of the table as a user's click would (replacing the selection).
    void selectCells(const std::vector<std::pair<int, int>>& cells);
    // Clicks a cell, or the header of a column (which selects the whole column), as a user does.
    void clickCell(int row, int column);
    void clickColumnHeader(int column);
    // Selects the cell and locks it as the table's context menu does.
    void lockCell(std::pair<int, int> cell);
    // Opens the table's editor on `cell` (the selection stays), types `text` and presses
    // Return, as a user typing into a cell does.
    void typeIntoCell(std::pair<int, int> cell, const QString& text);
};

} // namespace vorel

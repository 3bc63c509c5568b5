#include "vorelSession.h"

#include "HDoubleArray.h"
#include "HFnDependencyNode.h"
#include "HFnSkinCluster.h"
#include "HFnStringArrayData.h"
#include "HGlobal.h"
#include "HIntArray.h"
#include "HPlug.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "scene/MeshPrimitives.h"
#include "scene/SkinBinding.h"

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace vorel {

bool run(const std::string& command) {
    return static_cast<bool>(HGlobal::executeCommand(HString(command)));
}

fixture::SkinnedMesh makeMesh(unsigned vertices, unsigned joints, unsigned weightsPerVertex,
                              const std::string& name) {
    fixture::SkinnedMeshOptions options;
    options.vertices = vertices;
    options.joints = joints;
    options.weightsPerVertex = weightsPerVertex;
    options.name = name;
    return fixture::makeSkinnedMesh(options);
}

void setWeights(const fixture::SkinnedMesh& mesh, const std::vector<std::vector<double>>& rows) {
    HFnSkinCluster cluster(mesh.clusterObject());
    for (size_t vertex = 0; vertex < rows.size(); ++vertex) {
        HIntArray influences;
        HDoubleArray values;
        for (size_t k = 0; k < rows[vertex].size(); ++k) {
            influences.append(static_cast<int>(k));
            values.append(rows[vertex][k]);
        }
        HStatus status = cluster.setWeights(
            mesh.shapePath(), fixture::vertexComponent({int(vertex)}), influences, values, false);
        ASSERT_TRUE(status) << status.errorString().asChar();
    }
}

fixture::SkinnedMesh bindMesh(const std::string& name, const std::vector<runtime::NodePtr>& joints,
                              const std::vector<std::vector<double>>& rows) {
    runtime::MeshGeometry geometry;
    for (size_t vertex = 0; vertex < rows.size(); ++vertex)
        geometry.points.emplace_back(static_cast<double>(vertex), 0.0, 1.0);
    runtime::SkinWeights weights(static_cast<unsigned>(rows.size()));
    for (size_t vertex = 0; vertex < rows.size(); ++vertex)
        weights.assignDense(static_cast<unsigned>(vertex), rows[vertex].data(),
                            static_cast<unsigned>(rows[vertex].size()));
    fixture::SkinnedMesh mesh;
    HStatus status;
    mesh.transform = runtime::createMeshObject(runtime::scene(), geometry, name, &status);
    EXPECT_TRUE(status) << status.errorString().asChar();
    if (!status)
        return mesh;
    mesh.shape = mesh.transform->children().front();
    mesh.joints = joints;
    mesh.cluster = runtime::createSkinCluster(runtime::scene(), joints, *mesh.shape,
                                              std::move(weights), std::string(), &status);
    EXPECT_TRUE(status) << status.errorString().asChar();
    return mesh;
}

std::vector<double> weightsOf(const fixture::SkinnedMesh& mesh, int vertex) {
    HDoubleArray weights;
    unsigned count = 0;
    HFnSkinCluster(mesh.clusterObject())
        .getWeights(mesh.shapePath(), fixture::vertexComponent({vertex}), weights, count);
    return std::vector<double>(weights.begin(), weights.end());
}

void storeJointLocks(const fixture::SkinnedMesh& mesh, const std::vector<HString>& paths) {
    HStringArray names;
    for (const HString& path : paths) {
        names.append(path);
        HSelectionList joint;
        if (joint.add(path))
            run(std::string("setAttr ") + path.asChar() + ".lockInfluenceWeights 1");
    }
    HPlug plug = HFnDependencyNode(mesh.clusterObject()).findPlug("lockedJointNames");
    ASSERT_TRUE(plug.setValue(HFnStringArrayData().create(names)));
}

bool hostLocked(const fixture::SkinnedMesh& mesh, size_t joint) {
    return HFnDependencyNode(fixture::objectOf(mesh.joints[joint]))
               .findPlug("lockInfluenceWeights")
               .asInt() != 0;
}

void VorelSession::TearDown() {
    if (loaded) {
        EXPECT_TRUE(unloadPlugin());
    }
    FreshScene::TearDown();
}

bool VorelSession::loadPlugin() {
    loaded = run(std::string("loadPlugin \"") + VOREL_PLUGIN_PATH + "\"");
    return loaded;
}

bool VorelSession::unloadPlugin() {
    const bool unloaded = run("unloadPlugin vorel");
    if (unloaded) {
        loaded = false;
        window = nullptr;
        model = nullptr;
        table = nullptr;
    }
    return unloaded;
}

QList<QMainWindow*> VorelSession::vorelWindows() {
    QList<QMainWindow*> found;
    for (QMainWindow* child : HQtUtil::mainWindow()->findChildren<QMainWindow*>())
        if (child->inherits("vorelWindow"))
            found.append(child);
    return found;
}

void VorelSession::openWindow() {
    ASSERT_TRUE(run("vorelCmd"));
    QList<QMainWindow*> windows = vorelWindows();
    ASSERT_EQ(windows.size(), 1);
    window = windows.first();
    for (QAbstractItemModel* candidate : window->findChildren<QAbstractItemModel*>())
        if (candidate->inherits("weightTableModel"))
            model = candidate;
    table = window->findChild<QTableView*>();
    ASSERT_NE(model, nullptr);
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->model(), model);
}

void VorelWindowTest::SetUp() {
    VorelSession::SetUp();
    ASSERT_TRUE(loadPlugin());
    openWindow();
    // Automatic updating is one switch for the whole process; every test starts with it off.
    QMetaObject::invokeMethod(model, "setAutoUpdate", Q_ARG(bool, false));
}

QPushButton* VorelWindowTest::button(const QString& name) const {
    if (QPushButton* named = window->findChild<QPushButton*>(name))
        return named;
    for (QPushButton* candidate : window->findChildren<QPushButton*>())
        if (candidate->text() == name)
            return candidate;
    ADD_FAILURE() << "no button " << name.toStdString();
    return nullptr;
}

void VorelWindowTest::clickButton(const QString& name) {
    QPushButton* pushButton = button(name);
    ASSERT_NE(pushButton, nullptr);
    QTest::mouseClick(pushButton, Qt::LeftButton);
}

void VorelWindowTest::selectAndLoad(const std::string& items) {
    ASSERT_TRUE(run("select -r " + items));
    clickButton("LoadComponent");
}

QVariant VorelWindowTest::cellData(int row, int column, int role) const {
    return model->data(model->index(row, column), role);
}

QString VorelWindowTest::cellText(int row, int column) const {
    return cellData(row, column, Qt::DisplayRole).toString();
}

QStringList VorelWindowTest::rowTexts(int row) const {
    QStringList texts;
    for (int column = 0; column < model->columnCount(); ++column)
        texts.append(cellText(row, column));
    return texts;
}

bool VorelWindowTest::editable(int row, int column) const {
    return model->flags(model->index(row, column)) & Qt::ItemIsEditable;
}

QVariant VorelWindowTest::rowHeader(int row, int role) const {
    return model->headerData(row, Qt::Vertical, role);
}

QVariant VorelWindowTest::columnHeader(int column, int role) const {
    return model->headerData(column, Qt::Horizontal, role);
}

QStringList VorelWindowTest::rowNames() const {
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row)
        names.append(rowHeader(row, Qt::DisplayRole).toString());
    return names;
}

QStringList VorelWindowTest::columnNames() const {
    QStringList names;
    for (int column = 0; column < model->columnCount(); ++column)
        names.append(columnHeader(column, Qt::DisplayRole).toString());
    return names;
}

void VorelWindowTest::selectCells(const std::vector<std::pair<int, int>>& cells) {
    QItemSelection selection;
    for (const auto& cell : cells)
        selection.select(model->index(cell.first, cell.second),
                         model->index(cell.first, cell.second));
    table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void VorelWindowTest::clickCell(int row, int column) {
    const QModelIndex index = model->index(row, column);
    ASSERT_TRUE(index.isValid());
    table->scrollTo(index);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualRect(index).center());
}

void VorelWindowTest::clickColumnHeader(int column) {
    QHeaderView& header = *table->horizontalHeader();
    ASSERT_GE(column, 0);
    const QPoint centre(header.sectionViewportPosition(column) + header.sectionSize(column) / 2,
                        header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, centre);
}

void VorelWindowTest::lockCell(std::pair<int, int> cell) {
    selectCells({cell});
    QMetaObject::invokeMethod(model, "lockCell");
}

void VorelWindowTest::typeIntoCell(std::pair<int, int> cell, const QString& text) {
    const QModelIndex index = model->index(cell.first, cell.second);
    table->setFocus();
    table->edit(index);
    QLineEdit* editor = qobject_cast<QLineEdit*>(table->indexWidget(index));
    ASSERT_NE(editor, nullptr) << "no editor on the cell";
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // The delegate commits the editor's text through a queued call.
    QCoreApplication::processEvents();
}

} // namespace vorel

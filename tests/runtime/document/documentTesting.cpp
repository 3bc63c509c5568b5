#include "documentTesting.h"

#include "OutputRecorder.h"
#include "document/SceneDocument.h"
#include "document/SkinLockAttributes.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "undo/UndoQueue.h"

#include <QFile>
#include <cmath>
#include <limits>

namespace documenttest {

void DocumentTest::SetUp() {
    FreshScene::SetUp();
    runtime::sceneDocument().newScene();
    ASSERT_TRUE(m_folder.isValid());
}

std::string DocumentTest::path(const std::string& name) const {
    return m_folder.filePath(QString::fromStdString(name)).toStdString();
}

HStatus run(const std::string& text) {
    return HGlobal::executeCommand(HString(text), false, true);
}

std::string stringResult(const std::string& text) {
    return HGlobal::executeCommandStringResult(HString(text)).str();
}

void makeLegScene() {
    ASSERT_TRUE(run("joint -n hip -p 0 1 0; joint -n knee -p 0 0 0.25; joint -n ankle -p 0 -1 0; "
                    "select -cl; polyCylinder -n leg -r 0.3 -h 2 -sx 6 -sy 3; "
                    "skinCluster -n legCluster -mi 3 hip knee ankle leg; "
                    "createNode transform -n rig; parent hip rig; "
                    "setAttr rig.translate 0.1 0 -7e-310; setAttr |rig|hip|knee.liw 1; "
                    "setAttr legCluster.lockVertex[3] 1; createNode objectSet -n looseSet; "
                    "addAttr -ln note -dt string knee; "
                    "setAttr knee.note -type \"string\" \"file -f -new; print \\\"ran\\\"\"; "
                    "addAttr -ln ratio -at double -dv 0.1 knee; "
                    "addAttr -ln names -dt stringArray knee; "
                    "setAttr knee.names -type stringArray 2 \"a b\" \"\"; "
                    "addAttr -ln flags -at bool -m knee; setAttr knee.flags[7] 1; "
                    "addAttr -ln count -at long -dv -3 knee; select -cl"));
    runtime::Scene& scene = runtime::scene();
    runtime::NodePtr cluster = scene.findNode("legCluster");
    ASSERT_TRUE(scene.setValue(scene.findNode("knee")->plug("ratio"),
                               std::numeric_limits<double>::quiet_NaN()));
    runtime::SkinWeights& weights = cluster->skinCluster()->weights();
    const double unnormalised[3] = {0.25, 0.5, 1.5};
    const double tiny[3] = {4.9e-324, 1.0 / 3.0, 0.0};
    weights.assignDense(0, unnormalised, 3);
    weights.assignDense(5, tiny, 3);
    runtime::SkinLocks locks;
    locks.lockedJointNames = {"|rig|hip|knee", "|rig|hip"};
    locks.lockedVertices = {2, 9};
    locks.lockedCells = {{4, {"|rig|hip|knee|ankle", "|rig|hip"}}, {11, {"|rig|hip"}}};
    ASSERT_TRUE(runtime::writeSkinLocks(scene, *cluster, locks));
    runtime::host().get<runtime::UndoQueue>().flush();
}

std::string openRefusal(const std::string& path) {
    const Texts before = fixture::sceneState();
    const unsigned undoable = runtime::host().get<runtime::UndoQueue>().undoCount();
    const std::string name = runtime::sceneDocument().name();
    const bool modified = runtime::scene().isModified();
    OutputRecorder output;
    EXPECT_FALSE(run("file -f -o \"" + path + "\""));
    const std::vector<std::string> errors = output.texts(HCommandMessage::kError);
    const Texts after = fixture::sceneState();
    EXPECT_TRUE(after == before) << fixture::differences(after, before);
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), undoable);
    EXPECT_EQ(runtime::sceneDocument().name(), name);
    EXPECT_EQ(runtime::scene().isModified(), modified);
    EXPECT_EQ(errors.size(), 1u) << testing::PrintToString(errors);
    return errors.empty() ? std::string() : errors.front();
}

std::string readRefusal(const std::string& path, const std::string& problem) {
    return "Cannot read \"" + path + "\": " + problem + ".";
}

std::string readText(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return std::string();
    return file.readAll().toStdString();
}

void writeText(const std::string& path, const std::string& text) {
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text.data(), static_cast<qint64>(text.size()));
}

} // namespace documenttest

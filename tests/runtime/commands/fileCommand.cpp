#include "HEventMessage.h"
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "document/SceneDocument.h"
#include "document/SkinLockAttributes.h"
#include "documentTesting.h"
#include "gltfTestFiles.h"
#include "importerFailures.h"

#include <QDir>
#include <QFile>
#include <algorithm>

using documenttest::run;
using documenttest::stringResult;
using fixture::Texts;

namespace {

// Every event of the scene's life, in the order they fire.
class FileCommand : public documenttest::DocumentTest {
protected:
    void SetUp() override {
        DocumentTest::SetUp();
        for (Listener& listener : m_listeners) {
            listener.events = &m_events;
            listener.id = HEventMessage::addEventCallback(listener.name, heard, &listener);
        }
    }
    void TearDown() override {
        for (const Listener& listener : m_listeners)
            HMessage::removeCallback(listener.id);
    }

    // Runs the command that must fail, and gives the errors it printed; the scene must not
    // change.
    Texts errorsOf(const std::string& command) {
        const Texts before = fixture::sceneState();
        OutputRecorder output;
        EXPECT_FALSE(run(command)) << command;
        const Texts after = fixture::sceneState();
        EXPECT_TRUE(after == before) << command << fixture::differences(after, before);
        return output.texts(HCommandMessage::kError);
    }
    unsigned undoCount() const { return runtime::host().get<runtime::UndoQueue>().undoCount(); }
    std::string quoted(const std::string& name) const { return "\"" + path(name) + "\""; }

    Texts m_events;

private:
    struct Listener {
        const char* name;
        Texts* events = nullptr;
        HCallbackId id = 0;
    };
    static void heard(void* data) {
        auto* listener = static_cast<Listener*>(data);
        listener->events->push_back(listener->name);
    }
    Listener m_listeners[3] = {{"SceneOpened"}, {"SceneSaved"}, {"SelectionChanged"}};
};

TEST_F(FileCommand, OpenAndNewEmptyTheSelectionQuietlyFlushUndoAndAnnounceTheScene) {
    documenttest::makeLegScene();
    ASSERT_TRUE(run("file -rename " + quoted("leg.vscene") + "; file -save"));
    ASSERT_TRUE(run("select -r leg.vtx[1:3]; setAttr rig.tx 2"));
    ASSERT_GT(undoCount(), 0u);
    m_events.clear();

    EXPECT_EQ(stringResult("file -f -o " + quoted("leg.vscene")), path("leg.vscene"));
    EXPECT_EQ(m_events, Texts{"SceneOpened"});
    EXPECT_TRUE(fixture::selectionTexts().empty());
    EXPECT_EQ(undoCount(), 0u);
    EXPECT_EQ(stringResult("getAttr rig.tx"), "0.1");
    EXPECT_FALSE(runtime::scene().isModified());
    EXPECT_EQ(stringResult("file -q -sn"), path("leg.vscene"));

    ASSERT_TRUE(run("select -r hip; setAttr hip.tx 1"));
    m_events.clear();
    ASSERT_TRUE(run("file -force -new"));
    EXPECT_EQ(m_events, Texts{"SceneOpened"});
    EXPECT_EQ(runtime::scene().nodeCount(), 0u);
    EXPECT_TRUE(fixture::selectionTexts().empty());
    EXPECT_EQ(undoCount(), 0u);
    EXPECT_EQ(stringResult("file -q -sceneName"), "");
}

TEST_F(FileCommand, UnsavedChangesAreKeptUnlessForced) {
    documenttest::makeLegScene();
    m_events.clear();
    ASSERT_TRUE(runtime::scene().isModified());
    EXPECT_EQ(errorsOf("file -new"), Texts{"The scene has unsaved changes."});
    EXPECT_EQ(errorsOf("file -o " + quoted("other.vscene")),
              Texts{"The scene has unsaved changes."});
    EXPECT_TRUE(m_events.empty());

    ASSERT_TRUE(run("file -rn " + quoted("leg.vscene") + "; file -s"));
    m_events.clear();
    ASSERT_TRUE(run("file -new"));
    EXPECT_EQ(m_events, Texts{"SceneOpened"});
}

TEST_F(FileCommand, SavingWritesUnderTheSceneNameAndAnnouncesIt) {
    documenttest::makeLegScene();
    EXPECT_EQ(errorsOf("file -s"),
              Texts{"file: The scene has no name to save under; give it one with -rename."});

    EXPECT_EQ(stringResult("file -rename " + quoted("leg.glb")), path("leg.glb"));
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path("leg.glb"))));
    m_events.clear();
    EXPECT_EQ(stringResult("file -save"), path("leg.glb"));
    EXPECT_EQ(m_events, Texts{"SceneSaved"});
    EXPECT_FALSE(runtime::scene().isModified());
    EXPECT_TRUE(QFile::exists(QString::fromStdString(path("leg.glb"))));

    // Exporting writes elsewhere and leaves the scene's name and its modified mark alone.
    ASSERT_TRUE(run("setAttr rig.tx 4"));
    m_events.clear();
    EXPECT_EQ(stringResult("file -ea " + quoted("copy.vscene")), path("copy.vscene"));
    EXPECT_TRUE(m_events.empty());
    EXPECT_TRUE(runtime::scene().isModified());
    EXPECT_EQ(stringResult("file -q -sn"), path("leg.glb"));
    EXPECT_EQ(QDir(QString::fromStdString(path(""))).entryList(QDir::Files),
              (QStringList{"copy.vscene", "leg.glb"}));
}

TEST_F(FileCommand, RefusesWhatItCannotDoWithTheReason) {
    documenttest::makeLegScene();
    m_events.clear();
    EXPECT_EQ(errorsOf("file"),
              Texts{"file: Give one of -new, -open, -save, -rename, -import and -exportAll."});
    EXPECT_EQ(errorsOf("file -f -new -s"), Texts{"file: Give one of -new and -save, not both."});
    EXPECT_EQ(errorsOf("file -q"), Texts{"file: Query -sceneName."});
    EXPECT_EQ(errorsOf("file -f -new leg"), Texts{"file: It takes no objects, only its flags."});
    EXPECT_EQ(
        errorsOf("file -ea " + quoted("leg.fbx")),
        Texts{"Cannot write \"" + path("leg.fbx") + "\": files of this format can only be read."});
    EXPECT_EQ(errorsOf("file -ea " + quoted("leg.txt")),
              Texts{"Cannot write \"" + path("leg.txt") +
                    "\": its format is not known by its extension."});
    EXPECT_EQ(errorsOf("file -f -o " + quoted("leg.txt")),
              Texts{"Cannot read \"" + path("leg.txt") +
                    "\": its format is not known by its extension."});
    const Texts missing = errorsOf("file -i " + quoted("missing.vscene"));
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].rfind("Cannot read \"" + path("missing.vscene") + "\": ", 0), 0u);
    EXPECT_TRUE(QDir(QString::fromStdString(path(""))).isEmpty());
    EXPECT_TRUE(m_events.empty());
}

// An importer that crashes takes nothing of the session with it: the scene, the selection, the
// undo queue and the modified mark stay as they were, whether opening or importing.
TEST_F(FileCommand, ACrashingImporterLeavesTheSessionAsItWas) {
    documenttest::makeLegScene();
    ASSERT_TRUE(run("select -r knee; setAttr rig.tx 4"));
    const unsigned undo = undoCount();
    ASSERT_TRUE(runtime::scene().isModified());
    m_events.clear();
    const filetest::FailingImporter importer("crash");
    const std::string model = filetest::importModelPath("FBX/huesitos.fbx");
    const Texts stopped{"Cannot read \"" + model + "\": the importer stopped unexpectedly."};
    EXPECT_EQ(errorsOf("file -f -o \"" + model + "\""), stopped);
    EXPECT_EQ(errorsOf("file -i \"" + model + "\""), stopped);
    EXPECT_EQ(undoCount(), undo);
    EXPECT_TRUE(runtime::scene().isModified());
    EXPECT_TRUE(m_events.empty());
}

TEST_F(FileCommand, ImportAddsTheFileAndOneUndoTakesItAway) {
    documenttest::makeLegScene();
    ASSERT_TRUE(run("file -ea " + quoted("leg.vscene") +
                    "; file -f -new; createNode transform "
                    "-n rig; select -cl"));
    runtime::host().get<runtime::UndoQueue>().flush();
    m_events.clear();

    // The file's "rig" meets the scene's: it becomes rig1, and the locks follow it.
    commandtest::expectUndoAndRedoExact("file -i " + quoted("leg.vscene"));
    EXPECT_EQ(stringResult("ls -l -type joint"), "|rig1|hip |rig1|hip|knee |rig1|hip|knee|ankle");
    EXPECT_EQ(runtime::readSkinLocks(*runtime::scene().findNode("legCluster")).lockedJointNames,
              (std::vector<std::string>{"|rig1|hip|knee", "|rig1|hip"}));
    EXPECT_EQ(stringResult("file -q -sn"), "");
    EXPECT_TRUE(m_events.empty());

    // Imported into an empty scene, the file is announced as an opened scene.
    ASSERT_TRUE(run("file -f -new"));
    m_events.clear();
    ASSERT_TRUE(run("file -import " + quoted("leg.vscene")));
    EXPECT_EQ(m_events, Texts{"SceneOpened"});
    EXPECT_EQ(stringResult("file -q -sn"), "");
}

// Debian's import test models, opened through the command: every mesh with its vertices, every
// joint, and every cluster with the file's weights as they were read. The import library finds
// no bones in the IQM, MS3D and B3D models; they open as meshes.
TEST_F(FileCommand, OpensTheImportTestModelsWithTheirJointsAndWeights) {
    const std::pair<const char*, bool> models[] = {
        {"X/Testwuson.X", true},       {"X/BCN_Epileptic.X", true},
        {"FBX/huesitos.fbx", true},    {"FBX/animation_with_skeleton.fbx", true},
        {"SMD/WusonSMD.smd", true},    {"Collada/box_nested_animation.dae", true},
        {"IQM/mrfixit.iqm", false},    {"MS3D/Wuson.ms3d", false},
        {"B3D/WusonBlitz.b3d", false},
    };
    for (const auto& [model, skinned] : models) {
        SCOPED_TRACE(model);
        const std::string file = filetest::importModelPath(model);
        const runtime::SceneDescription description = filetest::readScene(file);
        ASSERT_TRUE(run("file -f -o \"" + file + "\""));
        unsigned joints = 0, vertices = 0;
        std::vector<const runtime::SkinClusterData*> clusters;
        for (const runtime::NodePtr& node : runtime::scene().nodesParentsFirst()) {
            joints += node->typeName() == "joint";
            if (node->mesh())
                vertices += node->mesh()->vertexCount();
            if (node->skinCluster())
                clusters.push_back(node->skinCluster());
        }
        EXPECT_EQ(joints, static_cast<unsigned>(std::count_if(
                              description.nodes.begin(), description.nodes.end(),
                              [](const runtime::SceneNode& node) { return node.isJoint; })));
        int described = 0;
        for (const runtime::SceneMesh& mesh : description.meshes)
            described += mesh.vertexCount();
        EXPECT_EQ(vertices, static_cast<unsigned>(described));
        ASSERT_EQ(clusters.size(), description.skins.size());
        EXPECT_EQ(clusters.empty(), !skinned);
        // Clusters are made in the order of the file's skins.
        for (std::size_t s = 0; s < clusters.size(); ++s) {
            const runtime::SparseSkinWeights& read = description.skins[s].weights;
            const runtime::SkinWeights& weights = clusters[s]->weights();
            ASSERT_EQ(clusters[s]->influenceCount(), description.skins[s].joints.size());
            ASSERT_EQ(weights.vertexCount(), static_cast<unsigned>(read.vertexCount()));
            EXPECT_EQ(weights.entryTotal(), read.entryCount());
            for (int v = 0; v < read.vertexCount(); ++v)
                for (const runtime::SkinWeight& entry : read.vertex(v))
                    ASSERT_EQ(weights.weight(v, entry.influence), entry.weight) << "vertex " << v;
        }
    }
}

} // namespace

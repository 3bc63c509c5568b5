// A batch over many files with GNU parallel, as a pipeline prepares assets for a game engine:
// every file limited to four weights per vertex and quantized to 8 bits, written as glTF.
#include "hostProcess.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using appfixture::runHost;

const QStringList kAssets = {"arm", "leg", "tail"};

// Skinned cylinders of 5 joints with 5 weights per vertex, one per asset, as .glb files.
void makeAssets(const QDir& folder) {
    QString script;
    for (int i = 0; i < kAssets.size(); ++i)
        script += QString("file -f -new; joint -n j1; joint -n j2 -p 0 1 0; joint -n j3 -p 0 2 0;"
                          "joint -n j4 -p 0 3 0; joint -n j5 -p 0 4 0; select -cl;"
                          "polyCylinder -n %1 -h 4 -sx %2 -sy 8; skinCluster -mi 5 j1 j2 j3 j4 "
                          "j5 %1; file -ea \"%3\";")
                      .arg(kAssets[i])
                      .arg(6 + i)
                      .arg(folder.filePath("assets/" + kAssets[i] + ".glb"));
    appfixture::HostRun made = runHost({"--batch", "--no-plugin", "-c", script});
    ASSERT_EQ(made.exitCode, 0) << made.err.join('\n').toStdString();
}

// Every vertex of the file's skin weights: at most four weights, each a whole number of
// 1/255 (within the float precision of glTF), 255 of them in all.
void expectEngineReady(const QString& file, const QString& json) {
    appfixture::HostRun exported =
        runHost({"--batch", "--no-plugin", file, "-c", "skinWeights -export \"" + json + "\""});
    ASSERT_EQ(exported.exitCode, 0) << exported.err.join('\n').toStdString();
    QFile text(json);
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    const QJsonArray clusters = QJsonDocument::fromJson(text.readAll())["skinClusters"].toArray();
    ASSERT_EQ(clusters.size(), 1);
    const QJsonArray vertices = clusters[0].toObject()["vertices"].toArray();
    ASSERT_GT(vertices.size(), 0);
    for (const QJsonValue& vertex : vertices) {
        const QJsonArray weights = vertex.toArray()[2].toArray();
        EXPECT_LE(weights.size(), 4) << file.toStdString();
        long steps = 0;
        for (const QJsonValue& pair : weights) {
            const double scaled = pair.toArray()[1].toDouble() * 255.0;
            EXPECT_NEAR(scaled, std::round(scaled), 1e-4) << file.toStdString();
            steps += std::lround(scaled);
        }
        EXPECT_EQ(steps, 255) << file.toStdString();
    }
}

} // namespace

TEST(PipelineBatch, GnuParallelPreparesEveryFileForAnEngine) {
    const QString parallel = QStandardPaths::findExecutable("parallel");
    ASSERT_FALSE(parallel.isEmpty()) << "GNU parallel is missing; scripts/install-deps installs it";
    QTemporaryDir temporary;
    QDir folder(temporary.path());
    ASSERT_TRUE(folder.mkdir("assets") && folder.mkdir("out"));
    makeAssets(folder);

    QStringList arguments = {"-q",
                             VOREL_HOST_PROGRAM,
                             "--batch",
                             "--no-plugin",
                             "{}",
                             "-c",
                             "skinWeights -limit 4; skinWeights -quantize 255; "
                             "file -ea \"out/{/.}.glb\"",
                             ":::"};
    for (const QString& asset : kAssets)
        arguments << "assets/" + asset + ".glb";
    appfixture::HostRun batch = appfixture::runProgram(parallel, arguments, folder.path());
    ASSERT_EQ(batch.exitCode, 0) << batch.err.join('\n').toStdString();
    for (const QString& asset : kAssets)
        expectEngineReady(folder.filePath("out/" + asset + ".glb"),
                          folder.filePath(asset + ".json"));
}

TEST(PipelineBatch, EveryFormRunsInBatchModeAndGivesItsCount) {
    QTemporaryDir folder;
    const QString json = folder.filePath("body.json");
    appfixture::HostRun run = runHost(
        {"--batch", "--no-plugin", "-s", VOREL_SAMPLES_DIR "/skinned-cylinder.cmd", "-c",
         "print `skinWeights -export \"" + json +
             "\"`; print `skinWeights -limit 2`;"
             "print `skinWeights -import \"" +
             json +
             "\" -method position -remap hip hip body`;"
             "print `skinWeights -quantize 255 body.vtx[0:11]`; print `skinWeights -mirror x`;"
             "skinWeights -mirror w"});
    EXPECT_EQ(run.exitCode, 1);
    QStringList printed;
    for (int i = 0; i + 1 < run.out.size(); ++i)
        if (run.out[i].startsWith("print `skinWeights"))
            printed << run.out[i + 1];
    EXPECT_EQ(printed, (QStringList{"110", "110", "110", "12", "2"}));
    EXPECT_EQ(run.err, QStringList{"// Error: skinWeights: -mirror takes x, y or z."});
}

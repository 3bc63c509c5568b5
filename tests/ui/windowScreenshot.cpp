// Pictures of the window, saved in the build tree's pictures folder for anyone to look at: the
// sample character's body as a user first sees it, and a small table that shows every colour
// (two meshes sharing an influence, a locked column, a vertex that does not sum to one in red,
// a vertex over the influence limit with a yellow row header), whose colours the test also
// finds on the picture.
#include "HFnDependencyNode.h"
#include "HPlug.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QImage>
#include <QLayout>
#include <QMainWindow>
#include <QTableView>
#include <gtest/gtest.h>
#include <iostream>

namespace {

using WindowScreenshot = vorel::VorelWindowTest;

// Saves the window's picture as NAME in the pictures folder and gives the picture.
QImage savePicture(QWidget* window, const QString& name) {
    const QImage picture = window->grab().toImage();
    QDir folder(VOREL_PICTURE_DIR);
    EXPECT_TRUE(folder.mkpath("."));
    const QString path = folder.filePath(name);
    EXPECT_TRUE(picture.save(path)) << path.toStdString();
    std::cout << "The window's picture: " << path.toStdString() << std::endl;
    return picture;
}

// The colour near the middle of the right edge of a rectangle given in `from`'s coordinates,
// where no text is drawn.
QColor colorAt(const QImage& image, QWidget* from, QWidget* window, const QRect& rect) {
    const QPoint point = from->mapTo(window, QPoint(rect.right() - 3, rect.center().y()));
    return image.pixelColor(point);
}

// Styles shade header sections, so a coloured header is matched by its hue; gray by its value.
bool near(const QColor& actual, const QColor& expected) {
    if (expected.saturation() < 30)
        return actual.saturation() < 30 && std::abs(actual.value() - expected.value()) < 16;
    return std::abs(actual.hue() - expected.hue()) < 10 && actual.saturation() > 100;
}

} // namespace

TEST_F(WindowScreenshot, ShowsTheLoadedSampleWithItsColours) {
    fixture::SkinnedMesh body = vorel::makeMesh(6, 5, 1);
    vorel::setWeights(body, {{0.7, 0.3, 0, 0, 0},
                             {0.4, 0.3, 0.2, 0.05, 0.03},
                             {0.2, 0.2, 0.2, 0.2, 0.2},
                             {0, 0.5, 0.5, 0, 0},
                             {0, 0, 0.6, 0.4, 0},
                             {0, 0, 0, 0.1, 0.9}});
    runtime::NodePtr armJoint = scene().createNode("joint", "armJoint");
    // Joints tell themselves apart by their colours, as importers set them.
    std::vector<runtime::NodePtr> joints = body.joints;
    joints.push_back(armJoint);
    for (size_t i = 0; i < joints.size(); ++i) {
        HFnDependencyNode joint(fixture::objectOf(joints[i]));
        joint.findPlug("useObjectColor").setBool(true);
        joint.findPlug("objectColor").setInt(static_cast<int>(i));
    }
    vorel::bindMesh("arm", {body.joints[1], body.joints[2], armJoint},
                    {{0.6, 0.4, 0}, {0, 0.5, 0.5}, {0.3, 0, 0.7}});
    selectAndLoad("body arm");
    vorel::storeJointLocks(body, {body.jointPath(3).fullPathName()});
    clickButton("LoadComponent");
    ASSERT_EQ(model->rowCount(), 11);
    window->resize(760, 760);
    window->centralWidget()->layout()->activate();
    const QImage picture = savePicture(window, "vorel-window-colours.png");

    QHeaderView* rows = table->verticalHeader();
    auto rowHeaderRect = [&](int row) {
        return QRect(0, rows->sectionViewportPosition(row), rows->width(), rows->sectionSize(row));
    };
    EXPECT_TRUE(near(colorAt(picture, rows->viewport(), window, rowHeaderRect(3)), Qt::yellow));
    EXPECT_TRUE(near(colorAt(picture, rows->viewport(), window, rowHeaderRect(2)), Qt::red));
    QWidget* cells = table->viewport();
    EXPECT_TRUE(
        near(colorAt(picture, cells, window, table->visualRect(model->index(5, 3))), Qt::gray));
    EXPECT_TRUE(
        near(colorAt(picture, cells, window, table->visualRect(model->index(1, 0))), Qt::darkCyan));
}

TEST_F(WindowScreenshot, PicturesTheSampleCharactersBody) {
    ASSERT_TRUE(vorel::run("file -f -o \"" VOREL_SAMPLES_DIR "/character.vscene\""));
    selectAndLoad("body");
    ASSERT_EQ(rowNames().value(1), "vtx[0]");
    window->show();
    window->resize(680, 800);
    window->centralWidget()->layout()->activate();
    savePicture(window, "vorel-window.png");

    const QFileInfo file(QDir(VOREL_PICTURE_DIR).filePath("vorel-window.png"));
    ASSERT_TRUE(file.exists());
    EXPECT_GT(file.size(), 0);
    EXPECT_EQ(QImage(file.filePath()).size(), window->size() * window->devicePixelRatioF());
}

// A picture of the window with a loaded sample, saved in the build tree for anyone to look at:
// two meshes sharing an influence, a locked column, a vertex that does not sum to one (red) and
// a vertex over the influence limit (yellow row header). The test also checks, on the picture,
// that those colours reach the screen.
#include "HFnDependencyNode.h"
#include "HFnStringArrayData.h"
#include "HPlug.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QDir>
#include <QHeaderView>
#include <QImage>
#include <QLayout>
#include <QMainWindow>
#include <QTableView>
#include <gtest/gtest.h>
#include <iostream>

namespace {

using WindowScreenshot = vorel::VorelWindowTest;

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
    HPlug names = HFnDependencyNode(body.clusterObject()).findPlug("lockedJointNames");
    ASSERT_TRUE(names.setValue(
        HFnStringArrayData().create(HStringArray(1, body.jointPath(3).fullPathName()))));
    ASSERT_TRUE(vorel::run(std::string("setAttr ") + body.jointPath(3).fullPathName().asChar() +
                           ".lockInfluenceWeights 1"));
    clickButton("LoadComponent");
    ASSERT_EQ(model->rowCount(), 11);
    // The size of a common desktop font, so that the weights fit the columns' default width.
    QFont desktop = window->font();
    desktop.setPixelSize(11);
    window->setFont(desktop);
    window->resize(620, 760);
    window->centralWidget()->layout()->activate();

    const QImage picture = window->grab().toImage();
    const QString path = QDir(VOREL_SCREENSHOT_DIR).filePath("vorel-window.png");
    ASSERT_TRUE(picture.save(path));
    std::cout << "The window's picture: " << path.toStdString() << std::endl;
    RecordProperty("picture", path.toStdString());
    EXPECT_FALSE(QImage(path).isNull());

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

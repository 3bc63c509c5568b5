#include "viewportFixture.h"

#include "HGlobal.h"
#include "HStringArray.h"

#include <QTest>
#include <QtMath>
#include <cmath>
#include <gtest/gtest.h>

namespace viewporttest {

namespace {

constexpr float kTopPitch = 89.0f;

} // namespace

void ViewportHarness::open() {
    run("setToolTo selectSuperContext; flushUndo");
    sheet = makeSheet();
    m_runner = std::make_unique<app::CommandRunner>();
    m_viewport = std::make_unique<app::viewport::Viewport>(*m_runner);
    m_viewport->resize(400, 300);
    m_viewport->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_viewport.get()));
    draw();
    ASSERT_TRUE(m_viewport->renderError().isEmpty()) << m_viewport->renderError().toStdString();
    m_viewport->camera().setOrbit(QVector3D(0, 1, 0), 0.0f, kTopPitch, 7.0f);
}

void ViewportHarness::close() {
    m_viewport.reset();
    m_runner.reset();
    HGlobal::setHiliteList(HSelectionList());
}

QImage ViewportHarness::draw() const {
    return m_viewport->grabFramebuffer();
}

QPointF ViewportHarness::pixelOf(const QVector3D& world) const {
    QPointF pixel;
    EXPECT_TRUE(m_viewport->camera().project(world, pixel));
    return pixel;
}

QPointF ViewportHarness::pixelOf(unsigned vertex) const {
    m_viewport->sceneView().prepare();
    return pixelOf(m_viewport->sceneView().meshes().front()->worldPosition(vertex));
}

QVector3D ViewportHarness::colourAt(const QImage& frame, const QPointF& pixel) {
    QColor colour = frame.pixelColor(qFloor(pixel.x()), qFloor(pixel.y()));
    return QVector3D(colour.redF(), colour.greenF(), colour.blueF());
}

QVector3D ViewportHarness::litColour(const QVector3D& colour) {
    float facing = std::sin(qDegreesToRadians(kTopPitch));
    return colour * (0.3f + 0.7f * facing);
}

std::vector<std::string> ViewportHarness::selected() {
    HStringArray names;
    HGlobal::executeCommand("ls -sl", names);
    std::vector<std::string> result;
    for (unsigned i = 0; i < names.length(); ++i)
        result.push_back(names[i].asChar());
    return result;
}

::testing::AssertionResult sameColour(const QVector3D& expected, const QVector3D& actual,
                                      float tolerance) {
    QVector3D difference = expected - actual;
    if (std::fabs(difference.x()) <= tolerance && std::fabs(difference.y()) <= tolerance &&
        std::fabs(difference.z()) <= tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "expected (" << expected.x() << ", " << expected.y() << ", " << expected.z()
           << "), got (" << actual.x() << ", " << actual.y() << ", " << actual.z() << ")";
}

} // namespace viewporttest

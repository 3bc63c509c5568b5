// The camera's maths: framing, projecting, and the mouse's orbit, pan, dolly and zoom.
#include "Camera.h"

#include <gtest/gtest.h>

using app::viewport::Bounds;
using app::viewport::Camera;

namespace {

QPointF projected(const Camera& camera, const QVector3D& point) {
    QPointF pixel;
    EXPECT_TRUE(camera.project(point, pixel));
    return pixel;
}

} // namespace

TEST(Camera, AFramedBoxFillsTheViewWithItsCentreInTheMiddle) {
    Camera camera;
    camera.setViewportSize(QSize(400, 300));
    Bounds box;
    box.add(QVector3D(9, -1, 4));
    box.add(QVector3D(13, 3, 8));
    camera.frame(box);
    QPointF centre = projected(camera, box.centre());
    EXPECT_NEAR(centre.x(), 200, 1e-3);
    EXPECT_NEAR(centre.y(), 150, 1e-3);
    for (int corner = 0; corner < 8; ++corner) {
        QVector3D point(corner & 1 ? box.max.x() : box.min.x(),
                        corner & 2 ? box.max.y() : box.min.y(),
                        corner & 4 ? box.max.z() : box.min.z());
        QPointF pixel = projected(camera, point);
        EXPECT_TRUE(QRectF(0, 0, 400, 300).contains(pixel)) << corner;
    }
    QPointF behind;
    EXPECT_FALSE(camera.project(camera.eye() - camera.forward(), behind));
}

TEST(Camera, PanFollowsTheMouseAndOrbitKeepsTheTarget) {
    Camera camera;
    camera.setViewportSize(QSize(400, 300));
    QVector3D target = camera.target();
    camera.pan(QPointF(30, -20));
    QPointF moved = projected(camera, target);
    EXPECT_NEAR(moved.x(), 230, 0.5);
    EXPECT_NEAR(moved.y(), 130, 0.5);

    QVector3D pivot = camera.target();
    float distance = camera.distance();
    QVector3D eye = camera.eye();
    camera.orbit(QPointF(50, 40));
    EXPECT_EQ(camera.target(), pivot);
    EXPECT_FLOAT_EQ(camera.distance(), distance);
    EXPECT_GT((camera.eye() - eye).length(), 1.0f);
    // Orbiting never turns the camera over the top.
    camera.orbit(QPointF(0, 10000));
    EXPECT_LT(QVector3D::dotProduct(camera.forward(), QVector3D(0, 1, 0)), -0.99f);
    EXPECT_GT(QVector3D::crossProduct(camera.forward(), QVector3D(0, 1, 0)).length(), 0.0f);
}

TEST(Camera, DollyAndZoomChangeOnlyTheDistance) {
    Camera camera;
    float distance = camera.distance();
    camera.dolly(QPointF(40, 0));
    EXPECT_LT(camera.distance(), distance);
    distance = camera.distance();
    camera.zoom(-2);
    EXPECT_GT(camera.distance(), distance);
    camera.zoom(1e6);
    EXPECT_GT(camera.distance(), 0.0f);
}

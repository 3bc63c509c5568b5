// viewportFixture: a viewport widget of 400 x 300 pixels on the sheet scene (sheetScene.h),
// drawn by the display's OpenGL (the tests run inside a virtual X server), with the camera
// looking straight down at the sheet, and helpers to read its picture.
#pragma once

#include "CommandRunner.h"
#include "sceneFixture.h"
#include "sheetScene.h"
#include "viewport/Viewport.h"

#include <QImage>
#include <memory>
#include <string>
#include <vector>

namespace viewporttest {

// The viewport's own part of a test, apart from the test base it sits on.
class ViewportHarness {
public:
    // Builds the sheet and a viewport looking at it; fails the calling test when it cannot draw.
    void open();
    void close();

    app::viewport::Viewport& viewport() const { return *m_viewport; }
    // A new frame, drawn now.
    QImage draw() const;
    QPointF pixelOf(unsigned vertex) const;
    QPointF pixelOf(const QVector3D& world) const;
    // The frame's colour at the vertex, as floats from 0 to 1.
    static QVector3D colourAt(const QImage& frame, const QPointF& pixel);
    // The ramp's colour as lit by the camera that looks straight at the sheet.
    static QVector3D litColour(const QVector3D& colour);
    // Selected items as `ls -sl` names them.
    static std::vector<std::string> selected();

    Sheet sheet;

private:
    std::unique_ptr<app::CommandRunner> m_runner;
    std::unique_ptr<app::viewport::Viewport> m_viewport;
};

// A viewport test on any scene test base: Base's set-up (a fresh scene, and whatever else Base
// opens) runs first, the viewport's after it.
template <typename Base> class ViewportTestOn : public Base, protected ViewportHarness {
protected:
    void SetUp() override {
        Base::SetUp();
        open();
    }
    void TearDown() override {
        close();
        Base::TearDown();
    }
};

using ViewportTest = ViewportTestOn<fixture::FreshScene>;

// Colours equal within a few steps of eight bits. A vertex whose neighbours have other
// weights is sampled up to half a pixel off, where the interpolated weight has moved a little:
// kNearVertex allows for that.
constexpr float kExact = 6.0f / 255.0f;
constexpr float kNearVertex = 14.0f / 255.0f;
::testing::AssertionResult sameColour(const QVector3D& expected, const QVector3D& actual,
                                      float tolerance = kExact);

} // namespace viewporttest

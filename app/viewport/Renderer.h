// Renderer: draws a SceneView through a Camera with OpenGL 3.3 core: the grid, every visible
// mesh (skinned on the card, heat map or plain), the vertices of hilited meshes, the selected
// vertices, and the joints as bones over everything.
//
// It owns every GL object of the viewport (programs, the grid, the bones, a GpuMesh per mesh)
// and must be initialised, used and released with the widget's context current. Before each
// frame it brings the GPU copies up to date with what the scene view changed, counting it in
// uploads(). A GL context without what it needs leaves the renderer not ready(): it then draws
// nothing and says why in error().
#pragma once

#include "Camera.h"
#include "GpuMesh.h"
#include "SceneView.h"
#include "UploadCounts.h"

#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLShaderProgram>
#include <QString>
#include <memory>
#include <unordered_map>

namespace app::viewport {

struct RenderOptions {
    bool showUnnormalised = false;
};

class Renderer {
public:
    // gl must be initialised for the current context.
    bool initialize(QOpenGLFunctions_3_3_Core& gl);
    void release();
    bool ready() const { return m_gl != nullptr; }
    const QString& error() const { return m_error; }

    void render(SceneView& view, const Camera& camera, const RenderOptions& options);
    const UploadCounts& uploads() const { return m_uploads; }

private:
    void syncMeshes(SceneView& view);
    void syncJoints(const SceneView& view);
    void drawGrid(const Camera& camera, const SceneView& view);
    void drawMeshes(const SceneView& view, const Camera& camera, const RenderOptions& options);
    void drawJoints(const Camera& camera);
    void setUpLineArray(GLuint array, GLuint buffer);

    QOpenGLFunctions_3_3_Core* m_gl = nullptr;
    QString m_error;
    std::unique_ptr<QOpenGLShaderProgram> m_surface;
    std::unique_ptr<QOpenGLShaderProgram> m_lines;
    std::unordered_map<const MeshDrawData*, std::unique_ptr<GpuMesh>> m_meshes;
    GLuint m_gridArray = 0, m_gridBuffer = 0;
    GLsizei m_gridVertices = 0;
    GLuint m_jointArray = 0, m_jointBuffer = 0;
    GLsizei m_jointCount = 0;
    unsigned long long m_jointsVersion = ~0ull;
    UploadCounts m_uploads;
};

} // namespace app::viewport

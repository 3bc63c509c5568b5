#include "Renderer.h"

#include "ColorRamp.h"
#include "Shaders.h"

#include <cmath>
#include <vector>

namespace app::viewport {

namespace {

constexpr int kGridHalfLines = 10;
constexpr float kVertexPointSize = 4.0f;
constexpr float kSelectedPointSize = 7.0f;
constexpr float kJointPointSize = 8.0f;
constexpr float kPointDepthBias = 0.0005f;
const QVector3D kBackground(0.27f, 0.28f, 0.30f);
const QVector3D kGridColour(0.38f, 0.39f, 0.41f);
const QVector3D kAxisColour(0.12f, 0.12f, 0.13f);
const QVector3D kHiliteVertexColour(0.15f, 0.05f, 0.35f);
const QVector3D kSelectedVertexColour(1.0f, 0.85f, 0.1f);

std::unique_ptr<QOpenGLShaderProgram> buildProgram(const char* vertex, const char* fragment,
                                                   QString& error) {
    auto program = std::make_unique<QOpenGLShaderProgram>();
    if (!program->addShaderFromSourceCode(QOpenGLShader::Vertex, vertex) ||
        !program->addShaderFromSourceCode(QOpenGLShader::Fragment, fragment) || !program->link()) {
        error = program->log();
        return nullptr;
    }
    return program;
}

void appendVertex(std::vector<float>& data, const QVector3D& position, const QVector3D& colour) {
    data.insert(data.end(),
                {position.x(), position.y(), position.z(), colour.x(), colour.y(), colour.z()});
}

// A power of ten near a fifth of the scene's size, so that the grid spans it.
float gridSpacing(float sceneRadius) {
    if (sceneRadius <= 0.0f)
        return 1.0f;
    return std::pow(10.0f, std::round(std::log10(sceneRadius / 5.0f)));
}

} // namespace

bool Renderer::initialize(QOpenGLFunctions_3_3_Core& gl) {
    m_surface = buildProgram(shaders::kSurfaceVertex, shaders::kSurfaceFragment, m_error);
    if (m_surface)
        m_lines = buildProgram(shaders::kLineVertex, shaders::kLineFragment, m_error);
    if (!m_surface || !m_lines) {
        m_surface.reset();
        return false;
    }
    m_gl = &gl;
    std::vector<float> grid;
    for (int i = -kGridHalfLines; i <= kGridHalfLines; ++i) {
        QVector3D colour = i == 0 ? kAxisColour : kGridColour;
        float f = float(i), extent = float(kGridHalfLines);
        appendVertex(grid, {f, 0, -extent}, colour);
        appendVertex(grid, {f, 0, extent}, colour);
        appendVertex(grid, {-extent, 0, f}, colour);
        appendVertex(grid, {extent, 0, f}, colour);
    }
    m_gridVertices = static_cast<GLsizei>(grid.size() / 6);
    m_gl->glGenVertexArrays(1, &m_gridArray);
    m_gl->glGenBuffers(1, &m_gridBuffer);
    setUpLineArray(m_gridArray, m_gridBuffer);
    m_gl->glBufferData(GL_ARRAY_BUFFER, grid.size() * sizeof(float), grid.data(), GL_STATIC_DRAW);
    m_gl->glGenVertexArrays(1, &m_jointArray);
    m_gl->glGenBuffers(1, &m_jointBuffer);
    setUpLineArray(m_jointArray, m_jointBuffer);
    m_gl->glBindVertexArray(0);
    return true;
}

void Renderer::setUpLineArray(GLuint array, GLuint buffer) {
    m_gl->glBindVertexArray(array);
    m_gl->glBindBuffer(GL_ARRAY_BUFFER, buffer);
    m_gl->glEnableVertexAttribArray(0);
    m_gl->glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 6 * sizeof(float), nullptr);
    m_gl->glEnableVertexAttribArray(1);
    m_gl->glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, 6 * sizeof(float),
                                reinterpret_cast<const void*>(3 * sizeof(float)));
}

void Renderer::release() {
    if (!m_gl)
        return;
    m_meshes.clear();
    GLuint buffers[] = {m_gridBuffer, m_jointBuffer};
    m_gl->glDeleteBuffers(2, buffers);
    GLuint arrays[] = {m_gridArray, m_jointArray};
    m_gl->glDeleteVertexArrays(2, arrays);
    m_surface.reset();
    m_lines.reset();
    m_gl = nullptr;
}

void Renderer::render(SceneView& view, const Camera& camera, const RenderOptions& options) {
    if (!m_gl)
        return;
    syncMeshes(view);
    syncJoints(view);
    m_gl->glViewport(0, 0, camera.viewportSize().width(), camera.viewportSize().height());
    m_gl->glClearColor(kBackground.x(), kBackground.y(), kBackground.z(), 1.0f);
    m_gl->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    m_gl->glEnable(GL_DEPTH_TEST);
    m_gl->glDepthFunc(GL_LEQUAL);
    m_gl->glDisable(GL_CULL_FACE);
    m_gl->glDisable(GL_BLEND);
    m_gl->glEnable(GL_PROGRAM_POINT_SIZE);
    drawGrid(camera, view);
    drawMeshes(view, camera, options);
    drawJoints(camera);
    m_gl->glBindVertexArray(0);
}

void Renderer::syncMeshes(SceneView& view) {
    std::unordered_map<const MeshDrawData*, std::unique_ptr<GpuMesh>> kept;
    for (const std::unique_ptr<MeshDrawData>& data : view.meshes()) {
        auto found = m_meshes.find(data.get());
        if (found != m_meshes.end() && found->second->dataId() == data->id()) {
            found->second->sync(*data, m_uploads);
            kept[data.get()] = std::move(found->second);
        } else {
            kept[data.get()] = std::make_unique<GpuMesh>(*m_gl, *data, m_uploads);
        }
    }
    m_meshes = std::move(kept);
}

void Renderer::syncJoints(const SceneView& view) {
    if (view.jointsVersion() == m_jointsVersion)
        return;
    m_jointsVersion = view.jointsVersion();
    std::vector<float> data;
    for (const JointDraw& joint : view.joints()) {
        appendVertex(data, joint.parentPosition, joint.colour);
        appendVertex(data, joint.position, joint.colour);
    }
    m_jointCount = static_cast<GLsizei>(view.joints().size());
    m_gl->glBindBuffer(GL_ARRAY_BUFFER, m_jointBuffer);
    m_gl->glBufferData(GL_ARRAY_BUFFER, data.size() * sizeof(float), data.data(), GL_DYNAMIC_DRAW);
    ++m_uploads.jointUploads;
    m_uploads.bytes += data.size() * sizeof(float);
}

void Renderer::drawGrid(const Camera& camera, const SceneView& view) {
    m_lines->bind();
    QMatrix4x4 model;
    model.scale(gridSpacing(view.sceneRadius()));
    m_lines->setUniformValue("viewProjection", camera.viewProjection());
    m_lines->setUniformValue("model", model);
    m_lines->setUniformValue("pointSize", 1.0f);
    m_gl->glBindVertexArray(m_gridArray);
    m_gl->glDrawArrays(GL_LINES, 0, m_gridVertices);
}

void Renderer::drawMeshes(const SceneView& view, const Camera& camera,
                          const RenderOptions& options) {
    QOpenGLShaderProgram& program = *m_surface;
    program.bind();
    program.setUniformValue("viewProjection", camera.viewProjection());
    program.setUniformValue("skinMatrices", 0);
    program.setUniformValueArray("ramp", rampStops().data(), kRampStops);
    program.setUniformValue("plainColour", plainColour());
    program.setUniformValue("unnormalisedColour", unnormalisedColour());
    program.setUniformValue("towardsCamera", -camera.forward());
    program.setUniformValue("showUnnormalised", options.showUnnormalised);
    for (const std::unique_ptr<MeshDrawData>& data : view.meshes()) {
        if (!data->visible)
            continue;
        const GpuMesh& mesh = *m_meshes.at(data.get());
        bool skinned = data->skin() != nullptr;
        program.setUniformValue("meshMatrix", data->meshMatrix());
        program.setUniformValue("skinned", skinned);
        program.setUniformValue("heat", skinned && view.heatInfluence() != nullptr);
        if (skinned)
            mesh.bindPalette();
        program.setUniformValue("pointMode", false);
        program.setUniformValue("pointSize", 1.0f);
        program.setUniformValue("depthBias", 0.0f);
        mesh.drawSurface();
        program.setUniformValue("pointMode", true);
        program.setUniformValue("depthBias", kPointDepthBias);
        if (data->hilited) {
            program.setUniformValue("pointColour", kHiliteVertexColour);
            program.setUniformValue("pointSize", kVertexPointSize);
            mesh.drawAllPoints();
        }
        program.setUniformValue("pointColour", kSelectedVertexColour);
        program.setUniformValue("pointSize", kSelectedPointSize);
        mesh.drawSelectedPoints();
    }
}

void Renderer::drawJoints(const Camera& camera) {
    if (m_jointCount == 0)
        return;
    // Bones show through the meshes they move.
    m_gl->glDisable(GL_DEPTH_TEST);
    m_lines->bind();
    m_lines->setUniformValue("viewProjection", camera.viewProjection());
    m_lines->setUniformValue("model", QMatrix4x4());
    m_lines->setUniformValue("pointSize", kJointPointSize);
    m_gl->glBindVertexArray(m_jointArray);
    m_gl->glDrawArrays(GL_LINES, 0, m_jointCount * 2);
    // Every end of a bone is a joint.
    m_gl->glDrawArrays(GL_POINTS, 0, m_jointCount * 2);
    m_gl->glEnable(GL_DEPTH_TEST);
}

} // namespace app::viewport

// GpuMesh: the OpenGL objects of one MeshDrawData: its geometry and triangles (sent once),
// its skinning slots and heat map channel (sent again only for the vertices that changed),
// its skinning matrix palette in a buffer texture, and the indices of its selected vertices.
//
// Created, used and destroyed with the viewport's GL context current. sync() sends what the
// data's change flags ask for and counts it in UploadCounts; the draw calls expect the
// surface program bound with its uniforms set. The data must outlive the calls that take it.
#pragma once

#include "MeshDrawData.h"
#include "UploadCounts.h"

#include <QOpenGLFunctions_3_3_Core>
#include <cstdint>

namespace app::viewport {

class GpuMesh {
public:
    GpuMesh(QOpenGLFunctions_3_3_Core& gl, MeshDrawData& data, UploadCounts& counts);
    ~GpuMesh();
    GpuMesh(const GpuMesh&) = delete;
    GpuMesh& operator=(const GpuMesh&) = delete;

    std::uint64_t dataId() const { return m_dataId; }
    void sync(MeshDrawData& data, UploadCounts& counts);

    // Binds the palette to texture unit 0.
    void bindPalette() const;
    void drawSurface() const;
    void drawAllPoints() const;
    void drawSelectedPoints() const;

private:
    void setUpAttributes(bool skinned);
    void uploadSkin(SkinAttributes& skin, UploadCounts& counts);
    void uploadPalette(const MeshDrawData& data, UploadCounts& counts);
    void uploadSelection(const MeshDrawData& data, UploadCounts& counts);

    QOpenGLFunctions_3_3_Core& m_gl;
    std::uint64_t m_dataId;
    GLuint m_surfaceVao = 0;
    GLuint m_selectionVao = 0;
    GLuint m_geometry = 0;
    GLuint m_triangles = 0;
    GLuint m_skinSlots = 0;
    GLuint m_paint = 0;
    GLuint m_selection = 0;
    GLuint m_paletteBuffer = 0;
    GLuint m_paletteTexture = 0;
    GLsizei m_triangleIndices = 0;
    GLsizei m_vertexCount = 0;
    GLsizei m_selectedCount = 0;
};

} // namespace app::viewport

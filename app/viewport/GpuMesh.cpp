#include "GpuMesh.h"

#include <cstddef>
#include <vector>

namespace app::viewport {

namespace {

enum Attribute : GLuint {
    kPosition = 0,
    kNormal = 1,
    kInfluencesA = 2,
    kInfluencesB = 3,
    kWeightsA = 4,
    kWeightsB = 5,
    kPaint = 6,
};

const void* offset(std::size_t bytes) {
    return reinterpret_cast<const void*>(bytes);
}

} // namespace

GpuMesh::GpuMesh(QOpenGLFunctions_3_3_Core& gl, MeshDrawData& data, UploadCounts& counts)
    : m_gl(gl), m_dataId(data.id()) {
    m_vertexCount = static_cast<GLsizei>(data.vertexCount());
    std::vector<float> geometry;
    geometry.reserve(data.vertexCount() * 6);
    for (unsigned v = 0; v < data.vertexCount(); ++v) {
        const QVector3D& p = data.positions()[v];
        const QVector3D& n = data.normals()[v];
        geometry.insert(geometry.end(), {p.x(), p.y(), p.z(), n.x(), n.y(), n.z()});
    }
    m_gl.glGenBuffers(1, &m_geometry);
    m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_geometry);
    m_gl.glBufferData(GL_ARRAY_BUFFER, geometry.size() * sizeof(float), geometry.data(),
                      GL_STATIC_DRAW);
    m_gl.glGenBuffers(1, &m_triangles);
    m_gl.glGenBuffers(1, &m_selection);
    m_triangleIndices = static_cast<GLsizei>(data.triangles().size());
    counts.bytes += geometry.size() * sizeof(float) + data.triangles().size() * sizeof(unsigned);

    bool skinned = data.skin() != nullptr;
    if (skinned) {
        m_gl.glGenBuffers(1, &m_skinSlots);
        m_gl.glGenBuffers(1, &m_paint);
        m_gl.glGenBuffers(1, &m_paletteBuffer);
        m_gl.glGenTextures(1, &m_paletteTexture);
    }
    m_gl.glGenVertexArrays(1, &m_surfaceVao);
    m_gl.glGenVertexArrays(1, &m_selectionVao);
    m_gl.glBindVertexArray(m_surfaceVao);
    m_gl.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_triangles);
    m_gl.glBufferData(GL_ELEMENT_ARRAY_BUFFER, data.triangles().size() * sizeof(unsigned),
                      data.triangles().data(), GL_STATIC_DRAW);
    setUpAttributes(skinned);
    m_gl.glBindVertexArray(m_selectionVao);
    m_gl.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_selection);
    setUpAttributes(skinned);
    m_gl.glBindVertexArray(0);
    ++counts.meshBuilds;
    sync(data, counts);
}

GpuMesh::~GpuMesh() {
    GLuint buffers[] = {m_geometry, m_triangles, m_skinSlots,
                        m_paint,    m_selection, m_paletteBuffer};
    m_gl.glDeleteBuffers(6, buffers);
    GLuint arrays[] = {m_surfaceVao, m_selectionVao};
    m_gl.glDeleteVertexArrays(2, arrays);
    if (m_paletteTexture)
        m_gl.glDeleteTextures(1, &m_paletteTexture);
}

// Records, in the bound vertex array, where each attribute comes from. The slot and paint
// buffers get their storage here; uploadSkin() fills them.
void GpuMesh::setUpAttributes(bool skinned) {
    m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_geometry);
    m_gl.glEnableVertexAttribArray(kPosition);
    m_gl.glVertexAttribPointer(kPosition, 3, GL_FLOAT, GL_FALSE, 6 * sizeof(float), offset(0));
    m_gl.glEnableVertexAttribArray(kNormal);
    m_gl.glVertexAttribPointer(kNormal, 3, GL_FLOAT, GL_FALSE, 6 * sizeof(float),
                               offset(3 * sizeof(float)));
    if (!skinned)
        return;
    m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_skinSlots);
    const GLsizei stride = sizeof(SkinSlots);
    m_gl.glEnableVertexAttribArray(kInfluencesA);
    m_gl.glVertexAttribIPointer(kInfluencesA, 4, GL_UNSIGNED_SHORT, stride,
                                offset(offsetof(SkinSlots, influences)));
    m_gl.glEnableVertexAttribArray(kInfluencesB);
    m_gl.glVertexAttribIPointer(
        kInfluencesB, 4, GL_UNSIGNED_SHORT, stride,
        offset(offsetof(SkinSlots, influences) + 4 * sizeof(std::uint16_t)));
    m_gl.glEnableVertexAttribArray(kWeightsA);
    m_gl.glVertexAttribPointer(kWeightsA, 4, GL_FLOAT, GL_FALSE, stride,
                               offset(offsetof(SkinSlots, weights)));
    m_gl.glEnableVertexAttribArray(kWeightsB);
    m_gl.glVertexAttribPointer(kWeightsB, 4, GL_FLOAT, GL_FALSE, stride,
                               offset(offsetof(SkinSlots, weights) + 4 * sizeof(float)));
    m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_paint);
    m_gl.glEnableVertexAttribArray(kPaint);
    m_gl.glVertexAttribPointer(kPaint, 2, GL_FLOAT, GL_FALSE, sizeof(VertexPaint), offset(0));
}

void GpuMesh::sync(MeshDrawData& data, UploadCounts& counts) {
    if (SkinAttributes* skin = data.skin())
        uploadSkin(*skin, counts);
    if (data.takePoseChanged() && data.skin())
        uploadPalette(data, counts);
    if (data.takeSelectionChanged())
        uploadSelection(data, counts);
}

void GpuMesh::uploadSkin(SkinAttributes& skin, UploadCounts& counts) {
    SkinChanges changes = skin.takeChanges();
    if (changes.empty())
        return;
    const std::size_t vertices = skin.vertexCount();
    if (changes.allSlots) {
        m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_skinSlots);
        m_gl.glBufferData(GL_ARRAY_BUFFER, vertices * sizeof(SkinSlots), skin.skinSlots().data(),
                          GL_DYNAMIC_DRAW);
        counts.skinVertices += vertices;
        counts.bytes += vertices * sizeof(SkinSlots);
    }
    if (changes.allSlots || changes.allPaint) {
        m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_paint);
        m_gl.glBufferData(GL_ARRAY_BUFFER, vertices * sizeof(VertexPaint), skin.paint().data(),
                          GL_DYNAMIC_DRAW);
        counts.paintVertices += vertices;
        counts.bytes += vertices * sizeof(VertexPaint);
    }
    for (const VertexRun& run : changes.runs) {
        m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_skinSlots);
        m_gl.glBufferSubData(GL_ARRAY_BUFFER, run.first * sizeof(SkinSlots),
                             run.count * sizeof(SkinSlots), skin.skinSlots().data() + run.first);
        counts.skinVertices += run.count;
        if (!changes.allPaint) {
            m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_paint);
            m_gl.glBufferSubData(GL_ARRAY_BUFFER, run.first * sizeof(VertexPaint),
                                 run.count * sizeof(VertexPaint), skin.paint().data() + run.first);
            counts.paintVertices += run.count;
        }
        counts.bytes += run.count * (sizeof(SkinSlots) + sizeof(VertexPaint));
    }
}

void GpuMesh::uploadPalette(const MeshDrawData& data, UploadCounts& counts) {
    std::vector<float> palette;
    palette.reserve(data.skinMatrices().size() * 16 + 16);
    for (const QMatrix4x4& matrix : data.skinMatrices())
        palette.insert(palette.end(), matrix.constData(), matrix.constData() + 16);
    if (palette.empty()) // a buffer texture needs storage
        palette.assign(16, 0.0f);
    m_gl.glBindBuffer(GL_TEXTURE_BUFFER, m_paletteBuffer);
    m_gl.glBufferData(GL_TEXTURE_BUFFER, palette.size() * sizeof(float), palette.data(),
                      GL_DYNAMIC_DRAW);
    m_gl.glBindTexture(GL_TEXTURE_BUFFER, m_paletteTexture);
    m_gl.glTexBuffer(GL_TEXTURE_BUFFER, GL_RGBA32F, m_paletteBuffer);
    m_gl.glBindTexture(GL_TEXTURE_BUFFER, 0);
    ++counts.matrixUploads;
    counts.bytes += palette.size() * sizeof(float);
}

void GpuMesh::uploadSelection(const MeshDrawData& data, UploadCounts& counts) {
    const std::vector<unsigned>& selected = data.selectedVertices();
    m_gl.glBindVertexArray(m_selectionVao);
    m_gl.glBufferData(GL_ELEMENT_ARRAY_BUFFER, selected.size() * sizeof(unsigned), selected.data(),
                      GL_DYNAMIC_DRAW);
    m_gl.glBindVertexArray(0);
    m_selectedCount = static_cast<GLsizei>(selected.size());
    ++counts.selectionUploads;
    counts.bytes += selected.size() * sizeof(unsigned);
}

void GpuMesh::bindPalette() const {
    m_gl.glActiveTexture(GL_TEXTURE0);
    m_gl.glBindTexture(GL_TEXTURE_BUFFER, m_paletteTexture);
}

void GpuMesh::drawSurface() const {
    m_gl.glBindVertexArray(m_surfaceVao);
    m_gl.glDrawElements(GL_TRIANGLES, m_triangleIndices, GL_UNSIGNED_INT, nullptr);
}

void GpuMesh::drawAllPoints() const {
    m_gl.glBindVertexArray(m_surfaceVao);
    m_gl.glDrawArrays(GL_POINTS, 0, m_vertexCount);
}

void GpuMesh::drawSelectedPoints() const {
    if (m_selectedCount == 0)
        return;
    m_gl.glBindVertexArray(m_selectionVao);
    m_gl.glDrawElements(GL_POINTS, m_selectedCount, GL_UNSIGNED_INT, nullptr);
}

} // namespace app::viewport

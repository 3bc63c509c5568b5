#include "largeSkinnedScene.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string>

namespace benchscene {

namespace {

constexpr int kColumns = 400;
constexpr int kRows = 250;

double statusMegabytes(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(field, 0) == 0)
            return std::stod(line.substr(std::string(field).size())) / 1024.0;
    return 0.0;
}

} // namespace

runtime::SceneDescription largeSkinnedGrid() {
    using namespace runtime;
    SceneDescription scene;
    const double jointSpacing = static_cast<double>(kColumns) / kGridJoints;
    for (int j = 0; j < kGridJoints; ++j) {
        SceneNode joint;
        joint.name = "joint" + std::to_string(j);
        joint.parent = j - 1;
        joint.isJoint = true;
        joint.transform.translation = {j == 0 ? 0.0 : jointSpacing, 0.0, 0.0};
        scene.nodes.push_back(joint);
    }
    SceneNode body;
    body.name = "body";
    body.mesh = 0;
    scene.nodes.push_back(body);

    SceneMesh grid;
    grid.name = "grid";
    for (int r = 0; r < kRows; ++r)
        for (int c = 0; c < kColumns; ++c)
            grid.points.push_back({static_cast<double>(c), 0.0, static_cast<double>(r)});
    for (int r = 0; r + 1 < kRows; ++r)
        for (int c = 0; c + 1 < kColumns; ++c) {
            const int v = r * kColumns + c;
            grid.polygonSizes.push_back(4);
            grid.polygonVertices.insert(grid.polygonVertices.end(),
                                        {v, v + kColumns, v + kColumns + 1, v + 1});
        }
    scene.meshes.push_back(std::move(grid));

    SceneSkin skin;
    skin.meshNode = kGridJoints;
    for (int j = 0; j < kGridJoints; ++j) {
        skin.joints.push_back(j);
        Matrix4 inverse = identityMatrix();
        inverse[12] = -j * jointSpacing;
        skin.inverseBindMatrices.push_back(inverse);
    }
    const std::vector<std::array<double, 3>>& points = scene.meshes[0].points;
    skin.weights.reserve(points.size(), points.size() * kWeightsPerVertex);
    for (const auto& point : points) {
        const int nearest = std::min(kGridJoints - 1, static_cast<int>(point[0] / jointSpacing));
        const int first =
            std::clamp(nearest - kWeightsPerVertex / 2, 0, kGridJoints - kWeightsPerVertex);
        double total = 0.0;
        std::array<double, kWeightsPerVertex> raw;
        for (int k = 0; k < kWeightsPerVertex; ++k) {
            raw[k] = 1.0 / (1.0 + std::fabs(point[0] - (first + k) * jointSpacing));
            total += raw[k];
        }
        skin.weights.startVertex();
        for (int k = 0; k < kWeightsPerVertex; ++k)
            skin.weights.add(first + k, raw[k] / total);
    }
    scene.skins.push_back(std::move(skin));
    return scene;
}

double residentMegabytes() {
    return statusMegabytes("VmRSS:");
}

double peakMegabytes() {
    return statusMegabytes("VmHWM:");
}

void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace benchscene

#include "scene/SkinWeightMirror.h"

#include "api/StatusReport.h"
#include "scene/NearestPoints.h"
#include "scene/Node.h"
#include "scene/SkinBindPose.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinWeightAccess.h"

namespace runtime {

namespace {

enum class Side { kSource, kPlane, kDestination };

double& coordinate(HPoint& point, int axis) {
    return axis == 0 ? point.x : axis == 1 ? point.y : point.z;
}

} // namespace

HStatus mirrorSkinWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                          const MirrorOptions& options, VertexWeightRecord* record,
                          RuleCounts& counts) {
    const SkinClusterData* data = cluster.skinCluster();
    if (!cluster.isAlive() || !data)
        return invalidParameter(cluster.name() + " is not a live skin cluster.");
    HStatus status = checkVertices(*data, vertices);
    if (!status)
        return status;
    std::vector<HPoint> positions = bindPosePositions(cluster);
    positions.resize(data->weights().vertexCount());
    std::vector<Side> sides(positions.size());
    std::vector<unsigned> lenders;
    std::vector<HPoint> lenderPositions;
    for (unsigned v = 0; v < positions.size(); ++v) {
        double along = coordinate(positions[v], options.axis);
        if (!options.fromPositive)
            along = -along;
        sides[v] = along > options.tolerance    ? Side::kSource
                   : along < -options.tolerance ? Side::kDestination
                                                : Side::kPlane;
        if (sides[v] != Side::kDestination) {
            lenders.push_back(v);
            lenderPositions.push_back(positions[v]);
        }
    }
    // The listed destination vertices, and where their mirror images are.
    std::vector<unsigned> destinations;
    std::vector<HPoint> images;
    for (unsigned n = 0, count = vertexListSize(*data, vertices); n < count; ++n) {
        const unsigned v = vertices ? static_cast<unsigned>((*vertices)[n]) : n;
        if (sides[v] != Side::kDestination)
            continue;
        destinations.push_back(v);
        images.push_back(positions[v]);
        coordinate(images.back(), options.axis) = -coordinate(images.back(), options.axis);
    }
    if (!destinations.empty() && lenders.empty())
        return HStatus(HS::kNotFound,
                       cluster.name() + " has no vertex on the side to mirror from.");

    std::vector<std::string> names;
    for (const NodePtr& influence : data->influences())
        names.push_back(influence->name());
    const std::vector<unsigned> counterparts = counterpartInfluences(names, options.sides);
    std::vector<unsigned> lenderOf(positions.size(), 0);
    if (!destinations.empty()) {
        const std::vector<unsigned> nearest =
            NearestPoints(std::move(lenderPositions)).nearestEach(images);
        for (size_t i = 0; i < destinations.size(); ++i)
            lenderOf[destinations[i]] = lenders[nearest[i]];
    }

    auto rule = [&](unsigned vertex, VertexEntries& entries, const std::vector<char>&) {
        if (sides[vertex] == Side::kPlane) {
            entries = symmetricWeights(entries, counterparts);
        } else if (sides[vertex] == Side::kDestination) {
            const unsigned lender = lenderOf[vertex];
            // An in-plane lender may have been averaged already in this pass; averaging it
            // again gives the very same weights.
            VertexEntries lent;
            readEntries(data->weights(), lender, lent);
            if (sides[lender] == Side::kPlane)
                lent = symmetricWeights(lent, counterparts);
            entries = mirroredWeights(lent, counterparts);
        }
        return true;
    };
    return applyVertexRule(scene, cluster, vertices, record, rule, counts);
}

} // namespace runtime

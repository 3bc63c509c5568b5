// setSkinWeights: writes a whole array of weights, staged by a program that runs the host in
// its own process (StagedWeightArrays), into a skin cluster, as one undoable edit.
//
//   setSkinWeights -array N [-normalize B] CLUSTER
//
// The array has a row per vertex (its staged vertex list, or every vertex of the geometry in
// index order) and a column per influence, in influence order. Every value must be a number
// from 0 to 1; the whole array is checked before anything is written. With -normalize on (the
// default) and the cluster's normalizeWeights at 1, influences whose joint is locked keep
// their weights (their columns are not read) and the other columns of each row are scaled to
// fill the rest of the vertex (evenly when they are all 0), as the host's weight writes do;
// otherwise the rows are stored as given. Vertices whose lockVertex element is on are left as
// they are, with a warning. CLUSTER may also be the skinned mesh. Undone and redone bit for
// bit.
#include "HGlobal.h"
#include "commands/CommandSupport.h"
#include "commands/StagedWeightArrays.h"
#include "lang/BuiltInCommand.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLocks.h"
#include "scene/SkinWeightAccess.h"
#include "scene/VertexWeightRecord.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

using runtime::NodePtr;
using runtime::reportFailure;

const char* const kCommand = "setSkinWeights";

// "1 row", "2 rows".
std::string counted(std::size_t count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string numberText(double value) {
    HString text;
    text.set(value);
    return text.str();
}

// The first value that is not a weight, named by its row and column; success when there is
// none.
HStatus checkValues(const runtime::StagedWeightArray& array) {
    const double* values = array.values;
    std::size_t count = array.rows * array.columns;
    for (std::size_t i = 0; i < count; ++i) {
        double value = values[i];
        if (value >= 0.0 && value <= 1.0)
            continue;
        std::string where = "Row " + std::to_string(i / array.columns) + ", column " +
                            std::to_string(i % array.columns);
        return HStatus(HS::kInvalidParameter,
                       std::isfinite(value)
                           ? where + " holds " + numberText(value) + ": weights lie from 0 to 1."
                           : where + " is not a number.");
    }
    return HS::kSuccess;
}

// The staged array fits the cluster: its shape, its vertices, its values.
HStatus checkArray(const runtime::StagedWeightArray& array, const runtime::Node& cluster) {
    const runtime::SkinClusterData& data = *cluster.skinCluster();
    if (array.columns != data.influenceCount())
        return HStatus(HS::kInvalidParameter,
                       "The array has " + counted(array.columns, "column") + "; " + cluster.name() +
                           " has " + counted(data.influenceCount(), "influence") + ".");
    std::size_t vertexCount =
        array.everyVertex ? data.weights().vertexCount() : array.vertices.size();
    if (array.rows != vertexCount)
        return HStatus(HS::kInvalidParameter, "The array has " + counted(array.rows, "row") +
                                                  " for " + std::to_string(vertexCount) +
                                                  (vertexCount == 1 ? " vertex." : " vertices."));
    if (!array.everyVertex) {
        HStatus status = runtime::checkVertices(data, &array.vertices);
        if (!status)
            return status;
        std::vector<char> listed(data.weights().vertexCount(), 0);
        for (int vertex : array.vertices)
            if (listed[static_cast<std::size_t>(vertex)]++)
                return HStatus(HS::kInvalidParameter,
                               "Vertex " + std::to_string(vertex) + " is listed twice.");
    }
    return checkValues(array);
}

class SetSkinWeightsCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-a", "-array", HSyntax::kUnsigned);
        syntax.addFlag("-nrm", "-normalize", HSyntax::kBoolean);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HStringArray objects = runtime::commandObjects(parser);
        if (!parser.isFlagSet("array") || objects.length() != 1)
            return reportFailure(kCommand, "Give the staged array with -array and the cluster.");
        auto number = static_cast<unsigned>(parser.flagArgumentInt("array", 0));
        const runtime::StagedWeightArray* array =
            runtime::host().get<runtime::StagedWeightArrays>().find(number);
        if (!array)
            return reportFailure(kCommand, "No array is staged as " + std::to_string(number) + ".");
        HStatus status;
        NodePtr cluster = runtime::findSkinClusterFor(kCommand, objects[0].str(), status);
        if (!cluster)
            return status;
        status = checkArray(*array, *cluster);
        if (!status)
            return reportFailure(kCommand, status);
        bool normalize = !parser.isFlagSet("normalize") || parser.flagArgumentBool("normalize", 0);
        return write(*array, *cluster, normalize);
    }

private:
    HStatus write(const runtime::StagedWeightArray& array, runtime::Node& cluster, bool normalize) {
        runtime::SkinClusterData& data = *cluster.skinCluster();
        // Locked influences are left out of a normalising write, so that they keep their
        // weights and the rest of the vertex is scaled around them.
        std::vector<char> locks = runtime::influenceLocks(data);
        std::vector<unsigned> influences;
        for (unsigned i = 0; i < data.influenceCount(); ++i)
            if (!normalize || !locks[i])
                influences.push_back(i);

        const std::vector<int>* vertices = array.everyVertex ? nullptr : &array.vertices;
        const runtime::SkinWeights& weights = data.weights();
        std::size_t entries = 0;
        if (vertices)
            for (int vertex : *vertices)
                entries += weights.entryCount(static_cast<unsigned>(vertex));
        runtime::VertexWeightRecord& record = m_journal.keepWeights(cluster);
        record.reserve(static_cast<unsigned>(array.rows),
                       vertices ? entries : weights.entryTotal());
        runtime::VertexLocks vertexLocks(cluster);
        unsigned lockedVertices = 0;
        for (std::size_t n = 0; n < array.rows; ++n) {
            auto vertex = static_cast<unsigned>(vertices ? (*vertices)[n] : n);
            if (vertexLocks.locked(vertex))
                ++lockedVertices;
            else
                record.keep(weights, vertex);
        }
        runtime::WeightValues values{array.values, array.rows * array.columns,
                                     runtime::WeightValues::Layout::kFullRows};
        HStatus status = runtime::writeWeights(m_scene, cluster, vertices, influences, values,
                                               normalize, false, nullptr);
        if (!status)
            return reportFailure(kCommand, status);
        if (lockedVertices == 1)
            HGlobal::displayWarning(std::string(kCommand) +
                                    ": 1 locked vertex was left as it was.");
        else if (lockedVertices > 1)
            HGlobal::displayWarning(std::string(kCommand) + ": " + std::to_string(lockedVertices) +
                                    " locked vertices were left as they were.");
        return HS::kSuccess;
    }
};

const bool registered = runtime::registerBuiltInCommand(
    kCommand, runtime::createCommand<SetSkinWeightsCommand>, &SetSkinWeightsCommand::createSyntax);

} // namespace

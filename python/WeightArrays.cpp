#include "WeightArrays.h"

#include "OutcomeToPython.h"
#include "ScriptRun.h"
#include "commands/CommandSupport.h"
#include "commands/StagedWeightArrays.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinWeightAccess.h"

#include <limits>
#include <vector>

namespace py = pybind11;

namespace pyhost {

namespace {

const runtime::SkinClusterData& clusterData(const std::string& name) {
    HStatus status;
    runtime::NodePtr cluster = runtime::skinClusterNamed(name, status);
    if (!cluster)
        raise(PyExc_ValueError, status.errorString().str());
    return *cluster->skinCluster();
}

// The vertex indices of a sequence, which must be whole numbers.
std::vector<int> vertexList(const py::object& vertices) {
    py::array given = py::module_::import("numpy").attr("asarray")(vertices);
    if (given.ndim() != 1)
        raise(PyExc_ValueError, "vertices must be a flat sequence of vertex indices.");
    if (given.size() > 0 && given.dtype().kind() != 'i' && given.dtype().kind() != 'u')
        raise(PyExc_ValueError, "vertices must be whole numbers (vertex indices).");
    auto indices = py::array_t<long long, py::array::forcecast>::ensure(given);
    std::vector<int> list;
    list.reserve(static_cast<size_t>(indices.size()));
    for (py::ssize_t i = 0; i < indices.size(); ++i) {
        long long vertex = indices.data()[i];
        if (vertex < std::numeric_limits<int>::min() || vertex > std::numeric_limits<int>::max())
            raise(PyExc_ValueError,
                  "Vertex " + std::to_string(vertex) + " is not a vertex of the geometry.");
        list.push_back(static_cast<int>(vertex));
    }
    return list;
}

// Releases a staged array when the write is over, however it ends.
class Staging {
public:
    explicit Staging(runtime::StagedWeightArray array)
        : m_arrays(runtime::host().get<runtime::StagedWeightArrays>()),
          m_number(m_arrays.stage(std::move(array))) {}
    ~Staging() { m_arrays.release(m_number); }
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;
    unsigned number() const { return m_number; }

private:
    runtime::StagedWeightArrays& m_arrays;
    unsigned m_number;
};

} // namespace

py::array_t<double> clusterWeights(const std::string& cluster, const py::object& vertices) {
    requireHost();
    const runtime::SkinClusterData& data = clusterData(cluster);
    std::vector<int> list;
    if (!vertices.is_none()) {
        list = vertexList(vertices);
        HStatus status = runtime::checkVertices(data, &list);
        if (!status)
            raise(PyExc_ValueError, status.errorString().str());
    }
    const runtime::SkinWeights& weights = data.weights();
    bool everyVertex = vertices.is_none();
    unsigned columns = data.influenceCount();
    size_t rows = everyVertex ? weights.vertexCount() : list.size();
    py::array_t<double> result({rows, static_cast<size_t>(columns)});
    double* row = result.mutable_data();
    // Row by row, zeros and weights together, so that the array is written in one pass.
    for (size_t n = 0; n < rows; ++n, row += columns)
        weights.readDense(static_cast<unsigned>(everyVertex ? n : list[n]), row, columns);
    return result;
}

void setClusterWeights(const std::string& cluster, const py::object& weights,
                       const py::object& vertices, bool normalize) {
    requireHost();
    auto array = py::array_t<double, py::array::c_style | py::array::forcecast>::ensure(weights);
    if (!array)
        throw py::error_already_set();
    if (array.ndim() != 2)
        raise(PyExc_ValueError, "weights must be a 2-D array (vertices x influences), not " +
                                    std::to_string(array.ndim()) + "-D.");
    runtime::StagedWeightArray staged;
    staged.values = array.data();
    staged.rows = static_cast<size_t>(array.shape(0));
    staged.columns = static_cast<size_t>(array.shape(1));
    staged.everyVertex = vertices.is_none();
    if (!staged.everyVertex)
        staged.vertices = vertexList(vertices);
    Staging staging(std::move(staged));
    deliver(runScript("setSkinWeights -array " + std::to_string(staging.number()) + " -normalize " +
                      (normalize ? "true " : "false ") + quoted(cluster)),
            PyExc_ValueError);
}

} // namespace pyhost

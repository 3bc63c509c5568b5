// WeightArrays: a skin cluster's weights as NumPy arrays of shape (vertices, influences),
// columns in influence order.
//
// Reading copies the cluster's stored non-zero weights straight into the new array. Writing
// goes through the host command setSkinWeights with undo on, so that it is one undo step like
// every other weight edit: the array is staged by number (not copied when it already is
// C-contiguous float64), the command checks and writes it, and the number is released.
// Unknown clusters, vertices that are not the geometry's, wrong shapes and values that are no
// weights raise ValueError; nothing changes then.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <string>

namespace pyhost {

// vertices: None for every vertex in index order, or a sequence of vertex indices.
pybind11::array_t<double> clusterWeights(const std::string& cluster,
                                         const pybind11::object& vertices);
void setClusterWeights(const std::string& cluster, const pybind11::object& weights,
                       const pybind11::object& vertices, bool normalize);

} // namespace pyhost

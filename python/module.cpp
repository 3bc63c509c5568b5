// The Python module `vorel`: the host inside a Python process, driven by command-language text
// and handing skin weights to NumPy. Importing it starts the host without a window; the Vorel
// plug-in is loaded only when asked for (`vorel.run("loadPlugin vorel")`).
#include "EmbeddedHost.h"
#include "OutcomeToPython.h"
#include "ScriptRun.h"
#include "WeightArrays.h"
#include "commands/CommandSupport.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <string>
#include <vector>

namespace py = pybind11;
using namespace py::literals;

namespace {

py::object run(const std::string& text) {
    pyhost::requireHost();
    pyhost::ScriptOutcome outcome = pyhost::runScript(text);
    pyhost::deliver(outcome);
    return pyhost::toPython(outcome.result);
}

void runFileCommand(const std::string& flags, bool force) {
    run("file " + flags + (force ? " -force" : ""));
}

// A str or a path-like object (pathlib.Path) as text.
std::string pathText(const py::object& path) {
    return py::str(py::module_::import("os").attr("fspath")(path));
}

void save(const py::object& path) {
    if (path.is_none()) {
        runFileCommand("-save", false);
        return;
    }
    std::string previous = py::str(run("file -q -sceneName"));
    runFileCommand("-rename " + pyhost::quoted(pathText(path)), false);
    try {
        runFileCommand("-save", false);
    } catch (const py::error_already_set&) {
        // Nothing was written: the scene keeps the name it had.
        pyhost::runScript("file -rename " + pyhost::quoted(previous));
        throw;
    }
}

runtime::NodePtr clusterNode(const std::string& name) {
    pyhost::requireHost();
    HStatus status;
    runtime::NodePtr cluster = runtime::skinClusterNamed(name, status);
    if (!cluster)
        pyhost::raise(PyExc_ValueError, status.errorString().str());
    return cluster;
}

std::vector<std::string> skinClusters() {
    pyhost::requireHost();
    std::vector<std::string> names;
    for (const runtime::NodePtr& node : runtime::scene().nodes())
        if (node->hasFn(HFn::kSkinClusterFilter))
            names.push_back(node->name());
    return names;
}

std::vector<std::string> influences(const std::string& cluster) {
    std::vector<std::string> names;
    for (const runtime::NodePtr& joint : clusterNode(cluster)->skinCluster()->influences())
        names.push_back(joint->name());
    return names;
}

py::object meshOf(const std::string& cluster) {
    runtime::NodePtr mesh = runtime::skinClusterGeometry(*clusterNode(cluster));
    if (!mesh)
        return py::none();
    return py::str(runtime::scene().partialPathName(*mesh));
}

} // namespace

PYBIND11_MODULE(vorel, module) {
    module.doc() =
        "The Vorel host inside this Python process, without a window.\n\n"
        "Importing the module starts the host with an empty scene. Commands of the host's\n"
        "command language run with run(); skin weights come and go as NumPy arrays of shape\n"
        "(vertices, influences). Every change is recorded for undo(). The Vorel plug-in is\n"
        "loaded only when asked for: run('loadPlugin vorel').";

    HStatus started = pyhost::start();
    if (!started)
        pyhost::raise(PyExc_ImportError, "cannot start the host: " + started.errorString().str());
    py::module_::import("atexit").attr("register")(py::cpp_function(&pyhost::stop));
    pyhost::addExceptionTypes(module);

    module.def("run", &run, "text"_a,
               "Run text of the command language and return the last statement's result.\n\n"
               "The result is None, an int, a float, a str, or a list of them. Statements are\n"
               "recorded for undo(). Information and print output go to sys.stdout, warnings\n"
               "through the warnings module as CommandWarning. A failing statement stops the\n"
               "text and raises CommandError with the host's error text.");
    module.def(
        "new", [](bool force) { runFileCommand("-new", force); }, py::kw_only(), "force"_a = false,
        "Replace the scene with an empty one.\n\n"
        "Raises CommandError when the scene has unsaved changes, unless force is true.");
    module.def(
        "open",
        [](const py::object& path, bool force) {
            runFileCommand("-open " + pyhost::quoted(pathText(path)), force);
        },
        "path"_a, py::kw_only(), "force"_a = false,
        "Open a scene file (.vscene, .gltf, .glb, or a format the importer reads).\n\n"
        "The scene takes the file's name, so that save() writes it back. Raises CommandError\n"
        "when the file cannot be read (the scene stays as it was), and when the scene has\n"
        "unsaved changes, unless force is true.");
    module.def("save", &save, "path"_a = py::none(),
               "Save the scene under its name, or under path (which the scene then takes).\n\n"
               "The format follows the extension. Raises CommandError when the file cannot be\n"
               "written; the previous file then stays whole and the scene keeps its name.");
    module.def("skin_clusters", &skinClusters, "The names of the scene's skin clusters.");
    module.def("influences", &influences, "cluster"_a,
               "The short names of the cluster's influences, in influence order.\n\n"
               "These are the columns of weights(). cluster may also be the skinned mesh.\n"
               "Raises ValueError for an unknown cluster.");
    module.def("mesh_of", &meshOf, "cluster"_a,
               "The mesh shape the cluster deforms (its shortest unique name), or None.\n\n"
               "Raises ValueError for an unknown cluster.");
    module.def("weights", &pyhost::clusterWeights, "cluster"_a, "vertices"_a = py::none(),
               "The cluster's weights as a float64 array of shape (vertices, influences).\n\n"
               "Rows follow vertices (a sequence of vertex indices), or every vertex in index\n"
               "order when it is None; columns follow influences(cluster). cluster may also be\n"
               "the skinned mesh. Raises ValueError for an unknown cluster or vertex.");
    module.def("set_weights", &pyhost::setClusterWeights, "cluster"_a, "weights"_a,
               "vertices"_a = py::none(), "normalize"_a = true,
               "Write an array of weights, shaped as weights() gives it, as one undo step.\n\n"
               "Every value must lie from 0 to 1. With normalize (and the cluster's\n"
               "normalizeWeights at 1), influences whose joint is locked keep their weights and\n"
               "the other columns of each row are scaled to make the vertex sum to one;\n"
               "without it, the rows are stored exactly as given. Vertices locked on the\n"
               "cluster (lockVertex) are left as they are, with a CommandWarning. A wrong shape,\n"
               "NaN, a negative value or a value above 1, an unknown cluster or vertex raise\n"
               "ValueError and change nothing.");
    module.def(
        "undo", [] { run("undo"); },
        "Undo the last change; a CommandWarning says when there is nothing to undo.");
    module.def(
        "redo", [] { run("redo"); },
        "Redo the last undone change; a CommandWarning says when there is nothing to redo.");
}

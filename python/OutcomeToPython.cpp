#include "OutcomeToPython.h"

#include "EmbeddedHost.h"

namespace py = pybind11;

namespace pyhost {

namespace {

PyObject* g_commandError = nullptr;
PyObject* g_commandWarning = nullptr;

template <typename Array> py::list listOf(const runtime::CommandResult& result) {
    Array array;
    result.get(array);
    py::list list;
    for (const auto& element : array) {
        if constexpr (std::is_same_v<Array, HStringArray>)
            list.append(py::str(element.str()));
        else
            list.append(element);
    }
    return list;
}

template <typename Value> Value valueOf(const runtime::CommandResult& result) {
    Value value{};
    result.get(value);
    return value;
}

} // namespace

void addExceptionTypes(py::module_& module) {
    g_commandError = PyErr_NewExceptionWithDoc(
        "vorel.CommandError",
        "A statement of the command language failed; the message is the host's error text.",
        PyExc_RuntimeError, nullptr);
    g_commandWarning = PyErr_NewExceptionWithDoc("vorel.CommandWarning",
                                                 "A warning the host wrote while a command ran.",
                                                 PyExc_UserWarning, nullptr);
    if (!g_commandError || !g_commandWarning)
        throw py::error_already_set();
    module.add_object("CommandError", py::handle(g_commandError));
    module.add_object("CommandWarning", py::handle(g_commandWarning));
}

void raise(PyObject* type, const std::string& message) {
    PyErr_SetString(type, message.c_str());
    throw py::error_already_set();
}

void requireHost() {
    HStatus status = hostAvailable();
    if (!status)
        raise(PyExc_RuntimeError, status.errorString().str());
}

void deliver(const ScriptOutcome& outcome, PyObject* failure) {
    for (const ScriptMessage& message : outcome.messages) {
        if (message.type == HCommandMessage::kInfo)
            py::print(message.text);
        else if (message.type == HCommandMessage::kWarning &&
                 PyErr_WarnEx(g_commandWarning, message.text.c_str(), 1) < 0)
            throw py::error_already_set();
    }
    if (!outcome.status)
        raise(failure ? failure : g_commandError, outcome.errorText());
}

py::object toPython(const runtime::CommandResult& result) {
    switch (result.kind()) {
    case runtime::CommandResult::kNone:
        return py::none();
    case runtime::CommandResult::kInt:
        return py::int_(valueOf<int>(result));
    case runtime::CommandResult::kDouble:
        return py::float_(valueOf<double>(result));
    case runtime::CommandResult::kString:
        return py::str(valueOf<HString>(result).str());
    case runtime::CommandResult::kIntArray:
        return listOf<HIntArray>(result);
    case runtime::CommandResult::kDoubleArray:
        return listOf<HDoubleArray>(result);
    case runtime::CommandResult::kStringArray:
        return listOf<HStringArray>(result);
    }
    return py::none();
}

} // namespace pyhost

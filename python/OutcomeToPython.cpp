#include "OutcomeToPython.h"

#include "EmbeddedHost.h"

namespace py = pybind11;

namespace pyhost {

namespace {

// The module's own classes, as addExceptionTypes() added them.
py::object moduleClass(const char* name) {
    return py::module_::import("vorel").attr(name);
}

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
    auto create = [&](const char* name, const char* doc, PyObject* base) {
        PyObject* type =
            PyErr_NewExceptionWithDoc((std::string("vorel.") + name).c_str(), doc, base, nullptr);
        if (!type)
            throw py::error_already_set();
        module.add_object(name, py::reinterpret_steal<py::object>(type));
    };
    create("CommandError",
           "A statement of the command language failed; the message is the host's error text.",
           PyExc_RuntimeError);
    create("CommandWarning", "A warning the host wrote while a command ran.", PyExc_UserWarning);
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
                 PyErr_WarnEx(moduleClass("CommandWarning").ptr(), message.text.c_str(), 1) < 0)
            throw py::error_already_set();
    }
    if (!outcome.status)
        raise(failure ? failure : moduleClass("CommandError").ptr(), outcome.errorText());
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

// OutcomeToPython: how what the host did reaches Python: the module's exception and warning
// classes, the host's messages (information and `print` to sys.stdout, warnings through the
// warnings module as vorel.CommandWarning), failures raised as exceptions carrying the host's
// error text, and results as Python values.
#pragma once

#include "ScriptRun.h"

#include <pybind11/pybind11.h>

namespace pyhost {

// Creates vorel.CommandError and vorel.CommandWarning and adds them to the module.
void addExceptionTypes(pybind11::module_& module);

// Hands the outcome's information and warnings to Python, then raises `failure` (by default
// vorel.CommandError) with the host's error text when the text failed.
void deliver(const ScriptOutcome& outcome, PyObject* failure = nullptr);

// The result as None, int, float, str, or a list of them.
pybind11::object toPython(const runtime::CommandResult& result);

// Raises the exception type with the message (throws pybind11::error_already_set).
[[noreturn]] void raise(PyObject* type, const std::string& message);

// Raises RuntimeError unless the host can be used from here (EmbeddedHost::hostAvailable).
void requireHost();

} // namespace pyhost

// sceneState: the whole scene as lines of text, so that a test can tell whether something
// (an undo, a file read back, a refused open) left the scene exactly as it was, and say how
// it differs when it did not.
//
// The lines cover every node with its place in the hierarchy, its type and name, its dynamic
// attribute definitions, every stored value (existing array elements without a value included),
// mesh points and polygons, skin influences, bind matrices and weights (numbers bit for bit),
// the connections and the active selection.
#pragma once

#include "scene/Value.h"

#include <string>
#include <vector>

namespace fixture {

using Texts = std::vector<std::string>;

// A double in hexadecimal floating point: equal texts mean equal bits.
std::string exact(double value);
std::string valueText(const runtime::Value& value);
// The texts of the active selection, full paths.
Texts selectionTexts();

Texts sceneState();
// The lines only one of the states has, for failure messages.
std::string differences(const Texts& actual, const Texts& expected);

} // namespace fixture

// NodeValues: short ways to read and write a node's simple attribute values by name, for
// code that knows the attribute exists (built-in attributes). A missing attribute or one of
// another type reads as the fallback; writing one fails with the Scene's message.
#pragma once

#include "HPoint.h"
#include "HStatus.h"

#include <string>

namespace runtime {

class Node;
class Scene;

bool boolValue(const Node& node, const std::string& attribute, bool fallback = false);
int intValue(const Node& node, const std::string& attribute, int fallback = 0);
double doubleValue(const Node& node, const std::string& attribute, double fallback = 0.0);
// A top-level bool read straight from the stored values, for loops over many nodes.
bool storedBool(const Node& node, const std::string& attribute, bool fallback = false);
// A compound of three doubles ("translate", "rotate", "scale", "jointOrient").
HPoint tripleValue(const Node& node, const std::string& attribute);

HStatus setTripleValue(Scene& scene, Node& node, const std::string& attribute, const HPoint& value);

} // namespace runtime

// JointColors: the colours DAG nodes are drawn with when not selected (their dormant
// colour). A joint with useObjectColor on shows the palette colour at objectColor (wrapping
// around the palette); other joints and DAG nodes show their type's default colour.
#pragma once

#include "HColor.h"

#include <cstddef>

namespace runtime {

class Node;

constexpr std::size_t kObjectColorCount = 8;
// The palette, kObjectColorCount distinct colours.
const HColor& objectColor(int index);
HColor dormantColor(const Node& node);

} // namespace runtime

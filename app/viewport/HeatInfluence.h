// HeatInfluence: which joint's weights the viewport's heat map shows: the skin paint tool's
// painted influence while that tool is current, otherwise the first joint in the hilite list
// (where the Vorel window puts the joints of the columns selected with "Highlight" on),
// otherwise none. Reads the running host's tools and hilite list.
#pragma once

#include "scene/Node.h"

namespace app::viewport {

runtime::NodePtr currentHeatInfluence();

} // namespace app::viewport

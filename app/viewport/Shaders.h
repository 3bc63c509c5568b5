// Shaders: the GLSL sources of the viewport's programs (GLSL 3.30 core, which Mesa's software
// renderer runs).
//
// The surface program skins on the card: per vertex up to eight (influence, weight) slots
// index a palette of skinning matrices kept in a buffer texture, so moving a joint sends only
// the palette; the blend is divided by the slots' sum, so weights that do not sum to one do
// not tear the mesh. It colours by the heat map ramp (uniforms filled from ColorRamp) or plainly,
// lit from the camera's direction on both faces; in point mode it draws round dots of one
// colour. The line program draws the grid and the bones with a colour per vertex.
#pragma once

namespace app::viewport::shaders {

extern const char* const kSurfaceVertex;
extern const char* const kSurfaceFragment;
extern const char* const kLineVertex;
extern const char* const kLineFragment;

} // namespace app::viewport::shaders

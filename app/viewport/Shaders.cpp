#include "Shaders.h"

namespace app::viewport::shaders {

const char* const kSurfaceVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in uvec4 influencesA;
layout(location = 3) in uvec4 influencesB;
layout(location = 4) in vec4 weightsA;
layout(location = 5) in vec4 weightsB;
layout(location = 6) in vec2 paint;

uniform mat4 viewProjection;
uniform mat4 meshMatrix;
uniform bool skinned;
uniform samplerBuffer skinMatrices;
uniform float pointSize;
uniform float depthBias;

out vec3 worldNormal;
out vec2 vertexPaint;

mat4 skinMatrix(uint influence) {
    int base = int(influence) * 4;
    return mat4(texelFetch(skinMatrices, base), texelFetch(skinMatrices, base + 1),
                texelFetch(skinMatrices, base + 2), texelFetch(skinMatrices, base + 3));
}

void main() {
    mat4 deform = meshMatrix;
    if (skinned) {
        float total = dot(weightsA, vec4(1.0)) + dot(weightsB, vec4(1.0));
        if (total > 0.0) {
            mat4 blend = weightsA.x * skinMatrix(influencesA.x);
            if (weightsA.y > 0.0) blend += weightsA.y * skinMatrix(influencesA.y);
            if (weightsA.z > 0.0) blend += weightsA.z * skinMatrix(influencesA.z);
            if (weightsA.w > 0.0) blend += weightsA.w * skinMatrix(influencesA.w);
            if (weightsB != vec4(0.0)) {
                blend += weightsB.x * skinMatrix(influencesB.x);
                blend += weightsB.y * skinMatrix(influencesB.y);
                blend += weightsB.z * skinMatrix(influencesB.z);
                blend += weightsB.w * skinMatrix(influencesB.w);
            }
            deform = blend * (1.0 / total);
        }
    }
    worldNormal = mat3(deform) * normal;
    vertexPaint = paint;
    gl_Position = viewProjection * (deform * vec4(position, 1.0));
    // Points sit slightly in front of the surface they belong to.
    gl_Position.z -= depthBias * gl_Position.w;
    gl_PointSize = pointSize;
}
)";

const char* const kSurfaceFragment = R"(#version 330 core
in vec3 worldNormal;
in vec2 vertexPaint;

uniform bool heat;
uniform bool showUnnormalised;
uniform vec3 ramp[5];
uniform vec3 plainColour;
uniform vec3 unnormalisedColour;
uniform vec3 towardsCamera;
uniform bool pointMode;
uniform vec3 pointColour;

out vec4 colour;

vec3 rampColour(float weight) {
    float position = clamp(weight, 0.0, 1.0) * 4.0;
    int lower = min(int(floor(position)), 3);
    return mix(ramp[lower], ramp[lower + 1], position - float(lower));
}

void main() {
    if (pointMode) {
        vec2 offset = gl_PointCoord - vec2(0.5);
        if (dot(offset, offset) > 0.25)
            discard;
        colour = vec4(pointColour, 1.0);
        return;
    }
    vec3 base = heat ? rampColour(vertexPaint.x) : plainColour;
    if (showUnnormalised && vertexPaint.y > 0.5)
        base = unnormalisedColour;
    float facing = abs(dot(normalize(worldNormal), towardsCamera));
    colour = vec4(base * (0.3 + 0.7 * facing), 1.0);
}
)";

const char* const kLineVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 lineColour;
uniform mat4 viewProjection;
uniform mat4 model;
uniform float pointSize;
out vec3 vertexColour;
void main() {
    vertexColour = lineColour;
    gl_Position = viewProjection * model * vec4(position, 1.0);
    gl_PointSize = pointSize;
}
)";

const char* const kLineFragment = R"(#version 330 core
in vec3 vertexColour;
out vec4 colour;
void main() {
    colour = vec4(vertexColour, 1.0);
}
)";

} // namespace app::viewport::shaders

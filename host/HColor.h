// HColor: an RGBA colour with float channels from 0 to 1. A plain value.
#pragma once

class HColor {
public:
    HColor() = default;
    HColor(float red, float green, float blue, float alpha = 1.0f)
        : r(red), g(green), b(blue), a(alpha) {}

    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 1.0f;
};

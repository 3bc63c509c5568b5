// NativeSceneFormat: the vocabulary the native scene writer and reader share: the header, and
// how numbers, attribute values and dynamic attribute definitions are written as JSON.
//
// Numbers are written as JSON numbers in the shortest form that reads back as the same double,
// so that every value comes back bit for bit; JSON has no words for the values that are not
// finite, so those are written as the strings "nan", "inf" and "-inf". The long lists of a
// mesh and a skin (points, polygons, weights) are written packed: the base64 text of their
// values in little-endian binary (float64, int32 or uint16 by list), which reads many times
// faster than decimal numbers and keeps every bit; readers take them packed or as JSON lists of
// numbers. The whole format is described in docs/vscene-format.md.
//
// The readers here check what they are given against what the attribute holds and fail with a
// problem text, never with an exception.
#pragma once

#include "scene/AttributeDef.h"
#include "scene/Value.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace runtime {

using NativeJson = nlohmann::ordered_json;

constexpr const char* kNativeSceneFormat = "vorel-scene";
constexpr int kNativeSceneVersion = 1;

NativeJson numberJson(double value);
bool readNumber(const NativeJson& json, double& value);
// A whole number from minimum to maximum.
bool readInteger(const NativeJson& json, long long minimum, long long maximum, long long& value);

// A list packed as base64 of the little-endian values (T: double, std::int32_t or
// std::uint16_t). Throws std::length_error for lists of more than 1.5 GB.
template <typename T> NativeJson packedList(const std::vector<T>& values);
// A packed list, or a JSON list of numbers each of which T holds exactly.
template <typename T> bool readList(const NativeJson& json, std::vector<T>& values);

// A stored value; null for "no value".
NativeJson valueJson(const Value& value);
// A value of the given type; the JSON must be of that kind (true/false for bool, an integer
// for int, a number for double, a string, a list of strings).
bool readValue(const NativeJson& json, ValueType type, Value& value, std::string& problem);

NativeJson definitionJson(const AttributeDef& attribute);
AttributePtr readDefinition(const NativeJson& json, std::string& problem);

} // namespace runtime

#include "document/NativeSceneFormat.h"

#include <QByteArray>
#include <QtEndian>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <type_traits>

namespace runtime {

namespace {

const char* const kValueTypeNames[] = {"none", "bool", "int", "double", "string", "stringArray"};
const char* const kKindNames[] = {"numeric", "typed", "compound", "message", "geometry"};

// Base64 text of more bytes would not fit the QByteArray that makes it.
constexpr std::size_t kMaxPackedBytes = 0x5FFFFFFF;

template <std::size_t N> int indexOfName(const char* const (&names)[N], const NativeJson& json) {
    if (!json.is_string())
        return -1;
    const std::string& text = json.get_ref<const std::string&>();
    for (std::size_t i = 0; i < N; ++i)
        if (text == names[i])
            return static_cast<int>(i);
    return -1;
}

const NativeJson* member(const NativeJson& object, const char* key) {
    auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

bool readName(const NativeJson& object, const char* key, std::string& name, std::string& problem) {
    const NativeJson* json = member(object, key);
    if (!json || !json->is_string() || !AttributeDef::isValidName(json->get<std::string>())) {
        problem = std::string("an attribute definition has no valid \"") + key + "\"";
        return false;
    }
    name = json->get<std::string>();
    return true;
}

AttributePtr readDefinitionOfKind(AttributeKind kind, const NativeJson& json,
                                  const std::string& longName, const std::string& shortName,
                                  std::string& problem) {
    const NativeJson* typeJson = member(json, "type");
    const int type = typeJson ? indexOfName(kValueTypeNames, *typeJson) : -1;
    const NativeJson* defaultJson = member(json, "default");
    const std::string what = "attribute \"" + longName + "\"";
    switch (kind) {
    case AttributeKind::kNumeric: {
        if (type != static_cast<int>(ValueType::kBool) &&
            type != static_cast<int>(ValueType::kInt) &&
            type != static_cast<int>(ValueType::kDouble)) {
            problem = what + " has no numeric type";
            return nullptr;
        }
        Value value = zeroValue(static_cast<ValueType>(type));
        Value number;
        if (defaultJson && !readValue(*defaultJson, static_cast<ValueType>(type), value, problem)) {
            problem = what + ": its default is wrong: " + problem;
            return nullptr;
        }
        convertValue(value, ValueType::kDouble, number);
        return AttributeDef::numeric(longName, shortName, static_cast<ValueType>(type),
                                     std::get<double>(number));
    }
    case AttributeKind::kTyped: {
        if (type != static_cast<int>(ValueType::kString) &&
            type != static_cast<int>(ValueType::kStringArray)) {
            problem = what + " has no data type";
            return nullptr;
        }
        Value value;
        if (defaultJson && !readValue(*defaultJson, static_cast<ValueType>(type), value, problem)) {
            problem = what + ": its default is wrong: " + problem;
            return nullptr;
        }
        return AttributeDef::typed(longName, shortName, static_cast<ValueType>(type), value);
    }
    case AttributeKind::kCompound: {
        AttributePtr compound = AttributeDef::compound(longName, shortName);
        const NativeJson* children = member(json, "children");
        if (!children || !children->is_array()) {
            problem = what + " has no list of children";
            return nullptr;
        }
        for (const NativeJson& childJson : *children) {
            AttributePtr child = readDefinition(childJson, problem);
            if (!child)
                return nullptr;
            HStatus added = compound->addChild(child);
            if (!added) {
                problem = what + ": " + added.errorString().str();
                return nullptr;
            }
        }
        return compound;
    }
    case AttributeKind::kMessage:
        return AttributeDef::message(longName, shortName);
    case AttributeKind::kGeometry:
        return AttributeDef::geometry(longName, shortName);
    }
    return nullptr;
}

} // namespace

NativeJson numberJson(double value) {
    if (std::isfinite(value))
        return value;
    if (std::isnan(value))
        return "nan";
    return value > 0.0 ? "inf" : "-inf";
}

bool readNumber(const NativeJson& json, double& value) {
    if (json.is_number()) {
        value = json.get<double>();
        return true;
    }
    if (!json.is_string())
        return false;
    const std::string& text = json.get_ref<const std::string&>();
    if (text == "nan")
        value = std::numeric_limits<double>::quiet_NaN();
    else if (text == "inf" || text == "-inf")
        value = text == "inf" ? std::numeric_limits<double>::infinity()
                              : -std::numeric_limits<double>::infinity();
    else
        return false;
    return true;
}

bool readInteger(const NativeJson& json, long long minimum, long long maximum, long long& value) {
    if (json.is_number_unsigned()) {
        const auto number = json.get<unsigned long long>();
        // A maximum below zero (no node before the first) admits no unsigned number at all.
        if (maximum < 0 || number > static_cast<unsigned long long>(maximum) ||
            (minimum > 0 && number < static_cast<unsigned long long>(minimum)))
            return false;
        value = static_cast<long long>(number);
        return true;
    }
    if (!json.is_number_integer())
        return false;
    value = json.get<long long>();
    return value >= minimum && value <= maximum;
}

template <typename T> NativeJson packedList(const std::vector<T>& values) {
    static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN,
                  "packed lists are stored as the host holds them");
    if (values.size() > kMaxPackedBytes / sizeof(T))
        throw std::length_error("a list is too long to pack");
    const QByteArray raw = QByteArray::fromRawData(reinterpret_cast<const char*>(values.data()),
                                                   static_cast<int>(values.size() * sizeof(T)));
    const QByteArray text = raw.toBase64();
    return std::string(text.constData(), static_cast<std::size_t>(text.size()));
}

template <typename T> bool readList(const NativeJson& json, std::vector<T>& values) {
    if (json.is_string()) {
        const std::string& text = json.get_ref<const std::string&>();
        if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            return false;
        const QByteArray::FromBase64Result decoded = QByteArray::fromBase64Encoding(
            QByteArray::fromRawData(text.data(), static_cast<int>(text.size())),
            QByteArray::AbortOnBase64DecodingErrors);
        const auto bytes = static_cast<std::size_t>(decoded.decoded.size());
        if (!decoded || bytes % sizeof(T) != 0)
            return false;
        values.resize(bytes / sizeof(T));
        // An empty list has no storage to copy into, and memcpy takes no null pointer.
        if (bytes != 0)
            std::memcpy(values.data(), decoded.decoded.constData(), bytes);
        return true;
    }
    if (!json.is_array())
        return false;
    values.resize(json.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        if constexpr (std::is_floating_point_v<T>) {
            if (!readNumber(json[i], values[i]))
                return false;
        } else {
            long long number = 0;
            if (!readInteger(json[i], std::numeric_limits<T>::min(), std::numeric_limits<T>::max(),
                             number))
                return false;
            values[i] = static_cast<T>(number);
        }
    }
    return true;
}

template NativeJson packedList(const std::vector<double>&);
template NativeJson packedList(const std::vector<std::int32_t>&);
template NativeJson packedList(const std::vector<std::uint16_t>&);
template bool readList(const NativeJson&, std::vector<double>&);
template bool readList(const NativeJson&, std::vector<std::int32_t>&);
template bool readList(const NativeJson&, std::vector<std::uint16_t>&);

NativeJson valueJson(const Value& value) {
    switch (valueTypeOf(value)) {
    case ValueType::kBool:
        return std::get<bool>(value);
    case ValueType::kInt:
        return std::get<int>(value);
    case ValueType::kDouble:
        return numberJson(std::get<double>(value));
    case ValueType::kString:
        return std::get<std::string>(value);
    case ValueType::kStringArray:
        return std::get<StringList>(value);
    case ValueType::kNone:
        break;
    }
    return nullptr;
}

bool readValue(const NativeJson& json, ValueType type, Value& value, std::string& problem) {
    switch (type) {
    case ValueType::kBool:
        if (json.is_boolean()) {
            value = json.get<bool>();
            return true;
        }
        problem = "it is not true or false";
        return false;
    case ValueType::kInt: {
        long long number = 0;
        if (readInteger(json, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                        number)) {
            value = static_cast<int>(number);
            return true;
        }
        problem = "it is not a whole number that fits 32 bits";
        return false;
    }
    case ValueType::kDouble: {
        double number = 0.0;
        if (readNumber(json, number)) {
            value = number;
            return true;
        }
        problem = "it is not a number";
        return false;
    }
    case ValueType::kString:
        if (json.is_string()) {
            value = json.get<std::string>();
            return true;
        }
        problem = "it is not a string";
        return false;
    case ValueType::kStringArray: {
        StringList strings;
        if (json.is_array()) {
            for (const NativeJson& item : json) {
                if (!item.is_string())
                    break;
                strings.push_back(item.get<std::string>());
            }
            if (strings.size() == json.size()) {
                value = std::move(strings);
                return true;
            }
        }
        problem = "it is not a list of strings";
        return false;
    }
    case ValueType::kNone:
        break;
    }
    problem = "the attribute holds no values";
    return false;
}

NativeJson definitionJson(const AttributeDef& attribute) {
    NativeJson json = {{"name", attribute.longName()},
                       {"shortName", attribute.shortName()},
                       {"kind", kKindNames[static_cast<int>(attribute.kind())]}};
    if (attribute.kind() == AttributeKind::kNumeric || attribute.kind() == AttributeKind::kTyped) {
        json["type"] = kValueTypeNames[static_cast<int>(attribute.valueType())];
        if (valueTypeOf(attribute.defaultValue()) != ValueType::kNone)
            json["default"] = valueJson(attribute.defaultValue());
    }
    if (attribute.isArray())
        json["array"] = true;
    if (attribute.kind() == AttributeKind::kCompound) {
        NativeJson children = NativeJson::array();
        for (size_t i = 0; i < attribute.childCount(); ++i)
            children.push_back(definitionJson(*attribute.child(i)));
        json["children"] = std::move(children);
    }
    return json;
}

AttributePtr readDefinition(const NativeJson& json, std::string& problem) {
    std::string longName, shortName;
    if (!json.is_object()) {
        problem = "an attribute definition is not an object";
        return nullptr;
    }
    if (!readName(json, "name", longName, problem) ||
        !readName(json, "shortName", shortName, problem))
        return nullptr;
    const NativeJson* kindJson = member(json, "kind");
    const int kind = kindJson ? indexOfName(kKindNames, *kindJson) : -1;
    if (kind < 0) {
        problem = "attribute \"" + longName + "\" has no known kind";
        return nullptr;
    }
    AttributePtr attribute =
        readDefinitionOfKind(static_cast<AttributeKind>(kind), json, longName, shortName, problem);
    const NativeJson* array = member(json, "array");
    if (attribute && array && !array->is_boolean()) {
        problem = "attribute \"" + longName + "\" has an \"array\" that is not true or false";
        return nullptr;
    }
    if (attribute && array)
        attribute->setArray(array->get<bool>());
    return attribute;
}

} // namespace runtime

#include "HPlug.h"

#include "HIntArray.h"
#include "HPlugArray.h"
#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "api/StringArrayData.h"
#include "scene/Scene.h"

using runtime::Plug;
using runtime::report;
using runtime::Value;
using runtime::ValueType;

namespace {

const Plug& open(const HPlug& plug) {
    return HApiAccess::plug(plug);
}

HStatus nullPlug() {
    return runtime::invalidParameter("The plug is null or its node was deleted.");
}

// A plug result with its status: null plugs fail.
HPlug result(const Plug& plug, HStatus* status, const char* failure) {
    if (plug.isNull()) {
        report(status, runtime::invalidParameter(failure));
        return HPlug();
    }
    report(status, HS::kSuccess);
    return HApiAccess::plug(plug);
}

HStatus readAs(const HPlug& plug, ValueType type, Value& value) {
    Value stored;
    HStatus status = open(plug).read(stored);
    if (status && !runtime::convertValue(stored, type, value))
        return runtime::invalidParameter("Plug " + open(plug).name() +
                                         " holds a value of another type.");
    return status;
}

HStatus write(const HPlug& plug, const Value& value) {
    // A null plug never reaches the scene, which may be gone already.
    if (open(plug).isNull())
        return nullPlug();
    return runtime::scene().setValue(open(plug), value);
}

template <typename T> HStatus readInto(const HPlug& plug, ValueType type, T& out) {
    Value value;
    HStatus status = readAs(plug, type, value);
    if (status)
        out = std::get<T>(value);
    return status;
}

template <typename T> T readOrZero(const HPlug& plug, ValueType type, HStatus* status) {
    T value = T();
    report(status, readInto(plug, type, value));
    return value;
}

} // namespace

HPlug::HPlug() = default;

HPlug::HPlug(const HObject& node, const HObject& attribute) {
    runtime::NodePtr live = HApiAccess::node(node);
    std::shared_ptr<runtime::AttributeDef> def = HApiAccess::as<runtime::AttributeDef>(attribute);
    if (live && def && live->hasAttribute(def.get()))
        *this = HApiAccess::plug(live->plug(def.get()));
}

bool HPlug::isNull(HStatus* status) const {
    report(status, HS::kSuccess);
    return open(*this).isNull();
}

HObject HPlug::node(HStatus* status) const {
    const Plug& plug = open(*this);
    report(status, plug.isNull() ? nullPlug() : HStatus());
    return plug.isNull() ? HObject() : HApiAccess::object(plug.node());
}

HObject HPlug::attribute(HStatus* status) const {
    const Plug& plug = open(*this);
    report(status, plug.isNull() ? nullPlug() : HStatus());
    return plug.isNull() ? HObject() : HApiAccess::object(plug.attributeHandle());
}

HString HPlug::name(HStatus* status) const {
    report(status, open(*this).isNull() ? nullPlug() : HStatus());
    return HString(open(*this).name(true, true));
}

HString HPlug::partialName(bool includeNodeName, bool useLongNames, HStatus* status) const {
    report(status, open(*this).isNull() ? nullPlug() : HStatus());
    return HString(open(*this).name(includeNodeName, useLongNames));
}

bool HPlug::isArray(HStatus* status) const {
    report(status, HS::kSuccess);
    return open(*this).isArray();
}

bool HPlug::isCompound(HStatus* status) const {
    report(status, HS::kSuccess);
    return open(*this).isCompound();
}

bool HPlug::isElement(HStatus* status) const {
    report(status, HS::kSuccess);
    return open(*this).isElement();
}

bool HPlug::isChild(HStatus* status) const {
    report(status, HS::kSuccess);
    return open(*this).isChild();
}

unsigned HPlug::numElements(HStatus* status) const {
    const Plug& plug = open(*this);
    bool usable = !plug.isNull() && plug.isArray() && plug.isResolved();
    report(status, usable ? HStatus() : runtime::invalidParameter("The plug is not an array."));
    return static_cast<unsigned>(plug.elementCount());
}

HPlug HPlug::operator[](unsigned physicalIndex) const {
    return elementByPhysicalIndex(physicalIndex);
}

HPlug HPlug::elementByPhysicalIndex(unsigned physicalIndex, HStatus* status) const {
    return result(open(*this).elementAtPosition(physicalIndex), status,
                  "No element at this position.");
}

HPlug HPlug::elementByLogicalIndex(unsigned logicalIndex, HStatus* status) const {
    return result(open(*this).element(logicalIndex), status, "The plug is not an array.");
}

unsigned HPlug::getExistingArrayAttributeIndices(HIntArray& indices, HStatus* status) const {
    indices.clear();
    for (unsigned index : open(*this).elementIndices())
        indices.append(static_cast<int>(index));
    report(status, open(*this).isArray() ? HStatus()
                                         : runtime::invalidParameter("The plug is not an array."));
    return indices.length();
}

unsigned HPlug::logicalIndex(HStatus* status) const {
    report(status, open(*this).isElement()
                       ? HStatus()
                       : runtime::invalidParameter("The plug is not an array element."));
    return open(*this).logicalIndex();
}

HPlug HPlug::array(HStatus* status) const {
    return result(open(*this).array(), status, "The plug is not an array element.");
}

unsigned HPlug::numChildren(HStatus* status) const {
    const Plug& plug = open(*this);
    report(status, plug.isCompound() ? HStatus()
                                     : runtime::invalidParameter("The plug is not a compound."));
    return plug.isCompound() ? static_cast<unsigned>(plug.attribute()->childCount()) : 0u;
}

HPlug HPlug::child(unsigned index, HStatus* status) const {
    return result(open(*this).child(static_cast<size_t>(index)), status, "No such child.");
}

HPlug HPlug::child(const HObject& attribute, HStatus* status) const {
    std::shared_ptr<runtime::AttributeDef> def = HApiAccess::as<runtime::AttributeDef>(attribute);
    return result(def ? open(*this).child(*def) : Plug(), status, "No such child.");
}

HPlug HPlug::parent(HStatus* status) const {
    return result(open(*this).parent(), status, "The plug is not a child.");
}

HStatus HPlug::selectAncestorLogicalIndex(unsigned logicalIndex, const HObject& attribute) {
    Plug plug = open(*this);
    if (plug.isNull())
        return nullPlug();
    std::shared_ptr<runtime::AttributeDef> def = HApiAccess::as<runtime::AttributeDef>(attribute);
    if (!attribute.isNull() && !def)
        return runtime::invalidParameter("The object is not an attribute.");
    HStatus status = plug.selectAncestor(logicalIndex, def.get());
    if (status)
        *this = HApiAccess::plug(plug);
    return status;
}

bool HPlug::connectedTo(HPlugArray& plugs, bool asDst, bool asSrc, HStatus* status) const {
    plugs.clear();
    const Plug& plug = open(*this);
    if (plug.isNull()) {
        report(status, nullPlug());
        return false;
    }
    for (const Plug& other : runtime::scene().connectedPlugs(plug, asDst, asSrc))
        plugs.append(HApiAccess::plug(other));
    report(status, HS::kSuccess);
    return plugs.length() > 0;
}

bool HPlug::isConnected(HStatus* status) const {
    HPlugArray plugs;
    return connectedTo(plugs, true, true, status);
}

bool HPlug::isDestination(HStatus* status) const {
    HPlugArray plugs;
    return connectedTo(plugs, true, false, status);
}

bool HPlug::isSource(HStatus* status) const {
    HPlugArray plugs;
    return connectedTo(plugs, false, true, status);
}

HStatus HPlug::getValue(int& value) const {
    return readInto(*this, ValueType::kInt, value);
}

HStatus HPlug::getValue(bool& value) const {
    return readInto(*this, ValueType::kBool, value);
}

HStatus HPlug::getValue(double& value) const {
    return readInto(*this, ValueType::kDouble, value);
}

HStatus HPlug::getValue(HString& value) const {
    std::string text;
    HStatus status = readInto(*this, ValueType::kString, text);
    if (status)
        value = HString(text);
    return status;
}

HStatus HPlug::getValue(HObject& value) const {
    runtime::StringList strings;
    HStatus status = readInto(*this, ValueType::kStringArray, strings);
    if (status)
        value = HApiAccess::object(std::make_shared<runtime::StringArrayData>(strings));
    return status;
}

HStatus HPlug::setValue(int value) {
    return write(*this, value);
}

HStatus HPlug::setValue(bool value) {
    return write(*this, value);
}

HStatus HPlug::setValue(double value) {
    return write(*this, value);
}

HStatus HPlug::setValue(const HString& value) {
    return write(*this, value.str());
}

HStatus HPlug::setValue(const char* value) {
    return write(*this, std::string(value ? value : ""));
}

HStatus HPlug::setValue(const HObject& data) {
    std::shared_ptr<runtime::StringArrayData> strings =
        HApiAccess::as<runtime::StringArrayData>(data);
    if (!strings)
        return runtime::invalidParameter("The data object is not a string array.");
    return write(*this, strings->strings);
}

HStatus HPlug::setInt(int value) {
    return setValue(value);
}

HStatus HPlug::setBool(bool value) {
    return setValue(value);
}

HStatus HPlug::setDouble(double value) {
    return setValue(value);
}

HStatus HPlug::setString(const HString& value) {
    return setValue(value);
}

int HPlug::asInt(HStatus* status) const {
    return readOrZero<int>(*this, ValueType::kInt, status);
}

bool HPlug::asBool(HStatus* status) const {
    return readOrZero<bool>(*this, ValueType::kBool, status);
}

double HPlug::asDouble(HStatus* status) const {
    return readOrZero<double>(*this, ValueType::kDouble, status);
}

HString HPlug::asString(HStatus* status) const {
    HString value;
    report(status, getValue(value));
    return value;
}

bool HPlug::operator==(const HPlug& other) const {
    return open(*this) == open(other);
}

bool HPlug::operator!=(const HPlug& other) const {
    return !(*this == other);
}

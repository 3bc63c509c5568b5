#include "HFnAttribute.h"

#include "HFnCompoundAttribute.h"
#include "HFnNumericAttribute.h"
#include "HFnTypedAttribute.h"
#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "api/StringArrayData.h"

using runtime::AttributeDef;
using runtime::AttributeKind;
using runtime::AttributePtr;
using runtime::report;
using runtime::ValueType;

// The four attribute function sets share this file: they differ only in the kind they accept
// and the definitions they create.

namespace {

AttributePtr definition(const HObject& object) {
    return HApiAccess::as<AttributeDef>(object);
}

HStatus checkNames(const HString& fullName, const HString& briefName) {
    if (!AttributeDef::isValidName(fullName.str()) ||
        (!briefName.isEmpty() && !AttributeDef::isValidName(briefName.str())))
        return runtime::invalidParameter("Invalid attribute name: " + fullName.str());
    return HS::kSuccess;
}

} // namespace

HFnAttribute::HFnAttribute() = default;

HFnAttribute::HFnAttribute(const HObject& attribute, HStatus* status) {
    report(status, setObject(attribute));
}

HFn::Type HFnAttribute::type() const {
    return HFn::kAttribute;
}

HStatus HFnAttribute::setObject(const HObject& attribute) {
    return attach(attribute, type());
}

HString HFnAttribute::name(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    return def ? HString(def->longName()) : HString();
}

HString HFnAttribute::shortName(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    return def ? HString(def->shortName()) : HString();
}

HStatus HFnAttribute::setArray(bool isArray) {
    AttributePtr def = definition(m_object);
    return def ? def->setArray(isArray) : checkAttached();
}

bool HFnAttribute::isArray(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    return def && def->isArray();
}

HObject HFnAttribute::parent(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    AttributePtr parent = def ? def->parent() : nullptr;
    return parent ? HApiAccess::object(parent) : HObject();
}

HFnNumericAttribute::HFnNumericAttribute() = default;

HFnNumericAttribute::HFnNumericAttribute(const HObject& attribute, HStatus* status) {
    report(status, setObject(attribute));
}

HFn::Type HFnNumericAttribute::type() const {
    return HFn::kNumericAttribute;
}

HStatus HFnNumericAttribute::setObject(const HObject& attribute) {
    return attach(attribute, type());
}

HObject HFnNumericAttribute::create(const HString& fullName, const HString& briefName,
                                    HFnNumericData::Type type, double defaultValue,
                                    HStatus* status) {
    const ValueType types[] = {ValueType::kNone, ValueType::kBool, ValueType::kInt,
                               ValueType::kDouble};
    HStatus checked = checkNames(fullName, briefName);
    if (checked && (type <= HFnNumericData::kInvalid || type > HFnNumericData::kDouble))
        checked = runtime::invalidParameter("Invalid numeric type.");
    if (!report(status, checked))
        return HObject();
    HObject object = HApiAccess::object(
        AttributeDef::numeric(fullName.str(), briefName.str(), types[type], defaultValue));
    attach(object, HFn::kNumericAttribute);
    return object;
}

HFnNumericData::Type HFnNumericAttribute::unitType(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    switch (def ? def->valueType() : ValueType::kNone) {
    case ValueType::kBool:
        return HFnNumericData::kBoolean;
    case ValueType::kInt:
        return HFnNumericData::kInt;
    case ValueType::kDouble:
        return HFnNumericData::kDouble;
    default:
        return HFnNumericData::kInvalid;
    }
}

double HFnNumericAttribute::defaultValue(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    runtime::Value number;
    if (!def || !runtime::convertValue(def->defaultValue(), ValueType::kDouble, number))
        return 0.0;
    return std::get<double>(number);
}

HFnTypedAttribute::HFnTypedAttribute() = default;

HFnTypedAttribute::HFnTypedAttribute(const HObject& attribute, HStatus* status) {
    report(status, setObject(attribute));
}

HFn::Type HFnTypedAttribute::type() const {
    return HFn::kTypedAttribute;
}

HStatus HFnTypedAttribute::setObject(const HObject& attribute) {
    return attach(attribute, type());
}

HObject HFnTypedAttribute::create(const HString& fullName, const HString& briefName,
                                  HFnData::Type type, const HObject& defaultData, HStatus* status) {
    HStatus checked = checkNames(fullName, briefName);
    if (checked && type != HFnData::kString && type != HFnData::kStringArray)
        checked = runtime::invalidParameter("Invalid data type.");
    std::shared_ptr<runtime::StringArrayData> strings =
        HApiAccess::as<runtime::StringArrayData>(defaultData);
    if (checked && !defaultData.isNull() && (type != HFnData::kStringArray || !strings))
        checked = runtime::invalidParameter("The default data is of another type.");
    if (!report(status, checked))
        return HObject();
    runtime::Value fallback;
    if (strings)
        fallback = strings->strings;
    ValueType valueType = type == HFnData::kString ? ValueType::kString : ValueType::kStringArray;
    HObject object = HApiAccess::object(
        AttributeDef::typed(fullName.str(), briefName.str(), valueType, fallback));
    attach(object, HFn::kTypedAttribute);
    return object;
}

HFnData::Type HFnTypedAttribute::attrType(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    if (!def || def->kind() != AttributeKind::kTyped)
        return HFnData::kInvalid;
    return def->valueType() == ValueType::kString ? HFnData::kString : HFnData::kStringArray;
}

HFnCompoundAttribute::HFnCompoundAttribute() = default;

HFnCompoundAttribute::HFnCompoundAttribute(const HObject& attribute, HStatus* status) {
    report(status, setObject(attribute));
}

HFn::Type HFnCompoundAttribute::type() const {
    return HFn::kCompoundAttribute;
}

HStatus HFnCompoundAttribute::setObject(const HObject& attribute) {
    return attach(attribute, type());
}

HObject HFnCompoundAttribute::create(const HString& fullName, const HString& briefName,
                                     HStatus* status) {
    if (!report(status, checkNames(fullName, briefName)))
        return HObject();
    HObject object = HApiAccess::object(AttributeDef::compound(fullName.str(), briefName.str()));
    attach(object, HFn::kCompoundAttribute);
    return object;
}

HStatus HFnCompoundAttribute::addChild(const HObject& child) {
    AttributePtr def = definition(m_object);
    if (!def)
        return checkAttached();
    AttributePtr added = definition(child);
    if (!added)
        return runtime::invalidParameter("The child is not an attribute.");
    return def->addChild(added);
}

unsigned HFnCompoundAttribute::numChildren(HStatus* status) const {
    report(status, checkAttached());
    AttributePtr def = definition(m_object);
    return def ? static_cast<unsigned>(def->childCount()) : 0u;
}

HObject HFnCompoundAttribute::child(unsigned index, HStatus* status) const {
    AttributePtr def = definition(m_object);
    if (!def || index >= def->childCount()) {
        report(status, def ? runtime::invalidParameter("No such child.") : checkAttached());
        return HObject();
    }
    report(status, HS::kSuccess);
    return HApiAccess::object(def->child(index)->handle());
}

#include "HFnSingleIndexedComponent.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"

using runtime::ComponentData;
using runtime::report;

namespace {

HStatus negative() {
    return runtime::invalidParameter("Component elements cannot be negative.");
}

} // namespace

HFnSingleIndexedComponent::HFnSingleIndexedComponent() = default;

HFnSingleIndexedComponent::HFnSingleIndexedComponent(const HObject& component, HStatus* status) {
    report(status, setObject(component));
}

HFn::Type HFnSingleIndexedComponent::type() const {
    return HFn::kSingleIndexedComponent;
}

HStatus HFnSingleIndexedComponent::setObject(const HObject& component) {
    return attach(component, type());
}

HObject HFnSingleIndexedComponent::create(HFn::Type componentType, HStatus* status) {
    if (!ComponentData::isComponentKind(componentType)) {
        report(status, runtime::invalidParameter("Not a component kind."));
        return HObject();
    }
    HObject object = HApiAccess::object(std::make_shared<ComponentData>(componentType));
    attach(object, type());
    report(status, HS::kSuccess);
    return object;
}

HFn::Type HFnSingleIndexedComponent::componentType(HStatus* status) const {
    report(status, checkAttached());
    return m_object.apiType();
}

HStatus HFnSingleIndexedComponent::addElement(int element) {
    std::shared_ptr<ComponentData> data = HApiAccess::as<ComponentData>(m_object);
    if (!data)
        return checkAttached();
    return data->add(element) ? HStatus() : negative();
}

HStatus HFnSingleIndexedComponent::addElements(const HIntArray& elements) {
    std::shared_ptr<ComponentData> data = HApiAccess::as<ComponentData>(m_object);
    if (!data)
        return checkAttached();
    for (int element : elements)
        if (element < 0)
            return negative();
    for (int element : elements)
        data->add(element);
    return HS::kSuccess;
}

int HFnSingleIndexedComponent::element(unsigned index, HStatus* status) const {
    std::shared_ptr<ComponentData> data = HApiAccess::as<ComponentData>(m_object);
    if (!data || index >= data->size()) {
        report(status,
               data ? runtime::invalidParameter("Element index out of range.") : checkAttached());
        return -1;
    }
    report(status, HS::kSuccess);
    return data->elements()[index];
}

unsigned HFnSingleIndexedComponent::elementCount(HStatus* status) const {
    report(status, checkAttached());
    std::shared_ptr<ComponentData> data = HApiAccess::as<ComponentData>(m_object);
    return data ? static_cast<unsigned>(data->size()) : 0u;
}

bool HFnSingleIndexedComponent::isEmpty(HStatus* status) const {
    return elementCount(status) == 0;
}

HStatus HFnSingleIndexedComponent::getElements(HIntArray& elements) const {
    elements.clear();
    std::shared_ptr<ComponentData> data = HApiAccess::as<ComponentData>(m_object);
    if (!data)
        return checkAttached();
    elements.reserve(static_cast<unsigned>(data->size()));
    for (int element : data->elements())
        elements.append(element);
    return HS::kSuccess;
}

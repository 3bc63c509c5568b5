#include "HItSelectionList.h"

#include "api/StatusReport.h"

HItSelectionList::HItSelectionList(const HSelectionList& list, HFn::Type filter, HStatus* status)
    : m_list(list), m_filter(filter), m_index(0) {
    skipFiltered();
    runtime::report(status, HS::kSuccess);
}

void HItSelectionList::skipFiltered() {
    while (m_filter != HFn::kInvalid && m_index < m_list.length()) {
        HObject node;
        if (m_list.getDependNode(m_index, node) && node.hasFn(m_filter))
            return;
        ++m_index;
    }
}

HStatus HItSelectionList::getDagPath(HDagPath& path, HObject& component) const {
    return m_list.getDagPath(m_index, path, component);
}

HStatus HItSelectionList::getDagPath(HDagPath& path) const {
    return m_list.getDagPath(m_index, path);
}

HStatus HItSelectionList::getDependNode(HObject& node) const {
    return m_list.getDependNode(m_index, node);
}

bool HItSelectionList::hasComponents(HStatus* status) const {
    HDagPath path;
    HObject component;
    runtime::report(status, getDagPath(path, component));
    return !component.isNull();
}

HStatus HItSelectionList::next() {
    if (isDone())
        return runtime::invalidParameter("The iterator is done.");
    ++m_index;
    skipFiltered();
    return HS::kSuccess;
}

bool HItSelectionList::isDone(HStatus* status) const {
    runtime::report(status, HS::kSuccess);
    return m_index >= m_list.length();
}

HStatus HItSelectionList::reset() {
    m_index = 0;
    skipFiltered();
    return HS::kSuccess;
}

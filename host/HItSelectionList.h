// HItSelectionList: walks the items of an HSelectionList in order.
//
// The iterator keeps its own copy of the list, so changing the list afterwards does not
// affect the walk. A filter other than kInvalid visits only items whose node has that kind.
#pragma once

#include "HSelectionList.h"

class HItSelectionList {
public:
    explicit HItSelectionList(const HSelectionList& list, HFn::Type filter = HFn::kInvalid,
                              HStatus* status = nullptr);

    HStatus getDagPath(HDagPath& path, HObject& component) const;
    HStatus getDagPath(HDagPath& path) const;
    HStatus getDependNode(HObject& node) const;
    bool hasComponents(HStatus* status = nullptr) const;
    HStatus next();
    bool isDone(HStatus* status = nullptr) const;
    HStatus reset();

private:
    void skipFiltered();

    HSelectionList m_list;
    HFn::Type m_filter;
    unsigned m_index;
};

// HGlobal's selection functions: the active selection and the hilite list.
#include "HGlobal.h"
#include "api/HApiAccess.h"
#include "core/HostContext.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"

namespace {

HStatus notRunning() {
    return HStatus(HS::kFailure, "The host is not running.");
}

} // namespace

HStatus HGlobal::getActiveSelectionList(HSelectionList& list) {
    if (!runtime::hostRunning())
        return notRunning();
    list = runtime::selection().active();
    return HS::kSuccess;
}

HStatus HGlobal::setActiveSelectionList(const HSelectionList& list, ListAdjustment mode) {
    if (!runtime::hostRunning())
        return notRunning();
    runtime::selection().setActive(list, mode);
    return HS::kSuccess;
}

HStatus HGlobal::clearSelectionList() {
    return setActiveSelectionList(HSelectionList(), kReplaceList);
}

HStatus HGlobal::getHiliteList(HSelectionList& list) {
    if (!runtime::hostRunning())
        return notRunning();
    list = runtime::selection().hilite();
    return HS::kSuccess;
}

HStatus HGlobal::setHiliteList(const HSelectionList& list) {
    if (!runtime::hostRunning())
        return notRunning();
    runtime::selection().setHilite(list);
    return HS::kSuccess;
}

HStatus HGlobal::getSelectionListByName(const HString& name, HSelectionList& list) {
    if (!runtime::hostRunning())
        return notRunning();
    runtime::SelectionItems items;
    HStatus status = runtime::itemsFromText(runtime::scene(), name.str(), true, items);
    if (status)
        HApiAccess::items(list) = items;
    return status;
}

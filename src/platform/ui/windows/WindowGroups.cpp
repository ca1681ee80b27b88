// SPDX-License-Identifier: BSD-3-Clause
// Groups of windows. A window of a group whose first window is another one becomes a child widget over
// that one: so it moves and layers with it on every window system, and a host that embeds the first
// embeds both.
#include "platform/ui/windows/WindowGroups.h"

#include <algorithm>
#include <map>
#include <vector>

#include "platform/ui/windows/Window.h"

namespace platform {

namespace {

struct Group {
    std::uint32_t attributes;
    WindowGroupRef parent = nullptr;
    std::vector<WindowRef> windows; // as they came; the first one carries the others

    bool HoldsTogether() const {
        constexpr std::uint32_t kTogether =
            kWindowGroupAttrMoveTogether | kWindowGroupAttrLayerTogether;
        return (attributes & kTogether) == kTogether;
    }
};

struct Groups {
    std::map<WindowGroupRef, Group> all;
    std::map<std::uint32_t, WindowGroupRef> ofClasses; // by window class
    std::uintptr_t lastReference = 0;

    Group* Find(WindowGroupRef reference) {
        auto const found = all.find(reference);
        return found == all.end() ? nullptr : &found->second;
    }
    WindowGroupRef Make(std::uint32_t attributes) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a number, which nobody looks behind.
        auto const reference = reinterpret_cast<WindowGroupRef>(++lastReference);
        all.emplace(reference, Group { attributes, nullptr, {} });
        return reference;
    }
};

Groups& TheGroups() {
    static auto& groups = *new Groups;
    return groups;
}

constexpr std::uint32_t kDocumentWindowClass = 6; // what every window is to begin with

// Moves the widget below another one (null: to a window of its own) and leaves it where it is.
void MoveBelow(QWidget& widget, QWidget* parent) {
    QPoint const place = widget.mapToGlobal(QPoint());
    bool const shown = widget.isVisible();
    if (parent)
        widget.setParent(parent, Qt::Widget);
    else
        widget.setParent(nullptr, Qt::Window);
    widget.move(parent ? parent->mapFromGlobal(place) : place);
    if (parent && shown) {
        widget.show();
        widget.raise();
    }
}

void LieOver(Window& window, const Window& first) {
    QWidget* const below = &first.Widget();
    // A host's layout keeps what it has, and nothing lies over what lies over it.
    if (!window.Widget().isWindow() || window.Widget().isAncestorOf(below))
        return;
    MoveBelow(window.Widget(), below);
    window.liesOverGroup = true;
}

} // namespace

OSStatus CreateWindowGroup(std::uint32_t attributes, WindowGroupRef* group) {
    if (!group)
        return kParamErr;
    *group = TheGroups().Make(attributes);
    return kNoErr;
}

OSStatus ReleaseWindowGroup(WindowGroupRef group) {
    Groups& groups = TheGroups();
    if (!groups.Find(group))
        return kParamErr;
    auto const isOfClass = [group](auto const& entry) { return entry.second == group; };
    if (std::ranges::none_of(groups.ofClasses, isOfClass)) // those are the process's
        groups.all.erase(group);
    return kNoErr;
}

WindowGroupRef GetWindowGroupOfClass(std::uint32_t windowClass) {
    Groups& groups = TheGroups();
    auto const [entry, added] = groups.ofClasses.try_emplace(windowClass, nullptr);
    if (added)
        entry->second = groups.Make(kWindowGroupAttrSelectAsLayer);
    return entry->second;
}

WindowGroupRef GetWindowGroup(WindowRef window) {
    Window const* const found = Window::Find(window);
    if (!found)
        return nullptr;
    bool const has = TheGroups().Find(found->group) != nullptr;
    return has ? found->group : GetWindowGroupOfClass(kDocumentWindowClass);
}

OSStatus SetWindowGroup(WindowRef window, WindowGroupRef group) {
    Window* const found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    Group* const joined = TheGroups().Find(group);
    if (!joined)
        return kParamErr;
    if (found->group == group)
        return kNoErr;
    LeaveWindowGroup(*found);
    if (found->liesOverGroup) {
        found->liesOverGroup = false;
        MoveBelow(found->Widget(), nullptr);
    }
    found->group = group;
    joined->windows.push_back(window);
    Window const* const first = Window::Find(joined->windows.front());
    if (joined->HoldsTogether() && first && first != found)
        LieOver(*found, *first);
    return kNoErr;
}

OSStatus SetWindowGroupParent(WindowGroupRef group, WindowGroupRef parent) {
    Group* const found = TheGroups().Find(group);
    if (!found || !TheGroups().Find(parent))
        return kParamErr;
    found->parent = parent;
    return kNoErr;
}

void LeaveWindowGroup(Window& window) {
    if (Group* const group = TheGroups().Find(window.group))
        std::erase(group->windows, window.Ref());
    window.group = nullptr;
}

void ReleaseWindowsOver(Window& window) {
    for (UIObject* const object : UIObject::All(ObjectKind::kWindow)) {
        auto& other = static_cast<Window&>(*object);
        if (!other.liesOverGroup || other.Widget().parentWidget() != &window.Widget())
            continue;
        other.liesOverGroup = false;
        MoveBelow(other.Widget(), nullptr);
    }
}

} // namespace platform

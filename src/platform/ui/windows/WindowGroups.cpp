// SPDX-License-Identifier: BSD-3-Clause
// Groups of windows. A window of a group whose first window is another one becomes a child widget over
// that one: so it moves and layers with it on every window system, and a host that embeds the first
// embeds both.
#include <map>

#include <QWidget>

#include "platform/ui/Windows.h"

namespace platform {

namespace {

// Moves the widget below another one (null: to a window of its own) and leaves it where it is.
void MoveBelow(QWidget& widget, QWidget* parent) {
    const QPoint place = widget.mapToGlobal(QPoint());
    const bool shown = widget.isVisible();
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
    const Alive alive(window); // who hears of the new parent may end it
    MoveBelow(window.Widget(), below);
    if (alive)
        window.liesOverGroup = true;
}

} // namespace

WindowGroup::WindowGroup(std::uint32_t attributes) : m_attributes(attributes) {}

WindowGroup::~WindowGroup() {
    for (Window* const window : m_windows)
        window->group = nullptr;
}

WindowGroup& WindowGroup::OfClass(std::uint32_t windowClass) {
    static auto& groups = *new std::map<std::uint32_t, WindowGroup>;
    return groups.try_emplace(windowClass, 0U).first->second;
}

void WindowGroup::Add(Window& window) {
    if (window.group == this)
        return;
    if (window.group)
        window.group->Remove(window);
    if (window.liesOverGroup) {
        window.liesOverGroup = false;
        MoveBelow(window.Widget(), nullptr);
    }
    window.group = this;
    m_windows.push_back(&window);
    constexpr std::uint32_t kTogether = kMoveTogether | kLayerTogether;
    if ((m_attributes & kTogether) == kTogether && m_windows.front() != &window)
        LieOver(window, *m_windows.front());
}

void WindowGroup::Remove(Window& window) {
    std::erase(m_windows, &window);
    window.group = nullptr;
}

// Those that lie over this one because of a group become hidden windows of their own.
void Window::ReleaseWindowsOver() const {
    const QWidget* const below = m_widget;
    std::vector<WindowRef> others;
    for (UIObject* const object : UIObject::All(ObjectKind::kWindow))
        others.push_back(object->As<WindowRef>());
    for (const WindowRef reference : others) {
        // Who hears of the new parent of one may end the next.
        Window* const other = Find(reference);
        if (!other || !other->liesOverGroup || other->Widget().parentWidget() != below)
            continue;
        other->liesOverGroup = false;
        MoveBelow(other->Widget(), nullptr);
    }
}

} // namespace platform

// SPDX-License-Identifier: BSD-3-Clause
// Attributes, modality and modal runs: what the window system is told about a window. The other windows
// are kept out by Qt's own modality, which knows of popups, alerts and the window system; Qt reads it
// when a window is shown, so one that is visible is shown anew.
#include <array>

#include <QEventLoop>
#include <QWidget>
#include <QWindow>

#include "platform/ui/Windows.h"

namespace platform {

namespace {

struct NamedFlag {
    std::uint32_t attribute;
    Qt::WindowType flag;
    bool whenClear; // the flag stands for the attribute's absence
};
constexpr std::array kFlags {
    NamedFlag { kWindowCloseBoxAttribute, Qt::WindowCloseButtonHint, false },
    NamedFlag { kWindowCollapseBoxAttribute, Qt::WindowMinimizeButtonHint, false },
    NamedFlag { kWindowHasNoTitleBarAttribute, Qt::WindowTitleHint, true },
    NamedFlag { kWindowHasNoTitleBarAttribute, Qt::FramelessWindowHint, false },
};

} // namespace

void Window::ChangeAttributes(std::uint32_t set, std::uint32_t clear) {
    const std::uint32_t before = m_attributes;
    m_attributes = (before | set) & ~clear;
    if (m_attributes != before && m_widget->isWindow())
        ApplyAttributes(before ^ m_attributes);
}

// A window that is visible stays so; the window system is told of the new flags.
void Window::ApplyAttributes(std::uint32_t changed) {
    Qt::WindowFlags flags = m_widget->windowFlags() | Qt::CustomizeWindowHint;
    for (const NamedFlag& named : kFlags)
        if (changed & named.attribute)
            flags.setFlag(named.flag, ((m_attributes & named.attribute) != 0) != named.whenClear);
    m_widget->overrideWindowFlags(flags);
    if (QWindow* const handle = m_widget->windowHandle())
        handle->setFlags(flags);
}

void Window::SetActivationScope(std::uint32_t scope) {
    m_widget->setAttribute(Qt::WA_ShowWithoutActivating, scope == 0);
}

// Modality ---------------------------------------------------------------------------------------

void Window::SetModality(std::uint32_t modality, const Window* over) {
    m_modality = modality;
    QWidget* const below = over ? over->Widget().window() : nullptr;
    if (below && m_widget->isWindow() && m_widget != below) {
        // A window of the screen has a window of the screen below it.
        m_widget->winId();
        below->winId();
        m_widget->windowHandle()->setTransientParent(below->windowHandle());
    }
    ApplyOwnModality();
}

// What SetModality asked for, unless a run is on.
void Window::ApplyOwnModality() {
    if (!m_modalLoop)
        ShowWithModality(m_modality == kWindowModalityNone          ? Qt::NonModal
                         : m_modality == kWindowModalityWindowModal ? Qt::WindowModal
                                                                    : Qt::ApplicationModal);
}

// In case the widget is a window of the screen: one that a host embeds, or that lies over another, is
// as modal as what is around it.
void Window::ShowWithModality(int modality) {
    const auto wanted = static_cast<Qt::WindowModality>(modality);
    if (!m_widget->isWindow() || m_widget->windowModality() == wanted)
        return;
    const bool shown = m_widget->isVisible();
    const bool wasActive = m_widget->isActiveWindow();
    const QRect place = m_widget->geometry();
    const WhileSet quiet(*this, m_isQuiet, true);
    const Alive alive(*this);
    if (shown)
        m_widget->hide();
    if (!alive)
        return;
    m_widget->setWindowModality(wanted);
    if (!shown)
        return;
    m_widget->setGeometry(place);
    m_widget->show();
    if (alive && wasActive)
        m_widget->activateWindow();
}

// Modal runs -------------------------------------------------------------------------------------

void Window::RunModal() {
    if (m_modalLoop)
        return;
    const Alive alive(*this);
    ShowWithModality(Qt::ApplicationModal);
    if (!alive)
        return;
    {
        QEventLoop loop;
        const WhileSet running(*this, m_modalLoop, &loop);
        loop.exec();
    }
    // Whoever ran it mostly hides it now. One that stays lets go of the others when the loop gets to
    // it, and does not flicker in the first case.
    if (alive)
        Later(&Window::ApplyOwnModality);
}

void Window::QuitModal() {
    if (m_modalLoop)
        m_modalLoop->quit();
}

} // namespace platform

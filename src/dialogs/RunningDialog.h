// SPDX-License-Identifier: BSD-3-Clause
// Tells the owner of a nested dialog which one runs, so that an owner that ends meanwhile can end it.
#pragma once

#include <memory>
#include <utility>

template <class Dialog>
class RunningDialog {
public:
    // running is a member of the owner, which is null again when this ends before the owner does.
    RunningDialog(Dialog*& running, Dialog& dialog, std::weak_ptr<const void> ownersLife)
        : m_running(running), m_ownersLife(std::move(ownersLife)) {
        m_running = &dialog;
    }
    RunningDialog(const RunningDialog&) = delete;
    RunningDialog& operator=(const RunningDialog&) = delete;
    ~RunningDialog() {
        if (!m_ownersLife.expired())
            m_running = nullptr;
    }

private:
    Dialog*& m_running;
    std::weak_ptr<const void> m_ownersLife;
};

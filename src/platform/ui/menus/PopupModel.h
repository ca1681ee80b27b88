// SPDX-License-Identifier: BSD-3-Clause
// A menu as rows for a list: the items in order.
#pragma once

#include <memory>

#include <QAbstractListModel>

#include "platform/ui/Menus.h"

namespace platform {

class PopupModel final : public QAbstractListModel {
public:
    enum Role { kSeparator = Qt::UserRole };

    explicit PopupModel(QObject* parent); // of an empty menu

    Menu& Shown() const { return *m_menu; }
    const MenuItem* At(int row) const; // null for none
    bool HasCheckMarks() const { return m_hasCheckMarks; }

    // Called around each change of the rows.
    std::function<void()> beforeReset;
    std::function<void()> afterReset;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // These two are how a form gives a popup button its items.
    bool insertRows(int row, int count, const QModelIndex& parent) override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    void Rebuild();

    const std::unique_ptr<Menu> m_menu = std::make_unique<Menu>();
    int m_count = 0; // of the rows, which are made anew after the menu has changed
    bool m_hasCheckMarks = false;
};

} // namespace platform

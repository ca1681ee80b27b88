// SPDX-License-Identifier: BSD-3-Clause
// A menu as rows for a list: the items in order, those of a submenu indented below their title.
#pragma once

#include <optional>
#include <vector>

#include <QAbstractListModel>

#include "platform/ui/Menus.h"

namespace platform {

class PopupModel final : public QAbstractListModel {
public:
    struct Row {
        MenuRef menu; // that the item is in
        MenuItemIndex item;
        MenuItemIndex topItem; // of the whole menu, which the item is or lies below
        int depth;
        bool pickable;
        bool separator;
        bool title; // of a submenu
    };
    enum Role { kDepth = Qt::UserRole, kTitle, kSeparator };

    explicit PopupModel(QObject* parent); // of an empty menu

    Menu& Shown() const { return *m_menu; }
    const Row* At(int row) const;              // null for none
    int RowOfTopItem(std::int32_t item) const; // -1 for none
    int RowOf(MenuRef menu, MenuItemIndex item) const;
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
    void AddRows(const Menu& menu, MenuItemIndex topItem, int depth);

    const std::unique_ptr<Menu> m_menu = std::make_unique<Menu>();
    std::vector<Row> m_rows;
    bool m_hasCheckMarks = false;
};

} // namespace platform

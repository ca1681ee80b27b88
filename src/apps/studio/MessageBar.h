// SPDX-License-Identifier: BSD-3-Clause
// A line above the frame that tells what happened, without stopping the user's work. It stays until it
// is closed or another message takes its place.
#pragma once

#include <functional>

#include <QFrame>
#include <QString>
#include <QStringList>

class QLabel;
class QPushButton;

namespace studio {

class MessageBar : public QFrame {
public:
    enum class Kind { kInformation, kWarning, kError };

    explicit MessageBar(QWidget* parent = nullptr);

    // With a button, if it has a name, that closes the bar and does something about it.
    void Show(Kind kind, const QString& text, const QString& button = {},
              std::function<void()> action = {});
    // The summary and these lines of the list; all of it in a box with that title, when there is any.
    void ShowList(Kind kind, const QString& summary, const QStringList& shown,
                  const QStringList& list, const QString& title);
    // Empty while nothing is shown.
    QString Text() const;
    void Clear() { hide(); }
    // The parent's palette changed.
    void FollowPalette();

private:
    Kind m_kind = Kind::kInformation;
    std::function<void()> m_action;
    QLabel* m_icon;
    QLabel* m_label;
    QPushButton* m_button;
};

} // namespace studio

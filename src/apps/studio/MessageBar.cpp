// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/MessageBar.h"

#include <array>
#include <utility>

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"

namespace studio {

namespace {

struct Look {
    const char* icon;
    QColor accent;
};

// By kind.
const std::array kLooks { Look { "information", QColor(47, 128, 214) },
                          Look { "warning", QColor(214, 150, 32) },
                          Look { "error", QColor(208, 62, 62) } };

QColor Mix(const QColor& a, const QColor& b, double share) {
    const auto part = [share](int x, int y) { return static_cast<int>(x + (y - x) * share); };
    return { part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue()) };
}

} // namespace

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent), m_icon(new QLabel(this)), m_label(new QLabel(this)),
      m_button(new QPushButton(this)) {
    setAutoFillBackground(true);
    setAccessibleName(T("Message"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* const close = new QToolButton(this);
    close->setIcon(MakeIcon("close"));
    close->setAutoRaise(true);
    close->setToolTip(T("Close this message"));
    close->setAccessibleName(T("Close this message"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(10, 6, 6, 6);
    row->setSpacing(8);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    row->addWidget(m_label, 1);
    row->addWidget(m_button);
    row->addWidget(close, 0, Qt::AlignTop);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    connect(m_button, &QPushButton::clicked, this, [this] {
        const auto action = m_action;
        hide();
        action();
    });
    hide();
}

void MessageBar::Show(Kind kind, const QString& text, const QString& button,
                      std::function<void()> action) {
    m_kind = kind;
    m_action = std::move(action);
    m_label->setText(text);
    m_label->setAccessibleName(text);
    m_button->setText(button);
    m_button->setVisible(!button.isEmpty());
    FollowPalette();
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void MessageBar::ShowList(Kind kind, const QString& summary, const QStringList& shown,
                          const QStringList& list, const QString& title) {
    if (list.isEmpty())
        return Show(kind, summary);
    Show(kind, (QStringList { summary } + shown).join(QLatin1Char('\n')), T("De&tails…"),
         [this, summary, title, all = list.join(QLatin1Char('\n'))] {
             QMessageBox box(QMessageBox::Warning, title, summary, QMessageBox::NoButton, window());
             box.setInformativeText(T("What is not as it should be, and why:"));
             box.setDetailedText(all);
             box.addButton(T("Close"), QMessageBox::RejectRole);
             box.exec();
         });
}

QString MessageBar::Text() const {
    return isHidden() ? QString() : m_label->text();
}

void MessageBar::FollowPalette() {
    const auto& look = kLooks[static_cast<std::size_t>(m_kind)];
    auto colors = parentWidget() ? parentWidget()->palette() : palette();
    colors.setColor(QPalette::Window, Mix(colors.color(QPalette::Window), look.accent, 0.22));
    setPalette(colors);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_icon->setPixmap(MakeIcon(look.icon).pixmap(QSize(side, side), devicePixelRatioF()));
}

} // namespace studio

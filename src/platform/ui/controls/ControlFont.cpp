// SPDX-License-Identifier: BSD-3-Clause
// Font, colours and size of single controls, laid over what the style and the palette give.
#include <algorithm>
#include <array>

#include <QAbstractItemView>
#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "platform/TextEncoding.h"
#include "platform/ui/QtValues.h"
#include "platform/ui/controls/Control.h"

namespace platform {
namespace {

constexpr std::int16_t kBold = 1, kItalic = 2, kUnderline = 4;
constexpr std::int16_t kJustifyCenter = 1, kJustifyRight = -1;
constexpr double kSmallFontScale = 0.85;

struct Roles {
    QPalette::ColorRole text, ground;
};

Roles RolesOf(const QWidget& widget) {
    if (qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QPlainTextEdit*>(&widget) ||
        qobject_cast<const QAbstractItemView*>(&widget))
        return { QPalette::Text, QPalette::Base };
    if (qobject_cast<const QPushButton*>(&widget))
        return { QPalette::ButtonText, QPalette::Button };
    return { QPalette::WindowText, QPalette::Window };
}

std::int16_t FaceOf(const QFont& font) {
    return static_cast<std::int16_t>((font.bold() ? kBold : 0) | (font.italic() ? kItalic : 0) |
                                     (font.underline() ? kUnderline : 0));
}

QString FamilyOf(FontNumber number) {
    std::array<std::uint8_t, 256> name {};
    GetFontName(number, name.data());
    return QString::fromStdString(
        DecodeText({ reinterpret_cast<const char*>(name.data()) + 1, name[0] }));
}

void SetFamily(QWidget& widget, FontNumber number) {
    const QString family = number == 0 ? QString() : FamilyOf(number);
    QFont font = widget.font();
    font.setFamilies({ family.isEmpty() ? QApplication::font(&widget).family() : family });
    widget.setFont(font);
}

void SetSize(QWidget& widget, std::int16_t size) {
    if (size <= 0)
        return;
    QFont font = widget.font();
    font.setPixelSize(size); // points at 72 per inch
    widget.setFont(font);
}

void SetFace(QWidget& widget, std::int16_t face) {
    QFont font = widget.font();
    font.setBold((face & kBold) != 0);
    font.setItalic((face & kItalic) != 0);
    font.setUnderline((face & kUnderline) != 0);
    widget.setFont(font);
}

// The disabled look stays the palette's.
void SetRoleColor(QWidget& widget, QPalette::ColorRole role, const RGBColor& color) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Active, role, ToQColor(color));
    palette.setColor(QPalette::Inactive, role, ToQColor(color));
    widget.setPalette(palette);
    if (role == QPalette::Window)
        widget.setAutoFillBackground(true);
}

void SetJustification(QWidget& widget, std::int16_t just) {
    const Qt::Alignment across = just == kJustifyCenter  ? Qt::AlignHCenter
                                 : just == kJustifyRight ? Qt::AlignRight
                                                         : Qt::AlignLeft;
    if (auto* label = qobject_cast<QLabel*>(&widget))
        label->setAlignment((label->alignment() & Qt::AlignVertical_Mask) | across);
    else if (auto* field = qobject_cast<QLineEdit*>(&widget))
        field->setAlignment((field->alignment() & Qt::AlignVertical_Mask) | across);
}

bool operator==(const RGBColor& a, const RGBColor& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

} // namespace

// What was set, and elsewhere what the widget shows by itself. Setting that again changes nothing.
ControlFontStyleRec Control::FontStyle() const {
    ControlFontStyleRec style = m_fontStyle;
    const Roles roles = RolesOf(*m_widget);
    const auto isSet = [&](std::int16_t mask) { return (style.flags & mask) != 0; };
    if (!isSet(kControlUseSizeMask))
        style.size = static_cast<std::int16_t>(QFontInfo(m_widget->font()).pixelSize());
    if (!isSet(kControlUseFaceMask))
        style.style = FaceOf(m_widget->font());
    if (!isSet(kControlUseModeMask))
        style.mode = kSrcOr;
    if (!isSet(kControlUseForeColorMask))
        style.foreColor = ToRGBColor(m_widget->palette().color(QPalette::Active, roles.text));
    if (!isSet(kControlUseBackColorMask))
        style.backColor = ToRGBColor(m_widget->palette().color(QPalette::Active, roles.ground));
    return style;
}

void Control::SetFontStyle(const ControlFontStyleRec& style) {
    QWidget& widget = *m_widget;
    const Roles roles = RolesOf(widget);
    ControlFontStyleRec now = FontStyle();
    // Only what is named and different is laid over the palette and the style.
    const auto take = [&](std::int16_t mask, auto ControlFontStyleRec::*field, auto apply) {
        if ((style.flags & mask) == 0 || now.*field == style.*field)
            return;
        now.*field = style.*field;
        now.flags = static_cast<std::int16_t>(now.flags | mask);
        apply(style.*field);
    };
    take(kControlUseFontMask, &ControlFontStyleRec::font,
         [&](FontNumber font) { SetFamily(widget, font); });
    take(kControlUseSizeMask, &ControlFontStyleRec::size,
         [&](std::int16_t size) { SetSize(widget, size); });
    take(kControlUseFaceMask, &ControlFontStyleRec::style,
         [&](std::int16_t face) { SetFace(widget, face); });
    take(kControlUseModeMask, &ControlFontStyleRec::mode, [](std::int16_t) {});
    take(kControlUseJustMask, &ControlFontStyleRec::just,
         [&](std::int16_t just) { SetJustification(widget, just); });
    take(kControlUseForeColorMask, &ControlFontStyleRec::foreColor,
         [&](const RGBColor& color) { SetRoleColor(widget, roles.text, color); });
    take(kControlUseBackColorMask, &ControlFontStyleRec::backColor,
         [&](const RGBColor& color) { SetRoleColor(widget, roles.ground, color); });
    m_fontStyle = now;
}

OSStatus Control::SetSizeVariant(std::uint16_t size) {
    if (size != kControlSizeNormal && size != kControlSizeSmall)
        return kParamErr;
    const QFont normal = QApplication::font(m_widget);
    const double scale = size == kControlSizeSmall ? kSmallFontScale : 1.0;
    QFont font = m_widget->font();
    if (normal.pointSizeF() > 0)
        font.setPointSizeF(normal.pointSizeF() * scale);
    else
        font.setPixelSize(std::max(1, static_cast<int>(normal.pixelSize() * scale)));
    m_widget->setFont(font);
    return kNoErr;
}

OSStatus GetThemeTextColor(std::int16_t themeTextColor, RGBColor* color) {
    if (themeTextColor != kThemeTextColorDialogActive &&
        themeTextColor != kThemeTextColorDialogInactive)
        return kParamErr;
    if (!EnsureUserInterface())
        return kErrNoUserInterface;
    const QPalette::ColorGroup group =
        themeTextColor == kThemeTextColorDialogActive ? QPalette::Active : QPalette::Disabled;
    *color = ToRGBColor(QApplication::palette().color(group, QPalette::WindowText));
    return kNoErr;
}

} // namespace platform

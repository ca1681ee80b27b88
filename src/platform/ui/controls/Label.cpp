// SPDX-License-Identifier: BSD-3-Clause
// Static text.
#include <QLabel>

#include "platform/ui/controls/Control.h"
#include "platform/ui/controls/Families.h"
#include "platform/ui/controls/Mnemonics.h"

namespace platform {
namespace {

class LabelControl : public Control {
public:
    LabelControl(QLabel& label, Window& owner) : Control(label, owner), m_label(&label) {}

    QString Title() const override {
        return m_label->buddy() ? WithoutMnemonics(m_label->text()) : m_label->text();
    }
    void SetTitle(const QString& title) override {
        m_label->setTextFormat(Qt::PlainText); // "<b>" is three characters
        m_label->setText(m_label->buddy() ? WithoutMeaning(title) : title);
    }
    OSStatus SetData(OSType tag, std::span<const std::byte> data) override {
        if (tag != kControlTextCFString)
            return Control::SetData(tag, data);
        QString text;
        const OSStatus status = ReadText(data, &text);
        if (!status)
            SetTitle(text);
        return status;
    }
    OSStatus GetData(OSType tag, std::span<std::byte> data, std::uint32_t* actualSize) override {
        if (tag != kControlTextCFString)
            return Control::GetData(tag, data, actualSize);
        return WriteText(Title(), data, actualSize);
    }

private:
    QLabel* m_label;
};

} // namespace

Control* MakeLabelControl(QWidget& widget, Window& owner) {
    auto* const label = qobject_cast<QLabel*>(&widget);
    return label ? new LabelControl(*label, owner) : nullptr;
}

} // namespace platform

// SPDX-License-Identifier: BSD-3-Clause
// Nibs: folders of forms in a bundle, and the windows that are made of them.
#include <filesystem>
#include <memory>
#include <utility>

#include <QFile>
#include <QPushButton>
#include <QVariant>

#include "platform/ui/QtStrings.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/DefaultButtons.h"
#include "platform/ui/windows/Form.h"
#include "platform/ui/windows/Window.h"

namespace platform {

struct OpaqueNib {
    std::filesystem::path folder;
    CFBundleRef bundle; // counted

    ~OpaqueNib() { CFRelease(bundle); }
};

namespace {

constexpr OSType kDefaultSignature = 0x56454C4D; // "VELM"

// Four characters such as "ok  ", where an editor may have lost the blanks at the end; or a number.
OSType CodeOf(const QVariant& value, OSType otherwise) {
    bool isNumber = false;
    std::uint32_t const number = value.toUInt(&isNumber);
    QByteArray const text = value.toString().toLatin1();
    if (isNumber || text.isEmpty() || text.size() > 4)
        return isNumber ? number : otherwise;
    OSType code = 0;
    for (char const c : text.leftJustified(4, ' '))
        code = code << 8 | static_cast<unsigned char>(c);
    return code;
}

void MakeFormControl(QWidget& widget, Window& window) {
    QVariant const number = widget.property("controlID");
    if (!number.isValid())
        return;
    Control* const control = MakeControl(widget, window);
    control->id = ControlID { CodeOf(widget.property("controlSignature"), kDefaultSignature),
                              number.toInt() };
    control->commandID = CodeOf(widget.property("commandID"), 0);
    if (!qobject_cast<QPushButton*>(&widget))
        return;
    if (control->commandID == kHICommandOK)
        MakeDefaultButton(window, control);
    if (control->commandID == kHICommandCancel)
        MakeCancelButton(window, control);
}

void MakeFormControls(Window& window) {
    for (QWidget* const widget : window.Widget().findChildren<QWidget*>()) {
        // Return is the business of the window's default button, in a host's dialog as well.
        if (auto* const button = qobject_cast<QPushButton*>(widget))
            button->setAutoDefault(false);
        MakeFormControl(*widget, window);
    }
}

OSStatus Broken(const QString& path, const QString& why) {
    qWarning("The form %s cannot be read: %s", qPrintable(path), qPrintable(why));
    return kErrNibBroken;
}

OSStatus MakeWindow(const OpaqueNib& nib, const QString& path, WindowRef* window) {
    QFile file(path);
    if (!file.exists())
        return kErrCantFindWindow;
    if (!file.open(QIODevice::ReadOnly))
        return Broken(path, file.errorString());
    QString why;
    QByteArray const form = LocalizeForm(file.readAll(), nib.bundle, &why);
    if (form.isEmpty())
        return Broken(path, why);
    std::unique_ptr<QWidget> widget = MakeFormWidget(form, &why);
    if (!widget)
        return Broken(path, why);
    Window& made = Window::Adopt(std::move(widget));
    MakeFormControls(made);
    *window = made.Ref();
    return kNoErr;
}

} // namespace

OSStatus CreateNibReference(CFStringRef name, IBNibRef* nib) {
    return CreateNibReferenceWithCFBundle(CFBundleGetMainBundle(), name, nib);
}

OSStatus CreateNibReferenceWithCFBundle(CFBundleRef bundle, CFStringRef name, IBNibRef* nib) {
    if (!nib)
        return kParamErr;
    *nib = nullptr;
    if (!bundle || !name)
        return kParamErr;
    std::filesystem::path folder =
        CFBundleCopyResourceURL(bundle, CFStringGetUTF8(name), "nib", "");
    if (folder.empty())
        return kErrCantFindNib;
    CFRetain(bundle);
    *nib = new OpaqueNib { std::move(folder), bundle };
    return kNoErr;
}

void DisposeNibReference(IBNibRef nib) {
    std::unique_ptr<OpaqueNib> const last(nib);
}

OSStatus CreateWindowFromNib(IBNibRef nib, CFStringRef name, WindowRef* window) {
    if (!window)
        return kParamErr;
    *window = nullptr;
    if (!nib || !name)
        return kParamErr;
    if (!EnsureUserInterface())
        return kErrNoUserInterface;
    QString const folder = QString::fromStdString(nib->folder.string());
    return MakeWindow(*nib, folder + QLatin1Char('/') + QStringFrom(name) + QStringLiteral(".ui"),
                      window);
}

} // namespace platform

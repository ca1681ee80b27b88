// SPDX-License-Identifier: BSD-3-Clause
// Windows from forms as Qt Designer writes them, with the strings of a bundle. Strings are replaced in
// the form itself, so that every text that a form can have is reached the same way: titles, tool tips,
// items, accessible names.
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include <QBuffer>
#include <QFile>
#include <QPushButton>
#include <QUiLoader>
#include <QVariant>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include "platform/ui/QtValues.h"
#include "platform/ui/Windows.h"
#include "platform/ui/controls/Control.h"

namespace platform {

namespace {

QString Localized(const QString& text, CFBundleRef bundle) {
    if (!text.startsWith(QLatin1String("IDS_")))
        return text;
    const std::string key = text.toStdString();
    const StringHolder string(CFBundleCopyLocalizedString(bundle, key, key.c_str(), nullptr));
    return QStringFrom(string.get());
}

class FormLoader : public QUiLoader {
public:
    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        // What the form stands for is a window of ours, also where it was drawn as a dialog of Qt's,
        // which has ways of its own with Return, Escape and closing.
        QWidget* const widget = parent ? MakeCustomWidget(className, parent) : new QWidget;
        if (!widget)
            return QUiLoader::createWidget(className, parent, name);
        widget->setObjectName(name);
        return widget;
    }
};

// The form with the texts that are keys (IDS_...) replaced by the bundle's strings; empty when it is no
// well-formed XML, and why says so.
QByteArray LocalizeForm(const QByteArray& form, CFBundleRef bundle, QString* why) {
    QByteArray localized;
    QXmlStreamReader reader(form);
    QXmlStreamWriter writer(&localized);
    bool inString = false;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement || token == QXmlStreamReader::EndElement)
            inString = reader.isStartElement() && reader.name() == QLatin1String("string");
        if (token == QXmlStreamReader::Invalid)
            break;
        if (token == QXmlStreamReader::Characters && inString)
            writer.writeCharacters(Localized(reader.text().toString(), bundle));
        else
            writer.writeCurrentToken(reader);
    }
    *why = reader.errorString();
    return reader.hasError() ? QByteArray() : localized;
}

// The widgets of the form, hidden; null, with why, when it is not a form.
std::unique_ptr<QWidget> MakeFormWidget(const QByteArray& form, QString* why) {
    QByteArray bytes = form;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    FormLoader loader;
    std::unique_ptr<QWidget> widget(loader.load(&buffer, nullptr));
    *why = loader.errorString();
    if (widget)
        SettleLayouts(*widget);
    return widget;
}

constexpr OSType kDefaultSignature = 0x56454C4D; // "VELM"

// Four characters such as "ok  ", where an editor may have lost the blanks at the end; or a number.
OSType CodeOf(const QVariant& value, OSType otherwise) {
    bool isNumber = false;
    const std::uint32_t number = value.toUInt(&isNumber);
    const QByteArray text = value.toString().toLatin1();
    if (isNumber || text.isEmpty() || text.size() > 4)
        return isNumber ? number : otherwise;
    OSType code = 0;
    for (const char c : text.leftJustified(4, ' '))
        code = code << 8 | static_cast<unsigned char>(c);
    return code;
}

void MakeFormControl(QWidget& widget, Window& window) {
    const QVariant number = widget.property("controlID");
    if (!number.isValid())
        return;
    Control* const control = MakeControl(widget, window);
    control->id = ControlID { CodeOf(widget.property("controlSignature"), kDefaultSignature),
                              number.toInt() };
    control->commandID = CodeOf(widget.property("commandID"), 0);
    if (!qobject_cast<QPushButton*>(&widget))
        return;
    if (control->commandID == kHICommandOK)
        window.SetDefaultButton(control);
    if (control->commandID == kHICommandCancel)
        window.SetCancelButton(control);
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

OSStatus MakeWindow(const QString& path, CFBundleRef bundle, WindowRef* window) {
    QFile file(path);
    if (!file.exists())
        return kErrCantFindWindow;
    if (!file.open(QIODevice::ReadOnly))
        return Broken(path, file.errorString());
    QString why;
    const QByteArray form = LocalizeForm(file.readAll(), bundle, &why);
    if (form.isEmpty())
        return Broken(path, why);
    std::unique_ptr<QWidget> widget = MakeFormWidget(form, &why);
    if (!widget)
        return Broken(path, why);
    Window& made = *new Window(*widget.release()); // they end together
    MakeFormControls(made);
    *window = made.Ref();
    return kNoErr;
}

} // namespace

OSStatus CreateWindowFromNib(CFBundleRef bundle, std::string_view nib, std::string_view name,
                             WindowRef* window) {
    *window = nullptr;
    if (!EnsureUserInterface())
        return kErrNoUserInterface;
    const std::filesystem::path folder = CFBundleCopyResourceURL(bundle, nib, "nib", "");
    if (folder.empty())
        return kErrCantFindNib;
    const std::filesystem::path form = folder / (std::string(name) + ".ui");
    return MakeWindow(QString::fromStdString(form.string()), bundle, window);
}

} // namespace platform

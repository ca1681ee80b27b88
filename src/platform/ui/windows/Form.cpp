// SPDX-License-Identifier: BSD-3-Clause
// Reads forms. Strings are replaced in the form itself, so that every text that a form can have is
// reached the same way: titles, tool tips, items, accessible names.
#include "platform/ui/windows/Form.h"

#include <QBuffer>
#include <QUiLoader>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include "platform/ui/Layouts.h"
#include "platform/ui/QtStrings.h"
#include "platform/ui/controls/Control.h"

namespace platform {

namespace {

QString Localized(const QString& text, CFBundleRef bundle) {
    if (!text.startsWith(QLatin1String("IDS_")))
        return text;
    std::string const key = text.toStdString();
    CFStringRef const string = CFBundleCopyLocalizedString(bundle, key, key.c_str(), nullptr);
    QString localized = QStringFrom(string);
    if (string)
        CFRelease(string);
    return localized;
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

} // namespace

QByteArray LocalizeForm(const QByteArray& form, CFBundleRef bundle, QString* why) {
    QByteArray localized;
    QXmlStreamReader reader(form);
    QXmlStreamWriter writer(&localized);
    bool inString = false;
    while (!reader.atEnd()) {
        QXmlStreamReader::TokenType const token = reader.readNext();
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

} // namespace platform

// SPDX-License-Identifier: BSD-3-Clause
// Opening and saving files: the dialog, the folder that it remembers, and the file's ending.
#include <cstring>
#include <optional>

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>

#include "platform/ui/Dialogs.h"
#include "platform/ui/UIObject.h"
#include "platform/ui/dialogs/OwnedDialog.h"

namespace platform {
namespace {

// Texts that the dialog itself has too, so that its translations serve.
QString Translated(const char* text) {
    return QCoreApplication::translate("QFileDialog", text);
}

// The remembered folder --------------------------------------------------------------------------

QString FolderKey(const FileDialogOptions& options) {
    return QStringLiteral("folders/%1").arg(options.preferenceKey);
}

QString RememberedFolder(const FileDialogOptions& options) {
    const QSettings settings(QStringLiteral("telop"));
    const QString folder = settings.value(FolderKey(options)).toString();
    return !folder.isEmpty() && QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

void RememberFolder(const FileDialogOptions& options, const QString& file) {
    QSettings settings(QStringLiteral("telop"));
    settings.setValue(FolderKey(options), QFileInfo(file).absolutePath());
}

// The dialog -------------------------------------------------------------------------------------

QString TypeFilter(const FileDialogOptions& options) {
    const QString pattern = QString::fromStdString(options.typePattern);
    if (pattern.isEmpty())
        return {};
    return QStringLiteral("%1 (%2)").arg(QString::fromStdString(options.typeName), pattern);
}

void SetUp(QFileDialog& dialog, const FileDialogOptions& options) {
    if (!options.title.empty())
        dialog.setWindowTitle(QString::fromStdString(options.title));
    dialog.setDirectory(RememberedFolder(options));
    QStringList filters { TypeFilter(options), Translated("All Files (*)") };
    filters.removeAll(QString());
    dialog.setNameFilters(filters);
}

// The file that the user accepts; none when the dialog is cancelled or ended from outside.
std::optional<QString> Ask(const OwnedDialog<QFileDialog>& dialog) {
    if (dialog->exec() != QDialog::Accepted || !dialog)
        return std::nullopt;
    const QStringList files = dialog->selectedFiles();
    return files.isEmpty() ? std::nullopt : std::optional(files.front());
}

// The file as others get it. None, and the user is told, when its path is too long for that.
std::optional<FSSpec> ToFSSpec(const QString& file, QWidget* parent) {
    const QByteArray path = file.toUtf8();
    FSSpec spec {};
    if (static_cast<std::size_t>(path.size()) < sizeof spec.path) {
        std::memcpy(spec.path, path.constData(), static_cast<std::size_t>(path.size()));
        return spec;
    }
    const OwnedDialog<QMessageBox> box(
        QMessageBox::Warning, parent ? parent->windowTitle() : QString(),
        QStringLiteral("The path of “%1” is too long: it has %2 bytes, and at most %3 can be used.")
            .arg(QFileInfo(file).fileName())
            .arg(path.size())
            .arg(sizeof spec.path - 1),
        QMessageBox::Ok, parent);
    box->exec();
    return std::nullopt;
}

std::optional<FSSpec> Result(const FileDialogOptions& options, const QString& file) {
    const std::optional<FSSpec> spec = ToFSSpec(file, DialogParent(options.parent));
    if (spec)
        RememberFolder(options, file);
    return spec;
}

// The file to save -------------------------------------------------------------------------------

// ".txt" of "*.txt *.text"; empty when the pattern's end is not fixed.
QString EndingOf(const FileDialogOptions& options) {
    const QString first =
        QString::fromStdString(options.typePattern).section(QLatin1Char(' '), 0, 0);
    const QString ending = first.mid(1);
    const bool fixed = first.startsWith(QLatin1String("*.")) && ending.size() > 1 &&
                       !ending.contains(QLatin1Char('*')) && !ending.contains(QLatin1Char('?'));
    return fixed ? ending : QString();
}

bool MayReplace(const QString& file, QWidget* parent) {
    const OwnedDialog<QMessageBox> box(QMessageBox::Warning,
                                       parent ? parent->windowTitle() : QString(),
                                       Translated("%1 already exists.\nDo you want to replace it?")
                                           .arg(QFileInfo(file).fileName()),
                                       QMessageBox::Yes | QMessageBox::No, parent);
    box->setDefaultButton(QMessageBox::No);
    return box->exec() == QMessageBox::Yes;
}

} // namespace

std::optional<FSSpec> RunGetFileDialog(const FileDialogOptions& options) {
    if (!EnsureUserInterface())
        return {};
    const OwnedDialog<QFileDialog> dialog(DialogParent(options.parent));
    SetUp(*dialog, options);
    dialog->setFileMode(QFileDialog::ExistingFile);
    const std::optional<QString> file = Ask(dialog);
    return file ? Result(options, *file) : std::nullopt;
}

std::optional<FSSpec> RunPutFileDialog(const FileDialogOptions& options) {
    if (!EnsureUserInterface())
        return {};
    const OwnedDialog<QFileDialog> dialog(DialogParent(options.parent));
    SetUp(*dialog, options);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->selectFile(QString::fromStdString(options.fileName));
    const QString ending = EndingOf(options);
    while (const std::optional<QString> file = Ask(dialog)) {
        const bool ofType = dialog->selectedNameFilter() == TypeFilter(options);
        if (!ofType || ending.isEmpty() || !QFileInfo(*file).suffix().isEmpty())
            return Result(options, *file);
        // Not the dialog's own way of adding an ending: desktops' dialogs ask about replacing a file
        // before they add it.
        const QString ended = *file + ending;
        if (!QFileInfo::exists(ended) || MayReplace(ended, &*dialog))
            return Result(options, ended);
        if (!dialog)
            break;
    }
    return {};
}

} // namespace platform
